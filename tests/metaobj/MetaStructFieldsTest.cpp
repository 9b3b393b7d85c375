#include <CppTools/metaobj/MetaBool.h>
#include <CppTools/metaobj/MetaInt.h>
#include <CppTools/metaobj/MetaList.h>
#include <CppTools/metaobj/MetaString.h>
#include <CppTools/metaobj/MetaStruct.h>

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

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
using TestSupport::NamedRow;
using TestSupport::ThrownBy;

using Booleans = std::vector<bool>;
using Integers = std::vector<long>;
using Strings = std::vector<std::string>;

/// Sets the field "f" through exactly the overload for a name and a value of these types.
template <typename Name, typename Value>
void Set(MetaStruct& structure, Value value) {
    const auto overload = static_cast<void (MetaStruct::*)(Name, Value)>(&MetaStruct::SetField);
    (structure.*overload)("f", std::forward<Value>(value));
}

template <typename Name, typename Kind>
void SetPointer(MetaStruct& structure, const std::shared_ptr<Kind>& value) {
    Set<Name, const std::shared_ptr<Kind>&>(structure, value);
}

std::shared_ptr<MetaList> OneAndTwo() {
    auto list = MetaList::New(MetaType::Int);
    list->AddAll(Integers{1, 2});
    return list;
}

std::shared_ptr<MetaStruct> Inner() {
    auto inner = MetaStruct::New("Inner");
    inner->SetField("x", 1);
    return inner;
}

struct Setting : NamedRow {
    std::function<void(MetaStruct&)> set;
    MetaType kind;
    std::string text;
};

template <typename Name>
std::vector<Setting> Settings() {
    using Row = MetaStruct;
    return {
        {{"MetaObject"},
         [](Row& s) { SetPointer<Name, MetaObject>(s, MetaInt::New(1000)); },
         MetaType::Int,
         "1000"},
        {{"MetaList"}, [](Row& s) { SetPointer<Name>(s, OneAndTwo()); }, MetaType::List, "1, 2"},
        {{"MetaStruct"},
         [](Row& s) { SetPointer<Name>(s, Inner()); },
         MetaType::Struct,
         "{'x' => '1', }"},
        {{"MetaInt"}, [](Row& s) { SetPointer<Name>(s, MetaInt::New(77)); }, MetaType::Int, "77"},
        {{"MetaBool"},
         [](Row& s) { SetPointer<Name>(s, MetaBool::New(true)); },
         MetaType::Bool,
         "true"},
        {{"MetaString"},
         [](Row& s) { SetPointer<Name>(s, MetaString::New("eth0")); },
         MetaType::String,
         "eth0"},
        {{"long"}, [](Row& s) { Set<Name, long>(s, -4294967297L); }, MetaType::Int, "-4294967297"},
        {{"int"}, [](Row& s) { Set<Name, int>(s, -7); }, MetaType::Int, "-7"},
        {{"bool"}, [](Row& s) { Set<Name, bool>(s, true); }, MetaType::Bool, "true"},
        {{"string"},
         [](Row& s) { Set<Name, const std::string&>(s, "eth1"); },
         MetaType::String,
         "eth1"},
        {{"characters"},
         [](Row& s) { Set<Name, const char*>(s, "eth2"); },
         MetaType::String,
         "eth2"},
        {{"moved string"},
         [](Row& s) { Set<Name, std::string&&>(s, "eth3"); },
         MetaType::String,
         "eth3"},
        {{"strings"},
         [](Row& s) {
             Set<Name, const Strings&>(s, {"b", "a"});
         },
         MetaType::List,
         "b, a"},
        {{"moved strings"},
         [](Row& s) {
             Set<Name, Strings&&>(s, {"d", "c"});
         },
         MetaType::List,
         "d, c"},
        {{"integers"},
         [](Row& s) {
             Set<Name, const Integers&>(s, {4294967296L, -1});
         },
         MetaType::List,
         "4294967296, -1"},
        {{"booleans"},
         [](Row& s) {
             Set<Name, const Booleans&>(s, {false, true});
         },
         MetaType::List,
         "false, true"},
    };
}

class MetaStructFieldsTest : public testing::TestWithParam<Setting> {};

TEST_P(MetaStructFieldsTest, SetField_StoresTheValueWithoutDocumentation) {
    const auto structure = MetaStruct::New("Row");
    structure->SetField("f", MetaString::New("old"), "old documentation");
    GetParam().set(*structure);
    EXPECT_EQ(structure->GetFieldNames(), Strings{"f"});
    EXPECT_EQ(structure->GetFieldType("f"), GetParam().kind);
    EXPECT_EQ(structure->GetField("f")->ToString(), GetParam().text);
    EXPECT_EQ(structure->GetFieldDocumentation("f"), "Documentation missing");
}

TEST_P(MetaStructFieldsTest, SetField_LockedStructure_RefusesTheNewField) {
    const auto structure = MetaStruct::New("Row");
    structure->LockStructure();
    EXPECT_EQ(ThrownBy([&] { GetParam().set(*structure); }),
              "Unable to set new field f on structure. Structure has been locked");
    EXPECT_EQ(structure->ToString(), "{}");
}

INSTANTIATE_TEST_SUITE_P(NamedByString, MetaStructFieldsTest,
                         testing::ValuesIn(Settings<const std::string&>()));
INSTANTIATE_TEST_SUITE_P(NamedByCharacters, MetaStructFieldsTest,
                         testing::ValuesIn(Settings<const char*>()));

template <typename Kind>
class MetaStructPointerFieldTest : public testing::Test {};

