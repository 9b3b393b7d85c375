#pragma once

#include <CppTools/callspec/ParameterConstraint.h>

namespace CppTools::CallSpec {

/// The kinds of parameters. The numbers are part of the interface; a list kind is its scalar
/// kind plus 4.
enum class ParameterType : int {
    String = 0,
    Int = 1,
    Bool = 2,
    Flag = 3, ///< Present or absent, without a value.
    StringList = 4,
    IntList = 5,
    BoolList = 6,
};

/// The declaration of one named parameter, and the checks and conversions of its raw values.
class CPPTOOLS_EXPORT ParameterSpec {
  public:
    /// Throws "Invalid Parameter name 'N' parameter names can only contain lower-case
    /// alphanumeric characters, numbers and '-'". Whether a name is long enough is checked when
    /// it is added to an `InputSpec`.
    ParameterSpec(std::string name, ParameterType type);

    /// Makes a required parameter; throws as the constructor does. The pointer must not be null.
    static std::shared_ptr<ParameterSpec> New(const std::string& name, ParameterType type);
    static std::shared_ptr<ParameterSpec> New(std::string&& name, ParameterType type);
    static std::shared_ptr<ParameterSpec> New(const char* name, ParameterType type);

    /// The long name, without dashes.
    const std::string& GetName() const { return name_; }

    /// The declared kind.
    ParameterType GetType() const { return type_; }

    /// The same as `GetType`.
    ParameterType GetParameterType() const { return type_; }

    /// One letter or digit, or empty when there is no short name.
    const std::string& GetShortName() const { return shortName_; }

    /// Empty when there is no constraint.
    std::shared_ptr<ParameterConstraint> GetConstraint() const { return constraint_; }

    /// True until changed.
    bool IsRequired() const { return required_; }

    /// A secret value is never echoed: given without a value, it is asked for at a prompt.
    bool IsSecret() const { return secret_; }

    /// Throws "Invalid value for shortName, must be a single character a-z, A-Z or 0-9", for the
    /// empty text too.
    void SetShortName(std::string shortName);
    void SetShortName(const char* shortName);

    /// May hold "%REGEX%", "%ENUM%" and "%FULLENUM%", see `GetDescription`.
    void SetDescription(std::string description);
    void SetDescription(const char* description);

    /// Whether a call without the parameter is refused.
    void SetRequired(bool required) { required_ = required; }

    /// Throws "Cannot be set for parameter " and the name, for any kind but `String`.
    void SetSecret(bool secret);

    /// Integer constraints fit `Int` and `IntList`, string constraints `String` and
    /// `StringList`. Anything else, `None` included, throws "Invalid constraint specified for
    /// parameter N.  The parameter constraint specified is not allowed for a parameter of this
    /// type." An empty pointer changes nothing.
    void SetConstraint(const std::shared_ptr<ParameterConstraint>& constraint);

    /// Whether several values can be given: true for the three list kinds.
    bool AllowMultiple() const;

    /// Reads the whole text as a decimal integer; leading white space and a sign are accepted,
    /// and numbers out of range become the nearest 64-bit number. False, with `result`
    /// untouched, for the empty text and for anything left over, an embedded NUL included.
    static bool GetInt(const std::string& text, long& result);

    /// Reads one of the fourteen boolean words (1, yes, y, true, True, t, T and 0, no, n, false,
    /// False, f, F). False, with `result` untouched, for anything else.
    static bool GetBool(const std::string& text, bool& result);

    /// Checks all values given for this parameter and adds one message per problem to `output`.
    /// A wrong number of values is reported but leaves the result to the values themselves.
    bool Validate(const std::vector<std::string>& values,
                  const std::shared_ptr<Output>& output) const;

    /// The description. When `expand` is true and there is a constraint, "%REGEX%" and "%ENUM%"
    /// stand for its printed form, and "%FULLENUM%" for one indented line for each documented
    /// value of a string set (nothing, when no value is documented).
    std::string GetDescription(bool expand) const;

  private:
    bool ValidateValue(const std::string& value, const std::shared_ptr<Output>& output) const;
    bool ValidateConstraint(const std::string& value, const std::shared_ptr<Output>& output) const;

    ParameterType type_;
    bool required_ = true;
    bool secret_ = false;
    std::string name_;
    std::string shortName_;
    std::string description_;
    std::shared_ptr<ParameterConstraint> constraint_;
};

} // namespace CppTools::CallSpec
