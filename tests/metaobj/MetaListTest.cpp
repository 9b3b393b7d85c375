#include <CppTools/metaobj/MetaBool.h>
#include <CppTools/metaobj/MetaInt.h>
#include <CppTools/metaobj/MetaList.h>
#include <CppTools/metaobj/MetaString.h>
#include <CppTools/metaobj/MetaStruct.h>

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>
#include <tuple>
#include <type_traits>
#include <utility>
#include <vector>

#include "tests/support/ImpostorValue.h"
#include "tests/support/NamedRow.h"
#include "tests/support/Thrown.h"

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
using TestSupport::NamedRow;
using TestSupport::ThrownBy;
using namespace std::string_literals;

const std::string kNotScalar = "Integer, boolean or string type expected for list.";
const std::string kNotStruct = "Struct type expected for list.";
const std::string kLocked = "Unable to set new field z on structure. Structure has been locked";
const std::string kDidNotMatch =
    "There was an error adding an item to this list.  The item being added did not match the "
    "declared structure of this list, so it was not added.";

std::shared_ptr<MetaStruct> Point(long x, long y) {
    auto point = MetaStruct::New("Point");
    point->SetField("x", x);
    point->SetField("y", y);
    return point;
}

std::shared_ptr<MetaList> Strings(const std::vector<std::string>& texts) {
    auto list = MetaList::New(MetaType::String);
    list->AddAll(texts);
    return list;
}

std::shared_ptr<MetaList> ListOfKind(MetaType kind) {
    return kind == MetaType::Struct ? MetaList::New(kind, Point(0, 0)) : MetaList::New(kind);
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
        return Point(1, 2);
    case MetaType::List:
        return MetaList::New(MetaType::Int);
    }
    return nullptr;
}

// Numbers of kinds, which print readably in the names of cases.
MetaType KindOf(int number) {
    return static_cast<MetaType>(number);
}

class MetaListScalarFactoryTest : public testing::TestWithParam<int> {};

TEST_P(MetaListScalarFactoryTest, New_MakesAnEmptyListWithoutTemplate) {
    const auto list = MetaList::New(KindOf(GetParam()));
    EXPECT_EQ(list->GetType(), MetaType::List);
    EXPECT_EQ(list->GetListType(), KindOf(GetParam()));
    EXPECT_EQ(list->GetListStructure(), nullptr);
    EXPECT_EQ(list->GetCount(), 0U);
    EXPECT_TRUE(list->GetObjects().empty());
}

INSTANTIATE_TEST_SUITE_P(Kinds, MetaListScalarFactoryTest, testing::Values(0, 1, 2));

TEST(MetaListTest, New_StructWithoutTemplateArgument_Throws) {
    EXPECT_EQ(ThrownBy([] { MetaList::New(MetaType::Struct); }), kNotScalar);
}

TEST(MetaListTest, New_List_Throws) {
    EXPECT_EQ(ThrownBy([] { MetaList::New(MetaType::List); }), kNotScalar);
}

TEST(MetaListTest, Construction_OutsideTheFactories_IsImpossible) {
    EXPECT_FALSE((std::is_constructible_v<MetaList, MetaType>));
    EXPECT_FALSE((std::is_constructible_v<MetaList, MetaType, std::shared_ptr<MetaStruct>>));
    EXPECT_FALSE(std::is_copy_constructible_v<MetaList>);
}

using Structure = std::shared_ptr<MetaStruct>;

struct StructFactory : NamedRow {
    std::function<std::shared_ptr<MetaList>(MetaType, const Structure&)> make;
};

const StructFactory kFromObject = {{"template as MetaObject"}, [](MetaType type, Structure s) {
                                       return MetaList::New(type, std::shared_ptr<MetaObject>(s));
                                   }};
const StructFactory kFromMoved = {{"template moved in"}, [](MetaType type, Structure s) {
                                      return MetaList::New(type, std::move(s));
                                  }};
const StructFactory kFromShared = {
    {"template shared"}, [](MetaType type, const Structure& s) { return MetaList::New(type, s); }};

class MetaListStructFactoryTest : public testing::TestWithParam<StructFactory> {};

TEST_P(MetaListStructFactoryTest, New_Struct_KeepsAndLocksTheTemplate) {
    const auto structure = Point(0, 0);
    const auto list = GetParam().make(MetaType::Struct, structure);
    EXPECT_EQ(list->GetType(), MetaType::List);
    EXPECT_EQ(list->GetListType(), MetaType::Struct);
    EXPECT_EQ(list->GetListStructure(), structure);
    EXPECT_EQ(list->GetCount(), 0U);
    EXPECT_EQ(ThrownBy([&] { structure->SetField("z", 1); }), kLocked);
}

