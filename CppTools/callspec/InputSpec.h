#pragma once

#include <CppTools/callspec/ParameterSpec.h>

#include <set>
#include <string_view>

namespace CppTools::CallSpec {

class Input;

/// The parameters that a command declares, and the context keys that it supports.
class CPPTOOLS_EXPORT InputSpec {
  public:
    /// Makes one without parameters.
    static std::shared_ptr<InputSpec> New();

    /// Adds a parameter, which must not be null. Logarithmic. The specification is unchanged when
    /// this throws:
    /// - "Parameter name must be at least 2 characters";
    /// - "Found a duplicate paramater specification for parameter named 'N'";
    /// - "Invalid short name specified for --N. The short name -S is already used for --M".
    void AddParameter(const std::shared_ptr<ParameterSpec>& parameter);

    /// In ascending name order; valid until a parameter is added.
    const std::vector<std::shared_ptr<ParameterSpec>>& GetParameters() const;

    /// The parameter of that long name, or empty. Logarithmic.
    std::shared_ptr<ParameterSpec> FindParameter(const std::string& name) const;

    /// Declares that the command reads this key of the context.
    void SetContextSupported(const std::string& key);

    /// Whether `SetContextSupported` was called with that key.
    bool IsContextSupported(const std::string& key) const;

    /// Whether `input` satisfies this specification. Every problem is added to `output`: first
    /// those of the parameters given, then the missing ones, each in name order. An input that
    /// asks for "help" is never checked.
    bool Validate(const std::shared_ptr<Input>& input, const std::shared_ptr<Output>& output) const;

  private:
    bool HasName(const std::string& name) const;
    void AddToMany(const std::shared_ptr<ParameterSpec>& parameter);

    /// In order, unless there are many: these are put in order when somebody looks at them.
    mutable std::vector<std::shared_ptr<ParameterSpec>> parameters_;
    mutable bool isInOrder_ = true;
    std::set<std::string_view> namesOfMany_; ///< Of all parameters, when there are many.
    std::set<std::string> supportedContexts_;
};

} // namespace CppTools::CallSpec
