#include <CppTools/metaobj/MetaBool.h>
#include <CppTools/metaobj/MetaInt.h>
#include <CppTools/metaobj/MetaList.h>
#include <CppTools/metaobj/MetaObject.h>
#include <CppTools/metaobj/MetaString.h>
#include <CppTools/metaobj/MetaStruct.h>

#include <gtest/gtest.h>

#include <map>
#include <memory>
#include <sstream>
#include <string>
#include <tuple>
#include <type_traits>
#include <utility>
#include <vector>

#include "tests/support/ImpostorValue.h"
#include "tests/support/VirtualSlot.h"
#include "tests/support/VirtualTableSize.h"

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
using TestSupport::kUnknownKind;
using Messages = std::vector<std::string>;

std::shared_ptr<MetaObject> ValueOfKind(const std::string& kind) {
    const std::map<std::string, std::shared_ptr<MetaObject>> values = {
        {"Int", MetaInt::New(3)},
        {"Bool", MetaBool::New(true)},
        {"String", MetaString::New("text")},
        {"Struct", MetaStruct::New("Row")},
        {"List", MetaList::New(MetaType::Int)},
    };
    return values.at(kind);
}

using Kind = std::pair<int, std::string>;

class MetaTypeStringTest : public testing::TestWithParam<Kind> {};

TEST_P(MetaTypeStringTest, Number_HasItsPrintedName) {
    EXPECT_EQ(MetaTypeString(static_cast<MetaType>(GetParam().first)), GetParam().second);
}

INSTANTIATE_TEST_SUITE_P(Kinds, MetaTypeStringTest,
                         testing::Values(Kind{0, "Int"}, Kind{1, "Bool"}, Kind{2, "String"},
                                         Kind{3, "Struct"}, Kind{4, "List"}, Kind{5, ""},
                                         Kind{6, ""}, Kind{7, ""}, Kind{-1, ""},
                                         Kind{1000000, ""}));

TEST(MetaTypeTest, Names_HaveTheirNumbers) {
    EXPECT_EQ(static_cast<int>(MetaType::Int), 0);
    EXPECT_EQ(static_cast<int>(MetaType::Bool), 1);
    EXPECT_EQ(static_cast<int>(MetaType::String), 2);
    EXPECT_EQ(static_cast<int>(MetaType::Struct), 3);
    EXPECT_EQ(static_cast<int>(MetaType::List), 4);
}

TEST(MetaTypeTest, MetaTypeString_SameKindTwice_ReturnsOneString) {
    EXPECT_EQ(&MetaTypeString(MetaType::List), &MetaTypeString(MetaType::List));
    EXPECT_EQ(&MetaTypeString(kUnknownKind), &MetaTypeString(static_cast<MetaType>(8)));
}

class MetaObjectKindTest : public testing::TestWithParam<std::string> {};

TEST_P(MetaObjectKindTest, GetType_IsTheKindOfTheClass) {
    EXPECT_EQ(MetaTypeString(ValueOfKind(GetParam())->GetType()), GetParam());
}

TEST_P(MetaObjectKindTest, StreamOutput_WritesThePlainText) {
    const auto value = ValueOfKind(GetParam());
    std::ostringstream out;
    out << "<" << *value << ">";
    EXPECT_EQ(out.str(), "<" + value->ToString() + ">");
}

INSTANTIATE_TEST_SUITE_P(Kinds, MetaObjectKindTest,
                         testing::Values("Int", "Bool", "String", "Struct", "List"));

TEST(MetaObjectTest, StreamOutput_ReturnsTheStreamGiven) {
    std::ostringstream out;
    EXPECT_EQ(&(out << *MetaInt::New(-5)), &out);
    EXPECT_EQ(out.str(), "-5");
}

using Comparison = std::tuple<std::string, std::string>;

class MetaObjectComparisonTest : public testing::TestWithParam<Comparison> {
  protected:
    bool Fits(Messages* errors) const {
        const auto& [pattern, candidate] = GetParam();
        return ValueOfKind(pattern)->MetaObject::IsSameStructure(ValueOfKind(candidate), errors);
    }
};

class MetaObjectFittingTest : public MetaObjectComparisonTest {};

TEST_P(MetaObjectFittingTest, IsSameStructure_SameScalarKind_IsTrueAndRecordsNothing) {
    Messages errors = {"earlier"};
    EXPECT_TRUE(Fits(&errors));
    EXPECT_EQ(errors, Messages{"earlier"});
    EXPECT_TRUE(Fits(nullptr));
}

INSTANTIATE_TEST_SUITE_P(Pairs, MetaObjectFittingTest,
                         testing::Values(Comparison{"Int", "Int"}, Comparison{"Bool", "Bool"},
                                         Comparison{"String", "String"}));

class MetaObjectMismatchTest : public MetaObjectComparisonTest {};

