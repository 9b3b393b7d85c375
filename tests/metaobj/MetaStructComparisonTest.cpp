#include <CppTools/metaobj/MetaBool.h>
#include <CppTools/metaobj/MetaInt.h>
#include <CppTools/metaobj/MetaList.h>
#include <CppTools/metaobj/MetaString.h>
#include <CppTools/metaobj/MetaStruct.h>

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "tests/support/ImpostorValue.h"
#include "tests/support/NamedRow.h"

namespace {

using CppTools::MetaObj::MetaBool;
using CppTools::MetaObj::MetaInt;
using CppTools::MetaObj::MetaList;
using CppTools::MetaObj::MetaObject;
using CppTools::MetaObj::MetaString;
using CppTools::MetaObj::MetaStruct;
using CppTools::MetaObj::MetaType;
using TestSupport::ImpostorValue;
using TestSupport::kUnknownKind;
using TestSupport::NamedRow;
using Messages = std::vector<std::string>;
using Object = std::shared_ptr<MetaObject>;
using Structure = std::shared_ptr<MetaStruct>;

constexpr int kDepth = 200;

Structure Row(const std::vector<std::pair<std::string, Object>>& fields,
              const std::string& typeName = "Row") {
    auto row = MetaStruct::New(typeName);
    for (const auto& [name, value] : fields) {
        row->SetField(name, value);
    }
    return row;
}

Object Int() {
    return MetaInt::New(1);
}

Object Text() {
    return MetaString::New("x");
}

Object ListOf(MetaType kind) {
    return MetaList::New(kind);
}

Object RowsOf(const Structure& structure) {
    return MetaList::New(MetaType::Struct, structure);
}

/// The result and the messages; the result must not depend on whether messages are wanted, and
/// earlier messages must stay.
using Verdict = std::pair<bool, Messages>;

Verdict Compare(const Structure& pattern, const Object& candidate) {
    Messages errors = {"earlier"};
    const bool result = pattern->IsSameStructure(candidate, &errors);
    EXPECT_EQ(pattern->IsSameStructure(candidate, nullptr), result);
    EXPECT_EQ(errors.front(), "earlier");
    errors.erase(errors.begin());
    return {result, errors};
}

const Verdict kFits = {true, {}};

std::string CountMessage(int expected, int found) {
    return "Mismatch on number of fields set in struct. Expected " + std::to_string(expected) +
           " found " + std::to_string(found);
}

TEST(MetaStructComparisonTest, IsSameStructure_Null_IsAcceptedWithAMessage) {
    const Verdict accepted = {true, {"Invalid NULL input to MetaStruct validation."}};
    EXPECT_EQ(Compare(Row({}), nullptr), accepted);
    EXPECT_EQ(Compare(Row({{"a", Int()}}), nullptr), accepted);
}

// Named after the kind.
struct OtherKind : NamedRow {
    Object value;
};

class MetaStructOtherKindTest : public testing::TestWithParam<OtherKind> {};

TEST_P(MetaStructOtherKindTest, IsSameStructure_NoStructure_IsRefusedNamingTheKind) {
    EXPECT_EQ(Compare(Row({{"a", Int()}}), GetParam().value),
              Verdict(false, {"Type Mismatch in MetaStruct Validation: Expected type Struct got "
                              "type " +
                              GetParam().name}));
}

INSTANTIATE_TEST_SUITE_P(Kinds, MetaStructOtherKindTest,
                         testing::Values(OtherKind{{"Int"}, Int()},
                                         OtherKind{{"Bool"}, MetaBool::New()},
                                         OtherKind{{"String"}, Text()},
                                         OtherKind{{"List"}, ListOf(MetaType::Int)}));

TEST(MetaStructComparisonTest, IsSameStructure_UnknownKind_IsRefusedWithoutName) {
    EXPECT_EQ(Compare(Row({}), ImpostorValue::New(kUnknownKind)),
              Verdict(false, {"Type Mismatch in MetaStruct Validation: Expected type Struct got "
                              "type "}));
}

TEST(MetaStructComparisonTest, IsSameStructure_ForeignClassOfKindStruct_IsRefused) {
    EXPECT_EQ(Compare(Row({}), ImpostorValue::New(MetaType::Struct)),
              Verdict(false, {"Unable to cast to MetaStruct, runtime error?"}));
}

TEST(MetaStructComparisonTest, IsSameStructure_Itself_Fits) {
    const auto row = Row({{"a", Int()}, {"b", ListOf(MetaType::Bool)}});
    EXPECT_EQ(Compare(row, row), kFits);
    EXPECT_EQ(Compare(Row({}), Row({})), kFits);
}

TEST(MetaStructComparisonTest, IsSameStructure_ValuesDocumentationAndLocks_DoNotCount) {
    const auto pattern = Row({{"a", MetaInt::New(1)}, {"b", MetaString::New("x")}});
    const auto candidate = MetaStruct::New(pattern);
    candidate->SetField("b", MetaString::New("quite another text"), "documented");
    candidate->SetField("a", MetaInt::New(999), "documented");
    EXPECT_EQ(Compare(pattern, candidate), kFits);
    EXPECT_EQ(Compare(candidate, pattern), kFits);
}

TEST(MetaStructComparisonTest, IsSameStructure_OtherTypeName_IsReportedButFits) {
    EXPECT_EQ(Compare(Row({{"a", Int()}}, "Row"), Row({{"a", Int()}}, "row")),
              Verdict(true, {"Type names do not match."}));
}

TEST(MetaStructComparisonTest, IsSameStructure_CandidateLacksAField_RecordsCountAndName) {
    EXPECT_EQ(Compare(Row({{"a", Int()}, {"b", Int()}}), Row({{"a", Int()}})),
              Verdict(false, {"Mismatch on number of fields set in struct. Expected 2 found 1",
                              "Missing field in input: b"}));
}

TEST(MetaStructComparisonTest, IsSameStructure_CandidateHasMoreFields_OnlyTheCountTells) {
    EXPECT_EQ(Compare(Row({{"a", Int()}}), Row({{"a", Int()}, {"b", Int()}, {"c", Int()}})),
              Verdict(false, {CountMessage(1, 3)}));
    EXPECT_EQ(Compare(Row({}), Row({{"a", Int()}})), Verdict(false, {CountMessage(0, 1)}));
}

TEST(MetaStructComparisonTest, IsSameStructure_SameCountOtherName_RecordsTheNameAlone) {
    EXPECT_EQ(Compare(Row({{"a", Int()}, {"b", Int()}}), Row({{"a", Int()}, {"c", Int()}})),
              Verdict(false, {"Missing field in input: b"}));
}

TEST(MetaStructComparisonTest, IsSameStructure_SeveralFieldsMissing_StopsAtTheFirstByName) {
    EXPECT_EQ(Compare(Row({{"c", Int()}, {"b", Int()}, {"a", Int()}}), Row({{"a", Int()}})),
              Verdict(false, {CountMessage(3, 1), "Missing field in input: b"}));
}

TEST(MetaStructComparisonTest, IsSameStructure_SeveralFieldsOfOtherKind_StopsAtTheFirstByName) {
    EXPECT_EQ(Compare(Row({{"b", Int()}, {"a", Int()}}), Row({{"b", Text()}, {"a", Text()}})),
              Verdict(false, {"Type mismatch on field: a"}));
}

TEST(MetaStructComparisonTest, IsSameStructure_NameCountAndKindDiffer_RecordsThemInThatOrder) {
    EXPECT_EQ(Compare(Row({{"a", Int()}, {"b", Int()}}, "Left"), Row({{"a", Text()}}, "Right")),
              Verdict(false, {"Type names do not match.", CountMessage(2, 1),
                              "Type mismatch on field: a"}));
}

TEST(MetaStructComparisonTest, IsSameStructure_KindsOfAFieldDiffer_ComparesNoFurther) {
    const Messages onlyTheField = {"Type mismatch on field: f"};
    const std::vector<Object> values = {Int(), MetaBool::New(), Text(), Row({}),
                                        ListOf(MetaType::Int)};
    for (const auto& mine : values) {
        for (const auto& theirs : values) {
            if (mine->GetType() != theirs->GetType()) {
                SCOPED_TRACE(mine->ToString() + " against " + theirs->ToString());
                EXPECT_EQ(Compare(Row({{"f", mine}}), Row({{"f", theirs}})),
                          Verdict(false, onlyTheField));
            }
        }
    }
}

TEST(MetaStructComparisonTest, IsSameStructure_NestedListOfOtherKind_RecordsTheListsMessageFirst) {
    EXPECT_EQ(Compare(Row({{"f", ListOf(MetaType::Int)}}), Row({{"f", ListOf(MetaType::Bool)}})),
              Verdict(false, {"Mismatch on list type", "Type mismatch on field: f"}));
}

TEST(MetaStructComparisonTest, IsSameStructure_NestedRowsOfOtherShape_RecordEveryLevel) {
    EXPECT_EQ(Compare(Row({{"rows", RowsOf(Row({{"a", Int()}}))}}),
                      Row({{"rows", RowsOf(Row({{"a", Text()}}))}})),
              Verdict(false, {"Type mismatch on field: a", "List type mismatch list and input",
                              "Type mismatch on field: rows"}));
}

TEST(MetaStructComparisonTest, IsSameStructure_NestedRowsWithoutTemplate_FitAnyRows) {
    const auto without = Row({{"rows", RowsOf(nullptr)}});
    const auto with = Row({{"rows", RowsOf(Row({{"a", Int()}}))}});
    EXPECT_EQ(Compare(without, with), kFits);
    EXPECT_EQ(Compare(with, without), kFits);
}

TEST(MetaStructComparisonTest, IsSameStructure_NestedStructureOfOtherShape_RecordsEveryLevel) {
    const auto nest = [](const Structure& innermost) {
        return Row({{"outer", Row({{"inner", innermost}}, "Middle")}}, "Outer");
    };
    EXPECT_EQ(Compare(nest(Row({{"a", Int()}, {"b", Int()}})), nest(Row({{"a", Int()}}))),
              Verdict(false, {CountMessage(2, 1), "Missing field in input: b",
                              "Type mismatch on field: inner", "Type mismatch on field: outer"}));
}

TEST(MetaStructComparisonTest, IsSameStructure_NestedStructureOfOtherName_IsReportedButFits) {
    EXPECT_EQ(Compare(Row({{"f", Row({}, "Left")}}), Row({{"f", Row({}, "Right")}})),
              Verdict(true, {"Type names do not match."}));
}

TEST(MetaStructComparisonTest, IsSameStructure_FirstFieldReportsSecondFails_KeepsBothMessages) {
    EXPECT_EQ(Compare(Row({{"a", Row({}, "Left")}, {"b", Int()}}),
                      Row({{"a", Row({}, "Right")}, {"b", Text()}})),
              Verdict(false, {"Type names do not match.", "Type mismatch on field: b"}));
}

Structure Nested(int levels, const Object& innermost) {
    Object value = innermost;
    for (int level = 1; level < levels; ++level) {
        value = Row({{"f", value}});
    }
    return Row({{"f", value}});
}

TEST(MetaStructComparisonTest, IsSameStructure_DeepNesting_ReachesTheInnermostValue) {
    EXPECT_EQ(Compare(Nested(kDepth, Int()), Nested(kDepth, Int())), kFits);
    EXPECT_EQ(Compare(Nested(kDepth, Int()), Nested(kDepth, Text())),
              Verdict(false, Messages(kDepth, "Type mismatch on field: f")));
}

TEST(MetaStructComparisonTest, MatchesStructureDefinition_WithoutDefinition_IsTrue) {
    EXPECT_TRUE(Row({})->MatchesStructureDefinition());
    EXPECT_TRUE(Row({{"a", Int()}})->MatchesStructureDefinition());
}

TEST(MetaStructComparisonTest, MatchesStructureDefinition_TellsWhetherAllFieldsAreThere) {
    const auto structure = MetaStruct::New(Row({{"a", Int()}, {"b", Text()}}));
    EXPECT_FALSE(structure->MatchesStructureDefinition());
    structure->SetField("a", 5);
    EXPECT_FALSE(structure->MatchesStructureDefinition());
    structure->SetField("b", "set");
    EXPECT_TRUE(structure->MatchesStructureDefinition());
    structure->SetField("b", 5);
    EXPECT_FALSE(structure->MatchesStructureDefinition());
}

/// Claims to be a structure, fits everything and knows whether messages were wanted.
class AcceptingValue final : public MetaObject {
  public:
    explicit AcceptingValue(bool& messagesWanted)
        : MetaObject(MetaType::Struct, FactoryFlag{}), messagesWanted_(messagesWanted) {}

