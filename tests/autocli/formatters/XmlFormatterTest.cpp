#include <CppTools/autocli/formatters/XmlFormatter.h>

#include <tests/support/ImpostorValue.h>
#include <tests/support/NamedRow.h>
#include <tests/support/Rendering.h>
#include <tests/support/Values.h>

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <string>

namespace {

using CppTools::AutoCli::XmlFormatter;
using CppTools::MetaObj::MetaType;
using TestSupport::Bool;
using TestSupport::Bools;
using TestSupport::DocumentedParams;
using TestSupport::DocumentedParamsOf;
using TestSupport::ImpostorValue;
using TestSupport::Int;
using TestSupport::Ints;
using TestSupport::kRowName;
using TestSupport::NamedRow;
using TestSupport::ParameterEntries;
using TestSupport::RenderAt;
using TestSupport::Rendering;
using TestSupport::RenderWith;
using TestSupport::RootCase;
using TestSupport::Rows;
using TestSupport::Struct;
using TestSupport::Text;
using TestSupport::Texts;
using TestSupport::Value;

/// The whole document around the lines of a root value, without parameters.
std::string DocumentOf(const std::string& value) {
    return "<?xml version=\"1.0\"?>\n"
           "<output xmlns:tandril=\"urn:corvane:tandril:output:1\">\n"
           "   <meta-data>\n"
           "   </meta-data>\n"
           "   <root>\n" +
           value +
           "   </root>\n"
           "</output>\n";
}

TEST(XmlFormatterTest, Name_IsXml) {
    EXPECT_EQ(XmlFormatter().GetName(), "xml");
}

TEST(XmlFormatterTest, Description_IsTheSentenceForUsers) {
    EXPECT_EQ(XmlFormatter().GetDescription(),
              "Print an XML document to the screen representing the output for a given command");
}

TEST(XmlFormatterTest, Params_DocumentTheStylesheet) {
    EXPECT_EQ(
        DocumentedParamsOf(XmlFormatter()),
        (DocumentedParams{
            {"stylesheet", "The file name or URL to a stylesheet for this document.  ", false},
        }));
}

// --- The document

class XmlFormatterRootTest : public testing::TestWithParam<RootCase> {};

TEST_P(XmlFormatterRootTest, RootValueStandsInTheDocumentAtSixColumns) {
    EXPECT_EQ(RenderWith<XmlFormatter>(GetParam().root),
              Rendering(true, DocumentOf(GetParam().text)));
}

INSTANTIATE_TEST_SUITE_P(
    Scalars, XmlFormatterRootTest,
    testing::Values(RootCase{{"Integer"}, Int(42), "      <integer>42</integer>\n"},
                    RootCase{{"LowestInteger"},
                             Int(std::numeric_limits<long>::min()),
                             "      <integer>-9223372036854775808</integer>\n"},
                    RootCase{{"True"}, Bool(true), "      <boolean>true</boolean>\n"},
                    RootCase{{"False"}, Bool(false), "      <boolean>false</boolean>\n"},
                    RootCase{{"String"}, Text("two words"), "      <string>two words</string>\n"},
                    RootCase{{"EmptyString"}, Text(""), "      <string></string>\n"},
                    RootCase{{"SanitisedString"},
                             Text("a<b & \"c\""),
                             "      <string>a&lt;b &amp; &quot;c&quot;</string>\n"},
                    RootCase{{"LineEndsStay"}, Text("a\n b"), "      <string>a\n b</string>\n"}),
    kRowName);

INSTANTIATE_TEST_SUITE_P(Lists, XmlFormatterRootTest,
                         testing::Values(RootCase{{"Integers"},
                                                  Ints({1, -2}),
                                                  "      <list type=\"integer\">\n"
                                                  "            <integer>1</integer>\n"
                                                  "            <integer>-2</integer>\n"
                                                  "      </list>\n"},
                                         RootCase{{"Bools"},
                                                  Bools({true, false}),
                                                  "      <list type=\"boolean\">\n"
                                                  "            <boolean>true</boolean>\n"
                                                  "            <boolean>false</boolean>\n"
                                                  "      </list>\n"},
                                         RootCase{{"Strings"},
                                                  Texts({"a", "<"}),
                                                  "      <list type=\"string\">\n"
                                                  "            <string>a</string>\n"
                                                  "            <string>&lt;</string>\n"
                                                  "      </list>\n"},
                                         RootCase{{"Structures"},
                                                  Rows({Struct("T", {{"a", Int(1)}}),
                                                        Struct("T", {{"a", Int(2)}})}),
                                                  "      <list type=\"structure\">\n"
                                                  "            <structure typeName=\"T\">\n"
                                                  "               <field name=\"a\">\n"
                                                  "                  <integer>1</integer>\n"
                                                  "               </field>\n"
                                                  "            </structure>\n"
                                                  "            <structure typeName=\"T\">\n"
                                                  "               <field name=\"a\">\n"
                                                  "                  <integer>2</integer>\n"
                                                  "               </field>\n"
                                                  "            </structure>\n"
                                                  "      </list>\n"},
                                         RootCase{{"NoElements"},
                                                  Ints({}),
                                                  "      <list type=\"integer\">\n"
                                                  "      </list>\n"},
                                         RootCase{{"NoTemplate"},
                                                  Rows(nullptr, {}),
                                                  "      <list type=\"structure\">\n"
                                                  "      </list>\n"}),
                         kRowName);

INSTANTIATE_TEST_SUITE_P(
    Structures, XmlFormatterRootTest,
    testing::Values(RootCase{{"OneField"},
                             Struct("T", {{"n", Int(5)}}),
                             "      <structure typeName=\"T\">\n"
                             "         <field name=\"n\">\n"
                             "            <integer>5</integer>\n"
                             "         </field>\n"
                             "      </structure>\n"},
                    RootCase{{"NoFields"},
                             Struct("T", {}),
                             "      <structure typeName=\"T\">\n"
                             "      </structure>\n"},
                    RootCase{{"FieldsAscendByName"},
                             Struct("T", {{"b", Bool(true)}, {"a", Text("x")}, {"B", Int(1)}}),
                             "      <structure typeName=\"T\">\n"
                             "         <field name=\"B\">\n"
                             "            <integer>1</integer>\n"
                             "         </field>\n"
                             "         <field name=\"a\">\n"
                             "            <string>x</string>\n"
                             "         </field>\n"
                             "         <field name=\"b\">\n"
                             "            <boolean>true</boolean>\n"
                             "         </field>\n"
                             "      </structure>\n"},
                    RootCase{{"FieldNamesAreSanitised"},
                             Struct("T", {{"a<\"b\">&'%", Int(1)}}),
                             "      <structure typeName=\"T\">\n"
                             "         <field name=\"a&lt;&quot;b&quot;&gt;&amp;&apos;&#37;\">\n"
                             "            <integer>1</integer>\n"
                             "         </field>\n"
                             "      </structure>\n"},
                    RootCase{{"Nested"},
                             Struct("T", {{"in", Struct("I", {{"list", Ints({7})}})}}),
                             "      <structure typeName=\"T\">\n"
                             "         <field name=\"in\">\n"
                             "            <structure typeName=\"I\">\n"
                             "               <field name=\"list\">\n"
                             "                  <list type=\"integer\">\n"
                             "                        <integer>7</integer>\n"
                             "                  </list>\n"
                             "               </field>\n"
                             "            </structure>\n"
                             "         </field>\n"
                             "      </structure>\n"}),
    kRowName);

INSTANTIATE_TEST_SUITE_P(
    Impostors, XmlFormatterRootTest,
    testing::Values(
        RootCase{{"Bool"}, ImpostorValue::New(MetaType::Bool), "<!-- Error reading a bool -->\n"},
        RootCase{{"Integer"}, ImpostorValue::New(MetaType::Int), "Error reading a int\n"},
        RootCase{{"String"}, ImpostorValue::New(MetaType::String), "Error reading a string\n"},
        RootCase{{"Struct"},
                 ImpostorValue::New(MetaType::Struct),
                 "Error reading a struct from output.\n"},
        RootCase{{"List"}, ImpostorValue::New(MetaType::List), "Error reading a List\n"},
        RootCase{{"UnknownKind"},
                 ImpostorValue::New(TestSupport::kUnknownKind),
                 "Error Only simple int, bool, string and struct output supported\n"},
        RootCase{{"Nothing"}, nullptr, ""}),
    kRowName);

TEST(XmlFormatterTest, Format_ImpostorField_IsReportedBetweenItsTags) {
    EXPECT_EQ(RenderAt<XmlFormatter>(
                  0, Struct("T", {{"a", ImpostorValue::New(MetaType::Bool)}, {"b", Int(1)}})),
              "<structure typeName=\"T\">\n"
              "   <field name=\"a\">\n"
              "<!-- Error reading a bool -->\n"
              "   </field>\n"
              "   <field name=\"b\">\n"
              "      <integer>1</integer>\n"
              "   </field>\n"
              "</structure>\n");
}

// --- Levels

TEST(XmlFormatterTest, Format_LevelIndentsByThreeColumns) {
    EXPECT_EQ(RenderAt<XmlFormatter>(-2, Int(5)), "<integer>5</integer>\n");
    EXPECT_EQ(RenderAt<XmlFormatter>(0, Int(5)), "<integer>5</integer>\n");
    EXPECT_EQ(RenderAt<XmlFormatter>(1, Bool(true)), "   <boolean>true</boolean>\n");
    EXPECT_EQ(RenderAt<XmlFormatter>(3, Text("x")), "         <string>x</string>\n");
    EXPECT_EQ(RenderAt<XmlFormatter>(1, Texts({"x"})), "   <list type=\"string\">\n"
                                                       "         <string>x</string>\n"
                                                       "   </list>\n");
}

TEST(XmlFormatterTest, Format_ListOfUnknownKind_HasNoNameForIt) {
    for (const int kind : {5, 6, 7, -1}) {
        const auto list = CppTools::MetaObj::MetaList::New(static_cast<MetaType>(kind));
        EXPECT_EQ(RenderAt<XmlFormatter>(0, list), "<list type=\"\">\n</list>\n") << kind;
    }
}

TEST(XmlFormatterTest, Format_EmptyValue_WritesNothing) {
    EXPECT_EQ(RenderAt<XmlFormatter>(2, nullptr), "");
}

// --- Parameters

std::string DocumentWithMetaData(const std::string& stylesheetLine, const std::string& fields) {
    return "<?xml version=\"1.0\"?>\n" + stylesheetLine +
           "<output xmlns:tandril=\"urn:corvane:tandril:output:1\">\n"
           "   <meta-data>\n" +
           fields +
           "   </meta-data>\n"
           "   <root>\n"
           "      <integer>5</integer>\n"
           "   </root>\n"
           "</output>\n";
}

TEST(XmlFormatterTest, Format_ParametersAreListedInAscendingKeyOrder) {
    EXPECT_EQ(
        RenderWith<XmlFormatter>(Int(5), {{"units:T.F", "MB"},
                                          {"fields", "a,b"},
                                          {"printf:T.F", "%05ld"},
                                          {"Fields", ""},
                                          {"", "no key"}}),
        Rendering(true, DocumentWithMetaData(
                            "", "      <meta-data-field name=\"\" value=\"no key\"/>\n"
                                "      <meta-data-field name=\"Fields\" value=\"\"/>\n"
                                "      <meta-data-field name=\"fields\" value=\"a,b\"/>\n"
                                "      <meta-data-field name=\"printf:T.F\" "
                                "value=\"&#37;05ld\"/>\n"
                                "      <meta-data-field name=\"units:T.F\" value=\"MB\"/>\n")));
}

TEST(XmlFormatterTest, Format_KeysAndValuesAreSanitised) {
    EXPECT_EQ(RenderWith<XmlFormatter>(Int(5), {{"header:<T>&", "'%\"Name\"%'"}}),
              Rendering(true, DocumentWithMetaData(
                                  "", "      <meta-data-field name=\"header:&lt;T&gt;&amp;\" "
                                      "value=\"&apos;&#37;&quot;Name&quot;&#37;&apos;\"/>\n")));
}

TEST(XmlFormatterTest, Format_StylesheetIsAnInstructionAndAParameter) {
    EXPECT_EQ(
        RenderWith<XmlFormatter>(Int(5), {{"stylesheet", "out.xsl"}}),
        Rendering(true, DocumentWithMetaData(
                            "<?xml-stylesheet type=\"text/xsl\" href=\"out.xsl\"?>\n",
                            "      <meta-data-field name=\"stylesheet\" value=\"out.xsl\"/>\n")));
}

TEST(XmlFormatterTest, Format_StylesheetIsNotEscapedInItsInstruction) {
    EXPECT_EQ(RenderWith<XmlFormatter>(Int(5), {{"stylesheet", "x?a=1&b='<%>\""}}),
              Rendering(true, DocumentWithMetaData(
                                  "<?xml-stylesheet type=\"text/xsl\" href=\"x?a=1&b='<%>\"\"?>\n",
                                  "      <meta-data-field name=\"stylesheet\" "
                                  "value=\"x?a=1&amp;b=&apos;&lt;&#37;&gt;&quot;\"/>\n")));
}

TEST(XmlFormatterTest, Format_EveryByteOfAStylesheetIsWrittenAsItIs) {
    for (int code = 0; code < 256; ++code) {
        const std::string sheet{'a', static_cast<char>(code)};
        EXPECT_EQ(
            RenderWith<XmlFormatter>(Int(5), {{"stylesheet", sheet}}),
            Rendering(true, DocumentWithMetaData(
                                "<?xml-stylesheet type=\"text/xsl\" href=\"" + sheet + "\"?>\n",
                                "      <meta-data-field name=\"stylesheet\" value=\"" +
                                    CppTools::AutoCli::SantizeString(sheet) + "\"/>\n")))
            << "byte " << code;
    }
}

TEST(XmlFormatterTest, Format_EmptyStylesheetCountsAsPresent) {
    EXPECT_EQ(RenderWith<XmlFormatter>(Int(5), {{"stylesheet", ""}}),
              Rendering(true, DocumentWithMetaData(
                                  "<?xml-stylesheet type=\"text/xsl\" href=\"\"?>\n",
                                  "      <meta-data-field name=\"stylesheet\" value=\"\"/>\n")));
}

TEST(XmlFormatterTest, Format_UnitsAndFieldsDoNotChangeTheValues) {
    const ParameterEntries entries{{"fields:T", "b"}, {"units:T.a", "MB"}};
    EXPECT_EQ(RenderWith<XmlFormatter>(Struct("T", {{"a", Int(1)}}), entries),
              Rendering(true, "<?xml version=\"1.0\"?>\n"
                              "<output xmlns:tandril=\"urn:corvane:tandril:output:1\">\n"
                              "   <meta-data>\n"
                              "      <meta-data-field name=\"fields:T\" value=\"b\"/>\n"
                              "      <meta-data-field name=\"units:T.a\" value=\"MB\"/>\n"
                              "   </meta-data>\n"
                              "   <root>\n"
                              "      <structure typeName=\"T\">\n"
                              "         <field name=\"a\">\n"
                              "            <integer>1</integer>\n"
                              "         </field>\n"
                              "      </structure>\n"
                              "   </root>\n"
                              "</output>\n"));
}

TEST(XmlFormatterTest, Format_DisplayDoesNotMatter) {
    const auto root = Texts({"a text that is wider than any of the displays here"});
    const auto unknown = RenderWith<XmlFormatter>(root);
    for (const std::uint16_t width : {std::uint16_t{1}, std::uint16_t{10}, std::uint16_t{65535}}) {
        EXPECT_EQ(RenderWith<XmlFormatter>(root, {}, width), unknown) << width;
    }
}

TEST(XmlFormatterTest, Format_KeepsNothingBetweenCalls) {
    XmlFormatter formatter;
    const auto first = TestSupport::Render(formatter, Int(5), {{"stylesheet", "x"}});
    EXPECT_EQ(TestSupport::Render(formatter, Int(5)),
              Rendering(true, DocumentOf("      <integer>5</integer>\n")));
    EXPECT_EQ(TestSupport::Render(formatter, Int(5), {{"stylesheet", "x"}}), first);
}

} // namespace
