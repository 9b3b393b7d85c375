#include "Boxes.h"

#include <gtest/gtest.h>
#include <string>

using Cli::Boxes;
using Cli::Words;
using TestSupport::ChildRun;

namespace {

const std::string kDiskBySimple = "Disk sda:\n"
                                  "   Name: sda\n"
                                  "   Place: \n"
                                  "      Place:\n"
                                  "         Row: -3\n"
                                  "   Ready: true\n"
                                  "   Size: 512 GB\n"
                                  "   Tags: fast, a \"b\"/c\n";

const std::string kDiskByXml = R"(<?xml version="1.0"?>
<output xmlns:tandril="urn:corvane:tandril:output:1">
   <meta-data>
      <meta-data-field name="header:Disk" value="Disk &#37;Name&#37;"/>
      <meta-data-field name="units:Disk.Size" value="GB"/>
   </meta-data>
   <root>
      <structure typeName="Disk">
         <field name="Name">
            <string>sda</string>
         </field>
         <field name="Place">
            <structure typeName="Place">
               <field name="Row">
                  <integer>-3</integer>
               </field>
            </structure>
         </field>
         <field name="Ready">
            <boolean>true</boolean>
         </field>
         <field name="Size">
            <integer>512</integer>
         </field>
         <field name="Tags">
            <list type="string">
                  <string>fast</string>
                  <string>a &quot;b&quot;/c</string>
            </list>
         </field>
      </structure>
   </root>
</output>
)";

const std::string kDiskByJson = "\n"
                                "{\n"
                                "   \"Name\": \"sda\",\n"
                                "   \"Place\": \n"
                                "   {\n"
                                "      \"Row\": -3\n"
                                "   },\n"
                                "   \"Ready\": true,\n"
                                "   \"Size\": 512,\n"
                                "   \"Tags\": \n"
                                "   [\n"
                                "   \"fast\", \n"
                                "   \"a \\\"b\\\"\\/c\"\n"
                                "   ]\n"
                                "}\n";

const std::string kDiskByPython =
    R"({"Name": """sda""", "Place": {"Row": -3, }, "Ready": True, "Size": 512, )"
    R"("Tags": ["""fast""", """a \"b\"/c""", ], })"
    "\n";

const std::string kDisksBySimple = "\n"
                                   "Disk:\n"
                                   "   Name: sda\n"
                                   "   Size: 512\n"
                                   "   Ready: true\n"
                                   "   Note: The first disk of the box, with the system on it\n"
                                   "\n"
                                   "Disk:\n"
                                   "   Name: sdb10\n"
                                   "   Size: 64\n"
                                   "   Ready: false\n"
                                   "   Note: \n"
                                   "\n";

const std::string kDisksByXml = R"(<?xml version="1.0"?>
<output xmlns:tandril="urn:corvane:tandril:output:1">
   <meta-data>
      <meta-data-field name="fields:Disk" value="Name,Size,Ready,Note"/>
      <meta-data-field name="wrap-last" value="true"/>
   </meta-data>
   <root>
      <list type="structure">
            <structure typeName="Disk">
               <field name="Name">
                  <string>sda</string>
               </field>
               <field name="Note">
                  <string>The first disk of the box, with the system on it</string>
               </field>
               <field name="Ready">
                  <boolean>true</boolean>
               </field>
               <field name="Size">
                  <integer>512</integer>
               </field>
            </structure>
            <structure typeName="Disk">
               <field name="Name">
                  <string>sdb10</string>
               </field>
               <field name="Note">
                  <string></string>
               </field>
               <field name="Ready">
                  <boolean>false</boolean>
               </field>
               <field name="Size">
                  <integer>64</integer>
               </field>
            </structure>
      </list>
   </root>
</output>
)";

