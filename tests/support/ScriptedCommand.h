#pragma once

#include <CppTools/autocli/Command.h>
#include <CppTools/callspec/Input.h>
#include <CppTools/callspec/InputSpec.h>
#include <CppTools/callspec/Output.h>
#include <CppTools/callspec/OutputSpec.h>
#include <CppTools/metaobj/MetaObject.h>

#include <functional>
#include <memory>
#include <utility>
#include <vector>

namespace TestSupport {

/// A command whose declarations and work are handed in, and which counts what it is asked for.
class ScriptedCommand : public CppTools::AutoCli::Command {
  public:
    using Parameter = std::shared_ptr<CppTools::CallSpec::ParameterSpec>;
    using Value = std::shared_ptr<CppTools::MetaObj::MetaObject>;
    using Work = std::function<void(const std::shared_ptr<CppTools::CallSpec::Input>&,
                                    const std::shared_ptr<CppTools::CallSpec::Output>&)>;

    static std::shared_ptr<ScriptedCommand> New(Work work = {}) {
        auto command = std::make_shared<ScriptedCommand>();
        command->work = std::move(work);
        return command;
    }

    /// A command that declares a result of the value's shape and always gives that value.
    static std::shared_ptr<ScriptedCommand> Giving(const Value& value) {
        auto command =
            New([value](const auto&, const auto& output) { output->SetRootObject(value); });
        command->prototype = value;
        return command;
    }

    std::shared_ptr<CppTools::CallSpec::InputSpec> GetInputSpecInternal() override {
        ++inputSpecRequests;
        auto spec = CppTools::CallSpec::InputSpec::New();
        for (const auto& parameter : parameters) {
            spec->AddParameter(parameter);
        }
        return spec;
    }

    std::shared_ptr<CppTools::CallSpec::OutputSpec> GetOutputSpecInternal() override {
        ++outputSpecRequests;
        auto spec = CppTools::CallSpec::OutputSpec::New();
        if (prototype) {
            spec->SetRootObject(prototype);
        }
        return spec;
    }

    void ExecuteInternal(const std::shared_ptr<CppTools::CallSpec::Input>& input,
                         const std::shared_ptr<CppTools::CallSpec::Output>& output) override {
        ++runs;
        if (work) {
            work(input, output);
        }
    }

    std::vector<Parameter> parameters;
    Value prototype; ///< Of the result; none when empty.
    Work work;
    int inputSpecRequests = 0;
    int outputSpecRequests = 0;
    int runs = 0;
};

/// An optional parameter without a constraint.
inline ScriptedCommand::Parameter OptionalParameter(const char* name,
                                                    CppTools::CallSpec::ParameterType type,
                                                    const char* shortName = nullptr) {
    auto parameter = CppTools::CallSpec::ParameterSpec::New(name, type);
    parameter->SetRequired(false);
    if (shortName != nullptr) {
        parameter->SetShortName(shortName);
    }
    return parameter;
}

} // namespace TestSupport
