#include "Support.h"

#include <tandril-result/Row.h>

#include <gtest/gtest.h>

using ResultTests::ErrorOf;
using ResultTests::Record;
using TandrilResult::Find;
using TandrilResult::Nesting;
using TandrilResult::Row;
using TandrilResult::UnfoldRows;

namespace {

/// What a source leads to, as JSON; "none" where it leads nowhere.
std::string Found(const Row& row, int levelsUp, const std::string& path) {
    const Record* const value = Find(row, {levelsUp, path});
    return value == nullptr ? "none" : value->dump();
}

TEST(FindTest, Key_IsFound) {
    const Record record = {{"a", 1}, {"b", nullptr}};
    EXPECT_EQ(Found({record}, 0, "a"), "1");
    EXPECT_EQ(Found({record}, 0, "b"), "null");
    EXPECT_EQ(Found({record}, 0, "c"), "none");
}

TEST(FindTest, Dots_LeadIntoObjects) {
    const Record record = {{"a", {{"b", {{"c", 7}}}}}, {"d", {1, 2}}};
    EXPECT_EQ(Found({record}, 0, "a.b.c"), "7");
    EXPECT_EQ(Found({record}, 0, "a.x.c"), "none");
    EXPECT_EQ(Found({record}, 0, "a.b.c.d"), "none");
    EXPECT_EQ(Found({record}, 0, "d.0"), "none");
    EXPECT_EQ(Found({record}, 0, "a."), "none");
}

TEST(FindTest, KeyWithDots_ComesFirst) {
    const Record record = {{"a.b", 1}, {"a", {{"b", 2}}}};
    EXPECT_EQ(Found({record}, 0, "a.b"), "1");
}

TEST(FindTest, LevelsUp_LeadToTheRecordsAround) {
    const Record inner = {{"n", 1}};
    const Record middle = {{"n", 2}};
    const Record outer = {{"n", 3}};
    const Row top{outer};
    const Row around{middle, &top};
    const Row row{inner, &around};
    EXPECT_EQ(Found(row, 0, "n"), "1");
    EXPECT_EQ(Found(row, 1, "n"), "2");
    EXPECT_EQ(Found(row, 2, "n"), "3");
    EXPECT_EQ(Found(row, 3, "n"), "none");
}

TEST(FindTest, RecordWithoutKeys_IsRefused) {
    const Record text = "x";
    EXPECT_EQ(ErrorOf([&] { Find({text}, {0, "a"}); }), "input: 'x' is not an object with fields");
    const Record list = Record::array();
    EXPECT_EQ(ErrorOf([&] {
                  Find({list}, {0, "a"});
              }),
              "input: a list is not an object with fields");
}

/// The "n" of every row and of the record around it.
std::string Unfolded(const Record& record, const Nesting& nesting) {
    std::string rows;
    UnfoldRows(record, nesting, [&](const Row& row) {
        rows += Found(row, 0, "n") + "<" + Found(row, 1, "n") + " ";
    });
    return rows;
}

const Record kTree = Record::parse(R"({"n": 1, "e": [{"n": 10}, {"n": 11}], "c": [
    {"n": 2, "c": [{"n": 3, "e": [{"n": 30}]}]}, {"n": 4, "c": [], "e": null}]})");

TEST(UnfoldRowsTest, NoNesting_TheRecordIsTheRow) {
    EXPECT_EQ(Unfolded(kTree, {}), "1<none ");
}

TEST(UnfoldRowsTest, Children_FollowTheirParents) {
    EXPECT_EQ(Unfolded(kTree, {.children = "c", .each = ""}), "1<none 2<1 3<2 4<1 ");
}

TEST(UnfoldRowsTest, Each_ElementsTakeThePlaceOfTheRecord) {
    EXPECT_EQ(Unfolded(kTree, {.children = "", .each = "e"}), "10<1 11<1 ");
}

TEST(UnfoldRowsTest, ElementsOfChildren_AreRowsToo) {
    EXPECT_EQ(Unfolded(kTree, {.children = "c", .each = "e"}), "10<1 11<1 30<3 ");
}

TEST(UnfoldRowsTest, WhatIsNoList_IsRefused) {
    const Record record = {{"c", 1}};
    EXPECT_EQ(ErrorOf([&] { Unfolded(record, {.children = "c", .each = ""}); }),
              "input: 'c' is not a list");
    EXPECT_EQ(ErrorOf([&] { Unfolded(record, {.children = "", .each = "c"}); }),
              "input: 'c' is not a list");
    EXPECT_EQ(ErrorOf([&] { Unfolded(7, {.children = "", .each = "c"}); }),
              "input: '7' is not an object with fields");
}

} // namespace
