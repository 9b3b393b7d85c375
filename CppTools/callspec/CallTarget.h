#pragma once

#include <CppTools/Export.h>

#include <memory>

namespace CppTools::CallSpec {

class Input;
class InputSpec;
class Output;
class OutputSpec;

/// The declaring side of something that can be called.
class CPPTOOLS_EXPORT CallTargetSpec {
  public:
    virtual ~CallTargetSpec();

    /// The parameters that a call takes. May throw `CppToolException` for a wrong declaration.
    virtual std::shared_ptr<InputSpec> GetInputSpec() = 0;

    /// The shape that a result has. May throw likewise.
    virtual std::shared_ptr<OutputSpec> GetOutputSpec() = 0;

  protected:
    CallTargetSpec() = default;
};

/// The executing side of something that can be called.
class CPPTOOLS_EXPORT CallTarget {
  public:
    virtual ~CallTarget();

    /// Sets the result and adds the errors of one call in `output`.
    virtual void Execute(const std::shared_ptr<Input>& input,
                         const std::shared_ptr<Output>& output) = 0;

  protected:
    CallTarget() = default;
};

} // namespace CppTools::CallSpec
