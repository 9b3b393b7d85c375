#pragma once

#include <CppTools/autocli/CommandSpec.h>
#include <CppTools/callspec/InputSpec.h>
#include <CppTools/callspec/OutputSpec.h>

#include <memory>

namespace TestSupport {

/// Declares a command that nothing can run: its node type says command, yet it is none.
class SpecOnlyCommand : public CppTools::AutoCli::CommandSpec {
  public:
    std::shared_ptr<CppTools::CallSpec::InputSpec> GetInputSpecInternal() override {
        return CppTools::CallSpec::InputSpec::New();
    }

    std::shared_ptr<CppTools::CallSpec::OutputSpec> GetOutputSpecInternal() override {
        return CppTools::CallSpec::OutputSpec::New();
    }
};

} // namespace TestSupport