TEST_P(MetaListStructFactoryTest, New_StructWithEmptyTemplate_MakesAListWithoutTemplate) {
    const auto list = GetParam().make(MetaType::Struct, nullptr);
    EXPECT_EQ(list->GetListType(), MetaType::Struct);
    EXPECT_EQ(list->GetListStructure(), nullptr);
}

INSTANTIATE_TEST_SUITE_P(Forms, MetaListStructFactoryTest,
                         testing::Values(kFromObject, kFromMoved, kFromShared));

class MetaListRefusedTemplateTest : public testing::TestWithParam<std::tuple<StructFactory, int>> {
};

TEST_P(MetaListRefusedTemplateTest, New_OtherKindWithTemplate_ThrowsAndLocksNothing) {
    const auto& [factory, kind] = GetParam();
    const auto structure = Point(0, 0);
    EXPECT_EQ(ThrownBy([&, make = factory.make, type = KindOf(kind)] { make(type, structure); }),
              kNotStruct);
    structure->SetField("z", 1);
    EXPECT_EQ(structure->ToString(), "{'x' => '0', 'y' => '0', 'z' => '1', }");
}

INSTANTIATE_TEST_SUITE_P(Forms, MetaListRefusedTemplateTest,
                         testing::Combine(testing::Values(kFromObject, kFromMoved, kFromShared),
                                          testing::Values(0, 1, 2, 4)));

TEST(MetaListTest, New_StructMovedIn_TakesThePointerOver) {
    auto structure = Point(0, 0);
    const auto list = MetaList::New(MetaType::Struct, std::move(structure));
    EXPECT_EQ(list->GetListStructure().use_count(), 1);
}

TEST(MetaListTest, New_ValueThatIsNoStructure_BecomesAnEmptyTemplate) {
    const std::shared_ptr<MetaObject> text = MetaString::New("Point");
    EXPECT_EQ(MetaList::New(MetaType::Struct, text)->GetListStructure(), nullptr);
    EXPECT_EQ(
        MetaList::New(MetaType::Struct, ImpostorValue::New(MetaType::Struct))->GetListStructure(),
        nullptr);
}

template <typename Argument>
void AddThrough(MetaList& list, Argument argument) {
    const auto overload = static_cast<void (MetaList::*)(Argument)>(&MetaList::Add);
    (list.*overload)(std::forward<Argument>(argument));
}

template <typename Value>
std::shared_ptr<MetaObject> AddPointer(MetaList& list, Value value) {
    AddThrough<const Value&>(list, value);
    return value;
}

// Adds one element; returns the object that must then be in the list, or nothing when the list
// makes one of its own.
struct Addition : NamedRow {
    MetaType kind;
    std::function<std::shared_ptr<MetaObject>(MetaList&)> add;
    std::string text;
};

class MetaListAddTest : public testing::TestWithParam<Addition> {};

TEST_P(MetaListAddTest, Add_AppendsTheElement) {
    const auto list = ListOfKind(GetParam().kind);
    const auto expected = GetParam().add(*list);
    ASSERT_EQ(list->GetCount(), 1U);
    EXPECT_EQ(list->GetItem(0)->GetType(), GetParam().kind);
    EXPECT_EQ(list->GetItem(0)->ToString(), GetParam().text);
    if (expected) {
        EXPECT_EQ(list->GetItem(0), expected);
    }
}