using Kinds = testing::Types<MetaObject, MetaList, MetaStruct, MetaInt, MetaBool, MetaString>;
TYPED_TEST_SUITE(MetaStructPointerFieldTest, Kinds);

TYPED_TEST(MetaStructPointerFieldTest, SetField_NullPointer_ThrowsAndChangesNothing) {
    const auto structure = MetaStruct::New("Row");
    structure->SetField("f", MetaInt::New(1), "kept");
    const std::shared_ptr<TypeParam> null;
    const std::string message =
        "Invalid NULL value was assigned to the field f in the structure Row";
    EXPECT_EQ(ThrownBy([&] { SetPointer<const std::string&>(*structure, null); }), message);
    EXPECT_EQ(ThrownBy([&] { SetPointer<const char*>(*structure, null); }), message);
    EXPECT_EQ(structure->ToString(), "{'f' => '1', }");
    EXPECT_EQ(structure->GetFieldDocumentation("f"), "kept");
}

template <typename Kind>
void ExpectTheObjectItself(const std::shared_ptr<Kind>& value) {
    const auto structure = MetaStruct::New("Row");
    SetPointer<const std::string&>(*structure, value);
    EXPECT_EQ(structure->GetField("f"), value);
    structure->RemoveField("f");
    SetPointer<const char*>(*structure, value);
    EXPECT_EQ(structure->GetField("f"), value);
}

TEST(MetaStructFieldsTest, SetField_Pointer_StoresTheObjectItself) {
    ExpectTheObjectItself<MetaObject>(MetaInt::New(1000));
    ExpectTheObjectItself(OneAndTwo());
    ExpectTheObjectItself(Inner());
    ExpectTheObjectItself(MetaInt::New(1001));
    ExpectTheObjectItself(MetaString::New("eth0"));
    ExpectTheObjectItself(MetaBool::New(false));
}

TEST(MetaStructFieldsTest, SetField_CommonValue_StoresTheSharedInstance) {
    const auto structure = MetaStruct::New("Row");
    structure->SetField("int", 20);
    structure->SetField("bool", false);
    structure->SetField("string", "");
    EXPECT_EQ(structure->GetField("int"), MetaInt::New(20));
    EXPECT_EQ(structure->GetField("bool"), MetaBool::New());
    EXPECT_EQ(structure->GetField("string"), MetaString::New());
}

TEST(MetaStructFieldsTest, SetField_String_IsCopiedWhateverItsLength) {
    for (const std::size_t length : {0U, 1U, 15U, 16U, 1024U, 1025U, 100000U}) {
        const std::string text(length, 'x');
        const auto structure = MetaStruct::New("Row");
        structure->SetField("f", text);
        structure->SetField("g", text.c_str());
        EXPECT_EQ(structure->GetField("f")->ToString(), text);
        EXPECT_EQ(structure->GetField("g")->ToString(), text);
    }
}

TEST(MetaStructFieldsTest, SetField_TextOfTheFieldItself_StaysTheSame) {
    for (const std::size_t length : {3U, 100U, 5000U}) {
        const std::string text(length, 'x');
        const auto structure = MetaStruct::New("Row");
        structure->SetField("f", text);
        const auto* value = dynamic_cast<const MetaString*>(structure->GetField("f").get());
        ASSERT_NE(value, nullptr);
        structure->SetField("f", value->GetValue());
        EXPECT_EQ(structure->GetField("f")->ToString(), text);
    }
}

TEST(MetaStructFieldsTest, SetField_MovedString_IsTakenOverWhateverItsLength) {
    for (const std::size_t length : {1U, 15U, 16U, 1024U, 1025U, 100000U}) {
        std::string text(length, 'x');
        const auto structure = MetaStruct::New("Row");
        structure->SetField("f", std::move(text));
        EXPECT_EQ(text, "") << length; // NOLINT(bugprone-use-after-move)
        EXPECT_EQ(structure->GetField("f")->ToString(), std::string(length, 'x'));
    }
}

TEST(MetaStructFieldsTest, SetField_MovedLongString_TakesItsCharactersOver) {
    std::string text(100000, 'x');
    const char* const characters = text.data();
    const auto structure = MetaStruct::New("Row");
    structure->SetField("f", std::move(text));
    const auto value = std::dynamic_pointer_cast<MetaString>(structure->GetField("f"));
    ASSERT_NE(value, nullptr);
    EXPECT_EQ(value->GetValue().data(), characters);
}

template <typename Values>
MetaType ElementKindOf(const Values& values) {
    const auto structure = MetaStruct::New("Row");
    structure->SetField("f", values);
    const auto list = std::dynamic_pointer_cast<MetaList>(structure->GetField("f"));
    return list ? list->GetListType() : MetaType::List;
}

TEST(MetaStructFieldsTest, SetField_Vector_MakesAListOfItsElementKind) {
    EXPECT_EQ(ElementKindOf(Strings{"a"}), MetaType::String);
    EXPECT_EQ(ElementKindOf(Integers{1}), MetaType::Int);
    EXPECT_EQ(ElementKindOf(Booleans{true}), MetaType::Bool);
}

TEST(MetaStructFieldsTest, SetField_EmptyVector_MakesAnEmptyListOfItsElementKind) {
    EXPECT_EQ(ElementKindOf(Strings{}), MetaType::String);
    EXPECT_EQ(ElementKindOf(Integers{}), MetaType::Int);
    EXPECT_EQ(ElementKindOf(Booleans{}), MetaType::Bool);
    const auto structure = MetaStruct::New("Row");
    structure->SetField("f", Strings{});
    EXPECT_EQ(structure->ToString(), "{'f' => '', }");
}

} // namespace
