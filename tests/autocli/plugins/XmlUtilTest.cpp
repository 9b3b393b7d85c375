#include <CppTools/autocli/plugins/XmlUtil.h>
#include <CppTools/metaobj/MetaInt.h>
#include <CppTools/metaobj/MetaString.h>

#include <gtest/gtest.h>
#include <tests/support/NamedRow.h>
#include <tests/support/StreamCapture.h>
#include <tests/support/Thrown.h>
#include <tests/support/XmlText.h>

#include <libxml/parser.h>
#include <string>
#include <unistd.h>

namespace {

using CppTools::AutoCli::XmlUtil_ExtractAttribute;
using CppTools::AutoCli::XmlUtil_FindChildNode;
using CppTools::AutoCli::XmlUtil_GetContent;
using CppTools::AutoCli::XmlUtil_GetContentForChildByTag;
using CppTools::AutoCli::XmlUtil_ParseXmlOutput;
using TestSupport::kRowName;
using TestSupport::StreamCapture;
using TestSupport::ThrownBy;
using TestSupport::XmlText;

struct TextRow : TestSupport::NamedRow {
    std::string xml;
    std::string text;
};

class AttributeTest : public testing::TestWithParam<TextRow> {};

TEST_P(AttributeTest, ExtractAttribute_GivesItsValue) {
    const XmlText document(GetParam().xml);
    EXPECT_EQ(XmlUtil_ExtractAttribute(document.Root(), "name"), GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(
    Attributes, AttributeTest,
    testing::Values(
        TextRow{{"Present"}, R"(<e name="value"/>)", "value"}, TextRow{{"Absent"}, "<e/>", ""},
        TextRow{{"Empty"}, R"(<e name=""/>)", ""},
        TextRow{{"NamesAreExact"}, R"(<e Name="a" names="b"/>)", ""},
        TextRow{{"AmongOthers"}, R"(<e a="1" name="2" z="3"/>)", "2"},
        TextRow{{"EscapesAreResolved"}, R"(<e name="a&lt;b &amp; &quot;c&quot;"/>)", "a<b & \"c\""},
        TextRow{{"BlanksAreKept"}, R"(<e name="  a  b "/>)", "  a  b "},
        TextRow{{"EntitiesAreResolved"},
                R"(<!DOCTYPE e [<!ENTITY x "two">]><e name="one &x; three"/>)",
                "one two three"},
        TextRow{{"OfTheDocumentType"},
                R"(<!DOCTYPE e [<!ATTLIST e name CDATA "given">]><e/>)",
                "given"},
        TextRow{{"OfTheElementItself"}, R"(<e><f name="inner"/></e>)", ""}),
    kRowName);

class ContentTest : public testing::TestWithParam<TextRow> {};

TEST_P(ContentTest, GetContent_IsThatOfTheLastChildThatHasOne) {
    const XmlText document(GetParam().xml);
    EXPECT_EQ(XmlUtil_GetContent(document.Root()), GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(
    Contents, ContentTest,
    testing::Values(
        TextRow{{"Text"}, "<e>value</e>", "value"}, TextRow{{"NoChild"}, "<e/>", ""},
        TextRow{{"EmptyPair"}, "<e></e>", ""},
        TextRow{{"BlanksAndLinesAreKept"}, "<e>\n a \n</e>", "\n a \n"},
        TextRow{{"EscapesAreResolved"}, "<e>a&lt;b &amp;&#32;c</e>", "a<b & c"},
        TextRow{{"Cdata"}, "<e><![CDATA[a<b]]></e>", "a<b"},
        TextRow{{"TextsAreNotJoined"}, "<e>one<f>inner</f>two</e>", "two"},
        TextRow{{"ElementsHaveNone"}, "<e>one<f>inner</f></e>", "one"},
        TextRow{{"OnlyAnElement"}, "<e><f>inner</f></e>", ""},
        TextRow{{"CommentBehindText"}, "<e>one<!-- two --></e>", " two "},
        TextRow{{"CommentBeforeText"}, "<e><!-- one -->two</e>", "two"},
        TextRow{{"InstructionBehindText"}, "<e>one<?tool two?></e>", "two"},
        TextRow{{"InstructionWithoutData"}, "<e>one<?tool?></e>", "one"},
        TextRow{{"CdataBehindText"}, "<e>one<![CDATA[two]]></e>", "two"},
        TextRow{{"EntityBehindText"}, "<!DOCTYPE e [<!ENTITY x \"two\">]><e>one&x;</e>", "two"},
        TextRow{{"TextBehindAnEntity"}, "<!DOCTYPE e [<!ENTITY x \"one\">]><e>&x;two</e>", "two"}),
    kRowName);

class ChildContentTest : public testing::TestWithParam<TextRow> {};

TEST_P(ChildContentTest, GetContentForChildByTag_GivesTheTextOfTheOneChild) {
    const XmlText document(GetParam().xml);
    EXPECT_EQ(XmlUtil_GetContentForChildByTag(document.Root(), "tag"), GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(
    Children, ChildContentTest,
    testing::Values(TextRow{{"Found"}, "<e><tag>value</tag></e>", "value"},
                    TextRow{{"Missing"}, "<e><other>value</other></e>", ""},
                    TextRow{{"NoChildren"}, "<e/>", ""}, TextRow{{"Empty"}, "<e><tag/></e>", ""},
                    TextRow{{"NamesAreExact"}, "<e><Tag>a</Tag><tags>b</tags></e>", ""},
                    TextRow{{"AmongOthers"}, "<e>x<a>1</a> <tag>2</tag><!-- --><z>3</z></e>", "2"},
                    TextRow{{"DirectChildrenOnly"}, "<e><in><tag>value</tag></in></e>", ""},
                    TextRow{{"NotTheElementItself"}, "<tag>value</tag>", ""},
                    TextRow{{"RepeatOfAnEmptyOne"}, "<e><tag/><tag>later</tag></e>", "later"},
                    TextRow{{"TwoEmptyOnes"}, "<e><tag/><tag/></e>", ""},
                    TextRow{
                        {"SeveralEmptyOnesFirst"}, "<e><tag/><tag/><tag>last</tag></e>", "last"}),
    kRowName);

class RepeatedChildTest : public testing::TestWithParam<TextRow> {};

TEST_P(RepeatedChildTest, GetContentForChildByTag_RefusesARepeatOfOneWithText) {
    const XmlText document(GetParam().xml);
    EXPECT_EQ(ThrownBy([&] { XmlUtil_GetContentForChildByTag(document.Root(), "tag"); }),
              "Illegal Duplicate tags found.  The tag tag was expected only once, but was found "
              "multiple times.");
}

INSTANTIATE_TEST_SUITE_P(
    Children, RepeatedChildTest,
    testing::Values(TextRow{{"TwoTexts"}, "<e><tag>a</tag><tag>b</tag></e>", ""},
                    TextRow{{"SameText"}, "<e><tag>a</tag><tag>a</tag></e>", ""},
                    TextRow{{"EmptyBehindText"}, "<e><tag>a</tag><tag/></e>", ""},
                    TextRow{{"EmptyAroundText"}, "<e><tag/><tag>a</tag><tag/></e>", ""},
                    TextRow{{"OthersBetween"}, "<e><tag>a</tag><b/> <tag>b</tag></e>", ""}),
    kRowName);

TEST(XmlUtilTest, FindChildNode_GivesTheOneChildOfTheName) {
    const XmlText document("<e>text<a id=\"1\"/><tag id=\"2\"/><!-- c --><z id=\"3\"/></e>");
    auto* const found = XmlUtil_FindChildNode(document.Root(), "tag");
    ASSERT_NE(found, nullptr);
    EXPECT_EQ(XmlUtil_ExtractAttribute(found, "id"), "2");
}

TEST(XmlUtilTest, FindChildNode_MissingIsNull) {
    EXPECT_EQ(XmlUtil_FindChildNode(XmlText("<e/>").Root(), "tag"), nullptr);
    EXPECT_EQ(XmlUtil_FindChildNode(XmlText("<e><other/>tag</e>").Root(), "tag"), nullptr);
}

TEST(XmlUtilTest, FindChildNode_NamesAreExact) {
    const XmlText document("<e><Tag/><tags/><ta/></e>");
    EXPECT_EQ(XmlUtil_FindChildNode(document.Root(), "tag"), nullptr);
}

TEST(XmlUtilTest, FindChildNode_LooksAtDirectChildrenOnly) {
    const XmlText document("<tag><in><tag/></in></tag>");
    EXPECT_EQ(XmlUtil_FindChildNode(document.Root(), "tag"), nullptr);
}

TEST(XmlUtilTest, FindChildNode_RefusesASecondOne) {
    const std::string refusal = "More than one instance of tag found, expected only one.";
    EXPECT_EQ(ThrownBy([] { XmlUtil_FindChildNode(XmlText("<e><tag/><tag/></e>").Root(), "tag"); }),
              refusal);
    EXPECT_EQ(ThrownBy([] {
                  XmlUtil_FindChildNode(XmlText("<e><tag>a</tag> <b/><tag/></e>").Root(), "tag");
              }),
              refusal);
}

class DocumentValueTest : public testing::TestWithParam<TextRow> {};

TEST_P(DocumentValueTest, ParseXmlOutput_GivesTheFirstElementBelowTheRoot) {
    const auto value = XmlUtil_ParseXmlOutput(GetParam().xml);
    ASSERT_NE(value, nullptr);
    EXPECT_EQ(value->ToString(), GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(
    Documents, DocumentValueTest,
    testing::Values(
        TextRow{{"AnyRootName"}, "<Whatever-name><int>42</int></Whatever-name>", "42"},
        TextRow{{"RootNamedLikeAValue"}, "<string><int>42</int></string>", "42"},
        TextRow{{"LeadingBlankAndTrailingText"}, "<output><int> 42abc</int></output>", "42"},
        TextRow{{"Declaration"},
                "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<o>\n <int>1</int>\n</o>\n",
                "1"},
        TextRow{{"FurtherElementsAreIgnored"}, "<o><int>1</int><int>2</int></o>", "1"},
        TextRow{{"FurtherElementsAreNotRead"}, "<o><int>1</int><float>x</float></o>", "1"},
        TextRow{{"TextBefore"}, "<o>some text <int>3</int></o>", "3"},
        TextRow{{"CommentBefore"}, "<o><!-- <int>1</int> --><int>4</int></o>", "4"},
        TextRow{{"CdataBefore"}, "<o><![CDATA[<int>1</int>]]><int>5</int></o>", "5"},
        TextRow{{"InstructionBefore"}, "<o><?int 1?><int>6</int></o>", "6"},
        TextRow{{"EntityBefore"}, "<!DOCTYPE o [<!ENTITY e \"text\">]><o>&e;<int>7</int></o>", "7"},
        TextRow{{"ElementsNamedTextAndComment"}, "<o><text/><comment/><int>8</int></o>", "8"},
        TextRow{{"OtherEncoding"},
                "<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?><o><string>\xE9</string></o>",
                "\xC3\xA9"},
        TextRow{{"TextAndCdataAreTwoPieces"}, "<o><string>a<![CDATA[b]]></string></o>", "b"},
        TextRow{{"TextAndEntityAreTwoPieces"},
                "<!DOCTYPE o [<!ENTITY e \"b\">]><o><string>a&e;</string></o>",
                "b"},
        TextRow{{"EscapesInText"}, "<o><string>a &lt; b &amp; c</string></o>", "a < b & c"}),
    kRowName);

class EmptyDocumentTest : public testing::TestWithParam<TextRow> {};

TEST_P(EmptyDocumentTest, ParseXmlOutput_GivesNothing) {
    EXPECT_EQ(XmlUtil_ParseXmlOutput(GetParam().xml), nullptr);
}

INSTANTIATE_TEST_SUITE_P(
    Documents, EmptyDocumentTest,
    testing::Values(TextRow{{"EmptyRoot"}, "<o/>", ""}, TextRow{{"EmptyPair"}, "<o></o>", ""},
                    TextRow{{"TextOnly"}, "<o>just text</o>", ""},
                    TextRow{{"CommentOnly"}, "<o><!-- nothing --></o>", ""},
                    TextRow{{"NoText"}, "", ""}, TextRow{{"NoXml"}, "plain words", ""},
                    TextRow{{"Blanks"}, " \n", ""}, TextRow{{"Truncated"}, "<o><int>1</int>", ""},
                    TextRow{{"TwoRoots"}, "<o><int>1</int></o><o/>", ""},
                    TextRow{{"TextBehindTheRoot"}, "<o><int>1</int></o>done", ""},
                    TextRow{{"ErrorLineFirst"}, "note\n<o><int>1</int></o>", ""}),
    kRowName);

TEST(XmlUtilTest, ParseXmlOutput_DeeperThanTheXmlReaderGoesGivesNothing) {
    const auto nested = [](int depth) {
        std::string text;
        for (int level = 0; level < depth; ++level) {
            text = "<e>" + text + "</e>";
        }
        return "<o><structure typeName=\"A\">" + text + "</structure></o>";
    };
    EXPECT_NE(XmlUtil_ParseXmlOutput(nested(200)), nullptr);
    EXPECT_EQ(XmlUtil_ParseXmlOutput(nested(300)), nullptr);
}

TEST(XmlUtilTest, ParseXmlOutput_WhatTheXmlReaderComplainsAboutIsShownUnderTheNameOfTheStream) {
    const std::string text = "<o><int>1</o>";
    StreamCapture expected(STDERR_FILENO);
    EXPECT_EQ(xmlReadMemory(text.data(), static_cast<int>(text.size()), "STDOUT", nullptr, 0),
              nullptr);
    const std::string complaint = expected.Take();
    EXPECT_EQ(complaint.substr(0, 9), "STDOUT:1:");
    StreamCapture standardError(STDERR_FILENO);
    XmlUtil_ParseXmlOutput(text);
    EXPECT_EQ(standardError.Take(), complaint);
}

TEST(XmlUtilTest, ParseXmlOutput_WrapsWhatTheElementIsRefusedFor) {
    EXPECT_EQ(
        ThrownBy([] { XmlUtil_ParseXmlOutput("<o><float>1</float></o>"); }),
        "Error parsing command output.  Unable to build a proper metaobject from output tag.  "
        "output must contain properly formatted tags of type bool, int, string, structure and "
        "list. Error was : Unable to make a MetaObject from a node with tag 'float'");
}

} // namespace
