"""Texts on either side of what the engine takes, beside those that the other tests have it read."""

import re


def descriptor(inside):
    return f"<tandril-extension><version>1.0.0</version>{inside}</tandril-extension>"


def namespaces(*paths, description="<description>D</description>"):
    inside = "".join(f'<namespace path="{path}">{description}</namespace>' for path in paths)
    return descriptor(f"<namespaces>{inside}</namespaces>")


def command(
    description="",
    inputs="<input-spec/>",
    outputs="<output-spec/>",
    formats="<format-parameters/>",
    execute="<execute>true</execute>",
    rest="",
):
    inside = description + inputs + outputs + formats + execute + rest
    return descriptor(f'<commands><command path="run">{inside}</command></commands>')


def parameters(*elements):
    return command(inputs=f"<input-spec>{''.join(elements)}</input-spec>")


def parameter(attributes, inside=""):
    return f"<parameter {attributes}><description>D</description>{inside}</parameter>"


def constrained(type_word, kind, inside):
    constraint = f'<constraint type="{kind}">{inside}</constraint>'
    return parameters(parameter(f'name="aa" type="{type_word}"', constraint))


def entry(value, inside="x"):
    return f"<enum-value value='{value}'>{inside}</enum-value>"


def entries(*inside):
    return f"<enum>{''.join(inside)}</enum>"


def result(inside):
    return f"<output>{inside}</output>"


ORDER = [
    f"<tandril-extension>{''.join(parts)}</tandril-extension>"
    for parts in (
        ("<commands/>", "<version>1.0.0</version>"),
        ("<namespaces/>", "<commands/>", "<version>1.0.0</version>"),
        ("<commands/>", "<namespaces/>", "<version>1.0.0</version>"),
        ("<commands/>", "<version>1.0.0</version>", "<namespaces/>"),
        ("<namespaces/>", "<version>1.0.0</version>", "<commands/>"),
        ("<namespaces/>", "<version>1.0.0</version>", "<namespaces/>"),
        ("<version>1.0.0</version>",),
        ("<version> 1.0.0</version>", "<commands/>"),
        ("<version/>", "<version>1.0.0</version>", "<commands/>"),
        ("<version>1.0.0</version>", "<version/>", "<commands/>"),
        ("<version>1.0<!-- . -->.0</version>", "<commands/>"),
        ("<version><!-- x -->1.0.0</version>", "<commands/>"),
        ("<version>1.0.0<b/></version>", "<other/>", "<commands/>", "words"),
    )
]

PATHS = [
    namespaces(*paths)
    for paths in (
        ("a",),
        ("a", "a.b"),
        ("a", "a"),
        ("a", "a.b", "a.b"),
        ("a.b", "a"),
        ("a", "a..b"),
        ("a.",),
        (".a",),
        (".",),
        ("",),
        ("fooBar", "fooB", "2x"),
        ("FooBar",),
        ("fooBAr",),
        ("foo-bar",),
        ("\xe4",),
    )
]

DESCRIPTIONS = [
    namespaces("a", description=description)
    for description in (
        "",
        "<description/>",
        "<description> </description>",
        "<description/><description>D</description>",
        "<description>D</description><description/>",
        "<description>D<b/></description>",
        "<description><b>D</b></description>",
        "<description><![CDATA[D]]></description>",
        "<other/><description>D</description>words",
        "<description><!-- D --></description>",
        "<description>D<?p q?></description>",
    )
]

