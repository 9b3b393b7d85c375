#include <CppTools/metaobj/MetaBool.h>
#include <CppTools/metaobj/MetaInt.h>
#include <CppTools/metaobj/MetaList.h>
#include <CppTools/metaobj/MetaString.h>
#include <CppTools/metaobj/MetaStruct.h>

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include "tests/support/NamedRow.h"
#include "tests/support/Thrown.h"

namespace {

using CppTools::MetaObj::IsValidFieldName;
using CppTools::MetaObj::IsValidStructName;
using CppTools::MetaObj::MetaInt;
using CppTools::MetaObj::MetaList;
using CppTools::MetaObj::MetaObject;
using CppTools::MetaObj::MetaString;
using CppTools::MetaObj::MetaStruct;
using CppTools::MetaObj::MetaType;
using TestSupport::NamedRow;
using TestSupport::ThrownBy;
using namespace std::string_literals;

const std::string kNothingThrown = "<nothing was thrown>";
const std::string kCannotRemove = "Structure is locked, unable to remove fields";

std::string LockedMessage(const std::string& field) {
    return "Unable to set new field " + field + " on structure. Structure has been locked";
}

std::string UndefinedMessage(const std::string& field) {
    return "Unable to set new field " + field +
           " on structure.  The field does not match the Structure definition for this "
           "MetaStruct.";
}

std::shared_ptr<MetaStruct> Pair() {
    auto pair = MetaStruct::New("Pair");
    pair->SetField("a", 1);
    pair->SetField("b", 2);
    return pair;
}

struct Name : NamedRow {
    std::string text;
};

class MetaStructValidNameTest : public testing::TestWithParam<std::string> {};

TEST_P(MetaStructValidNameTest, New_LettersAndDigits_AreAcceptedInEveryForm) {
    const std::string& name = GetParam();
    EXPECT_TRUE(IsValidStructName(name));
    EXPECT_EQ(MetaStruct::New(name)->GetTypeName(), name);
    EXPECT_EQ(MetaStruct::New(std::string(name))->GetTypeName(), name);
    EXPECT_EQ(MetaStruct::New(name.c_str())->GetTypeName(), name);
}

INSTANTIATE_TEST_SUITE_P(Names, MetaStructValidNameTest,
                         testing::Values("Disk2", "a", "Z", "0", "9", "2Disks", "abcXYZ019"));

class MetaStructInvalidNameTest : public testing::TestWithParam<Name> {};

TEST_P(MetaStructInvalidNameTest, New_AnythingElse_ThrowsWithTheName) {
    const std::string& name = GetParam().text;
    const std::string message = "Invalid name specified for MetaStruct: " + name;
    EXPECT_FALSE(IsValidStructName(name));
    EXPECT_EQ(ThrownBy([&] { MetaStruct::New(name); }), message);
    EXPECT_EQ(ThrownBy([&] { MetaStruct::New(std::string(name)); }), message);
    EXPECT_EQ(ThrownBy([&] { MetaStruct::New(name.c_str()); }), message);
}

INSTANTIATE_TEST_SUITE_P(
    Names, MetaStructInvalidNameTest,
    testing::Values(Name{{"empty"}, ""}, Name{{"underscore"}, "disk_info"},
                    Name{{"inner blank"}, "disk info"}, Name{{"blank in front"}, " Disk"},
                    Name{{"blank behind"}, "Disk "}, Name{{"line end behind"}, "Disk\n"},
                    Name{{"hyphen"}, "disk-info"}, Name{{"dot"}, "disk.info"},
                    Name{{"character before 0"}, "a/"}, Name{{"character after 9"}, "a:"},
                    Name{{"character before A"}, "a@"}, Name{{"character before a"}, "a`"},
                    Name{{"character after z"}, "a{"},
                    Name{{"letter beyond ASCII"}, "d\xC3\xAFsk"}));

TEST(MetaStructTest, IsValidStructName_EmbeddedNul_IsRefused) {
    EXPECT_FALSE(IsValidStructName("Disk\0Info"s));
    EXPECT_FALSE(IsValidStructName("Disk\0"s));
}

TEST(MetaStructTest, New_NameOfAMillionCharacters_IsJudgedLikeAnyOther) {
    const std::string name(1000000, 'a');
    EXPECT_EQ(MetaStruct::New(name)->GetTypeName(), name);
    EXPECT_EQ(ThrownBy([&] { MetaStruct::New(name + "_"); }),
              "Invalid name specified for MetaStruct: " + name + "_");
}

class MetaStructFieldNameTest : public testing::TestWithParam<Name> {};

TEST_P(MetaStructFieldNameTest, SetField_AnyName_IsAccepted) {
    const std::string& name = GetParam().text;
    EXPECT_TRUE(IsValidFieldName(name));
    const auto structure = MetaStruct::New("Row");
    structure->SetField(name, 1);
    EXPECT_TRUE(structure->HasField(name));
    EXPECT_EQ(structure->GetFieldNames(), std::vector<std::string>{name});
}

INSTANTIATE_TEST_SUITE_P(Names, MetaStructFieldNameTest,
                         testing::Values(Name{{"plain"}, "size"}, Name{{"empty"}, ""},
                                         Name{{"blank"}, "a b"}, Name{{"underscore"}, "disk_info"},
                                         Name{{"punctuation"}, "'=>{}.%"},
                                         Name{{"line end"}, "a\n"},
                                         Name{{"beyond ASCII"},
                                              "gr\xC3\xB6\xC3\x9F"
                                              "e"},
                                         Name{{"ill-formed"}, "\xFF"}, Name{{"NUL"}, "a\0b"s}));

TEST(MetaStructTest, New_FromName_IsAnEmptyStructureWithoutDefinition) {
    const auto structure = MetaStruct::New("Disk2");
    EXPECT_EQ(structure->GetType(), MetaType::Struct);
    EXPECT_TRUE(structure->GetFieldNames().empty());
    EXPECT_FALSE(structure->HasStructureDefinition());
    EXPECT_EQ(structure->GetStructureDefinition(), nullptr);
    EXPECT_EQ(structure->ToString(), "{}");
}

TEST(MetaStructTest, New_FromName_IsUnlocked) {
    const auto structure = MetaStruct::New("Disk2");
    structure->SetField("a", 1);
    structure->RemoveField("a");
    EXPECT_FALSE(structure->HasField("a"));
}

TEST(MetaStructTest, Construction_OutsideTheFactories_IsImpossible) {
    EXPECT_FALSE((std::is_constructible_v<MetaStruct, std::string>));
    EXPECT_FALSE((std::is_constructible_v<MetaStruct, std::shared_ptr<MetaStruct>>));
    EXPECT_FALSE(std::is_default_constructible_v<MetaStruct>);
    EXPECT_FALSE(std::is_copy_constructible_v<MetaStruct>);
}

TEST(MetaStructTest, GetTypeName_ReturnsTheStoredNameItself) {
    const auto structure = MetaStruct::New("Disk2");
    EXPECT_EQ(&structure->GetTypeName(), &structure->GetTypeName());
}

TEST(MetaStructTest, New_FromDefinition_TakesItsNameButNoFields) {
    const auto definition = Pair();
    const auto structure = MetaStruct::New(definition);
    EXPECT_EQ(structure->GetTypeName(), "Pair");
    EXPECT_TRUE(structure->HasStructureDefinition());
    EXPECT_EQ(structure->GetStructureDefinition(), definition);
    EXPECT_TRUE(structure->GetFieldNames().empty());
}

TEST(MetaStructTest, New_FromDefinition_LocksTheDefinition) {
    const auto definition = Pair();
    MetaStruct::New(definition);
    EXPECT_EQ(ThrownBy([&] { definition->SetField("c", 3); }), LockedMessage("c"));
    EXPECT_EQ(ThrownBy([&] { definition->RemoveField("a"); }), kCannotRemove);
    EXPECT_EQ(definition->ToString(), "{'a' => '1', 'b' => '2', }");
}

TEST(MetaStructTest, New_FromDefinition_IsItselfUnlocked) {
    const auto structure = MetaStruct::New(Pair());
    structure->SetField("a", 1);
    structure->SetField("b", 2);
    structure->RemoveField("a");
    EXPECT_EQ(structure->ToString(), "{'b' => '2', }");
}

TEST(MetaStructTest, SetField_DefinedFields_AreCreatedAndReplaced) {
    const auto structure = MetaStruct::New(Pair());
    structure->SetField("a", 1);
    structure->SetField("a", "a text, though the definition has a number");
    EXPECT_EQ(structure->ToString(), "{'a' => 'a text, though the definition has a number', }");
}

TEST(MetaStructTest, SetField_FieldMissingInTheDefinition_ThrowsAndChangesNothing) {
    const auto structure = MetaStruct::New(Pair());
    structure->SetField("a", 1);
    EXPECT_EQ(ThrownBy([&] { structure->SetField("c", 3); }),
              "Unable to set new field c on structure.  The field does not match the Structure "
              "definition for this MetaStruct.");
    EXPECT_EQ(structure->ToString(), "{'a' => '1', }");
}

TEST(MetaStructTest, SetField_DefinitionOfTheDefinition_DoesNotCount) {
    const auto middle = MetaStruct::New(Pair());
    middle->SetField("a", 1);
    const auto structure = MetaStruct::New(middle);
    structure->SetField("a", 1);
    EXPECT_EQ(ThrownBy([&] { structure->SetField("b", 2); }), UndefinedMessage("b"));
}

TEST(MetaStructTest, SetField_NewAndPresentField_IsCreatedAndReplaced) {
    const auto structure = MetaStruct::New("Row");
    structure->SetField("a", 1);
    structure->SetField("a", "x");
    EXPECT_EQ(structure->GetFieldType("a"), MetaType::String);
    EXPECT_EQ(structure->ToString(), "{'a' => 'x', }");
}

TEST(MetaStructTest, SetField_WithDocumentation_StoresValueAndDocumentation) {
    const auto structure = MetaStruct::New("Row");
    const auto value = MetaInt::New(100);
    structure->SetField("a", value, "The size in bytes");
    EXPECT_EQ(structure->GetField("a"), value);
    EXPECT_EQ(structure->GetFieldDocumentation("a"), "The size in bytes");
}

TEST(MetaStructTest, SetField_Replacement_ReplacesTheDocumentationToo) {
    const auto structure = MetaStruct::New("Row");
    structure->SetField("a", MetaInt::New(1), "first");
    structure->SetField("a", MetaInt::New(2), "second");
    EXPECT_EQ(structure->GetFieldDocumentation("a"), "second");
    structure->SetField("a", 3);
    EXPECT_EQ(structure->GetFieldDocumentation("a"), "Documentation missing");
}

TEST(MetaStructTest, SetField_NullValue_ThrowsAndChangesNothing) {
    const auto structure = MetaStruct::New("Row");
    structure->SetField("a", MetaInt::New(1), "kept");
    EXPECT_EQ(ThrownBy([&] { structure->SetField("a", std::shared_ptr<MetaObject>(), "new"); }),
              "Invalid NULL value was assigned to the field a in the structure Row");
    EXPECT_EQ(structure->ToString(), "{'a' => '1', }");
    EXPECT_EQ(structure->GetFieldDocumentation("a"), "kept");
}

TEST(MetaStructTest, SetField_NullValueForARefusedField_ReportsTheNullFirst) {
    const std::shared_ptr<MetaObject> null;
    const auto locked = MetaStruct::New("Row");
    locked->LockStructure();
    const std::string message = "Invalid NULL value was assigned to the field z in the structure ";
    EXPECT_EQ(ThrownBy([&] { locked->SetField("z", null, ""); }), message + "Row");
    const auto defined = MetaStruct::New(Pair());
    EXPECT_EQ(ThrownBy([&] { defined->SetField("z", null, ""); }), message + "Pair");
}

TEST(MetaStructTest, SetField_LockedStructure_PresentFieldIsReplaced) {
    const auto structure = Pair();
    structure->LockStructure();
    structure->SetField("a", MetaString::New("of other kind"), "documented now");
    EXPECT_EQ(structure->ToString(), "{'a' => 'of other kind', 'b' => '2', }");
    EXPECT_EQ(structure->GetFieldDocumentation("a"), "documented now");
}

TEST(MetaStructTest, SetField_LockedStructure_NewFieldIsRefused) {
    const auto structure = Pair();
    structure->LockStructure();
    EXPECT_EQ(ThrownBy([&] { structure->SetField("x", 1); }),
              "Unable to set new field x on structure. Structure has been locked");
    EXPECT_EQ(structure->ToString(), "{'a' => '1', 'b' => '2', }");
}

TEST(MetaStructTest, SetField_LockedStructureWithDefinition_TheLockDecides) {
    const auto structure = MetaStruct::New(Pair());
    structure->SetField("a", 1);
    structure->LockStructure();
    EXPECT_EQ(ThrownBy([&] { structure->SetField("b", 2); }), LockedMessage("b"));
    EXPECT_EQ(ThrownBy([&] { structure->SetField("c", 3); }), LockedMessage("c"));
    structure->SetField("a", 9);
    EXPECT_EQ(structure->ToString(), "{'a' => '9', }");
}

TEST(MetaStructTest, LockStructure_Twice_StaysLocked) {
    const auto structure = Pair();
    structure->LockStructure();
    structure->LockStructure();
    EXPECT_EQ(ThrownBy([&] { structure->SetField("x", 1); }), LockedMessage("x"));
}

TEST(MetaStructTest, RemoveField_LockedStructure_ThrowsForAnyName) {
    const auto structure = Pair();
    structure->LockStructure();
    EXPECT_EQ(ThrownBy([&] { structure->RemoveField("a"); }), kCannotRemove);
    EXPECT_EQ(ThrownBy([&] { structure->RemoveField("absent"); }), kCannotRemove);
    EXPECT_EQ(structure->ToString(), "{'a' => '1', 'b' => '2', }");
}

TEST(MetaStructTest, RemoveField_PresentField_LeavesTheOthers) {
    const auto structure = Pair();
    structure->RemoveField("a");
    EXPECT_EQ(structure->ToString(), "{'b' => '2', }");
    EXPECT_FALSE(structure->HasField("a"));
    EXPECT_EQ(structure->GetField("a"), nullptr);
}

TEST(MetaStructTest, RemoveField_AbsentField_IsNoError) {
    const auto structure = Pair();
    EXPECT_EQ(ThrownBy([&] { structure->RemoveField("absent"); }), kNothingThrown);
    EXPECT_EQ(structure->ToString(), "{'a' => '1', 'b' => '2', }");
}

TEST(MetaStructTest, HasField_KnowsExactNamesOnly) {
    const auto structure = Pair();
    EXPECT_TRUE(structure->HasField("a"));
    EXPECT_FALSE(structure->HasField("A"));
    EXPECT_FALSE(structure->HasField(""));
    EXPECT_FALSE(structure->HasField("a "));
}

TEST(MetaStructTest, GetField_UnknownName_IsEmpty) {
    EXPECT_EQ(Pair()->GetField("c"), nullptr);
}

TEST(MetaStructTest, GetFieldType_IsTheKindOfTheValue) {
    const auto structure = MetaStruct::New("Row");
    structure->SetField("int", 1);
    structure->SetField("bool", true);
    structure->SetField("string", "x");
    structure->SetField("struct", Pair());
    structure->SetField("list", MetaList::New(MetaType::Int));
    EXPECT_EQ(structure->GetFieldType("int"), MetaType::Int);
    EXPECT_EQ(structure->GetFieldType("bool"), MetaType::Bool);
    EXPECT_EQ(structure->GetFieldType("string"), MetaType::String);
    EXPECT_EQ(structure->GetFieldType("struct"), MetaType::Struct);
    EXPECT_EQ(structure->GetFieldType("list"), MetaType::List);
}

TEST(MetaStructTest, GetFieldType_UnknownName_ThrowsTheIntegerOne) {
    int thrown = 0;
    try {
        Pair()->GetFieldType("c");
    } catch (int number) {
        thrown = number;
    }
    EXPECT_EQ(thrown, 1);
}

TEST(MetaStructTest, GetFieldDocumentation_FieldWithoutAny_SaysSo) {
    const auto structure = Pair();
    structure->SetField("c", MetaInt::New(3), "");
    EXPECT_EQ(structure->GetFieldDocumentation("a"), "Documentation missing");
    EXPECT_EQ(structure->GetFieldDocumentation("c"), "Documentation missing");
}

TEST(MetaStructTest, GetFieldDocumentation_UnknownName_Throws) {
    EXPECT_EQ(ThrownBy([] { Pair()->GetFieldDocumentation("c"); }),
              "Field c is not present in the structure Pair");
}

TEST(MetaStructTest, GetFieldNames_AreInAscendingByteOrder) {
    const auto structure = MetaStruct::New("Row");
    for (const char* name : {"b", "\xC3\xA9", "B", "a", "_", "10", "2", "", "aa"}) {
        structure->SetField(name, 1);
    }
    EXPECT_EQ(structure->GetFieldNames(),
              (std::vector<std::string>{"", "10", "2", "B", "_", "a", "aa", "b", "\xC3\xA9"}));
}

TEST(MetaStructTest, GetStructureDefinition_ReturnsTheStoredPointerItself) {
    const auto structure = MetaStruct::New(Pair());
    EXPECT_EQ(&structure->GetStructureDefinition(), &structure->GetStructureDefinition());
}

TEST(MetaStructTest, Field_CopiedAndAssigned_KeepsValueAndDocumentation) {
    const MetaStruct::Field original{MetaInt::New(100), "documented"};
    const MetaStruct::Field copy = original;
    MetaStruct::Field assigned;
    EXPECT_EQ(assigned.value, nullptr);
    EXPECT_EQ(assigned.documentation, "");
    assigned = copy;
    EXPECT_EQ(assigned.value, original.value);
    EXPECT_EQ(assigned.documentation, "documented");
}

} // namespace
