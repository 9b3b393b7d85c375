#include <CppTools/callspec/Output.h>
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

#include "tests/support/VirtualTableSize.h"

namespace {

using CppTools::CallSpec::Output;
using CppTools::MetaObj::MetaBool;
using CppTools::MetaObj::MetaInt;
using CppTools::MetaObj::MetaList;
using CppTools::MetaObj::MetaObject;
using CppTools::MetaObj::MetaString;
using CppTools::MetaObj::MetaStruct;
using CppTools::MetaObj::MetaType;

using Messages = std::vector<std::string>;

TEST(OutputTest, New_HasNoErrorsNoRootAndTheOrdinaryType) {
    const auto output = Output::New();
    EXPECT_FALSE(output->HasError());
    EXPECT_TRUE(output->GetErrors().empty());
    EXPECT_EQ(output->GetRootObject(), nullptr);
    EXPECT_EQ(static_cast<int>(output->GetOutputType()), 0);
    EXPECT_NE(output, Output::New());
}

TEST(OutputTest, Destructor_IsTheOnlyVirtualOperation) {
    EXPECT_TRUE(std::has_virtual_destructor_v<Output>);
    EXPECT_EQ(TestSupport::VirtualTableSizeOf<Output>(), 2);
}

TEST(OutputTest, AddErrorMessage_EveryForm_AppendsInOrder) {
    const auto output = Output::New();
    const std::string second = "second";
    output->AddErrorMessage("first");
    output->AddErrorMessage(second);
    output->AddErrorMessage(std::string("third"));
    output->AddErrorMessage("first");
    EXPECT_EQ(output->GetErrors(), (Messages{"first", "second", "third", "first"}));
    EXPECT_EQ(second, "second");
}

TEST(OutputTest, AddErrorMessage_MovedText_TakesItsCharactersOver) {
    std::string message = "a text too long for the string object itself";
    const char* const characters = message.data();
    const auto output = Output::New();
    output->AddErrorMessage(std::move(message));
    EXPECT_EQ(output->GetErrors().at(0).data(), characters);
}

TEST(OutputTest, HasError_AfterAnyMessage_IsTrueEvenForAnEmptyOne) {
    const auto output = Output::New();
    output->AddErrorMessage("");
    EXPECT_TRUE(output->HasError());
    EXPECT_EQ(output->GetErrors(), Messages{""});
}

TEST(OutputTest, GetErrors_ReturnsTheStoredMessagesThemselves) {
    const auto output = Output::New();
    const Messages& errors = output->GetErrors();
    output->AddErrorMessage("added later");
    EXPECT_EQ(errors, Messages{"added later"});
}

TEST(OutputTest, HasError_RootAndTypeDoNotCount) {
    const auto output = Output::New();
    output->SetRootObject(MetaString::New("ERROR"));
    output->SetOutputType(Output::OutputType::Help);
    EXPECT_FALSE(output->HasError());
}

template <typename Kind>
void ExpectStored(const std::shared_ptr<Kind>& root) {
    const auto overload =
        static_cast<void (Output::*)(const std::shared_ptr<Kind>&)>(&Output::SetRootObject);
    const auto output = Output::New();
    (output.get()->*overload)(root);
    EXPECT_EQ(output->GetRootObject(), root);
    (output.get()->*overload)(nullptr);
    EXPECT_EQ(output->GetRootObject(), nullptr);
}

TEST(OutputTest, SetRootObject_EveryForm_StoresThePointerAndTheEmptyOneToo) {
    ExpectStored<MetaObject>(MetaInt::New(1000));
    ExpectStored<MetaBool>(MetaBool::New(true));
    ExpectStored<MetaInt>(MetaInt::New(1000));
    ExpectStored<MetaString>(MetaString::New("text"));
    ExpectStored<MetaList>(MetaList::New(MetaType::Int));
    ExpectStored<MetaStruct>(MetaStruct::New("Row"));
}

TEST(OutputTest, SetRootObject_Again_ReplacesTheRoot) {
    const auto output = Output::New();
    output->SetRootObject(MetaInt::New(1));
    const auto text = MetaString::New("text");
    output->SetRootObject(text);
    EXPECT_EQ(output->GetRootObject(), text);
}

TEST(OutputTest, GetRootObject_ReturnsACopyOfThePointer) {
    const auto output = Output::New();
    const auto text = MetaString::New("text");
    output->SetRootObject(text);
    output->GetRootObject().reset();
    EXPECT_EQ(output->GetRootObject(), text);
}

TEST(OutputTest, OutputType_HasItsNumbersAndIsStored) {
    EXPECT_EQ(static_cast<int>(Output::OutputType::Result), 0);
    EXPECT_EQ(static_cast<int>(Output::OutputType::Help), 2);
    const auto output = Output::New();
    output->SetOutputType(Output::OutputType::Help);
    EXPECT_EQ(output->GetOutputType(), Output::OutputType::Help);
    output->SetOutputType(Output::OutputType::Result);
    EXPECT_EQ(output->GetOutputType(), Output::OutputType::Result);
}

} // namespace