TEST_P(MetaObjectMismatchTest, IsSameStructure_IsFalseAndNamesBothKinds) {
    Messages errors = {"earlier"};
    EXPECT_FALSE(Fits(&errors));
    const auto& [pattern, candidate] = GetParam();
    const std::string message =
        "Type mismatch in structure.  Expecting " + pattern + " got " + candidate;
    EXPECT_EQ(errors, (Messages{"earlier", message}));
    EXPECT_FALSE(Fits(nullptr));
}

INSTANTIATE_TEST_SUITE_P(FromInt, MetaObjectMismatchTest,
                         testing::Combine(testing::Values("Int"),
                                          testing::Values("Bool", "String", "Struct", "List")));
INSTANTIATE_TEST_SUITE_P(FromBool, MetaObjectMismatchTest,
                         testing::Combine(testing::Values("Bool"),
                                          testing::Values("Int", "String", "Struct", "List")));
INSTANTIATE_TEST_SUITE_P(FromString, MetaObjectMismatchTest,
                         testing::Combine(testing::Values("String"),
                                          testing::Values("Int", "Bool", "Struct", "List")));
INSTANTIATE_TEST_SUITE_P(FromCompound, MetaObjectMismatchTest,
                         testing::Combine(testing::Values("Struct", "List"),
                                          testing::Values("Int", "Struct", "List")));

TEST(MetaObjectTest, IsSameStructure_IntAgainstString_RecordsTheWholeMessage) {
    Messages errors;
    EXPECT_FALSE(MetaInt::New(1)->IsSameStructure(MetaString::New("1"), &errors));
    EXPECT_EQ(errors, Messages{"Type mismatch in structure.  Expecting Int got String"});
}

TEST(MetaObjectTest, IsSameStructure_ScalarsOfOneKind_IgnoresTheirValues) {
    EXPECT_TRUE(MetaInt::New(1)->IsSameStructure(MetaInt::New(99), nullptr));
    EXPECT_TRUE(MetaBool::New(true)->IsSameStructure(MetaBool::New(false), nullptr));
    EXPECT_TRUE(MetaString::New("a")->IsSameStructure(MetaString::New(), nullptr));
}

TEST(MetaObjectTest, IsSameStructure_UnknownKind_FitsNothing) {
    Messages errors;
    EXPECT_FALSE(ImpostorValue::New(kUnknownKind)
                     ->IsSameStructure(ImpostorValue::New(kUnknownKind), &errors));
    EXPECT_FALSE(MetaInt::New(1)->IsSameStructure(ImpostorValue::New(kUnknownKind), &errors));
    EXPECT_EQ(errors, (Messages{"Type mismatch in structure.  Expecting  got ",
                                "Type mismatch in structure.  Expecting Int got "}));
}

template <typename Class>
class MetaObjectSlotTest : public testing::Test {};

using Classes = testing::Types<MetaObject, MetaBool, MetaInt, MetaString, MetaList, MetaStruct>;
TYPED_TEST_SUITE(MetaObjectSlotTest, Classes);

TYPED_TEST(MetaObjectSlotTest, VirtualOperations_AreComparisonThenPlainText) {
    EXPECT_EQ(TestSupport::VirtualSlotOf(&TypeParam::IsSameStructure), 0);
    EXPECT_EQ(TestSupport::VirtualSlotOf(&TypeParam::ToString), 1);
}

TEST(MetaObjectTest, VirtualOperations_AreNoMoreThanTwo) {
    EXPECT_TRUE(std::is_abstract_v<MetaObject>);
    EXPECT_EQ(TestSupport::VirtualTableSizeOf<MetaObject>(), 2);
}

template <typename Class>
constexpr bool kComparesAsItsBase =
    std::is_same_v<decltype(&Class::IsSameStructure), decltype(&MetaObject::IsSameStructure)>;

TEST(MetaObjectTest, IsSameStructure_IsTheBasesForScalarsAndTheirOwnForCompounds) {
    EXPECT_TRUE(kComparesAsItsBase<MetaBool>);
    EXPECT_TRUE(kComparesAsItsBase<MetaInt>);
    EXPECT_TRUE(kComparesAsItsBase<MetaString>);
    EXPECT_FALSE(kComparesAsItsBase<MetaList>);
    EXPECT_FALSE(kComparesAsItsBase<MetaStruct>);
}

template <typename Class, typename... Arguments>
constexpr bool kIsBuiltWithBraces = requires(Arguments... arguments) {
    Class(arguments..., {});
};

TEST(MetaObjectTest, Construction_WithBracesForTheFlag_IsImpossible) {
    EXPECT_FALSE((kIsBuiltWithBraces<MetaBool, bool>));
    EXPECT_FALSE((kIsBuiltWithBraces<MetaInt, long>));
    EXPECT_FALSE((kIsBuiltWithBraces<MetaString, std::string>));
    EXPECT_FALSE((kIsBuiltWithBraces<MetaList, MetaType>));
    EXPECT_FALSE((kIsBuiltWithBraces<MetaStruct, std::string>));
}

} // namespace
