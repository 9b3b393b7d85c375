#pragma once

#include <CppTools/Export.h>

#include <map>
#include <memory>
#include <string>
#include <vector>

/// Call specifications: what a command takes and gives, and the input and output of one call.
namespace CppTools::CallSpec {

class Output;

/// What a constraint restricts its values to. The numbers are part of the interface.
enum class ParameterConstraintType : int {
    None = 0,        ///< No restriction.
    IntRange = 1,    ///< An integer between a minimum and a maximum, both inclusive.
    IntEnum = 2,     ///< An integer from a fixed set.
    StringEnum = 3,  ///< A string from a fixed set.
    StringRegex = 4, ///< A string that a regular expression (Perl syntax) matches in full.
};

/// Restricts the values of one parameter.
///
/// The type is fixed at creation and alone decides which of the settings below count; setting
/// the others is harmless.
class CPPTOOLS_EXPORT ParameterConstraint {
  public:
    /// Of that type for good.
    explicit ParameterConstraint(ParameterConstraintType type);
    ~ParameterConstraint();
    ParameterConstraint(const ParameterConstraint&) = delete;
    ParameterConstraint& operator=(const ParameterConstraint&) = delete;

    /// Makes one without bounds, values or expression.
    static std::shared_ptr<ParameterConstraint> New(ParameterConstraintType type);

    /// Which of the settings count.
    ParameterConstraintType GetType() const { return type_; }

    /// Throws "Invalid values for SetIntRange, constraints must have a min value <= max value".
    void SetIntRange(long min, long max);

    /// Both bounds are 0 until they are set.
    void GetIntRange(long& min, long& max) const;

    /// Throws "Duplicate Value found in ParameterConstraint::AddIntEnum".
    void AddIntEnum(long value);

    /// In the order added.
    const std::vector<long>& GetIntEnum() const;

    /// An empty description counts as none. Throws "Duplicate Value found in
    /// ParameterConstraint::AddStringEnum: " and the value. Pointers must not be null.
    void AddStringEnum(std::string value, std::string description);
    void AddStringEnum(const char* value, const char* description);
    void AddStringEnum(const char* value);

    /// In the order added.
    const std::vector<std::string>& GetStringEnum() const;

    /// The descriptions of those values that have one.
    const std::map<std::string, std::string>& GetStringEnumWithDesc() const;

    /// The expression is compiled when it is first needed, so an invalid one is noticed only
    /// then, by the regular-expression library's exception out of `Validate`.
    void SetStringRegex(std::string expression);

    /// The expression as it was set; empty until then.
    const std::string& GetStringRegex() const;

    /// The expected values as help shows them, such as "integer in the range 1-5" or
    /// "[on, off]".
    std::string ToString() const;

    /// Whether `value` is accepted. When it is not, one message that names the parameter is
    /// added to `output`. A value on which an expression runs away is refused like any other
    /// that does not match.
    bool Validate(const std::string& value, const std::string& parameterName,
                  const std::shared_ptr<Output>& output) const;

  private:
    struct IntSet;
    struct StringSet;
    struct Regex;

    bool ValidateInt(const std::string& value, const std::string& parameterName,
                     Output& output) const;
    bool MatchesRegex(const std::string& value) const;

    ParameterConstraintType type_;
    long intMin_ = 0;
    long intMax_ = 0;

    // Of these no constraint needs more than one, and most need none: they are made when they are
    // first touched.
    mutable std::unique_ptr<IntSet> intSet_;
    mutable std::unique_ptr<StringSet> stringSet_;
    mutable std::unique_ptr<Regex> regex_;
};

} // namespace CppTools::CallSpec
