#include <CppTools/callspec/Input.h>
#include <CppTools/callspec/InputSpec.h>

#include <gtest/gtest.h>

#include <functional>
#include <limits>
#include <map>
#include <memory>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include "tests/support/NamedRow.h"
#include "tests/support/Thrown.h"
#include "tests/support/VirtualTableSize.h"

namespace {

using CppTools::CallSpec::Input;
using CppTools::CallSpec::InputSpec;
using CppTools::CallSpec::ParameterSpec;
using CppTools::CallSpec::ParameterType;
using TestSupport::NamedRow;
using TestSupport::ThrownBy;
using namespace std::string_literals;

using Strings = std::vector<std::string>;
using Parameters = std::map<std::string, Strings>;

const Strings kKinds = {"string", "int", "bool", "flag", "string-list", "int-list", "bool-list"};

/// One optional parameter of each kind, named after it.
std::shared_ptr<InputSpec> SpecOfEveryKind() {
    auto spec = InputSpec::New();
    for (std::size_t kind = 0; kind < kKinds.size(); ++kind) {
        const auto parameter = ParameterSpec::New(kKinds[kind], static_cast<ParameterType>(kind));
        parameter->SetRequired(false);
        spec->AddParameter(parameter);
    }
    return spec;
}

/// An input with the given values for one parameter.
std::shared_ptr<Input> InputWith(const std::string& name, const Strings& values) {
    auto input = Input::New();
    for (const auto& value : values) {
        input->AddParameter(name, value);
    }
    input->SetInputSpec(SpecOfEveryKind());
    return input;
}

TEST(InputTest, New_IsEmpty) {
    EXPECT_TRUE(Input::New()->GetParameters().empty());
    EXPECT_NE(Input::New(), Input::New());
}

TEST(InputTest, Destructor_IsTheOnlyVirtualOperation) {
    EXPECT_TRUE(std::has_virtual_destructor_v<Input>);
    EXPECT_EQ(TestSupport::VirtualTableSizeOf<Input>(), 2);
}

TEST(InputTest, AddParameter_Values_KeepTheirOrderUnderTheirNames) {
    const auto input = Input::New();
    input->AddParameter("name", "b");
    input->AddParameter("force", "");
    input->AddParameter("name", "a");
    input->AddParameter("name", "b");
    EXPECT_EQ(input->GetParameters(), (Parameters{{"force", {""}}, {"name", {"b", "a", "b"}}}));
}

TEST(InputTest, HasParameter_EveryForm_KnowsExactNames) {
    const auto input = Input::New();
    input->AddParameter("name", "a");
    input->AddParameter("force", "");
    EXPECT_TRUE(input->HasParameter("name"));
    EXPECT_TRUE(input->HasParameter("name"s));
    EXPECT_TRUE(input->HasParameter("force"));
    EXPECT_FALSE(input->HasParameter("nam"));
    EXPECT_FALSE(input->HasParameter("Name"s));
    EXPECT_FALSE(input->HasParameter(""));
}

TEST(InputTest, IsFlagSet_EveryForm_IsTheSameTest) {
    const auto input = Input::New();
    input->AddParameter("force", "");
    input->AddParameter("name", "a");
    EXPECT_TRUE(input->IsFlagSet("force"));
    EXPECT_TRUE(input->IsFlagSet("force"s));
    EXPECT_TRUE(input->IsFlagSet("name"));
    EXPECT_FALSE(input->IsFlagSet("quiet"));
    EXPECT_FALSE(input->IsFlagSet("quiet"s));
}

TEST(InputTest, GetParameterType_DeclaredParameter_IsItsKind) {
    const auto input = InputWith("string", {});
    for (std::size_t kind = 0; kind < kKinds.size(); ++kind) {
        SCOPED_TRACE(kKinds[kind]);
        EXPECT_EQ(input->GetParameterType(kKinds[kind]), static_cast<ParameterType>(kind));
    }
}

TEST(InputTest, GetParameterType_UndeclaredParameter_ThrowsEvenWhenGiven) {
    EXPECT_EQ(ThrownBy([] { InputWith("bogus", {"1"})->GetParameterType("bogus"); }),
              "Request for unknown parameter: bogus");
    EXPECT_EQ(ThrownBy([] { InputWith("bogus", {"1"})->GetParameterType(""); }),
              "Request for unknown parameter: ");
}

TEST(InputTest, GetParameterType_WithoutSpecification_Throws) {
    const auto input = Input::New();
    input->AddParameter("name", "a");
    EXPECT_EQ(ThrownBy([&] { input->GetParameterType("name"); }),
              "Request for unknown parameter: name");
}

struct Getter : NamedRow {
    std::function<void(const Input&, const std::string&)> get;
};

class InputSingleValueTest : public testing::TestWithParam<Getter> {
  protected:
    static std::string Thrown(const std::string& name, const Strings& values) {
        const auto input = InputWith(name, values);
        return ThrownBy([&] { GetParam().get(*input, name); });
    }
};

TEST_P(InputSingleValueTest, Get_UnknownName_Throws) {
    EXPECT_EQ(Thrown("bogus", {"1"}), "Request for unknown parameter: bogus");
    EXPECT_EQ(Thrown("bogus", {}), "Request for unknown parameter: bogus");
}

TEST_P(InputSingleValueTest, Get_Flag_Throws) {
    EXPECT_EQ(Thrown("flag", {""}), "Request for GetParameter on a flag type parameter: flag");
    EXPECT_EQ(Thrown("flag", {}), "Request for GetParameter on a flag type parameter: flag");
}

TEST_P(InputSingleValueTest, Get_ListKind_ThrowsHoweverManyValuesAreThere) {
    for (const std::string name : {"string-list", "int-list", "bool-list"}) {
        const std::string message =
            "Request for GetParameter on a parameter that can have multiple values: " + name;
        EXPECT_EQ(Thrown(name, {}), message);
        EXPECT_EQ(Thrown(name, {"1"}), message);
        EXPECT_EQ(Thrown(name, {"1", "2"}), message);
    }
}

INSTANTIATE_TEST_SUITE_P(
    Getters, InputSingleValueTest,
    testing::Values(
        Getter{{"GetParameter"}, [](const Input& i, const std::string& n) { i.GetParameter(n); }},
        Getter{{"GetParameter by characters"},
               [](const Input& i, const std::string& n) { i.GetParameter(n.c_str()); }},
        Getter{{"GetParameterInt"},
               [](const Input& i, const std::string& n) { i.GetParameterInt(n); }},
        Getter{{"GetParameterInt by characters"},
               [](const Input& i, const std::string& n) { i.GetParameterInt(n.c_str()); }},
        Getter{{"GetParameterBool"},
               [](const Input& i, const std::string& n) { i.GetParameterBool(n); }},
        Getter{{"GetParameterBool by characters"},
               [](const Input& i, const std::string& n) { i.GetParameterBool(n.c_str()); }}));

TEST(InputTest, GetParameter_GivenOnce_ReturnsTheStoredValueForEverySingleKind) {
    for (const std::string name : {"string", "int", "bool"}) {
        SCOPED_TRACE(name);
        const auto input = InputWith(name, {"any text"});
        EXPECT_EQ(input->GetParameter(name), "any text");
        EXPECT_EQ(&input->GetParameter(name), &input->GetParameters().at(name).at(0));
        EXPECT_EQ(&input->GetParameter(name.c_str()), &input->GetParameters().at(name).at(0));
    }
}

TEST(InputTest, GetParameter_NotGivenOrGivenTwice_ReturnsTheSharedEmptyString) {
    const auto none = InputWith("string", {});
    const auto twice = InputWith("string", {"a", "b"});
    EXPECT_EQ(none->GetParameter("string"), "");
    EXPECT_EQ(none->GetParameter("int"), "");
    EXPECT_EQ(twice->GetParameter("string"), "");
    EXPECT_EQ(&none->GetParameter("string"), &twice->GetParameter("string"));
}

using Number = std::pair<std::string, long>;

class InputIntegerTest : public testing::TestWithParam<Number> {};

TEST_P(InputIntegerTest, GetParameterInt_ReadsTheWholeTextOrMinusOne) {
    const auto input = InputWith("int", {GetParam().first});
    EXPECT_EQ(input->GetParameterInt("int"), GetParam().second);
    EXPECT_EQ(input->GetParameterInt("int"s), GetParam().second);
}

INSTANTIATE_TEST_SUITE_P(
    Texts, InputIntegerTest,
    testing::Values(Number{"42", 42}, Number{"-42", -42}, Number{"-1", -1}, Number{"0", 0},
                    Number{"+7", 7}, Number{" 7", 7}, Number{"010", 10},
                    Number{"99999999999999999999", std::numeric_limits<long>::max()},
                    Number{"-99999999999999999999", std::numeric_limits<long>::min()},
                    Number{"", -1}, Number{"12abc", -1}, Number{"abc", -1}, Number{"12 ", -1},
                    Number{"0x10", -1}, Number{"12\0"s, -1}));

TEST(InputTest, GetParameterInt_NotGivenOrGivenTwice_IsMinusOne) {
    EXPECT_EQ(InputWith("int", {})->GetParameterInt("int"), -1);
    EXPECT_EQ(InputWith("int", {"5", "5"})->GetParameterInt("int"), -1);
}

TEST(InputTest, GetParameterInt_OfAStringParameter_ReadsItsText) {
    EXPECT_EQ(InputWith("string", {"5"})->GetParameterInt("string"), 5);
}

using Truth = std::pair<std::string, bool>;

class InputBooleanTest : public testing::TestWithParam<Truth> {};

TEST_P(InputBooleanTest, GetParameterBool_OnlyTheSevenWordsAreTrue) {
    const auto input = InputWith("bool", {GetParam().first});
    EXPECT_EQ(input->GetParameterBool("bool"), GetParam().second);
    EXPECT_EQ(input->GetParameterBool("bool"s), GetParam().second);
}

TEST_P(InputBooleanTest, GetParameterBoolList_ReadsEachValueTheSameWay) {
    std::vector<bool> out;
    InputWith("bool-list", {"y", GetParam().first})->GetParameterBoolList("bool-list", out);
    EXPECT_EQ(out, (std::vector<bool>{true, GetParam().second}));
}

INSTANTIATE_TEST_SUITE_P(Words, InputBooleanTest,
                         testing::Values(Truth{"true", true}, Truth{"1", true}, Truth{"yes", true},
                                         Truth{"y", true}, Truth{"t", true}, Truth{"True", true},
                                         Truth{"T", true}, Truth{"0", false}, Truth{"no", false},
                                         Truth{"n", false}, Truth{"false", false},
                                         Truth{"False", false}, Truth{"f", false},
                                         Truth{"F", false}, Truth{"", false}, Truth{"TRUE", false},
                                         Truth{"Yes", false}, Truth{"Y", false}, Truth{"on", false},
                                         Truth{"true ", false}, Truth{"11", false}));

TEST(InputTest, GetParameterBool_NotGivenOrGivenTwice_IsFalse) {
    EXPECT_FALSE(InputWith("bool", {})->GetParameterBool("bool"));
    EXPECT_FALSE(InputWith("bool", {"true", "true"})->GetParameterBool("bool"));
}

TEST(InputTest, GetParameterList_EveryForm_AppendsTheValuesInOrder) {
    const auto input = InputWith("string-list", {"b", "", "a"});
    Strings out = {"there before"};
    input->GetParameterList("string-list", out);
    EXPECT_EQ(out, (Strings{"there before", "b", "", "a"}));
    input->GetParameterList("string-list"s, out);
    EXPECT_EQ(out, (Strings{"there before", "b", "", "a", "b", "", "a"}));
}

TEST(InputTest, GetParameterList_NotGiven_AppendsNothing) {
    Strings out = {"there before"};
    InputWith("string", {"a"})->GetParameterList("string-list", out);
    EXPECT_EQ(out, Strings{"there before"});
}

TEST(InputTest, GetParameterList_OfAnyParameter_NeedsNoSpecificationAndNoListKind) {
    Strings out;
    const auto input = Input::New();
    input->AddParameter("bogus", "a");
    input->GetParameterList("bogus", out);
    InputWith("string", {"b", "c"})->GetParameterList("string", out);
    InputWith("flag", {""})->GetParameterList("flag", out);
    EXPECT_EQ(out, (Strings{"a", "b", "c", ""}));
}

TEST(InputTest, GetParameterIntList_EveryForm_AppendsTheReadableValuesInOrder) {
    const auto input = InputWith("int-list", {"1", "x", "3", "", "4 ", "-1", "+2", "5y"});
    std::vector<long> out = {99};
    input->GetParameterIntList("int-list", out);
    EXPECT_EQ(out, (std::vector<long>{99, 1, 3, -1, 2}));
    out.clear();
    input->GetParameterIntList("int-list"s, out);
    EXPECT_EQ(out, (std::vector<long>{1, 3, -1, 2}));
}

TEST(InputTest, GetParameterIntList_NotGivenOrUndeclared_NeverThrows) {
    std::vector<long> out = {99};
    InputWith("int", {"1"})->GetParameterIntList("int-list", out);
    EXPECT_EQ(out, std::vector<long>{99});
    InputWith("bogus", {"7"})->GetParameterIntList("bogus", out);
    EXPECT_EQ(out, (std::vector<long>{99, 7}));
}

TEST(InputTest, GetParameterBoolList_EveryForm_AppendsOneReadingForEachValue) {
    const auto input = InputWith("bool-list", {"yes", "no", "bogus", "T"});
    std::vector<bool> out = {false};
    input->GetParameterBoolList("bool-list", out);
    EXPECT_EQ(out, (std::vector<bool>{false, true, false, false, true}));
    out.clear();
    input->GetParameterBoolList("bool-list"s, out);
    EXPECT_EQ(out, (std::vector<bool>{true, false, false, true}));
}

TEST(InputTest, GetParameterBoolList_NotGivenOrUndeclared_NeverThrows) {
    std::vector<bool> out = {true};
    InputWith("bool", {"1"})->GetParameterBoolList("bool-list", out);
    EXPECT_EQ(out, std::vector<bool>{true});
    InputWith("bogus", {"0"})->GetParameterBoolList("bogus", out);
    EXPECT_EQ(out, (std::vector<bool>{true, false}));
}

struct Joining : NamedRow {
    Strings values;
    char separator;
    std::string plain;
};

class InputJoiningTest : public testing::TestWithParam<Joining> {};

TEST_P(InputJoiningTest, GetParameterListAsString_JoinsAndQuotesTheWhole) {
    const auto input = InputWith("string-list", GetParam().values);
    const char separator = GetParam().separator;
    const std::string& plain = GetParam().plain;
    EXPECT_EQ(input->GetParameterListAsString("string-list", separator, false), plain);
    EXPECT_EQ(input->GetParameterListAsString("string-list", separator, true), '"' + plain + '"');
}

INSTANTIATE_TEST_SUITE_P(
    Lists, InputJoiningTest,
    testing::Values(Joining{{"two values"}, {"a", "b"}, ',', "a,b"},
                    Joining{{"three values"}, {"a", "b", "c"}, ' ', "a b c"},
                    Joining{{"one value"}, {"a"}, ',', "a"}, Joining{{"not given"}, {}, ',', ""},
                    Joining{{"one empty value"}, {""}, ',', ""},
                    Joining{{"empty values"}, {"", "", ""}, ',', ",,"},
                    Joining{{"first value empty"}, {"", "a"}, ',', ",a"},
                    Joining{{"values holding the separator"}, {"a,b", "c"}, ',', "a,b,c"},
                    Joining{{"values holding quotes"}, {"\"a\"", "b"}, ',', "\"a\",b"},
                    Joining{{"quote as separator"}, {"a", "b"}, '"', "a\"b"},
                    Joining{{"NUL stands for no separator"}, {"a", "b", "c"}, '\0', "abc"}));

TEST(InputTest, GetParameterListAsString_SingleOrUndeclaredParameter_IsJoinedToo) {
    EXPECT_EQ(InputWith("string", {"a", "b"})->GetParameterListAsString("string", '-', false),
              "a-b");
    EXPECT_EQ(InputWith("bogus", {"a", "b"})->GetParameterListAsString("bogus", '-', false), "a-b");
}

TEST(InputTest, SetContext_SetsAndReplaces) {
    const auto input = Input::New();
    input->SetContext("user", "root");
    input->SetContext("host", "one");
    EXPECT_EQ(input->GetContext("user"), "root");
    input->SetContext("user", "guest");
    EXPECT_EQ(input->GetContext("user"), "guest");
    EXPECT_EQ(input->GetContext("host"), "one");
    input->SetContext("user", "");
    EXPECT_EQ(input->GetContext("user"), "");
}

TEST(InputTest, GetContext_AbsentKey_IsTheSharedEmptyString) {
    const auto input = Input::New();
    input->SetContext("user", "root");
    EXPECT_EQ(input->GetContext("User"), "");
    EXPECT_EQ(&input->GetContext("host"), &Input::New()->GetContext("user"));
}

TEST(InputTest, GetContext_PresentKey_ReturnsTheStoredValueItself) {
    const auto input = Input::New();
    input->SetContext("user", "root");
    EXPECT_EQ(&input->GetContext("user"), &input->GetContext("user"));
}

TEST(InputTest, Context_AndParametersOfOneName_AreKeptApart) {
    const auto input = Input::New();
    input->SetContext("user", "root");
    EXPECT_FALSE(input->HasParameter("user"));
    input->AddParameter("host", "one");
    EXPECT_EQ(input->GetContext("host"), "");
}

} // namespace
