#include <CppTools/callspec/OutputSpec.h>
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

#include "tests/support/Thrown.h"

namespace {

using CppTools::CallSpec::Output;
using CppTools::CallSpec::OutputSpec;
using CppTools::MetaObj::MetaBool;
using CppTools::MetaObj::MetaInt;
using CppTools::MetaObj::MetaList;
using CppTools::MetaObj::MetaObject;
using CppTools::MetaObj::MetaString;
using CppTools::MetaObj::MetaStruct;
using CppTools::MetaObj::MetaType;
using TestSupport::ThrownBy;

using Messages = std::vector<std::string>;
using Object = std::shared_ptr<MetaObject>;

const std::string kNullRoot = "Root object cannot be set to null";
const std::string kNoPrototype =
    "No root object set for output spec. Root object for output spec must be set for proper "
    "validation of output.";
const std::string kNoRoot =
    "No root object set for output. The command did not provide proper output.";

TEST(OutputSpecTest, New_HasNoPrototypeAndNoDescription) {
    const auto spec = OutputSpec::New();
    EXPECT_EQ(spec->GetRootObject(), nullptr);
    EXPECT_EQ(spec->GetDescription(), "Documentation missing");
    EXPECT_NE(spec, OutputSpec::New());
}

TEST(OutputSpecTest, VirtualOperations_ThereAreNone) {
    EXPECT_FALSE(std::is_polymorphic_v<OutputSpec>);
}

TEST(OutputSpecTest, SetDescription_StoresTheTextItself) {
    const auto spec = OutputSpec::New();
    spec->SetDescription("The disks");
    EXPECT_EQ(spec->GetDescription(), "The disks");
    EXPECT_EQ(&spec->GetDescription(), &spec->GetDescription());
}

TEST(OutputSpecTest, SetDescription_Empty_CountsAsMissing) {
    const auto spec = OutputSpec::New();
    spec->SetDescription("The disks");
    spec->SetDescription("");
    EXPECT_EQ(spec->GetDescription(), "Documentation missing");
}

template <typename Kind>
class OutputSpecRootTest : public testing::Test {};

using Kinds = testing::Types<MetaObject, MetaBool, MetaInt, MetaString, MetaList, MetaStruct>;
TYPED_TEST_SUITE(OutputSpecRootTest, Kinds);

TYPED_TEST(OutputSpecRootTest, SetRootObject_EmptyPointer_ThrowsAndKeepsThePrototype) {
    const auto spec = OutputSpec::New();
    const auto prototype = MetaStruct::New("Row");
    spec->SetRootObject(prototype);
    const std::shared_ptr<TypeParam> null;
    EXPECT_EQ(ThrownBy([&] { spec->SetRootObject(null); }), kNullRoot);
    EXPECT_EQ(spec->GetRootObject(), prototype);
}

TEST(OutputSpecTest, SetRootObject_EmptyMovedPointer_Throws) {
    const auto spec = OutputSpec::New();
    EXPECT_EQ(ThrownBy([&] { spec->SetRootObject(Object()); }), kNullRoot);
    EXPECT_EQ(spec->GetRootObject(), nullptr);
}

template <typename Kind>
void ExpectStored(const std::shared_ptr<Kind>& root) {
    const auto overload =
        static_cast<void (OutputSpec::*)(const std::shared_ptr<Kind>&)>(&OutputSpec::SetRootObject);
    const auto spec = OutputSpec::New();
    (spec.get()->*overload)(root);
    EXPECT_EQ(spec->GetRootObject(), root);
}

TEST(OutputSpecTest, SetRootObject_EveryForm_StoresThePrototype) {
    ExpectStored<MetaObject>(MetaInt::New(1000));
    ExpectStored<MetaBool>(MetaBool::New(true));
    ExpectStored<MetaInt>(MetaInt::New(1000));
    ExpectStored<MetaString>(MetaString::New("text"));
    ExpectStored<MetaList>(MetaList::New(MetaType::Int));
    ExpectStored<MetaStruct>(MetaStruct::New("Row"));
}

TEST(OutputSpecTest, SetRootObject_ConstPointer_IsCopied) {
    const auto spec = OutputSpec::New();
    const auto prototype = MetaStruct::New("Row");
    spec->SetRootObject(prototype);
    EXPECT_EQ(prototype.use_count(), 2);
}

TEST(OutputSpecTest, SetRootObject_MovedPointer_IsTakenOver) {
    const auto spec = OutputSpec::New();
    Object prototype = MetaStruct::New("Row");
    const MetaObject* const object = prototype.get();
    spec->SetRootObject(std::move(prototype));
    EXPECT_EQ(spec->GetRootObject().get(), object);
    EXPECT_EQ(spec->GetRootObject().use_count(), 2);
}

TEST(OutputSpecTest, SetRootObject_Again_ReplacesThePrototype) {
    const auto spec = OutputSpec::New();
    spec->SetRootObject(MetaInt::New(1));
    const auto second = MetaString::New("text");
    spec->SetRootObject(second);
    EXPECT_EQ(spec->GetRootObject(), second);
}

TEST(OutputSpecTest, GetRootObject_ReturnsACopyOfThePointer) {
    const auto spec = OutputSpec::New();
    spec->SetRootObject(MetaInt::New(1));
    spec->GetRootObject().reset();
    EXPECT_EQ(spec->GetRootObject(), MetaInt::New(1));
}

/// The result, and what was added behind a message that was there before; the result must not
/// depend on whether messages are wanted.
using Verdict = std::pair<bool, Messages>;

Verdict Validate(const Object& prototype, const Object& root) {
    const auto spec = OutputSpec::New();
    if (prototype) {
        spec->SetRootObject(prototype);
    }
    const auto output = Output::New();
    output->SetRootObject(root);
    Messages errors = {"earlier"};
    const bool result = spec->Validate(output, &errors);
    EXPECT_EQ(spec->Validate(output, nullptr), result);
    EXPECT_EQ(errors.front(), "earlier");
    EXPECT_FALSE(output->HasError());
    errors.erase(errors.begin());
    return {result, errors};
}

Object Row(const std::string& typeName, const Messages& fields) {
    auto row = MetaStruct::New(typeName);
    for (const auto& field : fields) {
        row->SetField(field, 1);
    }
    return row;
}

const Verdict kFits = {true, {}};

TEST(OutputSpecTest, Validate_WithoutPrototype_IsRefusedWhateverTheRoot) {
    EXPECT_EQ(Validate(nullptr, MetaInt::New(1)), Verdict(false, {kNoPrototype}));
    EXPECT_EQ(Validate(nullptr, nullptr), Verdict(false, {kNoPrototype}));
}

TEST(OutputSpecTest, Validate_OutputWithoutRoot_IsRefused) {
    EXPECT_EQ(Validate(MetaString::New(), nullptr), Verdict(false, {kNoRoot}));
    EXPECT_EQ(Validate(Row("Row", {}), nullptr), Verdict(false, {kNoRoot}));
}

TEST(OutputSpecTest, Validate_StringAgainstString_FitsWhateverTheText) {
    EXPECT_EQ(Validate(MetaString::New("prototype"), MetaString::New("result")), kFits);
    EXPECT_EQ(Validate(MetaString::New(), MetaString::New("result")), kFits);
}

TEST(OutputSpecTest, Validate_ThePrototypeIsThePattern) {
    EXPECT_EQ(Validate(MetaInt::New(1), MetaString::New("1")),
              Verdict(false, {"Type mismatch in structure.  Expecting Int got String"}));
    EXPECT_EQ(Validate(MetaList::New(MetaType::Int), MetaBool::New(true)),
              Verdict(false, {"Type mismatch!  Was expecting a List, but got a Bool"}));
    EXPECT_EQ(Validate(Row("Row", {}), MetaInt::New(1)),
              Verdict(false, {"Type Mismatch in MetaStruct Validation: Expected type Struct got "
                              "type Int"}));
}

TEST(OutputSpecTest, Validate_PrototypeWithoutFields_FailsOnTheCountAlone) {
    EXPECT_EQ(Validate(Row("Row", {}), Row("Row", {"a", "b"})),
              Verdict(false, {"Mismatch on number of fields set in struct. Expected 0 found 2"}));
}

TEST(OutputSpecTest, Validate_StructureOfOtherShape_RecordsItsMessagesInOrder) {
    EXPECT_EQ(Validate(Row("Row", {"a", "b"}), Row("Other", {"a"})),
              Verdict(false, {"Type names do not match.",
                              "Mismatch on number of fields set in struct. Expected 2 found 1",
                              "Missing field in input: b"}));
}

TEST(OutputSpecTest, Validate_StructureOfOtherTypeName_IsReportedButFits) {
    EXPECT_EQ(Validate(Row("Row", {"a"}), Row("Other", {"a"})),
              Verdict(true, {"Type names do not match."}));
}

TEST(OutputSpecTest, Validate_ListWithElementsAgainstAnEmptyPrototype_Fits) {
    const auto result = MetaList::New(MetaType::Int);
    result->AddAll(std::vector<long>{1, 2, 3});
    EXPECT_EQ(Validate(MetaList::New(MetaType::Int), result), kFits);
}

TEST(OutputSpecTest, Validate_ListOfOtherRows_RecordsTheListsMessageLast) {
    const auto rowsOf = [](const Object& row) { return MetaList::New(MetaType::Struct, row); };
    EXPECT_EQ(Validate(rowsOf(Row("Row", {"a"})), rowsOf(Row("Row", {"b"}))),
              Verdict(false, {"Missing field in input: a", "List type mismatch list and input"}));
}

} // namespace