const std::string kDisksByJson =
    "\n"
    "[\n"
    "\n"
    "      {\n"
    "         \"Name\": \"sda\",\n"
    "         \"Note\": \"The first disk of the box, with the system on it\",\n"
    "         \"Ready\": true,\n"
    "         \"Size\": 512\n"
    "      }, \n"
    "\n"
    "      {\n"
    "         \"Name\": \"sdb10\",\n"
    "         \"Note\": \"\",\n"
    "         \"Ready\": false,\n"
    "         \"Size\": 64\n"
    "      }\n"
    "]\n";

const std::string kDisksByPython =
    R"([{"Name": """sda""", "Note": """The first disk of the box, with the system on it""", )"
    R"("Ready": True, "Size": 512, }, {"Name": """sdb10""", "Note": """""", "Ready": False, )"
    R"("Size": 64, }, ])"
    "\n";

/// Dispatcher options, a command, and what the tool prints.
struct Rendering {
    Words options;
    std::string command;
    std::string out;
};

void PrintTo(const Rendering& rendering, std::ostream* out) {
    *out << testing::PrintToString(rendering.options) << " " << rendering.command;
}

/// Runs "box disk" or "box disks" with these options in front.
ChildRun RunWith(const Words& options, const std::string& command) {
    Boxes boxes;
    boxes.AddDisk();
    boxes.AddDisks();
    return boxes.Run(Cli::Join(options, {"box", command}));
}

class ToolFormatterTest : public testing::TestWithParam<Rendering> {};

TEST_P(ToolFormatterTest, Result_IsPrintedAsAskedFor) {
    const ChildRun run = RunWith(GetParam().options, GetParam().command);
    EXPECT_EQ(run.out, GetParam().out);
    EXPECT_EQ(run.err, "");
    EXPECT_EQ(run.status, 0);
}

INSTANTIATE_TEST_SUITE_P(
    Structure, ToolFormatterTest,
    testing::Values(Rendering{{}, "disk", kDiskBySimple},
                    Rendering{{"--formatter", "simple"}, "disk", kDiskBySimple},
                    Rendering{{"--formatter=xml"}, "disk", kDiskByXml},
                    Rendering{{"--formatter", "json"}, "disk", kDiskByJson},
                    Rendering{{"--formatter", "python"}, "disk", kDiskByPython}));

INSTANTIATE_TEST_SUITE_P(
    List, ToolFormatterTest,
    testing::Values(Rendering{{}, "disks", Cli::UnwrappedDisks()},
                    Rendering{{"--formatter", "table"}, "disks", Cli::UnwrappedDisks()},
                    Rendering{{"--formatter=simple"}, "disks", kDisksBySimple},
                    Rendering{{"--formatter", "xml"}, "disks", kDisksByXml},
                    Rendering{{"--formatter", "json"}, "disks", kDisksByJson},
                    Rendering{{"--formatter", "python"}, "disks", kDisksByPython}));

INSTANTIATE_TEST_SUITE_P(
    Parameters, ToolFormatterTest,
    testing::Values(
        Rendering{{"--format-param", "header:Disk=<NONE>", "--format-param=units:Disk.Size=MiB",
                   "--format-param", "fields=Size,Name"},
                  "disk",
                  "   Size: 512 MiB\n   Name: sda\n"},
        Rendering{{"--format-param", "printf:Disk.Size=%08ld", "--format-param",
                   "align-fields=true", "--format-param", "fields:Disk=Name,Ready,Size"},
                  "disk",
                  "Disk sda:\n   Name : sda\n   Ready: true\n   Size : 00000512 GB\n"},
        Rendering{{"--format-param", "fields:Disk=Name,Ready", "--format-param",
                   "fields:Disk=Ready,Name"},
                  "disks",
                  "Ready  Name\n-----  ----\ntrue   sda\nfalse  sdb10\n"},
        Rendering{{"--format-param", "show-header=false", "--format-param", "units:Disk.Size=G=B"},
                  "disks",
                  "sda    512 G=B  true   The first disk of the box, with the system on it\n"
                  "sdb10   64 G=B  false  \n"},
        Rendering{
            {"--format-param", "header-line=false", "--format-param", "fields:Disk= Size , Name "},
            "disks",
            "Size  Name\n 512  sda\n  64  sdb10\n"},
        Rendering{{"--formatter", "xml", "--format-param", "stylesheet=a&b.xsl", "--format-param",
                   "fields:Disk=Name", "--format-param", "x=1<2"},
                  "disk",
                  "<?xml version=\"1.0\"?>\n"
                  "<?xml-stylesheet type=\"text/xsl\" href=\"a&b.xsl\"?>\n"
                  "<output xmlns:tandril=\"urn:corvane:tandril:output:1\">\n"
                  "   <meta-data>\n"
                  "      <meta-data-field name=\"fields:Disk\" value=\"Name\"/>\n"
                  "      <meta-data-field name=\"header:Disk\" value=\"Disk &#37;Name&#37;\"/>\n"
                  "      <meta-data-field name=\"stylesheet\" value=\"a&amp;b.xsl\"/>\n"
                  "      <meta-data-field name=\"units:Disk.Size\" value=\"GB\"/>\n"
                  "      <meta-data-field name=\"x\" value=\"1&lt;2\"/>\n" +
                      kDiskByXml.substr(kDiskByXml.find("   </meta-data>"))}));

/// A formatter that cannot show a result, and what is said about it.
struct Misfit {
    Words options;
    std::string command;
    std::string err;
};

void PrintTo(const Misfit& misfit, std::ostream* out) {
    *out << testing::PrintToString(misfit.options) << " " << misfit.command;
}

class ToolMisfitFormatterTest : public testing::TestWithParam<Misfit> {};

TEST_P(ToolMisfitFormatterTest, IsReportedAndEndsWith1) {
    const ChildRun run = RunWith(GetParam().options, GetParam().command);
    EXPECT_EQ(run.out, "");
    EXPECT_EQ(run.err, GetParam().err);
    EXPECT_EQ(run.status, 1);
}

INSTANTIATE_TEST_SUITE_P(
    Formatters, ToolMisfitFormatterTest,
    testing::Values(
        Misfit{{"--formatter", "table"},
               "disk",
               "Error: Unexpected type for output, formatter, table, expected a List of structs\n"},
        Misfit{{"--formatter", "commandhelp"},
               "disks",
               "Error: Unexpected type for output, formatter expected a struct with help "
               "information\n"},
        Misfit{{"--formatter", "Table"},
               "disks",
               "Errors: \nUnable to find requested formatter: Table\n"},
        Misfit{{"--formatter", "clihelp"},
               "disks",
               "Errors: \nUnable to find requested formatter: clihelp\n"}));

TEST(ToolFormatterChoiceTest, CommandWithoutFormatter_PrintsNothingAndSucceeds) {
    Boxes boxes;
    TestSupport::CommandPieces pieces;
    pieces.execute =
        "<execute>" + Cli::EscapeXml(Cli::PrintDocument("<string>x</string>")) + "</execute>";
    boxes.Add("quiet", pieces);
    const ChildRun run = boxes.Run({"box", "quiet"});
    EXPECT_EQ(run.out, "");
    EXPECT_EQ(run.err, "");
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(boxes.Run({"--formatter", "simple", "box", "quiet"}).out, "x\n");
}

TEST(ToolFormatterChoiceTest, UnknownColumn_IsSaidInTheTableItself) {
    Boxes boxes;
    boxes.AddDisks();
    const ChildRun run = boxes.Run({"--format-param", "fields:Disk=Name,Colour", "box", "disks"});
    EXPECT_EQ(run.out, "Error: Unknown field in field list: Colour\n");
    EXPECT_EQ(run.err, "");
    EXPECT_EQ(run.status, 0);
}

} // namespace