ONE_COMMAND = re.search("<command .*</command>", command()).group()
COMMANDS = [
    command(),
    command(execute="<execute/>"),
    command(execute="<execute/><execute>true</execute>"),
    command(execute="<execute>true</execute><execute/>"),
    command(execute=""),
    command(inputs=""),
    command(outputs=""),
    command(formats=""),
    command(inputs="<input-spec/><input-spec/>"),
    command(rest="<stdin/><stdin>x</stdin>"),
    command(rest="<stdin>x</stdin><stdin>x</stdin>"),
    command(description="<description/><description>D<b/></description>"),
    command(rest="<other><input-spec/></other>"),
    command(rest="<meta-data><meta-data-entry/></meta-data>"),
    command(rest="<meta-data><meta-data-entry>x</meta-data-entry></meta-data>"),
    command(rest="<meta-data><meta-data-entry> </meta-data-entry></meta-data>"),
    command(rest="<meta-data><meta-data-entry><b/></meta-data-entry></meta-data>"),
    command(rest='<meta-data><text/><meta-data-entry name="">x</meta-data-entry></meta-data>'),
    command(rest='<meta-data><meta-data-entry name="n">x<b/>y</meta-data-entry></meta-data>'),
    command(rest="<meta-data><other/></meta-data>"),
    command(rest="<meta-data><comment/></meta-data>"),
    command(outputs="<output-spec><string/></output-spec>"),
    command(outputs="<output-spec><string/><string/></output-spec>"),
    command(outputs="<output-spec><text/><string/><comment/></output-spec>"),
    command(outputs="<output-spec><float/></output-spec>"),
    command(formats="<format-parameters><formatter/><formatter/></format-parameters>"),
    command(formats="<format-parameters><format-parameter/><formatter/><x/></format-parameters>"),
    namespaces("a").replace("<namespaces>", "<commands><other/></commands><namespaces><other/>"),
    command().replace(' path="run"', ""),
    command().replace("<commands>", "<commands>" + ONE_COMMAND),
    command().replace('path="run"', 'path="run" other="x"'),
    command().replace('path="run"', 'path="a.run"'),
]

PARAMETERS = [
    parameters(parameter(attributes))
    for attributes in (
        'name="aa" type="string"',
        'name="a" type="string"',
        'name="aA" type="string"',
        'name="" type="string"',
        'type="string"',
        'name="help" type="string"',
        'name="aa"',
        'name="aa" type="String"',
        'name="aa" type=" string"',
        'name="aa" type="string" required=""',
        'name="aa" type="string" required="yes"',
        'name="aa" type="string" secret="true"',
        'name="aa" type="string" secret=""',
        'name="aa" type="string-list" secret="true"',
        'name="aa" type="flag" secret="true"',
        'name="aa" type="flag" secret="false" required="true"',
        'name="aa" type="string" shortname=""',
        'name="aa" type="string" shortname="x"',
        'name="aa" type="string" shortname="xy"',
        'name="aa" type="string" shortname="-"',
        'name="aa" type="string" other="x"',
    )
] + [
    parameters("<parameter name='aa' type='string'/>"),
    parameters(parameter('name="aa" type="string"', "<other/>words")),
    parameters(parameter('name="aa" type="int"'), parameter('name="aa" type="int"')),
    parameters(
        parameter('name="aa" type="int" shortname="s"'),
        parameter('name="bb" type="int" shortname="s"'),
    ),
    parameters("<context-supported/>", "<other/>", "words"),
]

