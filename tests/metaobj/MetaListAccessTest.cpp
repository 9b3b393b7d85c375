#include <CppTools/metaobj/MetaBool.h>
#include <CppTools/metaobj/MetaInt.h>
#include <CppTools/metaobj/MetaList.h>
#include <CppTools/metaobj/MetaString.h>
#include <CppTools/metaobj/MetaStruct.h>

#include <gtest/gtest.h>

#include <functional>
#include <limits>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "tests/support/ImpostorValue.h"
#include "tests/support/NamedRow.h"
#include "tests/support/Thrown.h"

namespace {

using CppTools::MetaObj::MetaInt;
using CppTools::MetaObj::MetaList;
using CppTools::MetaObj::MetaObject;
using CppTools::MetaObj::MetaString;
using CppTools::MetaObj::MetaStruct;
using CppTools::MetaObj::MetaType;
using TestSupport::ImpostorValue;
using TestSupport::NamedRow;
using TestSupport::ThrownBy;

const std::string kBadGet = "Get requested on invalid index of MetaList";
const std::string kBadDelete = "Delete requested on invalid index of MetaList";

std::shared_ptr<MetaList> Strings(const std::vector<std::string>& texts) {
    auto list = MetaList::New(MetaType::String);
    list->AddAll(texts);
    return list;
}

TEST(MetaListAccessTest, GetItem_ValidIndex_ReturnsTheElement) {
    const auto list = MetaList::New(MetaType::String);
    const auto first = MetaString::New("a");
    const auto second = MetaString::New("b");
    list->Add(first);
    list->Add(second);
    EXPECT_EQ(list->GetItem(0), first);
    EXPECT_EQ(list->GetItem(1), second);
}

class MetaListBadIndexTest : public testing::TestWithParam<unsigned int> {};

TEST_P(MetaListBadIndexTest, GetItem_NotBelowTheCount_Throws) {
    const auto list = Strings({"a", "b", "c"});
    EXPECT_EQ(ThrownBy([&] { list->GetItem(GetParam()); }), kBadGet);
}

TEST_P(MetaListBadIndexTest, Delete_NotBelowTheCount_ThrowsAndLeavesTheListUnchanged) {
    const auto list = Strings({"a", "b", "c"});
    EXPECT_EQ(ThrownBy([&] { list->Delete(GetParam()); }), kBadDelete);
    EXPECT_EQ(list->ToString(), "a, b, c");
    EXPECT_EQ(list->GetCount(), 3U);
}

INSTANTIATE_TEST_SUITE_P(Indexes, MetaListBadIndexTest,
                         testing::Values(3U, 4U, std::numeric_limits<unsigned int>::max()));

TEST(MetaListAccessTest, EmptyList_HasNoIndexAtAll) {
    const auto list = MetaList::New(MetaType::Int);
    EXPECT_EQ(ThrownBy([&] { list->GetItem(0); }), kBadGet);
    EXPECT_EQ(ThrownBy([&] { list->Delete(0); }), kBadDelete);
}

TEST(MetaListAccessTest, IndexOperator_RefersToTheStoredPointer) {
    const auto list = Strings({"a", "b"});
    EXPECT_EQ(&(*list)[1], &list->GetObjects()[1]);
    EXPECT_EQ((*list)[1], list->GetItem(1));
}

TEST(MetaListAccessTest, GetObjects_ReturnsTheStoredElementsInOrder) {
    const auto list = Strings({"a", "b", "c"});
    const std::vector<std::shared_ptr<MetaObject>>& objects = list->GetObjects();
    EXPECT_EQ(&objects, &list->GetObjects());
    ASSERT_EQ(objects.size(), 3U);
    EXPECT_EQ(objects[0]->ToString(), "a");
    EXPECT_EQ(objects[2]->ToString(), "c");
    list->Add("d");
    EXPECT_EQ(objects.size(), 4U);
}

TEST(MetaListAccessTest, GetListStructure_ReturnsTheStoredPointer) {
    const auto list = MetaList::New(MetaType::Struct, MetaStruct::New("Row"));
    EXPECT_EQ(&list->GetListStructure(), &list->GetListStructure());
    EXPECT_EQ(list->GetListStructure()->GetTypeName(), "Row");
}

using Deletion = std::pair<unsigned int, std::string>;

class MetaListDeleteTest : public testing::TestWithParam<Deletion> {};

TEST_P(MetaListDeleteTest, Delete_ClosesTheGapAndKeepsTheOrder) {
    const auto list = Strings({"a", "b", "c"});
    list->Delete(GetParam().first);
    EXPECT_EQ(list->GetCount(), 2U);
    EXPECT_EQ(list->ToString(), GetParam().second);
}

INSTANTIATE_TEST_SUITE_P(Indexes, MetaListDeleteTest,
                         testing::Values(Deletion{0, "b, c"}, Deletion{1, "a, c"},
                                         Deletion{2, "a, b"}));

TEST(MetaListAccessTest, Delete_OnlyElement_LeavesAnEmptyListThatTakesElementsAgain) {
    const auto list = Strings({"a"});
    list->Delete(0);
    EXPECT_EQ(list->GetCount(), 0U);
    EXPECT_EQ(list->ToString(), "");
    list->Add("b");
    EXPECT_EQ(list->ToString(), "b");
}

TEST(MetaListAccessTest, Delete_ReleasesTheElement) {
    const auto list = MetaList::New(MetaType::String);
    const auto text = MetaString::New("a");
    list->Add(text);
    list->Delete(0);
    EXPECT_EQ(text.use_count(), 1);
}

TEST(MetaListAccessTest, Reserve_CountsFromTheBeginning) {
    const auto list = Strings({"a", "b"});
    list->Reserve(50);
    EXPECT_GE(list->GetObjects().capacity(), 50U);
    EXPECT_EQ(list->ToString(), "a, b");
    list->Reserve(1);
    EXPECT_GE(list->GetObjects().capacity(), 50U);
}

TEST(MetaListAccessTest, EnsureCapacity_CountsFromThePresentElements) {
    const auto list = Strings({"a", "b", "c"});
    list->EnsureCapacity(50);
    EXPECT_GE(list->GetObjects().capacity(), 53U);
    EXPECT_EQ(list->ToString(), "a, b, c");
}

TEST(MetaListAccessTest, EnsureCapacity_EnoughRoom_DoesNotReallocate) {
    const auto list = Strings({"a", "b", "c"});
    list->Reserve(10);
    const auto* const before = list->GetObjects().data();
    const std::size_t spare = list->GetObjects().capacity() - list->GetObjects().size();
    list->EnsureCapacity(spare);
    EXPECT_EQ(list->GetObjects().data(), before);
    list->EnsureCapacity(spare + 1);
    EXPECT_GE(list->GetObjects().capacity(), 3 + spare + 1);
}

TEST(MetaListAccessTest, EnsureCapacity_ManySmallSteps_MovesTheElementsSeldom) {
    const auto list = MetaList::New(MetaType::Int);
    int moves = 0;
    for (int step = 0; step < 1000; ++step) {
        const auto* const before = list->GetObjects().data();
        list->AddAll(std::vector<long>{1});
        moves += list->GetObjects().data() == before ? 0 : 1;
    }
    EXPECT_LT(moves, 30);
}

template <typename Values>
void AddAllThrough(MetaList& list, Values values) {
    const auto overload = static_cast<void (MetaList::*)(Values)>(&MetaList::AddAll);
    (list.*overload)(std::forward<Values>(values));
}

struct Addition : NamedRow {
    MetaType kind;
    std::function<void(MetaList&)> addAll;
    std::function<void(MetaList&)> addNone;
    std::string text;
    std::string kindName;
};

class MetaListAddAllTest : public testing::TestWithParam<Addition> {};

TEST_P(MetaListAddAllTest, AddAll_AppendsEveryValueInOrder) {
    const auto list = MetaList::New(GetParam().kind);
    GetParam().addAll(*list);
    EXPECT_EQ(list->GetCount(), 3U);
    EXPECT_EQ(list->ToString(), GetParam().text);
    GetParam().addAll(*list);
    EXPECT_EQ(list->ToString(), GetParam().text + ", " + GetParam().text);
    for (const auto& object : list->GetObjects()) {
        EXPECT_EQ(object->GetType(), GetParam().kind);
    }
}

TEST_P(MetaListAddAllTest, AddAll_NoValues_ChangesNothing) {
    const auto list = MetaList::New(GetParam().kind);
    GetParam().addNone(*list);
    EXPECT_EQ(list->GetCount(), 0U);
}

TEST_P(MetaListAddAllTest, AddAll_OtherKind_StopsAtTheFirstValueAfterMakingRoom) {
    const auto list = MetaList::New(MetaType::Struct, MetaStruct::New("Row"));
    EXPECT_EQ(ThrownBy([&] { GetParam().addAll(*list); }),
              "Invalid type specificed in MetaList.  Expected object of type Struct got object of "
              "type " +
                  GetParam().kindName);
    EXPECT_EQ(list->GetCount(), 0U);
    EXPECT_GE(list->GetObjects().capacity(), 3U);
}

TEST_P(MetaListAddAllTest, AddAll_NoValuesOfOtherKind_IsNoError) {
    const auto list = MetaList::New(MetaType::Struct, MetaStruct::New("Row"));
    GetParam().addNone(*list);
    EXPECT_EQ(list->GetCount(), 0U);
}

INSTANTIATE_TEST_SUITE_P(
    Overloads, MetaListAddAllTest,
    testing::Values(Addition{{"booleans"},
                             MetaType::Bool,
                             [](MetaList& l) {
                                 AddAllThrough<const std::vector<bool>&>(l, {true, false, true});
                             },
                             [](MetaList& l) { AddAllThrough<const std::vector<bool>&>(l, {}); },
                             "true, false, true",
                             "Bool"},
                    Addition{{"integers"},
                             MetaType::Int,
                             [](MetaList& l) {
                                 AddAllThrough<const std::vector<long>&>(l, {4294967296L, -7, 3});
                             },
                             [](MetaList& l) { AddAllThrough<const std::vector<long>&>(l, {}); },
                             "4294967296, -7, 3",
                             "Int"},
                    Addition{
                        {"strings"},
                        MetaType::String,
                        [](MetaList& l) {
                            AddAllThrough<const std::vector<std::string>&>(l, {"c", "a", "b"});
                        },
                        [](MetaList& l) { AddAllThrough<const std::vector<std::string>&>(l, {}); },
                        "c, a, b",
                        "String"},
                    Addition{{"moved strings"},
                             MetaType::String,
                             [](MetaList& l) {
                                 AddAllThrough<std::vector<std::string>&&>(l, {"f", "", "d"});
                             },
                             [](MetaList& l) { AddAllThrough<std::vector<std::string>&&>(l, {}); },
                             "f, , d",
                             "String"}));

TEST(MetaListAccessTest, AddAll_ConstStrings_LeavesTheSourceAlone) {
    const std::vector<std::string> texts = {"a text too long for the string object", "b"};
    const auto list = MetaList::New(MetaType::String);
    list->AddAll(texts);
    EXPECT_EQ(texts, (std::vector<std::string>{"a text too long for the string object", "b"}));
}

TEST(MetaListAccessTest, AddAll_ManyValues_MakesRoomForAllAtOnce) {
    const auto list = Strings({"a"});
    list->AddAll(std::vector<std::string>(100, "x"));
    EXPECT_GE(list->GetObjects().capacity(), 101U);
    EXPECT_EQ(list->GetCount(), 101U);
}

TEST(MetaListAccessTest, ToString_NoElements_IsEmpty) {
    EXPECT_EQ(MetaList::New(MetaType::Int)->ToString(), "");
    EXPECT_EQ(MetaList::New(MetaType::Struct, MetaStruct::New("Row"))->ToString(), "");
}

struct Printed : NamedRow {
    std::vector<std::string> items;
    std::string text;
};

class MetaListPrintTest : public testing::TestWithParam<Printed> {};

TEST_P(MetaListPrintTest, ToString_JoinsTheElementsWithoutBracketsOrQuotes) {
    EXPECT_EQ(Strings(GetParam().items)->ToString(), GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(
    Lists, MetaListPrintTest,
    testing::Values(Printed{{"one"}, {"a"}, "a"}, Printed{{"two"}, {"a", "b"}, "a, b"},
                    Printed{{"one empty"}, {""}, ""}, Printed{{"two empty"}, {"", ""}, ", "},
                    Printed{{"holding separators"}, {"a, b", "c"}, "a, b, c"},
                    Printed{{"holding quotes"}, {"'a'", "\"b\""}, "'a', \"b\""}));

TEST(MetaListAccessTest, ToString_Structures_PrintInTheirBraces) {
    const auto row = MetaStruct::New("Row");
    row->SetField("id", 0);
    row->SetField("tags", std::vector<std::string>());
    const auto list = MetaList::New(MetaType::Struct, row);
    for (const int id : {1, 2}) {
        const auto item = MetaStruct::New(row);
        item->SetField("id", id);
        item->SetField("tags", std::vector<std::string>{"a", "b"});
        list->Add(item);
    }
    EXPECT_EQ(list->ToString(),
              "{'id' => '1', 'tags' => 'a, b', }, {'id' => '2', 'tags' => 'a, b', }");
}

TEST(MetaListAccessTest, ToString_ManyElements_ReservesFifteenCharactersForEach) {
    const auto list = MetaList::New(MetaType::Int);
    list->AddAll(std::vector<long>(100, 1));
    EXPECT_GE(list->ToString().capacity(), 1500U);
}

TEST(MetaListAccessTest, ToString_ElementsOfForeignClasses_PrintInTheirOwnForm) {
    const auto strings = Strings({"a"});
    strings->Add(ImpostorValue::New(MetaType::String));
    EXPECT_EQ(strings->ToString(), "a, impostor");
    const auto numbers = MetaList::New(MetaType::Int);
    numbers->Add(ImpostorValue::New(MetaType::Int));
    EXPECT_EQ(numbers->ToString(), "impostor");
}

} // namespace
