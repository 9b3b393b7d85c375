#include "Support.h"

#include <tandril-result/FieldPlan.h>

#include <gtest/gtest.h>

using ResultTests::ErrorOf;
using ResultTests::Record;
using TandrilResult::FieldPlan;
using TandrilResult::FieldRules;
using TandrilResult::ParseFieldSpec;

namespace {

FieldRules Rules(const std::vector<std::string>& fields = {}) {
    FieldRules rules;
    rules.structure = "T";
    for (const std::string& field : fields) {
        rules.fields.push_back(ParseFieldSpec(field));
    }
    return rules;
}

std::string Structure(const std::string& fields) {
    return "<structure typeName=\"T\">" + fields + "</structure>\n";
}

std::string Field(const std::string& name, const std::string& element) {
    return "<field name=\"" + name + "\">" + element + "</field>";
}

/// What one record becomes.
std::string StructureOf(const FieldRules& rules, const Record& record) {
    return FieldPlan(rules).StructureOf({record});
}

TEST(FieldPlanTest, FieldsStandInTheOrderAsked) {
    EXPECT_EQ(StructureOf(Rules({"B:int=b", "A & C:bool=a", "D"}),
                          {{"a", true}, {"b", 7}, {"c", 1}, {"D", "<x>"}}),
              Structure(Field("B", "<int>7</int>") + Field("A &amp; C", "<bool>true</bool>") +
                        Field("D", "<string>&lt;x&gt;</string>")));
}

TEST(FieldPlanTest, NoFieldsAsked_AllKeysAreTextFields) {
    EXPECT_EQ(StructureOf(Rules(), {{"b", 7}, {"a", true}}),
              Structure(Field("a", "<string>true</string>") + Field("b", "<string>7</string>")));
}

TEST(FieldPlanTest, NoFieldsAsked_KeysWithRecordsBelowAreNone) {
    FieldRules rules = Rules();
    rules.nested = {"children"};
    FieldPlan plan(rules);
    const Record first = {{"a", "1"}, {"children", Record::array()}};
    const Record second = {{"a", "2"}};
    EXPECT_EQ(plan.StructureOf({first}), Structure(Field("a", "<string>1</string>")));
    EXPECT_EQ(plan.StructureOf({second}), Structure(Field("a", "<string>2</string>")));
}

TEST(FieldPlanTest, NoFieldsAsked_KeyThatTheFirstRowHadNotIsRefused) {
    FieldPlan plan(Rules());
    const Record first = {{"a", "1"}};
    const Record second = {{"a", "2"}, {"b", "3"}};
    plan.StructureOf({first});
    EXPECT_EQ(ErrorOf([&] { plan.StructureOf({second}); }),
              "input: it has 'b', which the first has not; choose the fields by --field");
}

TEST(FieldPlanTest, NoFieldsAsked_KeyThatIsNoNameIsRefused) {
    EXPECT_EQ(ErrorOf([] {
                  StructureOf(Rules(), {{"", "1"}});
              }),
              "result: Invalid name for a field: ''; it must be one line of UTF-8 without control "
              "characters");
}

TEST(FieldPlanTest, RecordWithoutKeys_IsRefused) {
    EXPECT_EQ(ErrorOf([] { StructureOf(Rules(), 7); }), "input: '7' is not an object with fields");
    EXPECT_EQ(ErrorOf([] { StructureOf(Rules({"a"}), nullptr); }),
              "input: 'null' is not an object with fields");
}

TEST(FieldPlanTest, Infer_TypedInput_ValuesOfTheFirstRowDecide) {
    FieldRules rules = Rules();
    rules.infer = true;
    rules.isTyped = true;
    EXPECT_EQ(StructureOf(rules, {{"b", true}, {"f", "1.5"}, {"i", -7}, {"s", "7"}}),
              Structure(Field("b", "<bool>true</bool>") + Field("f", "<string>1.5</string>") +
                        Field("i", "<int>-7</int>") + Field("s", "<string>7</string>")));
}

TEST(FieldPlanTest, Infer_Texts_ThoseThatLookLikeOneDecide) {
    FieldRules rules = Rules();
    rules.infer = true;
    EXPECT_EQ(StructureOf(rules, {{"b", "true"}, {"i", "-7"}, {"s", "007"}, {"t", "yes"}}),
              Structure(Field("b", "<bool>true</bool>") + Field("i", "<int>-7</int>") +
                        Field("s", "<string>007</string>") + Field("t", "<string>yes</string>")));
}

TEST(FieldPlanTest, Infer_Lists_FirstItemThatIsOneDecides) {
    FieldRules rules = Rules({"a", "b", "c"});
    rules.infer = true;
    rules.isTyped = true;
    rules.fill = true;
    EXPECT_EQ(StructureOf(rules, {{"a", {nullptr, 1, 2}}, {"b", Record::array()}}),
              Structure(Field("a", "<list type=\"int\"><int>1</int><int>2</int></list>") +
                        Field("b", "<list type=\"string\"></list>") +
                        Field("c", "<string></string>")));
}

TEST(FieldPlanTest, Infer_GivenTypesHold) {
    FieldRules rules = Rules({"a:string", "b"});
    rules.infer = true;
    EXPECT_EQ(StructureOf(rules, {{"a", "1"}, {"b", "2"}}),
              Structure(Field("a", "<string>1</string>") + Field("b", "<int>2</int>")));
}

TEST(FieldPlanTest, Infer_LaterRowOfAnotherTypeIsRefused) {
    FieldRules rules = Rules();
    rules.infer = true;
    FieldPlan plan(rules);
    const Record first = {{"a", "1"}};
    const Record second = {{"a", "x"}};
    plan.StructureOf({first});
    EXPECT_EQ(ErrorOf([&] { plan.StructureOf({second}); }),
              "input: field 'a': 'x' is not an integer of 64 bits");
}

TEST(FieldPlanTest, Lists_SingleValueIsAListOfOne) {
    EXPECT_EQ(StructureOf(Rules({"a:string-list", "b:bool-list"}), {{"a", "x,y"}, {"b", {1, 0}}}),
              Structure(Field("a", "<list type=\"string\"><string>x,y</string></list>") +
                        Field("b", "<list type=\"bool\"><bool>true</bool><bool>false</bool>"
                                   "</list>")));
}

TEST(FieldPlanTest, Lists_ItemOfAnotherTypeIsRefused) {
    EXPECT_EQ(ErrorOf([] {
                  StructureOf(Rules({"a:int-list"}), {{"a", {1, "x"}}});
              }),
              "input: field 'a': 'x' is not an integer of 64 bits");
}

TEST(FieldPlanTest, MissingValue_IsRefused) {
    const std::string error =
        "input: field 'a' has no value; --default or --fill would give it one";
    EXPECT_EQ(ErrorOf([] { StructureOf(Rules({"a"}), Record::object()); }), error);
    EXPECT_EQ(ErrorOf([] { StructureOf(Rules({"a"}), {{"a", nullptr}}); }), error);
    EXPECT_EQ(ErrorOf([] { StructureOf(Rules({"a:int"}), {{"a", ""}}); }), error);
    EXPECT_EQ(ErrorOf([] { StructureOf(Rules({"a:bool"}), {{"a", ""}}); }), error);
}

TEST(FieldPlanTest, EmptyText_IsAValueOfATextField) {
    EXPECT_EQ(StructureOf(Rules({"a"}), {{"a", ""}}), Structure(Field("a", "<string></string>")));
}

TEST(FieldPlanTest, Default_StandsForMissingValuesOnly) {
    FieldRules rules = Rules({"a:int", "b", "c:int-list", "d:int-list"});
    rules.defaults = {{"a", "-1"}, {"b", "<none>"}, {"c", "7"}, {"d", ""}};
    FieldPlan plan(rules);
    const Record missing = {{"a", nullptr}};
    const Record there = {{"a", 5}, {"b", "x"}, {"c", {1}}, {"d", {2}}};
    EXPECT_EQ(plan.StructureOf({missing}),
              Structure(Field("a", "<int>-1</int>") + Field("b", "<string>&lt;none&gt;</string>") +
                        Field("c", "<list type=\"int\"><int>7</int></list>") +
                        Field("d", "<list type=\"int\"></list>")));
    EXPECT_EQ(plan.StructureOf({there}),
              Structure(Field("a", "<int>5</int>") + Field("b", "<string>x</string>") +
                        Field("c", "<list type=\"int\"><int>1</int></list>") +
                        Field("d", "<list type=\"int\"><int>2</int></list>")));
}

TEST(FieldPlanTest, Fill_GivesEveryTypeItsEmptyValue) {
    FieldRules rules = Rules({"a:int", "b:bool", "c", "d:int-list", "e:int"});
    rules.fill = true;
    rules.defaults = {{"e", "5"}};
    EXPECT_EQ(StructureOf(rules, Record::object()),
              Structure(Field("a", "<int>0</int>") + Field("b", "<bool>false</bool>") +
                        Field("c", "<string></string>") + Field("d", "<list type=\"int\"></list>") +
                        Field("e", "<int>5</int>")));
}

TEST(FieldPlanTest, DefaultOfAnotherType_IsRefused) {
    FieldRules rules = Rules({"a:int"});
    rules.defaults = {{"a", "x"}};
    EXPECT_EQ(ErrorOf([&] {
                  StructureOf(rules, {{"a", 1}});
              }),
              "result: Invalid --default for 'a': 'x' is not an integer of 64 bits");
}

TEST(FieldPlanTest, DefaultOfNoField_IsRefused) {
    FieldRules rules = Rules();
    rules.defaults = {{"b", "x"}};
    EXPECT_EQ(ErrorOf([&] {
                  StructureOf(rules, {{"a", 1}});
              }),
              "result: --default for 'b', which is no field of the result");
}

} // namespace