INSTANTIATE_TEST_SUITE_P(
    Overloads, MetaListAddTest,
    testing::Values(
        Addition{{"MetaObject"},
                 MetaType::Int,
                 [](MetaList& l) {
                     return AddPointer<std::shared_ptr<MetaObject>>(l, MetaInt::New(77));
                 },
                 "77"},
        Addition{{"MetaBool"},
                 MetaType::Bool,
                 [](MetaList& l) { return AddPointer(l, MetaBool::New(true)); },
                 "true"},
        Addition{{"bool"},
                 MetaType::Bool,
                 [](MetaList& l) { return AddThrough<bool>(l, true), MetaBool::New(true); },
                 "true"},
        Addition{{"MetaInt"},
                 MetaType::Int,
                 [](MetaList& l) { return AddPointer(l, MetaInt::New(78)); },
                 "78"},
        Addition{{"long"},
                 MetaType::Int,
                 [](MetaList& l) { return AddThrough<long>(l, -4294967297L), nullptr; },
                 "-4294967297"},
        Addition{{"int"},
                 MetaType::Int,
                 [](MetaList& l) { return AddThrough<int>(l, 20), MetaInt::New(20); },
                 "20"},
        Addition{{"MetaString"},
                 MetaType::String,
                 [](MetaList& l) { return AddPointer(l, MetaString::New("eth0")); },
                 "eth0"},
        Addition{{"characters"},
                 MetaType::String,
                 [](MetaList& l) { return AddThrough<const char*>(l, "eth1"), nullptr; },
                 "eth1"},
        Addition{{"moved string"},
                 MetaType::String,
                 [](MetaList& l) { return AddThrough<std::string&&>(l, "eth2"), nullptr; },
                 "eth2"},
        Addition{{"string"},
                 MetaType::String,
                 [](MetaList& l) { return AddThrough<const std::string&>(l, "eth3"), nullptr; },
                 "eth3"},
        Addition{{"empty string"},
                 MetaType::String,
                 [](MetaList& l) { return AddThrough<const char*>(l, ""), MetaString::New(); },
                 ""},
        Addition{{"MetaStruct"},
                 MetaType::Struct,
                 [](MetaList& l) { return AddPointer(l, Point(3, 4)); },
                 "{'x' => '3', 'y' => '4', }"}));

TEST(MetaListTest, Add_MovedString_TakesItsCharactersOver) {
    std::string text = "a text too long for the string object itself";
    const char* const characters = text.data();
    const auto list = MetaList::New(MetaType::String);
    list->Add(std::move(text));
    EXPECT_EQ(std::dynamic_pointer_cast<MetaString>(list->GetItem(0))->GetValue().data(),
              characters);
}

TEST(MetaListTest, Add_SeveralElements_KeepsTheOrderOfInsertion) {
    const auto list = MetaList::New(MetaType::Int);
    list->Add(3);
    list->Add(1);
    list->Add(2);
    list->Add(1);
    EXPECT_EQ(list->ToString(), "3, 1, 2, 1");
}

struct NullAddition : NamedRow {
    std::function<void(MetaList&)> add;
};

class MetaListAddNullTest : public testing::TestWithParam<NullAddition> {};

TEST_P(MetaListAddNullTest, Add_NullPointer_ThrowsAndLeavesTheListUnchanged) {
    const auto list = Strings({"a"});
    EXPECT_EQ(ThrownBy([&] { GetParam().add(*list); }), "Null object passed to Add");
    EXPECT_EQ(list->GetCount(), 1U);
    EXPECT_EQ(list->ToString(), "a");
}

INSTANTIATE_TEST_SUITE_P(
    Overloads, MetaListAddNullTest,
    testing::Values(
        NullAddition{{"MetaObject"}, [](MetaList& l) { l.Add(std::shared_ptr<MetaObject>()); }},
        NullAddition{{"MetaBool"}, [](MetaList& l) { l.Add(std::shared_ptr<MetaBool>()); }},
        NullAddition{{"MetaInt"}, [](MetaList& l) { l.Add(std::shared_ptr<MetaInt>()); }},
        NullAddition{{"MetaString"}, [](MetaList& l) { l.Add(std::shared_ptr<MetaString>()); }},
        NullAddition{{"MetaStruct"}, [](MetaList& l) { l.Add(std::shared_ptr<MetaStruct>()); }}));

// Kind of the list, kind of the element.
class MetaListAddKindTest : public testing::TestWithParam<std::tuple<int, int>> {};

TEST_P(MetaListAddKindTest, Add_ElementOfEachKind_OnlyTheDeclaredKindIsAccepted) {
    const MetaType listKind = KindOf(std::get<0>(GetParam()));
    const MetaType itemKind = KindOf(std::get<1>(GetParam()));
    const auto list = ListOfKind(listKind);
    const std::string thrown = ThrownBy([&] { list->Add(ValueOfKind(itemKind)); });
    if (listKind == itemKind) {
        EXPECT_EQ(thrown, "<nothing was thrown>");
        EXPECT_EQ(list->GetCount(), 1U);
        return;
    }
    EXPECT_EQ(thrown, "Invalid type specificed in MetaList.  Expected object of type " +
                          MetaTypeString(listKind) + " got object of type " +
                          MetaTypeString(itemKind));
    EXPECT_EQ(list->GetCount(), 0U);
}

INSTANTIATE_TEST_SUITE_P(Kinds, MetaListAddKindTest,
                         testing::Combine(testing::Range(0, 4), testing::Range(0, 5)));

