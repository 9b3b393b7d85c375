#include <CppTools/autocli/formatters/FieldText.h>
#include <CppTools/autocli/formatters/FormatParameters.h>
#include <CppTools/metaobj/MetaBool.h>
#include <CppTools/metaobj/MetaInt.h>
#include <CppTools/metaobj/MetaList.h>
#include <CppTools/metaobj/MetaString.h>
#include <CppTools/metaobj/MetaStruct.h>

#include <tests/support/ImpostorValue.h>
#include <tests/support/NamedRow.h>
#include <tests/support/Rendering.h>

#include <gtest/gtest.h>

#include <cerrno>
#include <limits>
#include <memory>
#include <string>
#include <system_error>
#include <vector>

namespace {

using CppTools::AutoCli::AutoCli_FormatField;
using CppTools::AutoCli::FormatParameters;
using CppTools::AutoCli::GetIndent;
using CppTools::AutoCli::GetStringField;
using CppTools::AutoCli::GetSubField;
using CppTools::MetaObj::MetaBool;
using CppTools::MetaObj::MetaInt;
using CppTools::MetaObj::MetaList;
using CppTools::MetaObj::MetaObject;
using CppTools::MetaObj::MetaString;
using CppTools::MetaObj::MetaStruct;
using CppTools::MetaObj::MetaType;
using TestSupport::kRowName;
using TestSupport::ParameterEntries;
using TestSupport::ParametersOf;

struct IndentCase : TestSupport::NamedRow {
    int level;
    std::size_t columns;
};

class GetIndentTest : public testing::TestWithParam<IndentCase> {};

TEST_P(GetIndentTest, EachLevelFromOneIsThreeBlanks) {
    EXPECT_EQ(GetIndent(GetParam().level), std::string(GetParam().columns, ' '));
}

INSTANTIATE_TEST_SUITE_P(Levels, GetIndentTest,
                         testing::Values(IndentCase{{"Lowest"}, std::numeric_limits<int>::min(), 0},
                                         IndentCase{{"MinusOne"}, -1, 0},
                                         IndentCase{{"Zero"}, 0, 0}, IndentCase{{"One"}, 1, 3},
                                         IndentCase{{"Two"}, 2, 6}, IndentCase{{"Seven"}, 7, 21},
                                         IndentCase{{"Thousand"}, 1000, 3000}),
                         kRowName);

std::shared_ptr<MetaStruct> MakeStructOfEveryKind() {
    const auto st = MetaStruct::New("Every");
    st->SetField("text", "words and blanks");
    st->SetField("empty", "");
    st->SetField("int", 5);
    st->SetField("bool", true);
    st->SetField("list", std::vector<std::string>{"a", "b"});
    st->SetField("struct", MetaStruct::New("Inner"));
    return st;
}

TEST(GetStringFieldTest, StringField_IsItsValue) {
    EXPECT_EQ(GetStringField(MakeStructOfEveryKind(), "text"), "words and blanks");
    EXPECT_EQ(GetStringField(MakeStructOfEveryKind(), "empty"), "");
}

TEST(GetStringFieldTest, AbsentField_IsEmpty) {
    EXPECT_EQ(GetStringField(MakeStructOfEveryKind(), "nothing"), "");
    EXPECT_EQ(GetStringField(MakeStructOfEveryKind(), "Text"), "");
}

TEST(GetStringFieldTest, FieldOfAnotherKind_IsEmpty) {
    for (const char* name : {"int", "bool", "list", "struct"}) {
        EXPECT_EQ(GetStringField(MakeStructOfEveryKind(), name), "") << name;
    }
}

TEST(GetStringFieldTest, FieldThatOnlyClaimsToBeAString_IsEmpty) {
    const auto st = MetaStruct::New("T");
    st->SetField("text", TestSupport::ImpostorValue::New(MetaType::String));
    EXPECT_EQ(GetStringField(st, "text"), "");
}

TEST(GetStringFieldTest, NoStructure_IsEmpty) {
    EXPECT_EQ(GetStringField(nullptr, "text"), "");
}

TEST(GetStringFieldTest, Name_IsNoPath) {
    const auto inner = MetaStruct::New("Inner");
    inner->SetField("x", "deep");
    const auto st = MetaStruct::New("Outer");
    st->SetField("a", inner);
    st->SetField("a.b", "flat");
    EXPECT_EQ(GetStringField(st, "a.x"), "");
    EXPECT_EQ(GetStringField(st, "a.b"), "flat");
}

/// Fields that say where they are: x in the root, in a, and in a.b.
std::shared_ptr<MetaStruct> MakeNested() {
    const auto inmost = MetaStruct::New("Inmost");
    inmost->SetField("x", "a.b.x");
    inmost->SetField("only-in-b", "a.b.only-in-b");
    const auto inner = MetaStruct::New("Inner");
    inner->SetField("b", inmost);
    inner->SetField("x", "a.x");
    inner->SetField("only-in-a", "a.only-in-a");
    inner->SetField("", "a.");
    inner->SetField("number", 5);
    const auto root = MetaStruct::New("Root");
    root->SetField("a", inner);
    root->SetField("x", "x");
    root->SetField("only-in-root", "only-in-root");
    root->SetField("", "empty name");
    root->SetField("number", 7);
    root->SetField("list", std::vector<std::string>{"x"});
    root->SetField("dotted.name", "never reached");
    return root;
}

struct PathCase : TestSupport::NamedRow {
    std::string path;
    std::string text; ///< The plain text of the field, "<empty>" for an empty pointer.
};

class GetSubFieldTest : public testing::TestWithParam<PathCase> {};

TEST_P(GetSubFieldTest, PathLeadsToTheField) {
    const auto field = GetSubField(MakeNested(), GetParam().path);
    EXPECT_EQ(field ? field->ToString() : "<empty>", GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(Plain, GetSubFieldTest,
                         testing::Values(PathCase{{"Name"}, "x", "x"},
                                         PathCase{{"AbsentName"}, "nothing", "<empty>"},
                                         PathCase{{"CaseMatters"}, "X", "<empty>"},
                                         PathCase{{"NothingIsTrimmed"}, " x", "<empty>"},
                                         PathCase{{"EmptyName"}, "", "empty name"}),
                         kRowName);

INSTANTIATE_TEST_SUITE_P(
    Dotted, GetSubFieldTest,
    testing::Values(
        PathCase{{"OneStep"}, "a.x", "a.x"}, PathCase{{"TwoSteps"}, "a.b.x", "a.b.x"},
        PathCase{{"LastIsAStructure"}, "a.b", "{'only-in-b' => 'a.b.only-in-b', 'x' => 'a.b.x', }"},
        PathCase{{"LastIsAbsent"}, "a.only-in-root", "<empty>"},
        PathCase{{"LastIsAbsentDeeper"}, "a.b.only-in-a", "<empty>"},
        PathCase{{"FirstIsAbsent"}, "nothing.x", "x"},
        PathCase{{"FirstIsAbsentThenDown"}, "nothing.a.x", "a.x"},
        PathCase{{"InnerIsAbsent"}, "a.nothing.only-in-a", "a.only-in-a"},
        PathCase{{"SeveralInnerAreAbsent"}, "a.no.no.b.no.x", "a.b.x"},
        PathCase{{"AllAreAbsent"}, "no.nothing", "<empty>"},
        PathCase{{"FieldWithADotInItsName"}, "dotted.name", "<empty>"}),
    kRowName);

INSTANTIATE_TEST_SUITE_P(EmptyParts, GetSubFieldTest,
                         testing::Values(PathCase{{"Trailing"}, "a.", "a."},
                                         PathCase{{"TrailingAbsent"}, "a.b.", "<empty>"},
                                         PathCase{{"InnerAbsent"}, "a.b..x", "a.b.x"},
                                         PathCase{{"InnerIsNoStructure"}, "a..x", "<empty>"},
                                         PathCase{{"LeadingIsNoStructure"}, ".x", "<empty>"},
                                         PathCase{{"Dot"}, ".", "<empty>"}),
                         kRowName);

INSTANTIATE_TEST_SUITE_P(
    ThroughNoStructure, GetSubFieldTest,
    testing::Values(PathCase{{"Integer"}, "number.x", "<empty>"},
                    PathCase{{"String"}, "x.x", "<empty>"}, PathCase{{"List"}, "list.x", "<empty>"},
                    PathCase{{"ListByIndex"}, "list.0", "<empty>"},
                    PathCase{{"Deeper"}, "a.number.only-in-a", "<empty>"},
                    PathCase{{"WithAbsentPartsBehind"}, "number.nothing.only-in-root", "<empty>"}),
    kRowName);

TEST(GetSubFieldSharingTest, ResultIsTheFieldsOwnObject) {
    const auto root = MakeNested();
    EXPECT_EQ(GetSubField(root, "a"), root->GetField("a"));
}

TEST(GetSubFieldSharingTest, NoByteButTheDotPartsAName) {
    for (int byte = 0; byte < 256; ++byte) {
        if (byte == '.') {
            continue;
        }
        const std::string name{'a', static_cast<char>(byte), 'b'};
        const auto root = MetaStruct::New("Root");
        root->SetField(name, "whole");
        root->SetField("b", "part");
        EXPECT_EQ(GetSubField(root, name), root->GetField(name)) << byte;
    }
}

TEST(GetSubFieldSharingTest, NoStructure_HasNoFields) {
    for (const char* path : {"", "a", "a.x", "."}) {
        EXPECT_EQ(GetSubField(nullptr, path), nullptr) << path;
    }
}

TEST(GetSubFieldSharingTest, WithoutTheFirstPart_TheLastIsLookedUpInTheRootItself) {
    const auto st = MetaStruct::New("Disk");
    st->SetField("x", "own");
    EXPECT_EQ(GetSubField(st, "a.x"), st->GetField("x"));
    EXPECT_EQ(GetSubField(st, "a.y"), nullptr);
}

using Value = std::shared_ptr<MetaObject>;

Value MakeList() {
    const auto list = MetaList::New(MetaType::String);
    list->Add("a");
    list->Add("b");
    return list;
}

Value MakeStruct() {
    const auto st = MetaStruct::New("Inner");
    st->SetField("a", 1);
    return st;
}

std::string FormatField(const Value& value, const ParameterEntries& entries) {
    FormatParameters params = ParametersOf(entries);
    return AutoCli_FormatField("T", "F", value, params);
}

struct FieldCase : TestSupport::NamedRow {
    Value value;
    ParameterEntries entries;
    std::string text;
};

class FormatFieldTest : public testing::TestWithParam<FieldCase> {};

TEST_P(FormatFieldTest, TextFollowsValueAndParameters) {
    EXPECT_EQ(FormatField(GetParam().value, GetParam().entries), GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(PlainText, FormatFieldTest,
                         testing::Values(FieldCase{{"Integer"}, MetaInt::New(-42), {}, "-42"},
                                         FieldCase{{"True"}, MetaBool::New(true), {}, "true"},
                                         FieldCase{{"False"}, MetaBool::New(false), {}, "false"},
                                         FieldCase{{"String"}, MetaString::New("a b"), {}, "a b"},
                                         FieldCase{{"EmptyString"}, MetaString::New(), {}, ""},
                                         FieldCase{{"List"}, MakeList(), {}, "a, b"},
                                         FieldCase{
                                             {"Structure"}, MakeStruct(), {}, "{'a' => '1', }"},
                                         FieldCase{{"Nothing"}, nullptr, {}, "NULL Object"}),
                         kRowName);

INSTANTIATE_TEST_SUITE_P(
    Units, FormatFieldTest,
    testing::Values(
        FieldCase{{"Integer"}, MetaInt::New(10), {{"units:T.F", "MB"}}, "10 MB"},
        FieldCase{{"Bool"}, MetaBool::New(true), {{"units:T.F", "MB"}}, "true MB"},
        FieldCase{{"String"}, MetaString::New("a b"), {{"units:T.F", "MB"}}, "a b MB"},
        FieldCase{{"EmptyString"}, MetaString::New(), {{"units:T.F", "MB"}}, " MB"},
        FieldCase{{"List"}, MakeList(), {{"units:T.F", "MB"}}, "a, b MB"},
        FieldCase{{"Structure"}, MakeStruct(), {{"units:T.F", "MB"}}, "{'a' => '1', } MB"},
        FieldCase{{"Nothing"}, nullptr, {{"units:T.F", "MB"}}, "NULL Object"},
        FieldCase{{"EmptyUnitsStillAddTheBlank"}, MetaInt::New(10), {{"units:T.F", ""}}, "10 "},
        FieldCase{{"UnitsAreNoFormat"}, MetaInt::New(10), {{"units:T.F", "%d %s"}}, "10 %d %s"}),
    kRowName);

INSTANTIATE_TEST_SUITE_P(
    KeysThatDoNotApply, FormatFieldTest,
    testing::Values(
        FieldCase{
            {"OtherType"}, MetaInt::New(1), {{"units:U.F", "MB"}, {"printf:U.F", "%ld!"}}, "1"},
        FieldCase{
            {"OtherField"}, MetaInt::New(1), {{"units:T.G", "MB"}, {"printf:T.G", "%ld!"}}, "1"},
        FieldCase{
            {"OtherCase"}, MetaInt::New(1), {{"units:t.f", "MB"}, {"Printf:T.F", "%ld!"}}, "1"},
        FieldCase{
            {"ColonForDot"}, MetaInt::New(1), {{"units:T:F", "MB"}, {"printf:T:F", "%ld!"}}, "1"},
        FieldCase{{"NoType"}, MetaInt::New(1), {{"units", "MB"}, {"printf:F", "%ld!"}}, "1"}),
    kRowName);

INSTANTIATE_TEST_SUITE_P(
    PrintfInteger, FormatFieldTest,
    testing::Values(
        FieldCase{{"Padded"}, MetaInt::New(42), {{"printf:T.F", "%05ld"}}, "00042"},
        FieldCase{{"SixtyFourBits"},
                  MetaInt::New(std::numeric_limits<long>::min()),
                  {{"printf:T.F", "%ld"}},
                  "-9223372036854775808"},
        FieldCase{{"Hexadecimal"}, MetaInt::New(255), {{"printf:T.F", "0x%lx"}}, "0xff"},
        FieldCase{{"TextAround"}, MetaInt::New(42), {{"printf:T.F", "<%ld%%>"}}, "<42%>"},
        FieldCase{{"NoConversion"}, MetaInt::New(42), {{"printf:T.F", "hidden"}}, "hidden"},
        FieldCase{{"EmptyFormat"}, MetaInt::New(42), {{"printf:T.F", ""}}, ""},
        FieldCase{{"WithUnits"},
                  MetaInt::New(42),
                  {{"printf:T.F", "%05ld"}, {"units:T.F", "MB"}},
                  "00042 MB"},
        FieldCase{{"EmptyFormatWithUnits"},
                  MetaInt::New(42),
                  {{"printf:T.F", ""}, {"units:T.F", "MB"}},
                  " MB"}),
    kRowName);

INSTANTIATE_TEST_SUITE_P(
    PrintfBool, FormatFieldTest,
    testing::Values(FieldCase{{"True"}, MetaBool::New(true), {{"printf:T.F", "%d"}}, "1"},
                    FieldCase{{"False"}, MetaBool::New(false), {{"printf:T.F", "%d"}}, "0"},
                    FieldCase{{"Padded"}, MetaBool::New(true), {{"printf:T.F", "[%3d]"}}, "[  1]"},
                    FieldCase{{"WithUnits"},
                              MetaBool::New(false),
                              {{"printf:T.F", "%d"}, {"units:T.F", "on"}},
                              "0 on"}),
    kRowName);

INSTANTIATE_TEST_SUITE_P(
    PrintfString, FormatFieldTest,
    testing::Values(
        FieldCase{{"Whole"}, MetaString::New("sda"), {{"printf:T.F", "/dev/%s"}}, "/dev/sda"},
        FieldCase{{"Padded"}, MetaString::New("sda"), {{"printf:T.F", "%-5s|"}}, "sda  |"},
        FieldCase{{"Cut"}, MetaString::New("sda"), {{"printf:T.F", "%.2s"}}, "sd"},
        FieldCase{{"Empty"}, MetaString::New(), {{"printf:T.F", "[%s]"}}, "[]"},
        FieldCase{{"PercentSignsOfTheValueStay"},
                  MetaString::New("%d %s %n"),
                  {{"printf:T.F", "%s"}},
                  "%d %s %n"},
        FieldCase{{"EndsAtItsFirstNul"},
                  MetaString::New(std::string("ab\0cd", 5)),
                  {{"printf:T.F", "<%s>"}},
                  "<ab>"},
        FieldCase{{"WithUnits"},
                  MetaString::New("sda"),
                  {{"printf:T.F", "%s,"}, {"units:T.F", "disk"}},
                  "sda, disk"}),
    kRowName);

INSTANTIATE_TEST_SUITE_P(
    PrintfCompound, FormatFieldTest,
    testing::Values(
        FieldCase{{"List"}, MakeList(), {{"printf:T.F", "%s"}}, ""},
        FieldCase{{"ListWithTextInTheFormat"}, MakeList(), {{"printf:T.F", "text"}}, ""},
        FieldCase{
            {"ListWithUnits"}, MakeList(), {{"printf:T.F", "%s"}, {"units:T.F", "MB"}}, " MB"},
        FieldCase{{"Structure"}, MakeStruct(), {{"printf:T.F", "%s"}}, ""},
        FieldCase{{"StructureWithUnits"},
                  MakeStruct(),
                  {{"printf:T.F", "%s"}, {"units:T.F", "MB"}},
                  " MB"},
        FieldCase{{"OfNoKnownKind"},
                  TestSupport::ImpostorValue::New(TestSupport::kUnknownKind),
                  {{"printf:T.F", "text"}, {"units:T.F", "MB"}},
                  " MB"},
        FieldCase{{"Nothing"}, nullptr, {{"printf:T.F", "%s"}}, "NULL Object"}),
    kRowName);

// The room is the format's length, the plain text's length and 65 bytes, the final NUL included.
INSTANTIATE_TEST_SUITE_P(PrintfTruncated, FormatFieldTest,
                         testing::Values(FieldCase{{"Integer"},
                                                   MetaInt::New(7),
                                                   {{"printf:T.F", "%-400ld"}},
                                                   "7" + std::string(7 + 1 + 64 - 1, ' ')},
                                         FieldCase{{"LongerInteger"},
                                                   MetaInt::New(1234567),
                                                   {{"printf:T.F", "%-400ld"}},
                                                   "1234567" + std::string(7 + 7 + 64 - 7, ' ')},
                                         FieldCase{{"True"},
                                                   MetaBool::New(true),
                                                   {{"printf:T.F", "%-400d"}},
                                                   "1" + std::string(6 + 4 + 64 - 1, ' ')},
                                         FieldCase{{"False"},
                                                   MetaBool::New(false),
                                                   {{"printf:T.F", "%-400d"}},
                                                   "0" + std::string(6 + 5 + 64 - 1, ' ')},
                                         FieldCase{{"String"},
                                                   MetaString::New("sda"),
                                                   {{"printf:T.F", "%-400s"}},
                                                   "sda" + std::string(6 + 3 + 64 - 3, ' ')},
                                         FieldCase{{"LastThatFits"},
                                                   MetaInt::New(7),
                                                   {{"printf:T.F", "%-72ld"}},
                                                   "7" + std::string(6 + 1 + 64 - 1, ' ')},
                                         FieldCase{{"WithUnits"},
                                                   MetaInt::New(7),
                                                   {{"printf:T.F", "%400ld"}, {"units:T.F", "MB"}},
                                                   std::string(6 + 1 + 64, ' ') + " MB"}),
                         kRowName);

TEST(FormatFieldFailureTest, FormatThatFails_IsReportedInTheText) {
    EXPECT_EQ(FormatField(MetaInt::New(42), {{"printf:T.F", "%2147483648ld"}}),
              "Error while handling formatting parameter printf:T.F.  Unable to format field: " +
                  std::generic_category().message(EOVERFLOW));
}

TEST(FormatFieldFailureTest, FormatThatFails_LeavesOutTheUnits) {
    EXPECT_EQ(
        FormatField(MetaString::New("sda"), {{"printf:T.F", "%2147483648s"}, {"units:T.F", "MB"}}),
        "Error while handling formatting parameter printf:T.F.  Unable to format field: " +
            std::generic_category().message(EOVERFLOW));
}

TEST(FormatFieldFailureTest, FormatThatFails_NamesTheKeyOfTypeAndField) {
    FormatParameters params = ParametersOf({{"printf:ScsiDevice.Size of it", "%2147483648d"}});
    EXPECT_EQ(AutoCli_FormatField("ScsiDevice", "Size of it", MetaBool::New(true), params),
              "Error while handling formatting parameter printf:ScsiDevice.Size of it.  Unable to "
              "format field: " +
                  std::generic_category().message(EOVERFLOW));
}

TEST(FormatFieldKeysTest, KeyIsTypeNameDotFieldName) {
    FormatParameters params =
        ParametersOf({{"printf:ScsiDevice.a.Size", "%ld,"}, {"units:ScsiDevice.a.Size", "MB"}});
    EXPECT_EQ(AutoCli_FormatField("ScsiDevice", "a.Size", MetaInt::New(10), params), "10, MB");
    EXPECT_EQ(AutoCli_FormatField("ScsiDevice", "Size", MetaInt::New(10), params), "10");
    EXPECT_EQ(AutoCli_FormatField("Scsi", "Size", MetaInt::New(10), params), "10");
}

TEST(FormatFieldKeysTest, ParametersStayAsTheyWere) {
    FormatParameters params = ParametersOf({{"fields", "a"}});
    AutoCli_FormatField("T", "F", MetaInt::New(10), params);
    EXPECT_EQ(params.GetParameters(), ParametersOf({{"fields", "a"}}).GetParameters());
}

} // namespace
