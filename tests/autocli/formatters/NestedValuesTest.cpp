#include <CppTools/autocli/formatters/JsonFormatter.h>
#include <CppTools/autocli/formatters/PythonFormatter.h>
#include <CppTools/autocli/formatters/SimpleFormatter.h>
#include <CppTools/autocli/formatters/TableFormatter.h>
#include <CppTools/autocli/formatters/XmlFormatter.h>

#include <tests/support/ImpostorValue.h>
#include <tests/support/Rendering.h>
#include <tests/support/Values.h>

#include <gtest/gtest.h>

#include <string>

// One deep tree in every format, with empty lists and structures among its values.

namespace {

using CppTools::AutoCli::JsonFormatter;
using CppTools::AutoCli::PythonFormatter;
using CppTools::AutoCli::SimpleFormatter;
using CppTools::AutoCli::TableFormatter;
using CppTools::AutoCli::XmlFormatter;
using CppTools::MetaObj::MetaList;
using CppTools::MetaObj::MetaType;
using TestSupport::Bool;
using TestSupport::ImpostorValue;
using TestSupport::Ints;
using TestSupport::RenderAt;
using TestSupport::Rendering;
using TestSupport::RenderWith;
using TestSupport::Rows;
using TestSupport::Struct;
using TestSupport::Text;
using TestSupport::Value;

Value MakeDisks() {
    const auto part = Struct("Part", {{"owner", Struct("Owner", {})}, {"spans", Ints({1, 2})}});
    return Rows({Struct("Disk", {{"name", Text("sda")}, {"parts", Rows({part})}}),
                 Struct("Disk", {{"name", Text("sdb")}, {"parts", Rows(part, {})}})});
}

Value MakeMachine() {
    return Struct("Machine", {{"disks", MakeDisks()}, {"up", Bool(true)}});
}

TEST(NestedValuesTest, Simple) {
    EXPECT_EQ(RenderWith<SimpleFormatter>(MakeMachine()),
              Rendering(true, "Machine:\n"
                              "   disks: \n"
                              "         Disk:\n"
                              "            name: sda\n"
                              "            parts: \n"
                              "                  Part:\n"
                              "                     owner: \n"
                              "                        Owner:\n"
                              "                     spans: 1, 2\n"
                              "\n"
                              "\n"
                              "         Disk:\n"
                              "            name: sdb\n"
                              "            parts: \n"
                              "\n"
                              "   up: true\n"));
}

TEST(NestedValuesTest, Simple_ParametersReachEveryDepth) {
    EXPECT_EQ(RenderWith<SimpleFormatter>(MakeMachine(), {{"fields:Machine", "disks"},
                                                          {"fields:Disk", "parts,name"},
                                                          {"fields:Part", "spans,owner"},
                                                          {"fields", "nothing"},
                                                          {"header:Disk", "<NONE>"},
                                                          {"header:Part", "spans %spans%"},
                                                          {"units:Disk.name", "disk"},
                                                          {"align-fields", "true"}}),
              Rendering(true, "Machine:\n"
                              "   disks: \n"
                              "            parts: \n"
                              "                  spans 1, 2:\n"
                              "                     spans: 1, 2\n"
                              "                     owner: \n"
                              "                        Owner:\n"
                              "Error getting field nothing\n"
                              "\n"
                              "            name : sda disk\n"
                              "\n"
                              "            parts: \n"
                              "            name : sdb disk\n"
                              "\n"));
}

TEST(NestedValuesTest, Table) {
    EXPECT_EQ(RenderWith<TableFormatter>(MakeDisks()),
              Rendering(true, "name  parts\n"
                              "----  -----\n"
                              "sda   {'owner' => '{}', 'spans' => '1, 2', }\n"
                              "sdb   \n"));
}

TEST(NestedValuesTest, Xml) {
    EXPECT_EQ(RenderAt<XmlFormatter>(0, MakeMachine()),
              "<structure typeName=\"Machine\">\n"
              "   <field name=\"disks\">\n"
              "      <list type=\"structure\">\n"
              "            <structure typeName=\"Disk\">\n"
              "               <field name=\"name\">\n"
              "                  <string>sda</string>\n"
              "               </field>\n"
              "               <field name=\"parts\">\n"
              "                  <list type=\"structure\">\n"
              "                        <structure typeName=\"Part\">\n"
              "                           <field name=\"owner\">\n"
              "                              <structure typeName=\"Owner\">\n"
              "                              </structure>\n"
              "                           </field>\n"
              "                           <field name=\"spans\">\n"
              "                              <list type=\"integer\">\n"
              "                                    <integer>1</integer>\n"
              "                                    <integer>2</integer>\n"
              "                              </list>\n"
              "                           </field>\n"
              "                        </structure>\n"
              "                  </list>\n"
              "               </field>\n"
              "            </structure>\n"
              "            <structure typeName=\"Disk\">\n"
              "               <field name=\"name\">\n"
              "                  <string>sdb</string>\n"
              "               </field>\n"
              "               <field name=\"parts\">\n"
              "                  <list type=\"structure\">\n"
              "                  </list>\n"
              "               </field>\n"
              "            </structure>\n"
              "      </list>\n"
              "   </field>\n"
              "   <field name=\"up\">\n"
              "      <boolean>true</boolean>\n"
              "   </field>\n"
              "</structure>\n");
}

TEST(NestedValuesTest, Json) {
    EXPECT_EQ(RenderWith<JsonFormatter>(MakeMachine()),
              Rendering(true, "\n"
                              "{\n"
                              "   \"disks\": \n"
                              "   [\n"
                              "   \n"
                              "            {\n"
                              "               \"name\": \"sda\",\n"
                              "               \"parts\": \n"
                              "                  [\n"
                              "                  \n"
                              "                           {\n"
                              "                              \"owner\": \n"
                              "                                 {\n"
                              "                                 },\n"
                              "                              \"spans\": \n"
                              "                                 [\n"
                              "                                 1, \n"
                              "                                 2\n"
                              "                                 ]\n"
                              "                           }\n"
                              "                  ]\n"
                              "            }, \n"
                              "   \n"
                              "            {\n"
                              "               \"name\": \"sdb\",\n"
                              "               \"parts\": \n"
                              "                  [\n"
                              "                  ]\n"
                              "            }\n"
                              "   ],\n"
                              "   \"up\": true\n"
                              "}\n"));
}

TEST(NestedValuesTest, Python) {
    EXPECT_EQ(RenderWith<PythonFormatter>(MakeMachine()),
              Rendering(true, R"({"disks": [{"name": """sda""", "parts": )"
                              R"([{"owner": {}, "spans": [1, 2, ], }, ], }, )"
                              R"({"name": """sdb""", "parts": [], }, ], "up": True, })"
                              "\n"));
}

// --- Lists that hold what they should not

Value ListWithImpostor() {
    const auto list = MetaList::New(MetaType::Int);
    list->Add(1);
    list->Add(ImpostorValue::New(MetaType::Int));
    list->Add(3);
    return list;
}

TEST(OddListTest, ElementThatIsNotWhatItClaims_IsReportedInItsPlace) {
    EXPECT_EQ(RenderWith<SimpleFormatter>(ListWithImpostor()).second, "1, impostor, 3\n");
    EXPECT_EQ(RenderAt<XmlFormatter>(1, ListWithImpostor()), "   <list type=\"integer\">\n"
                                                             "         <integer>1</integer>\n"
                                                             "Error reading a int\n"
                                                             "         <integer>3</integer>\n"
                                                             "   </list>\n");
    EXPECT_EQ(RenderAt<JsonFormatter>(1, ListWithImpostor()), "\n"
                                                              "   [\n"
                                                              "   1, \n"
                                                              "   Error reading a int\n"
                                                              ", \n"
                                                              "   3\n"
                                                              "   ]");
    EXPECT_EQ(RenderAt<PythonFormatter>(1, ListWithImpostor()), "[1, Error reading a int\n, 3, ]");
}

TEST(OddListTest, ElementsOfNoKnownKind) {
    const auto list = MetaList::New(TestSupport::kUnknownKind);
    list->Add(ImpostorValue::New(TestSupport::kUnknownKind));
    EXPECT_EQ(RenderWith<SimpleFormatter>(list).second, "impostor\n");
    EXPECT_EQ(RenderAt<XmlFormatter>(0, list),
              "<list type=\"\">\n"
              "Error Only simple int, bool, string and struct output supported\n"
              "</list>\n");
    EXPECT_EQ(RenderAt<JsonFormatter>(0, list), "\n[\nUnknown data type\n\n]");
    EXPECT_EQ(RenderAt<PythonFormatter>(0, list), "[Unknown data type\n, ]");
}

} // namespace