ONE = entries(entry("1"))
CONSTRAINTS = [
    constrained(type_word, kind, inside)
    for type_word in ("string", "string-list", "int", "int-list", "bool", "bool-list", "flag")
    for kind, inside in (
        ("stringenum", ONE),
        ("intenum", ONE),
        ("regex", "<regex>x</regex>"),
        ("range", '<range min="1" max="2"/>'),
    )
] + [
    constrained("string", kind, inside)
    for kind, inside in (
        ("", ONE),
        ("enum", ONE),
        ("stringenum", ""),
        ("stringenum", "<enum/>"),
        ("stringenum", "<enum/>" + ONE),
        ("stringenum", ONE + "<enum/>"),
        ("stringenum", ONE + ONE),
        ("stringenum", "<other/>" + ONE + "<regex/>"),
        ("stringenum", "<enum><other/></enum>"),
        ("stringenum", entries("<text/>", entry("a"), "words")),
        ("stringenum", entries(entry("a", ""))),
        ("stringenum", entries(entry("a", ""), entry("a"))),
        ("stringenum", entries(entry("a"), entry("a"))),
        ("stringenum", entries(entry("a", "x<!-- y -->"))),
        ("stringenum", entries(entry("a", "x<b/>"))),
        ("stringenum", entries(entry("a", "<b/>"))),
        ("stringenum", entries(entry(""))),
        ("stringenum", "<enum><enum-value>x</enum-value></enum>"),
        ("regex", "<regex/>"),
        ("regex", "<regex>(</regex>"),
        ("regex", "<regex>a</regex><regex/>"),
        ("regex", "<regex>a</regex><other/><regex>b</regex>"),
        ("regex", "<regex>a<b/></regex>"),
    )
] + [
    constrained("int", kind, inside)
    for kind, inside in (
        ("intenum", entries(entry("x"))),
        ("intenum", entries(entry("x", ""), entry("1"))),
        ("intenum", entries(entry("0x10"))),
        ("intenum", entries(entry(" +7 &#10;z"))),
        ("intenum", entries(entry("+-7"))),
        ("intenum", entries(entry("1"), entry("01"))),
        ("intenum", entries(entry("9223372036854775808"))),
        ("range", "<range/>"),
        ("range", "<range min='1'/>"),
        ("range", "<range min='1' max='x'/>"),
        ("range", "<range min='2' max='1'/>"),
        ("range", "<range min='1' max='9223372036854775808'/>"),
        ("range", "<range min='1' max='2'>words<b/></range><other/>"),
        ("range", "<range min='1' max='2'/><range min='1'/>"),
    )
]

RESULTS = [
    result(inside)
    for inside in (
        "",
        "words",
        "<string/>",
        "<text/><comment/><string/>",
        "<string/><float/>",
        "<float/><string/>",
        "<string>a<b/></string>",
        "<int/>",
        "<int> </int>",
        "<int>12abc</int>",
        "<int>&#9;+7&#10;</int>",
        "<int>+-7</int>",
        "<int>x</int>",
        "<int>7<b/></int>",
        "<int>7<!-- 8 --></int>",
        "<int>x<!-- 8 --></int>",
        "<int>9223372036854775807</int>",
        "<int>9223372036854775808</int>",
        "<bool/>",
        "<bool>maybe<b/></bool>",
        "<structure/>",
        "<structure typeName=''/>",
        "<structure typeName='a_b'/>",
        "<structure typeName='T'><other/>words<field name='f'/></structure>",
        "<structure typeName='T'><field/></structure>",
        "<structure typeName='T'><field name=''><int/></field></structure>",
        "<structure typeName='T'><field name='f'><int/><float/></field></structure>",
        "<structure typeName='T'><field name='f'><float/></field></structure>",
        "<structure typeName='T'><field name='f'><int/></field>"
        "<field name='f'><bool/></field></structure>",
        "<structure xmlns='urn:x' typeName='T'/>",
        "<x:structure xmlns:x='urn:x' x:typeName='T'/>",
        "<list/>",
        "<list type='float'/>",
        "<list type='list'/>",
        "<list type='int'/>",
        "<list type='int'>1<text/><int>1</int></list>",
        "<list type='int'><string>1</string></list>",
        "<list type='int'><int>1</int><bool/></list>",
        "<list type='structure'/>",
        "<list type='structure'><int/></list>",
        "<list type='structure'><structure typeName='T'/><structure typeName='U'/></list>",
        "<list type='structure'><structure typeName='T'/><structure typeName='T'>"
        "<field name='f'><int/></field></structure></list>",
    )
] + [
    "<string/>",
    "<list type='int'/>",
    "<anything><string/></anything>",
    "<!DOCTYPE output [<!ENTITY e '7'>]><output><int>&e;</int></output>",
    "<!DOCTYPE output [<!ENTITY e '7'>]><output>&e;<int/></output>",
    "<!DOCTYPE output [<!ATTLIST list type CDATA 'int'>]><output><list/></output>",
    "words",
    "",
]

TEXTS = ORDER + PATHS + DESCRIPTIONS + COMMANDS + PARAMETERS + CONSTRAINTS + RESULTS