TEST(MetaListTest, Add_IntToStringList_ThrowsTheWholeText) {
    const auto list = Strings({"a", "b"});
    EXPECT_EQ(ThrownBy([&] { list->Add(MetaInt::New(1)); }),
              "Invalid type specificed in MetaList.  Expected object of type String got object of "
              "type Int");
    EXPECT_EQ(list->ToString(), "a, b");
}

std::string StructureRefusal(const std::vector<std::string>& messages) {
    std::string text = "Invalid structure detected by MetaList::Add.  Type Errors were: (" +
                       std::to_string(messages.size()) + ") : ";
    for (const auto& message : messages) {
        text += message + ", ";
    }
    return text;
}

TEST(MetaListTest, Add_StructureLackingAField_ThrowsThreeMessagesAndChangesNothing) {
    const auto list = MetaList::New(MetaType::Struct, Point(0, 0));
    list->Add(Point(1, 2));
    const auto incomplete = MetaStruct::New("Point");
    incomplete->SetField("x", 5);
    EXPECT_EQ(ThrownBy([&] { list->Add(incomplete); }),
              "Invalid structure detected by MetaList::Add.  Type Errors were: (3) : "
              "Mismatch on number of fields set in struct. Expected 2 found 1, "
              "Missing field in input: y, "
              "There was an error adding an item to this list.  The item being added did not "
              "match the declared structure of this list, so it was not added., ");
    EXPECT_EQ(list->ToString(), "{'x' => '1', 'y' => '2', }");
}

TEST(MetaListTest, Add_StructureWithAFieldTooMany_ThrowsTwoMessages) {
    const auto list = MetaList::New(MetaType::Struct, Point(0, 0));
    const auto surplus = Point(1, 2);
    surplus->SetField("z", 3);
    EXPECT_EQ(ThrownBy([&] { list->Add(surplus); }),
              StructureRefusal({"Mismatch on number of fields set in struct. Expected 2 found 3",
                                kDidNotMatch}));
    EXPECT_EQ(list->GetCount(), 0U);
}

TEST(MetaListTest, Add_StructureWithAFieldOfOtherKindAndOtherName_ThrowsAllMessagesInOrder) {
    const auto list = MetaList::New(MetaType::Struct, Point(0, 0));
    const auto other = MetaStruct::New("Place");
    other->SetField("x", 1);
    other->SetField("y", "north");
    EXPECT_EQ(
        ThrownBy([&] { list->Add(other); }),
        StructureRefusal({"Type names do not match.", "Type mismatch on field: y", kDidNotMatch}));
    EXPECT_EQ(list->GetCount(), 0U);
}

TEST(MetaListTest, Add_StructureThatDiffersInANestedOne_ThrowsTheMessagesOfEveryLevel) {
    const auto row = MetaStruct::New("Row");
    row->SetField("place", Point(0, 0));
    const auto list = MetaList::New(MetaType::Struct, row);
    const auto place = MetaStruct::New("Point");
    place->SetField("x", true);
    place->SetField("y", 1);
    const auto item = MetaStruct::New("Row");
    item->SetField("place", place);
    EXPECT_EQ(ThrownBy([&] { list->Add(item); }),
              StructureRefusal(
                  {"Type mismatch on field: x", "Type mismatch on field: place", kDidNotMatch}));
}

TEST(MetaListTest, Add_StructureOfOtherTypeNameWithSameFields_IsAccepted) {
    const auto list = MetaList::New(MetaType::Struct, Point(0, 0));
    const auto other = MetaStruct::New("Place");
    other->SetField("x", 1);
    other->SetField("y", 2);
    list->Add(other);
    EXPECT_EQ(list->GetItem(0), other);
}

TEST(MetaListTest, Add_AnythingToAStructListWithoutTemplate_Throws) {
    const auto list = MetaList::New(MetaType::Struct, std::shared_ptr<MetaStruct>());
    EXPECT_EQ(ThrownBy([&] { list->Add(Point(1, 2)); }),
              "Invalid structure detected by MetaList::Add.  Type Errors were: (1) : List created "
              "with NULL structure.  No items can be added to this list., ");
    EXPECT_EQ(list->GetCount(), 0U);
}

TEST(MetaListTest, Add_ElementChangedLater_StaysInTheList) {
    const auto list = MetaList::New(MetaType::Struct, Point(0, 0));
    const auto point = Point(1, 2);
    list->Add(point);
    point->RemoveField("y");
    EXPECT_EQ(list->ToString(), "{'x' => '1', }");
}

} // namespace
