#pragma once

/// A command with four parameters, and a tree of many of them.

#include <CppTools/CppTools.h>

#include <cstdio>
#include <string>

namespace Bench {

class FourParameters : public CppTools::AutoCli::Command {
  public:
    using Constraint = CppTools::CallSpec::ParameterConstraint;
    using ConstraintType = CppTools::CallSpec::ParameterConstraintType;
    using InputSpec = CppTools::CallSpec::InputSpec;
    using OutputSpec = CppTools::CallSpec::OutputSpec;
    using Parameter = CppTools::CallSpec::ParameterSpec;
    using ParameterType = CppTools::CallSpec::ParameterType;

    FourParameters() { SetDescription("Does one thing to the object that is named"); }

    std::shared_ptr<InputSpec> GetInputSpecInternal() override {
        auto name = Parameter::New("name", ParameterType::String);
        name->SetShortName("n");
        name->SetDescription("Name of the object to work on");

        auto sizes = Constraint::New(ConstraintType::IntRange);
        sizes->SetIntRange(1, 65536);
        auto size = Parameter::New("size", ParameterType::Int);
        size->SetDescription("Size in megabytes");
        size->SetConstraint(sizes);
        size->SetRequired(false);

        auto modes = Constraint::New(ConstraintType::StringEnum);
        modes->AddStringEnum("fast", "Less checking");
        modes->AddStringEnum("safe", "All checks");
        auto mode = Parameter::New("mode", ParameterType::String);
        mode->SetShortName("m");
        mode->SetDescription("Mode, one of %ENUM%");
        mode->SetConstraint(modes);
        mode->SetRequired(false);

        auto force = Parameter::New("force", ParameterType::Flag);
        force->SetDescription("Do not ask");
        force->SetRequired(false);

        auto spec = InputSpec::New();
        for (const auto& parameter : {name, size, mode, force}) {
            spec->AddParameter(parameter);
        }
        return spec;
    }

    std::shared_ptr<OutputSpec> GetOutputSpecInternal() override {
        auto spec = OutputSpec::New();
        spec->SetRootObject(CppTools::MetaObj::MetaBool::New(true));
        return spec;
    }

    void ExecuteInternal(const std::shared_ptr<CppTools::CallSpec::Input>& /*input*/,
                         const std::shared_ptr<CppTools::CallSpec::Output>& output) override {
        output->SetRootObject(CppTools::MetaObj::MetaBool::New(true));
    }
};

/// "ns0000", "cmd003" and the like.
inline std::string Numbered(const char* format, long number) {
    char text[32];
    std::snprintf(text, sizeof text, format, number);
    return text;
}

/// Registers `count` commands, ten in a namespace, and calls `visit` with each.
template <typename Visit>
void RegisterCommands(const std::shared_ptr<CppTools::AutoCli::Namespace>& root, long count,
                      Visit visit) {
    for (long number = 0; number < count;) {
        const auto group = root->SubNamespace(Numbered("ns%04ld", number / 10));
        group->SetDescription("Namespace number " + std::to_string(number / 10));
        for (long i = 0; i < 10 && number < count; ++i, ++number) {
            auto command = std::make_shared<FourParameters>();
            group->RegisterNamespaceNode(command, Numbered("cmd%03ld", i));
            visit(*command);
        }
    }
}

} // namespace Bench
