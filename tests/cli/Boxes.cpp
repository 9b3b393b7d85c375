#include "Boxes.h"

namespace Cli {

using TestSupport::CommandPieces;

namespace {

constexpr const char* kDisk = R"(<structure typeName="Disk">
<field name="Name"><string>sda</string></field>
<field name="Place"><structure typeName="Place">
  <field name="Row"><int>-3</int></field>
</structure></field>
<field name="Ready"><bool>true</bool></field>
<field name="Size"><int>512</int></field>
<field name="Tags"><list type="string"><string>fast</string><string>a "b"/c</string></list></field>
</structure>
)";

constexpr const char* kDisks = R"(<list type="structure">
<structure typeName="Disk">
  <field name="Name"><string>sda</string></field>
  <field name="Note"><string>The first disk of the box, with the system on it</string></field>
  <field name="Ready"><bool>true</bool></field>
  <field name="Size"><int>512</int></field>
</structure>
<structure typeName="Disk">
  <field name="Name"><string>sdb10</string></field>
  <field name="Note"><string></string></field>
  <field name="Ready"><bool>false</bool></field>
  <field name="Size"><int>64</int></field>
</structure>
</list>
)";

} // namespace

void Boxes::Add(const std::string& name, CommandPieces pieces) const {
    pieces.attributes = "path=\"box." + name + "\"";
    directory_.Write(
        name + ".xml",
        TestSupport::Descriptor(TestSupport::NamespacesElement(TestSupport::NamespaceElement(
                                    "box", "Boxes that hold things.")) +
                                TestSupport::CommandsElement(pieces.ToElement())));
}

void Boxes::AddShell(const std::string& name, const std::string& shellLine) const {
    CommandPieces pieces;
    pieces.formatParameters =
        "<format-parameters><formatter>simple</formatter></format-parameters>";
    pieces.execute = "<execute>" + EscapeXml(shellLine) + "</execute>";
    Add(name, pieces);
}

void Boxes::AddDisk() const {
    CommandPieces pieces;
    pieces.description = "<description>Show one disk.</description>";
    pieces.outputSpec = std::string("<output-spec>") + kDisk + "</output-spec>";
    pieces.formatParameters = R"(<format-parameters>
<formatter>simple</formatter>
<format-parameter name="header:Disk">Disk %Name%</format-parameter>
<format-parameter name="units:Disk.Size">GB</format-parameter>
</format-parameters>)";
    pieces.execute = "<execute>" + EscapeXml(PrintDocument(kDisk)) + "</execute>";
    Add("disk", pieces);
}

void Boxes::AddDisks() const {
    CommandPieces pieces;
    pieces.description = "<description>Show all disks.</description>";
    pieces.outputSpec = std::string("<output-spec>") + kDisks + "</output-spec>";
    pieces.formatParameters = R"(<format-parameters>
<formatter>table</formatter>
<format-parameter name="fields:Disk">Name,Size,Ready,Note</format-parameter>
<format-parameter name="wrap-last">true</format-parameter>
</format-parameters>)";
    pieces.execute = "<execute>" + EscapeXml(PrintDocument(kDisks)) + "</execute>";
    Add("disks", pieces);
}

std::string EscapeXml(const std::string& text) {
    std::string escaped;
    for (const char c : text) {
        switch (c) {
        case '&':
            escaped += "&amp;";
            break;
        case '<':
            escaped += "&lt;";
            break;
        default:
            escaped += c;
        }
    }
    return escaped;
}

std::string PrintDocument(const std::string& element) {
    return "printf '%s' '<output>" + element + "</output>'";
}

std::string UnwrappedDisks() {
    return "Name   Size  Ready  Note\n"
           "-----  ----  -----  ----\n"
           "sda     512  true   The first disk of the box, with the system on it\n"
           "sdb10    64  false  \n";
}

std::string DisksOn40Columns() {
    return "Name   Size  Ready  Note\n"
           "-----  ----  -----  ----\n"
           "sda     512  true   The first disk of \n"
           "                    the box, with the \n"
           "                    system on it\n"
           "sdb10    64  false  \n";
}

} // namespace Cli
