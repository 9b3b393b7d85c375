#include <CppTools/autocli/plugins/XmlUtil.h>
#include <CppTools/metaobj/MetaBool.h>
#include <CppTools/metaobj/MetaInt.h>
#include <CppTools/metaobj/MetaList.h>
#include <CppTools/metaobj/MetaString.h>
#include <CppTools/metaobj/MetaStruct.h>

#include <gtest/gtest.h>
#include <tests/support/NamedRow.h>
#include <tests/support/Thrown.h>
#include <tests/support/XmlText.h>

#include <memory>
#include <string>
#include <vector>

namespace {

using CppTools::AutoCli::BuildMetaList;
using CppTools::AutoCli::BuildMetaStruct;
using CppTools::AutoCli::XmlUtil_BuildMetaObject;
using CppTools::AutoCli::XmlUtil_ParseXmlOutput;
using CppTools::MetaObj::MetaBool;
using CppTools::MetaObj::MetaInt;
using CppTools::MetaObj::MetaList;
using CppTools::MetaObj::MetaObject;
using CppTools::MetaObj::MetaString;
using CppTools::MetaObj::MetaStruct;
using CppTools::MetaObj::MetaType;
using TestSupport::kRowName;
using TestSupport::NamedRow;
using TestSupport::ThrownBy;
using TestSupport::XmlText;

std::shared_ptr<MetaObject> Built(const std::string& xml) {
    return XmlUtil_BuildMetaObject(XmlText(xml).Root());
}

struct ValueRow : NamedRow {
    std::string xml;
    MetaType kind;
    std::string text;
};

class XmlValueTest : public testing::TestWithParam<ValueRow> {};

TEST_P(XmlValueTest, BuildMetaObject_MakesTheValue) {
    const auto value = Built(GetParam().xml);
    ASSERT_NE(value, nullptr);
    EXPECT_EQ(value->GetType(), GetParam().kind);
    EXPECT_EQ(value->ToString(), GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(
    Strings, XmlValueTest,
    testing::Values(ValueRow{{"Text"}, "<string>some text</string>", MetaType::String, "some text"},
                    ValueRow{{"Empty"}, "<string/>", MetaType::String, ""},
                    ValueRow{
                        {"BlanksAreKept"}, "<string>  a\n</string>", MetaType::String, "  a\n"},
                    ValueRow{{"LastTextCounts"}, "<string>a<b/>c</string>", MetaType::String, "c"}),
    kRowName);

INSTANTIATE_TEST_SUITE_P(
    Integers, XmlValueTest,
    testing::Values(
        ValueRow{{"Plain"}, "<int>42</int>", MetaType::Int, "42"},
        ValueRow{{"Empty"}, "<int/>", MetaType::Int, "0"},
        ValueRow{{"Negative"}, "<int>-7</int>", MetaType::Int, "-7"},
        ValueRow{{"PlusSign"}, "<int>+7</int>", MetaType::Int, "7"},
        ValueRow{{"LeadingBlanksAndTrailingText"}, "<int> 42abc</int>", MetaType::Int, "42"},
        ValueRow{{"LeadingLineEnds"}, "<int>\n\t 5</int>", MetaType::Int, "5"},
        ValueRow{{"SecondNumberIsIgnored"}, "<int>1 2</int>", MetaType::Int, "1"},
        ValueRow{{"NoHexadecimal"}, "<int>0x10</int>", MetaType::Int, "0"},
        ValueRow{{"NoOctal"}, "<int>010</int>", MetaType::Int, "10"},
        ValueRow{{"NoFractions"}, "<int>3.9</int>", MetaType::Int, "3"},
        ValueRow{{"NoThousands"}, "<int>1,000</int>", MetaType::Int, "1"},
        ValueRow{
            {"Largest"}, "<int>9223372036854775807</int>", MetaType::Int, "9223372036854775807"},
        ValueRow{{"Smallest"},
                 "<int>-9223372036854775808</int>",
                 MetaType::Int,
                 "-9223372036854775808"}),
    kRowName);

INSTANTIATE_TEST_SUITE_P(
    Booleans, XmlValueTest,
    testing::Values(ValueRow{{"FalseWord"}, "<bool>false</bool>", MetaType::Bool, "false"},
                    ValueRow{{"FalseLetter"}, "<bool>f</bool>", MetaType::Bool, "false"},
                    ValueRow{{"FalseDigit"}, "<bool>0</bool>", MetaType::Bool, "false"},
                    ValueRow{{"TrueWord"}, "<bool>true</bool>", MetaType::Bool, "true"},
                    ValueRow{{"TrueDigit"}, "<bool>1</bool>", MetaType::Bool, "true"},
                    ValueRow{{"EmptyIsTrue"}, "<bool/>", MetaType::Bool, "true"},
                    ValueRow{{"CapitalLetterIsTrue"}, "<bool>F</bool>", MetaType::Bool, "true"},
                    ValueRow{{"CapitalWordIsTrue"}, "<bool>False</bool>", MetaType::Bool, "true"},
                    ValueRow{{"NoIsTrue"}, "<bool>no</bool>", MetaType::Bool, "true"},
                    ValueRow{{"BlankMakesItTrue"}, "<bool> false</bool>", MetaType::Bool, "true"},
                    ValueRow{{"TwoZerosAreTrue"}, "<bool>00</bool>", MetaType::Bool, "true"}),
    kRowName);

INSTANTIATE_TEST_SUITE_P(
    Lists, XmlValueTest,
    testing::Values(
        ValueRow{{"Integers"},
                 R"(<list type="int"><int>1</int><int>2</int></list>)",
                 MetaType::List,
                 "1, 2"},
        ValueRow{{"Strings"},
                 R"(<list type="string"><string>b</string><string>a</string></list>)",
                 MetaType::List,
                 "b, a"},
        ValueRow{{"Booleans"},
                 R"(<list type="bool"><bool>f</bool><bool/></list>)",
                 MetaType::List,
                 "false, true"},
        ValueRow{{"TextsAndCommentsBetween"},
                 "<list type=\"int\">\n <int>1</int> x <!-- c --><text/><int>2</int>\n</list>",
                 MetaType::List,
                 "1, 2"},
        ValueRow{{"OtherNodesBetween"},
                 R"(<list type="int"><![CDATA[x]]><int>1</int><?p x?><int>2</int></list>)",
                 MetaType::List,
                 "1, 2"},
        ValueRow{{"Structures"},
                 "<list type=\"structure\">"
                 "<structure typeName=\"A\"><field name=\"x\"><int>1</int></field></structure>"
                 "<structure typeName=\"A\"><field name=\"x\"><int>2</int></field></structure>"
                 "</list>",
                 MetaType::List,
                 "{'x' => '1', }, {'x' => '2', }"},
        ValueRow{{"EmptyInt"}, R"(<list type="int"/>)", MetaType::List, ""},
        ValueRow{{"EmptyStructure"}, R"(<list type="structure"/>)", MetaType::List, ""}),
    kRowName);

INSTANTIATE_TEST_SUITE_P(
    Structures, XmlValueTest,
    testing::Values(
        ValueRow{{"Fields"},
                 "<structure typeName=\"Disk\"><field name=\"size\"><int>5</int></field>"
                 "<field name=\"name\"><string>sda</string></field></structure>",
                 MetaType::Struct,
                 "{'name' => 'sda', 'size' => '5', }"},
        ValueRow{{"NoFields"}, R"(<structure typeName="Disk"/>)", MetaType::Struct, "{}"},
        ValueRow{{"FieldWithoutValueIsLeftOut"},
                 "<structure typeName=\"Disk\"><field name=\"a\"/><field name=\"b\"> text "
                 "<!-- c --></field><field name=\"c\"><int>1</int></field></structure>",
                 MetaType::Struct,
                 "{'c' => '1', }"},
        ValueRow{{"FirstElementOfAFieldCounts"},
                 "<structure typeName=\"Disk\"><field name=\"a\"> x <!-- c --><int>1</int>"
                 "<float>2</float></field></structure>",
                 MetaType::Struct,
                 "{'a' => '1', }"},
        ValueRow{{"OtherChildrenAreIgnored"},
                 "<structure typeName=\"Disk\">text<int>1</int><Field/><float/>"
                 "<field name=\"a\"><int>2</int></field></structure>",
                 MetaType::Struct,
                 "{'a' => '2', }"},
        ValueRow{{"LaterFieldOfANameReplaces"},
                 "<structure typeName=\"Disk\"><field name=\"a\"><int>1</int></field>"
                 "<field name=\"a\"><string>two</string></field></structure>",
                 MetaType::Struct,
                 "{'a' => 'two', }"},
        ValueRow{{"Nested"},
                 "<structure typeName=\"A\"><field name=\"b\"><structure typeName=\"B\">"
                 "<field name=\"list\"><list type=\"int\"><int>1</int><int>2</int></list></field>"
                 "</structure></field></structure>",
                 MetaType::Struct,
                 "{'b' => '{'list' => '1, 2', }', }"},
        ValueRow{{"FieldNamesAreFree"},
                 "<structure typeName=\"A\"><field name=\"two words_!\"><int>1</int></field>"
                 "</structure>",
                 MetaType::Struct,
                 "{'two words_!' => '1', }"}),
    kRowName);

struct RefusalRow : NamedRow {
    std::string xml;
    std::string message;
};

class XmlValueRefusalTest : public testing::TestWithParam<RefusalRow> {};

TEST_P(XmlValueRefusalTest, BuildMetaObject_Throws) {
    EXPECT_EQ(ThrownBy([] { Built(GetParam().xml); }), GetParam().message);
}

TEST_P(XmlValueRefusalTest, ParseXmlOutput_WrapsTheMessage) {
    EXPECT_EQ(
        ThrownBy([] { XmlUtil_ParseXmlOutput("<out>" + GetParam().xml + "</out>"); }),
        "Error parsing command output.  Unable to build a proper metaobject from output tag.  "
        "output must contain properly formatted tags of type bool, int, string, structure and "
        "list. Error was : " +
            GetParam().message);
}

const std::string kBadListType =
    "Invalid list type attribute.  Must be one of [string, int, bool, structure, list]";
const std::string kBadField = "Invalid <field> tag found.  <field> requires a 'name' attribute.";

INSTANTIATE_TEST_SUITE_P(
    Elements, XmlValueRefusalTest,
    testing::Values(RefusalRow{{"UnknownName"},
                               "<float>1</float>",
                               "Unable to make a MetaObject from a node with tag 'float'"},
                    RefusalRow{{"NamesAreCaseSensitive"},
                               "<Int>1</Int>",
                               "Unable to make a MetaObject from a node with tag 'Int'"},
                    RefusalRow{{"NameThatTheFormatterWritesForInt"},
                               "<integer>1</integer>",
                               "Unable to make a MetaObject from a node with tag 'integer'"},
                    RefusalRow{{"NameThatTheFormatterWritesForBool"},
                               "<boolean>1</boolean>",
                               "Unable to make a MetaObject from a node with tag 'boolean'"}),
    kRowName);

INSTANTIATE_TEST_SUITE_P(
    Integers, XmlValueRefusalTest,
    testing::Values(
        RefusalRow{{"Word"}, "<int>abc</int>", "Unable to read an int value from: 'abc'"},
        RefusalRow{{"Blank"}, "<int> </int>", "Unable to read an int value from: ' '"},
        RefusalRow{{"SignOnly"}, "<int>-</int>", "Unable to read an int value from: '-'"},
        RefusalRow{{"SignApart"}, "<int>- 1</int>", "Unable to read an int value from: '- 1'"},
        RefusalRow{{"Above"},
                   "<int>9223372036854775808</int>",
                   "Unable to read an int value from: '9223372036854775808'"},
        RefusalRow{{"Below"},
                   "<int>-9223372036854775809</int>",
                   "Unable to read an int value from: '-9223372036854775809'"}),
    kRowName);

INSTANTIATE_TEST_SUITE_P(
    Lists, XmlValueRefusalTest,
    testing::Values(
        RefusalRow{{"NoType"}, "<list><int>1</int></list>", kBadListType},
        RefusalRow{{"EmptyType"}, R"(<list type=""/>)", kBadListType},
        RefusalRow{{"UnknownType"}, R"(<list type="float"/>)", kBadListType},
        RefusalRow{{"TypesAreCaseSensitive"}, R"(<list type="Int"/>)", kBadListType},
        RefusalRow{{"NameThatTheFormatterWrites"}, R"(<list type="integer"/>)", kBadListType},
        RefusalRow{{"ListOfLists"}, R"(<list type="list"/>)", "Struct type expected for list."},
        RefusalRow{{"ListOfListsWithItem"},
                   R"(<list type="list"><list type="int"/></list>)",
                   "Struct type expected for list."},
        RefusalRow{{"ListOfListsWithABadFirstItem"},
                   R"(<list type="list"><float/></list>)",
                   "Unable to make a MetaObject from a node with tag 'float'"},
        RefusalRow{{"WrongScalar"},
                   R"(<list type="int"><int>1</int><string>a</string></list>)",
                   "Invalid type specificed in MetaList.  Expected object of type Int got object "
                   "of type String"},
        RefusalRow{{"BadItem"},
                   R"(<list type="int"><int>1</int><int>x</int></list>)",
                   "Unable to read an int value from: 'x'"},
        RefusalRow{{"ScalarAmongStructures"},
                   R"(<list type="structure"><int>1</int></list>)",
                   "Invalid type specificed in MetaList.  Expected object of type Struct got "
                   "object of type Int"},
        RefusalRow{{"SecondStructureLacksAField"},
                   "<list type=\"structure\"><structure typeName=\"A\"><field name=\"a\"><int/>"
                   "</field><field name=\"b\"><int/></field></structure><structure "
                   "typeName=\"A\"><field name=\"a\"><int/></field></structure></list>",
                   "Invalid structure detected by MetaList::Add.  Type Errors were: (3) : Mismatch "
                   "on number of fields set in struct. Expected 2 found 1, Missing field in input: "
                   "b, There was an error adding an item to this list.  The item being added did "
                   "not match the declared structure of this list, so it was not added., "},
        RefusalRow{
            {"SecondStructureHoldsAListOfAnotherShape"},
            "<list type=\"structure\"><structure typeName=\"A\"><field name=\"a\"><list "
            "type=\"structure\"><structure typeName=\"B\"><field name=\"x\"><int/></field>"
            "</structure></list></field></structure><structure typeName=\"A\"><field "
            "name=\"a\"><list type=\"structure\"><structure typeName=\"B\"><field name=\"y\">"
            "<int/></field></structure></list></field></structure></list>",
            "Invalid structure detected by MetaList::Add.  Type Errors were: (4) : Missing "
            "field in input: x, List type mismatch list and input, Type mismatch on field: "
            "a, There was an error adding an item to this list.  The item being added did "
            "not match the declared structure of this list, so it was not added., "}),
    kRowName);

INSTANTIATE_TEST_SUITE_P(
    Structures, XmlValueRefusalTest,
    testing::Values(
        RefusalRow{{"NoTypeName"}, "<structure/>", "Invalid name specified for MetaStruct: "},
        RefusalRow{{"BadTypeName"},
                   R"(<structure typeName="disk_info"/>)",
                   "Invalid name specified for MetaStruct: disk_info"},
        RefusalRow{{"FieldWithoutName"},
                   R"(<structure typeName="A"><field><int>1</int></field></structure>)",
                   kBadField},
        RefusalRow{{"FieldWithEmptyName"},
                   R"(<structure typeName="A"><field name=""><int>1</int></field></structure>)",
                   kBadField},
        RefusalRow{{"FieldWithNeitherNameNorValue"},
                   R"(<structure typeName="A"><field/></structure>)",
                   kBadField},
        RefusalRow{{"BadFieldValue"},
                   R"(<structure typeName="A"><field name="a"><float/></field></structure>)",
                   "Unable to make a MetaObject from a node with tag 'float'"}),
    kRowName);

TEST(XmlValueTest, BuildMetaObject_RefusesTextNodes) {
    const XmlText document("<o>text</o>");
    const std::string refusal = "Trying to make a meta object from a text field";
    EXPECT_EQ(ThrownBy([&] { XmlUtil_BuildMetaObject(document.FirstChild()); }), refusal);
    EXPECT_EQ(ThrownBy([] { Built("<text/>"); }), refusal);
}

TEST(XmlValueTest, BuildMetaObject_RefusesCommentNodes) {
    const XmlText document("<o><!-- comment --></o>");
    const std::string refusal = "Trying to make a meta object from a comment";
    EXPECT_EQ(ThrownBy([&] { XmlUtil_BuildMetaObject(document.FirstChild()); }), refusal);
    EXPECT_EQ(ThrownBy([] { Built("<comment/>"); }), refusal);
}

TEST(XmlValueTest, BuildMetaObject_RefusesNodesWithoutName) {
    const XmlText document("<o><![CDATA[1]]></o>");
    EXPECT_EQ(ThrownBy([&] { XmlUtil_BuildMetaObject(document.FirstChild()); }),
              "Unable to make a MetaObject from a node with tag ''");
}

TEST(XmlValueTest, BuildMetaObject_UsesTheSharedInstances) {
    EXPECT_EQ(Built("<int/>"), MetaInt::New());
    EXPECT_EQ(Built("<bool>f</bool>"), MetaBool::New(false));
    EXPECT_EQ(Built("<string/>"), MetaString::New());
}

TEST(XmlValueTest, BuildMetaList_KnowsItsElementKind) {
    EXPECT_EQ(BuildMetaList(XmlText(R"(<list type="string"/>)").Root())->GetListType(),
              MetaType::String);
    EXPECT_EQ(BuildMetaList(XmlText(R"(<list type="int"/>)").Root())->GetListType(), MetaType::Int);
    EXPECT_EQ(BuildMetaList(XmlText(R"(<list type="bool"/>)").Root())->GetListType(),
              MetaType::Bool);
    EXPECT_EQ(BuildMetaList(XmlText(R"(<list type="structure"/>)").Root())->GetListType(),
              MetaType::Struct);
}

TEST(XmlValueTest, BuildMetaList_StructuresTakeTheFirstItemAsTemplateAndContainIt) {
    const auto list = BuildMetaList(
        XmlText("<list type=\"structure\"><structure typeName=\"Disk\"><field name=\"size\">"
                "<int>5</int></field></structure></list>")
            .Root());
    ASSERT_EQ(list->GetCount(), 1U);
    ASSERT_NE(list->GetListStructure(), nullptr);
    EXPECT_EQ(list->GetListStructure()->GetTypeName(), "Disk");
    EXPECT_EQ(list->GetListStructure()->GetFieldNames(), std::vector<std::string>{"size"});
    EXPECT_EQ(list->GetItem(0)->ToString(), "{'size' => '5', }");
}

TEST(XmlValueTest, BuildMetaList_TheTemplateIsLockedAndTheFirstItemIsNot) {
    const auto list = BuildMetaList(
        XmlText("<list type=\"structure\"><structure typeName=\"Disk\"><field name=\"size\">"
                "<int>5</int></field></structure></list>")
            .Root());
    const auto item = std::dynamic_pointer_cast<MetaStruct>(list->GetItem(0));
    EXPECT_NO_THROW(item->SetField("more", 1));
    EXPECT_EQ(ThrownBy([&] { list->GetListStructure()->SetField("more", 1); }),
              "Unable to set new field more on structure. Structure has been locked");
}

TEST(XmlValueTest, BuildMetaList_TheTemplateSharesNoStructureWithTheFirstItem) {
    const auto list = BuildMetaList(
        XmlText("<list type=\"structure\"><structure typeName=\"A\"><field name=\"b\">"
                "<structure typeName=\"B\"/></field></structure></list>")
            .Root());
    const auto item = std::dynamic_pointer_cast<MetaStruct>(list->GetItem(0));
    std::dynamic_pointer_cast<MetaStruct>(item->GetField("b"))->SetField("more", 1);
    EXPECT_EQ(item->ToString(), "{'b' => '{'more' => '1', }', }");
    EXPECT_EQ(list->GetListStructure()->ToString(), "{'b' => '{}', }");
}

TEST(XmlValueTest, BuildMetaList_StructuresWithoutItemHaveNoTemplate) {
    EXPECT_EQ(BuildMetaList(XmlText(R"(<list type="structure"/>)").Root())->GetListStructure(),
              nullptr);
}

TEST(XmlValueTest, BuildMetaList_NestedTemplatesCostNoMoreThanTheirItems) {
    const int depth = 80;
    std::string xml = "<int>1</int>";
    for (int level = 0; level < depth; ++level) {
        xml = "<list type=\"structure\"><structure typeName=\"A\"><field name=\"a\">" + xml +
              "</field></structure></list>";
    }
    auto list = std::dynamic_pointer_cast<MetaList>(Built(xml));
    for (int level = 1; level < depth; ++level) {
        ASSERT_NE(list, nullptr) << "level " << level;
        ASSERT_EQ(list->GetCount(), 1U);
        const auto item = std::dynamic_pointer_cast<MetaStruct>(list->GetItem(0));
        list = std::dynamic_pointer_cast<MetaList>(item->GetField("a"));
    }
    EXPECT_EQ(list->ToString(), "{'a' => '1', }");
}

TEST(XmlValueTest, BuildMetaStruct_TakesItsTypeName) {
    EXPECT_EQ(BuildMetaStruct(XmlText(R"(<structure typeName="Disk2"/>)").Root())->GetTypeName(),
              "Disk2");
}

TEST(XmlValueTest, BuildMetaStruct_FieldsAreUndocumented) {
    const auto structure = BuildMetaStruct(
        XmlText("<structure typeName=\"A\"><field name=\"a\"><int/></field></structure>").Root());
    EXPECT_EQ(structure->GetFieldDocumentation("a"), "Documentation missing");
}

} // namespace
