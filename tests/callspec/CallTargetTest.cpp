#include <CppTools/callspec/CallTarget.h>
#include <CppTools/callspec/Input.h>
#include <CppTools/callspec/InputSpec.h>
#include <CppTools/callspec/Output.h>
#include <CppTools/callspec/OutputSpec.h>
#include <CppTools/metaobj/MetaInt.h>

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <type_traits>
#include <vector>

#include "tests/support/VirtualSlot.h"
#include "tests/support/VirtualTableSize.h"

namespace {

using CppTools::CallSpec::CallTarget;
using CppTools::CallSpec::CallTargetSpec;
using CppTools::CallSpec::Input;
using CppTools::CallSpec::InputSpec;
using CppTools::CallSpec::Output;
using CppTools::CallSpec::OutputSpec;
using CppTools::CallSpec::ParameterSpec;
using CppTools::CallSpec::ParameterType;
using CppTools::MetaObj::MetaInt;
using TestSupport::VirtualSlotOf;
using TestSupport::VirtualTableSizeOf;

/// Doubles a number: both sides of a call, as a command has them.
class Doubling final : public CallTargetSpec, public CallTarget {
  public:
    explicit Doubling(bool& destroyed) : destroyed_(destroyed) {
        inputSpec_->AddParameter(ParameterSpec::New("number", ParameterType::Int));
        outputSpec_->SetRootObject(MetaInt::New());
    }

    Doubling(const Doubling&) = delete;
    Doubling& operator=(const Doubling&) = delete;

    ~Doubling() override { destroyed_ = true; }

    std::shared_ptr<InputSpec> GetInputSpec() override { return inputSpec_; }

    std::shared_ptr<OutputSpec> GetOutputSpec() override { return outputSpec_; }

    void Execute(const std::shared_ptr<Input>& input,
                 const std::shared_ptr<Output>& output) override {
        const long number = input->GetParameterInt("number");
        if (number < 0) {
            output->AddErrorMessage("negative");
            return;
        }
        output->SetRootObject(MetaInt::New(2 * number));
    }

  private:
    bool& destroyed_;
    std::shared_ptr<InputSpec> inputSpec_ = InputSpec::New();
    std::shared_ptr<OutputSpec> outputSpec_ = OutputSpec::New();
};

/// Runs one call through the two interfaces alone.
std::shared_ptr<Output> Call(CallTargetSpec& spec, CallTarget& target, const std::string& number) {
    const auto input = Input::New();
    input->AddParameter("number", number);
    input->SetInputSpec(spec.GetInputSpec());
    auto output = Output::New();
    if (spec.GetInputSpec()->Validate(input, output)) {
        target.Execute(input, output);
    }
    return output;
}

TEST(CallTargetTest, Execute_FittingInput_LeavesAResultThatFitsTheOutputSpecification) {
    bool destroyed = false;
    Doubling doubling(destroyed);
    const auto output = Call(doubling, doubling, "21");
    EXPECT_FALSE(output->HasError());
    ASSERT_NE(output->GetRootObject(), nullptr);
    EXPECT_EQ(output->GetRootObject()->ToString(), "42");
    std::vector<std::string> errors;
    EXPECT_TRUE(doubling.GetOutputSpec()->Validate(output, &errors));
    EXPECT_TRUE(errors.empty());
}

TEST(CallTargetTest, Execute_Failure_LeavesMessagesAndNoRoot) {
    bool destroyed = false;
    Doubling doubling(destroyed);
    const auto output = Call(doubling, doubling, "-3");
    EXPECT_EQ(output->GetErrors(), std::vector<std::string>{"negative"});
    std::vector<std::string> errors;
    EXPECT_FALSE(doubling.GetOutputSpec()->Validate(output, &errors));
    EXPECT_EQ(errors, (std::vector<std::string>{"No root object set for output. The command did "
                                                "not provide proper output."}));
}

TEST(CallTargetTest, Validate_UnreadableInput_ReportsIntoTheCallsOutput) {
    bool destroyed = false;
    Doubling doubling(destroyed);
    EXPECT_EQ(
        Call(doubling, doubling, "x")->GetErrors(),
        (std::vector<std::string>{"Invalid data 'x' for parameter number expected type Integer"}));
}

TEST(CallTargetTest, Destruction_ThroughEitherInterface_DestroysTheWhole) {
    bool destroyed = false;
    std::unique_ptr<CallTarget> target = std::make_unique<Doubling>(destroyed);
    target.reset();
    EXPECT_TRUE(destroyed);
    destroyed = false;
    std::unique_ptr<CallTargetSpec> spec = std::make_unique<Doubling>(destroyed);
    spec.reset();
    EXPECT_TRUE(destroyed);
}

TEST(CallTargetTest, Interfaces_AreAbstract) {
    EXPECT_TRUE(std::is_abstract_v<CallTargetSpec>);
    EXPECT_TRUE(std::is_abstract_v<CallTarget>);
}

TEST(CallTargetTest, VirtualOperations_FollowTheDestructorInTheirOrder) {
    // A virtual destructor takes two places.
    EXPECT_EQ(VirtualSlotOf(&CallTargetSpec::GetInputSpec), 2);
    EXPECT_EQ(VirtualSlotOf(&CallTargetSpec::GetOutputSpec), 3);
    EXPECT_EQ(VirtualSlotOf(&CallTarget::Execute), 2);
    EXPECT_EQ(VirtualTableSizeOf<CallTargetSpec>(), 4);
    EXPECT_EQ(VirtualTableSizeOf<CallTarget>(), 3);
}

} // namespace
