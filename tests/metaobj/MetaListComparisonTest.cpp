#include <CppTools/metaobj/MetaBool.h>
#include <CppTools/metaobj/MetaInt.h>
#include <CppTools/metaobj/MetaList.h>
#include <CppTools/metaobj/MetaString.h>
#include <CppTools/metaobj/MetaStruct.h>

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "tests/support/ImpostorValue.h"

namespace {

using CppTools::MetaObj::MetaBool;
using CppTools::MetaObj::MetaInt;
using CppTools::MetaObj::MetaList;
using CppTools::MetaObj::MetaObject;
using CppTools::MetaObj::MetaString;
using CppTools::MetaObj::MetaStruct;
using CppTools::MetaObj::MetaType;
using CppTools::MetaObj::MetaTypeString;
using TestSupport::ImpostorValue;
using Messages = std::vector<std::string>;

const std::string kNotTheType =
    "There was an error adding an item to this list.  The item being added was not the correct "
    "type for this list, so it was not added.";
const std::string kNotTheStructure =
    "There was an error adding an item to this list.  The item being added did not match the "
    "declared structure of this list, so it was not added.";

std::shared_ptr<MetaStruct> Row(const std::string& typeName, const Messages& fields) {
    auto row = MetaStruct::New(typeName);
    for (const auto& field : fields) {
        row->SetField(field, 1);
    }
    return row;
}

std::shared_ptr<MetaList> Rows(const std::shared_ptr<MetaStruct>& structure) {
    return MetaList::New(MetaType::Struct, structure);
}

std::shared_ptr<MetaList> RowsWithoutTemplate() {
    return Rows(nullptr);
}

std::shared_ptr<MetaObject> ValueOfKind(MetaType kind) {
    switch (kind) {
    case MetaType::Int:
        return MetaInt::New(7);
    case MetaType::Bool:
        return MetaBool::New(true);
    case MetaType::String:
        return MetaString::New("text");
    case MetaType::Struct:
        return Row("Row", {"a"});
    case MetaType::List:
        return MetaList::New(MetaType::Int);
    }
    return nullptr;
}

/// The result and the messages; the result must not depend on whether messages are wanted, and
/// earlier messages must stay.
using Verdict = std::pair<bool, Messages>;

Verdict Validate(const MetaList& list, const std::shared_ptr<MetaObject>& item) {
    Messages errors = {"earlier"};
    const bool result = list.Validate(item, &errors);
    EXPECT_EQ(list.Validate(item, nullptr), result);
    EXPECT_EQ(errors.front(), "earlier");
    errors.erase(errors.begin());
    return {result, errors};
}

Verdict Compare(const MetaList& pattern, const std::shared_ptr<MetaObject>& candidate) {
    Messages errors = {"earlier"};
    const bool result = pattern.IsSameStructure(candidate, &errors);
    EXPECT_EQ(pattern.IsSameStructure(candidate, nullptr), result);
    EXPECT_EQ(errors.front(), "earlier");
    errors.erase(errors.begin());
    return {result, errors};
}

const Verdict kFits = {true, {}};

// Kind of the list, kind of the item.
class MetaListValidateTest : public testing::TestWithParam<std::tuple<int, int>> {};

TEST_P(MetaListValidateTest, Validate_ItemOfEachKind_OnlyTheDeclaredKindFits) {
    const auto kind = static_cast<MetaType>(std::get<0>(GetParam()));
    const auto itemKind = static_cast<MetaType>(std::get<1>(GetParam()));
    const auto list = kind == MetaType::Struct ? Rows(Row("Row", {"a"})) : MetaList::New(kind);
    const Verdict expected = kind == itemKind ? kFits : Verdict{false, {kNotTheType}};
    EXPECT_EQ(Validate(*list, ValueOfKind(itemKind)), expected);
    EXPECT_EQ(list->GetCount(), 0U);
}

INSTANTIATE_TEST_SUITE_P(Kinds, MetaListValidateTest,
                         testing::Combine(testing::Range(0, 4), testing::Range(0, 5)));

TEST(MetaListComparisonTest, Validate_NullItem_IsRefusedByEveryList) {
    const Verdict refused = {false, {"Invalid NULL input"}};
    EXPECT_EQ(Validate(*MetaList::New(MetaType::Int), nullptr), refused);
    EXPECT_EQ(Validate(*Rows(Row("Row", {"a"})), nullptr), refused);
    EXPECT_EQ(Validate(*RowsWithoutTemplate(), nullptr), refused);
}

TEST(MetaListComparisonTest, Validate_StructListWithoutTemplate_RefusesEveryStructure) {
    EXPECT_EQ(Validate(*RowsWithoutTemplate(), Row("Row", {})),
              Verdict(false, {"List created with NULL structure.  No items can be added to this "
                              "list."}));
    EXPECT_EQ(Validate(*RowsWithoutTemplate(), MetaInt::New(1)), Verdict(false, {kNotTheType}));
}

TEST(MetaListComparisonTest, Validate_IllFittingStructure_RecordsTheTemplatesMessagesFirst) {
    EXPECT_EQ(Validate(*Rows(Row("Row", {"a", "b"})), Row("Other", {"a"})),
              Verdict(false, {"Type names do not match.",
                              "Mismatch on number of fields set in struct. Expected 2 found 1",
                              "Missing field in input: b", kNotTheStructure}));
}

TEST(MetaListComparisonTest, Validate_OtherTypeNameAlone_IsReportedButFits) {
    EXPECT_EQ(Validate(*Rows(Row("Row", {"a"})), Row("Other", {"a"})),
              Verdict(true, {"Type names do not match."}));
}

TEST(MetaListComparisonTest, Validate_ForeignClassOfKindStruct_IsRefused) {
    EXPECT_EQ(Validate(*Rows(Row("Row", {"a"})), ImpostorValue::New(MetaType::Struct)),
              Verdict(false, {"Unable to cast to MetaStruct, runtime error?", kNotTheStructure}));
}

TEST(MetaListComparisonTest, Validate_RowsWithinAStructure_RecordEveryLevelInnermostFirst) {
    const auto rowWith = [](const std::shared_ptr<MetaList>& cells) {
        const auto row = MetaStruct::New("Row");
        row->SetField("cells", cells);
        return row;
    };
    const auto list = Rows(rowWith(Rows(Row("Cell", {"a", "b"}))));
    EXPECT_EQ(Validate(*list, rowWith(Rows(Row("Cell", {"a", "b"})))), kFits);
    EXPECT_EQ(Validate(*list, rowWith(RowsWithoutTemplate())), kFits);
    EXPECT_EQ(Validate(*list, rowWith(Rows(Row("Other", {"a"})))),
              Verdict(false, {"Type names do not match.",
                              "Mismatch on number of fields set in struct. Expected 2 found 1",
                              "Missing field in input: b", "List type mismatch list and input",
                              "Type mismatch on field: cells", kNotTheStructure}));
    EXPECT_EQ(Validate(*list, rowWith(MetaList::New(MetaType::Int))),
              Verdict(false, {"Mismatch on list type", "Type mismatch on field: cells",
                              kNotTheStructure}));
}

TEST(MetaListComparisonTest, Validate_TemplateWithoutFields_TakesEmptyStructuresAlone) {
    const auto list = Rows(Row("Row", {}));
    EXPECT_EQ(Validate(*list, Row("Row", {})), kFits);
    EXPECT_EQ(Validate(*list, Row("Row", {"a"})),
              Verdict(false, {"Mismatch on number of fields set in struct. Expected 0 found 1",
                              kNotTheStructure}));
}

TEST(MetaListComparisonTest, IsSameStructure_Null_IsRefused) {
    const Verdict refused = {false, {"Mismatch on structure, NULL comparison"}};
    EXPECT_EQ(Compare(*MetaList::New(MetaType::Int), nullptr), refused);
    EXPECT_EQ(Compare(*RowsWithoutTemplate(), nullptr), refused);
}

class MetaListOtherKindTest : public testing::TestWithParam<int> {};

TEST_P(MetaListOtherKindTest, IsSameStructure_NoList_IsRefusedNamingTheKind) {
    const auto kind = static_cast<MetaType>(GetParam());
    EXPECT_EQ(Compare(*MetaList::New(MetaType::Int), ValueOfKind(kind)),
              Verdict(false,
                      {"Type mismatch!  Was expecting a List, but got a " + MetaTypeString(kind)}));
}

INSTANTIATE_TEST_SUITE_P(Kinds, MetaListOtherKindTest, testing::Range(0, 4));

TEST(MetaListComparisonTest, IsSameStructure_ListAgainstInt_RecordsTheWholeMessage) {
    EXPECT_EQ(Compare(*MetaList::New(MetaType::String), MetaInt::New(1)),
              Verdict(false, {"Type mismatch!  Was expecting a List, but got a Int"}));
}

TEST(MetaListComparisonTest, IsSameStructure_ForeignClassOfKindList_IsRefused) {
    EXPECT_EQ(Compare(*MetaList::New(MetaType::Int), ImpostorValue::New(MetaType::List)),
              Verdict(false, {"Mismatch on list type"}));
}

// Element kinds of pattern and candidate.
class MetaListElementKindTest : public testing::TestWithParam<std::tuple<int, int>> {};

TEST_P(MetaListElementKindTest, IsSameStructure_DependsOnTheElementKind) {
    const auto listOf = [](int number) {
        const auto kind = static_cast<MetaType>(number);
        return kind == MetaType::Struct ? Rows(Row("Row", {"a"})) : MetaList::New(kind);
    };
    const auto [pattern, candidate] = GetParam();
    const Verdict expected =
        pattern == candidate ? kFits : Verdict{false, {"Mismatch on list type"}};
    EXPECT_EQ(Compare(*listOf(pattern), listOf(candidate)), expected);
}

INSTANTIATE_TEST_SUITE_P(Kinds, MetaListElementKindTest,
                         testing::Combine(testing::Range(0, 4), testing::Range(0, 4)));

TEST(MetaListComparisonTest, IsSameStructure_Elements_AreNeverCompared) {
    const auto some = MetaList::New(MetaType::Int);
    some->AddAll(std::vector<long>{1, 2, 3});
    const auto none = MetaList::New(MetaType::Int);
    EXPECT_EQ(Compare(*some, none), kFits);
    EXPECT_EQ(Compare(*none, some), kFits);
}

TEST(MetaListComparisonTest, IsSameStructure_ElementsThatDriftedFromTheTemplate_AreNotSeen) {
    const auto drifted = Row("Row", {"a"});
    const auto pattern = Rows(Row("Row", {"a"}));
    const auto candidate = Rows(Row("Row", {"a"}));
    candidate->Add(drifted);
    drifted->SetField("a", "now a text");
    EXPECT_EQ(Compare(*pattern, candidate), kFits);
}

TEST(MetaListComparisonTest, IsSameStructure_AnEmptyTemplateOnEitherSide_FitsAnyOther) {
    EXPECT_EQ(Compare(*RowsWithoutTemplate(), RowsWithoutTemplate()), kFits);
    EXPECT_EQ(Compare(*RowsWithoutTemplate(), Rows(Row("Row", {"a"}))), kFits);
    EXPECT_EQ(Compare(*Rows(Row("Row", {"a"})), RowsWithoutTemplate()), kFits);
}

TEST(MetaListComparisonTest, IsSameStructure_TemplatesOfOtherShape_RecordTheListsMessageLast) {
    EXPECT_EQ(Compare(*Rows(Row("Row", {"a", "b"})), Rows(Row("Other", {"a"}))),
              Verdict(false, {"Type names do not match.",
                              "Mismatch on number of fields set in struct. Expected 2 found 1",
                              "Missing field in input: b", "List type mismatch list and input"}));
}

TEST(MetaListComparisonTest, IsSameStructure_ThisListIsThePattern) {
    const auto wide = Rows(Row("Row", {"a", "b"}));
    const auto narrow = Rows(Row("Row", {"a"}));
    EXPECT_EQ(Compare(*narrow, wide),
              Verdict(false, {"Mismatch on number of fields set in struct. Expected 1 found 2",
                              "List type mismatch list and input"}));
}

TEST(MetaListComparisonTest, IsSameStructure_TemplatesOfOtherNameAlone_AreReportedButFit) {
    EXPECT_EQ(Compare(*Rows(Row("Row", {"a"})), Rows(Row("Other", {"a"}))),
              Verdict(true, {"Type names do not match."}));
}

TEST(MetaListComparisonTest, IsSameStructure_ListsWithinTemplates_RecordEveryLevelInnermostFirst) {
    const auto tableOf = [](const std::shared_ptr<MetaStruct>& innermost) {
        const auto middle = MetaStruct::New("Middle");
        middle->SetField("cells", Rows(innermost));
        const auto outer = MetaStruct::New("Outer");
        outer->SetField("rows", Rows(middle));
        return Rows(outer);
    };
    EXPECT_EQ(Compare(*tableOf(Row("Cell", {"a"})), tableOf(Row("Cell", {"a"}))), kFits);
    EXPECT_EQ(
        Compare(*tableOf(Row("Cell", {"a"})), tableOf(Row("Cell", {"b"}))),
        Verdict(false, {"Missing field in input: a", "List type mismatch list and input",
                        "Type mismatch on field: cells", "List type mismatch list and input",
                        "Type mismatch on field: rows", "List type mismatch list and input"}));
}

} // namespace
