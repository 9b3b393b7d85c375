#pragma once

#include <tests/support/RandomSource.h>
#include <tests/support/TemplateFilling.h>

#include <memory>
#include <string>
#include <vector>

namespace CppTools::CallSpec {
class InputSpec;
} // namespace CppTools::CallSpec

namespace Templates {

/// Makes templates out of pieces that shells and templates look at, good ones and bad ones, so
/// that the checker accepts some; and values that attack what it accepted.
class TemplateMaker {
  public:
    /// `program` is what most of the templates call, a full path.
    TemplateMaker(std::uint64_t seed, std::string program);

    const std::shared_ptr<CppTools::CallSpec::InputSpec>& Spec() const { return spec_; }

    std::string Template();

    /// Values for parameters that the template names, all of which the specification lets through,
    /// and for some of the others.
    TestSupport::GivenParameters Values(const std::string& text);

  private:
    std::string Command();
    std::string Argument();
    std::string AttackText();
    std::string ValueOf(const std::string& parameter);

    TestSupport::RandomSource random_;
    std::string program_;
    std::shared_ptr<CppTools::CallSpec::InputSpec> spec_;
};

} // namespace Templates