    bool IsSameStructure(const Object& /*other*/, Messages* errors) const override {
        messagesWanted_ = errors != nullptr;
        return true;
    }

    std::string ToString() const override { return "accepting"; }

  private:
    bool& messagesWanted_;
};

TEST(MetaStructComparisonTest, MatchesStructureDefinition_TheStructureIsThePattern) {
    bool messagesWanted = true;
    const auto accepting = std::make_shared<AcceptingValue>(messagesWanted);
    const auto structure = MetaStruct::New(Row({{"a", Row({})}}));
    structure->SetField("a", Object(accepting));
    EXPECT_TRUE(structure->MatchesStructureDefinition());
    EXPECT_FALSE(messagesWanted);
    const auto reversed = MetaStruct::New(Row({{"a", accepting}}));
    reversed->SetField("a", Row({}));
    EXPECT_FALSE(reversed->MatchesStructureDefinition());
}

TEST(MetaStructComparisonTest, MatchesStructureDefinition_DefinitionOfTheDefinition_DoesNotCount) {
    const auto middle = MetaStruct::New(Row({{"a", Int()}, {"b", Int()}}));
    middle->SetField("a", 1);
    const auto structure = MetaStruct::New(middle);
    structure->SetField("a", 2);
    EXPECT_TRUE(structure->MatchesStructureDefinition());
    EXPECT_FALSE(middle->MatchesStructureDefinition());
}

TEST(MetaStructComparisonTest, MatchesStructureDefinition_EmptyDefinition_FitsTheEmptyStructure) {
    EXPECT_TRUE(MetaStruct::New(Row({}))->MatchesStructureDefinition());
}

TEST(MetaStructComparisonTest, ToString_Fields_PrintInNameOrderEachWithItsComma) {
    EXPECT_EQ(Row({{"b", Text()}, {"a", Int()}})->ToString(), "{'a' => '1', 'b' => 'x', }");
    EXPECT_EQ(Row({{"a", Int()}})->ToString(), "{'a' => '1', }");
    EXPECT_EQ(Row({})->ToString(), "{}");
}

TEST(MetaStructComparisonTest, ToString_QuotesInNamesAndValues_AreNotEscaped) {
    EXPECT_EQ(Row({{"it's", MetaString::New("a', 'b")}})->ToString(), "{'it's' => 'a', 'b', }");
}

TEST(MetaStructComparisonTest, ToString_NestedValues_PrintInTheirOwnForms) {
    const auto rows = MetaList::New(MetaType::Struct, Row({{"id", Int()}}));
    rows->Add(Row({{"id", MetaInt::New(1)}}));
    rows->Add(Row({{"id", MetaInt::New(-2)}}));
    const auto names = MetaList::New(MetaType::String);
    names->AddAll(Messages{"a", "b"});
    const auto row = Row({{"flag", MetaBool::New(true)},
                          {"names", names},
                          {"none", ListOf(MetaType::Int)},
                          {"rows", rows},
                          {"structure", Row({})}});
    EXPECT_EQ(row->ToString(), "{'flag' => 'true', 'names' => 'a, b', 'none' => '', "
                               "'rows' => '{'id' => '1', }, {'id' => '-2', }', "
                               "'structure' => '{}', }");
}

TEST(MetaStructComparisonTest, ToString_DeepNesting_PrintsEveryLevel) {
    std::string expected = "1";
    for (int level = 0; level < kDepth; ++level) {
        expected = "{'f' => '" + expected + "', }";
    }
    EXPECT_EQ(Nested(kDepth, Int())->ToString(), expected);
}

TEST(MetaStructComparisonTest, ToString_SeveralFields_ReservesFifteenCharactersForEach) {
    // So short that doubling the room on demand would end below that.
    const auto row = MetaStruct::New("Row");
    for (int field = 0; field < 10; ++field) {
        row->SetField(std::to_string(field), "");
    }
    EXPECT_EQ(row->ToString().size(), 112U);
    EXPECT_GE(row->ToString().capacity(), 150U);
}

TEST(MetaStructComparisonTest, ToString_ValueOfForeignClass_PrintsInItsOwnForm) {
    EXPECT_EQ(Row({{"a", ImpostorValue::New(MetaType::Bool)}})->ToString(),
              "{'a' => 'impostor', }");
    EXPECT_EQ(Row({{"a", ImpostorValue::New(kUnknownKind)}})->ToString(), "{'a' => 'impostor', }");
    EXPECT_EQ(Row({{"a", ImpostorValue::New(MetaType::String)}})->ToString(),
              "{'a' => 'impostor', }");
}

} // namespace
