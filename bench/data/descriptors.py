"""Writes folders of descriptors: each one namespace of ten commands with four parameters."""
import os

COMMANDS = 10
PARAMETERS = """\
    <parameter name="name" type="string" required="true" shortname="n">
     <description>Name of the object to work on, for example web01 or db-17</description>
     <constraint type="regex"><regex>[a-z][a-z0-9-]*</regex></constraint>
    </parameter>
    <parameter name="size" type="int" required="false">
     <description>Size in megabytes</description>
     <constraint type="range"><range min="1" max="65536"/></constraint>
    </parameter>
    <parameter name="mode" type="string" required="false">
     <description>Mode, one of %ENUM%: %FULLENUM%</description>
     <constraint type="stringenum"><enum>
      <enum-value value="fast">Less checking</enum-value>
      <enum-value value="safe">All checks</enum-value>
     </enum></constraint>
    </parameter>
    <parameter name="force" type="flag" required="false">
     <description>Do not ask</description>
    </parameter>
"""
RESULT = """\
    <list type="structure"><structure typeName="Row">
     <field name="Id"><int/></field>
     <field name="Name"><string/></field>
     <field name="Enabled"><bool/></field>
    </structure></list>
"""


def command(namespace, number):
    return f"""\
  <command path="{namespace}.cmd{number:03d}">
   <description>Command {number} of namespace {namespace}, which does one thing</description>
   <input-spec>
{PARAMETERS}   </input-spec>
   <output-spec>
{RESULT}   </output-spec>
   <format-parameters>
    <formatter>table</formatter>
    <format-parameter name="fields:Row">Id,Name,Enabled</format-parameter>
   </format-parameters>
   <execute>/bin/cat /dev/null $val{{name}} $if{{force,--force}}</execute>
  </command>
"""


def descriptor(number):
    namespace = f"ns{number:04d}"
    commands = "".join(command(namespace, i) for i in range(COMMANDS))
    return f"""\
<?xml version="1.0"?>
<plugin>
 <version>1.0.0</version>
 <namespaces>
  <namespace path="{namespace}"><description>Namespace number {number}</description></namespace>
 </namespaces>
 <commands>
{commands} </commands>
</plugin>
"""


def write_folder(folder, files):
    os.makedirs(folder, exist_ok=True)
    for number in range(files):
        with open(os.path.join(folder, f"plugin_{number:05d}.xml"), "w") as out:
            out.write(descriptor(number))


def write_cat_command(path, document):
    """A descriptor whose one command, "rows show", prints a document of rows."""
    fields = "".join(f'<field name="{name}"><{kind}/></field>' for name, kind in
                     (("Description", "string"), ("Enabled", "bool"), ("Id", "int"),
                      ("Name", "string"), ("Size", "int"), ("State", "string")))
    with open(path, "w") as out:
        out.write(f"""\
<plugin>
 <version>1.0.0</version>
 <namespaces><namespace path="rows"><description>Rows</description></namespace></namespaces>
 <commands><command path="rows.show">
  <description>Shows all rows</description>
  <input-spec/>
  <output-spec>
   <list type="structure"><structure typeName="Row">{fields}</structure></list>
  </output-spec>
  <format-parameters><formatter>table</formatter></format-parameters>
  <execute>cat '{document}'</execute>
 </command></commands>
</plugin>
""")
