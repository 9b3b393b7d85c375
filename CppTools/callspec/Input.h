#pragma once

#include <CppTools/Export.h>

#include <map>
#include <memory>
#include <string>
#include <vector>

namespace CppTools::CallSpec {

class InputSpec;
enum class ParameterType : int;

/// The parameters of one call, each with the raw values given for it, and a small key and value
/// context.
class CPPTOOLS_EXPORT Input {
  public:
    Input();
    virtual ~Input();
    Input(const Input&) = delete;
    Input& operator=(const Input&) = delete;

    /// Makes one without parameters, context or specification.
    static std::shared_ptr<Input> New();

    /// Appends a value. A flag is added with the empty value.
    void AddParameter(const std::string& name, const std::string& value);

    /// Valid until a parameter is added.
    const std::map<std::string, std::vector<std::string>>& GetParameters() const {
        return parameters_;
    }

    /// Whether any value was given for the parameter, the empty one of a flag included. Looks at no
    /// specification. Pointers must not be null.
    bool HasParameter(const std::string& name) const;
    bool HasParameter(const char* name) const;

    /// The same question, for flags.
    bool IsFlagSet(const std::string& name) const;
    bool IsFlagSet(const char* name) const;

    /// The declared kind. Throws "Request for unknown parameter: " and the name, also when no
    /// specification was set.
    ParameterType GetParameterType(const std::string& name) const;

    /// The single value; the empty string when the parameter was not given exactly once. Valid
    /// until a parameter is added. Throws like `GetParameterType`, and
    /// - "Request for GetParameter on a flag type parameter: " and the name;
    /// - "Request for GetParameter on a parameter that can have multiple values: " and the name.
    const std::string& GetParameter(const std::string& name) const;
    const std::string& GetParameter(const char* name) const;

    /// The value as an integer, -1 when it is missing or unreadable. Throws like
    /// `GetParameter`.
    long GetParameterInt(const std::string& name) const;
    long GetParameterInt(const char* name) const;

    /// Whether the value is one of the seven words for true; any other text reads as false.
    /// Throws like `GetParameter`.
    bool GetParameterBool(const std::string& name) const;
    bool GetParameterBool(const char* name) const;

    /// These append the values in the order given, nothing when there are none. They look at no
    /// specification and never throw. Unreadable integers are left out.
    void GetParameterList(const std::string& name, std::vector<std::string>& out) const;
    void GetParameterList(const char* name, std::vector<std::string>& out) const;
    void GetParameterIntList(const std::string& name, std::vector<long>& out) const;
    void GetParameterIntList(const char* name, std::vector<long>& out) const;
    void GetParameterBoolList(const std::string& name, std::vector<bool>& out) const;
    void GetParameterBoolList(const char* name, std::vector<bool>& out) const;

    /// All values joined by `separator`, between one pair of double quotes when `quote` is true.
    /// The NUL separator stands for none: the values follow each other directly, since a NUL
    /// byte would end the command line that the text is meant for.
    std::string GetParameterListAsString(const std::string& name, char separator, bool quote) const;

    /// Adds to or replaces a part of the call's context, which commands read beside their
    /// parameters.
    void SetContext(const std::string& key, const std::string& value);

    /// The empty string when the key is absent; valid until the context changes.
    const std::string& GetContext(const std::string& key) const;

    /// Stores the specification and moves the values given under a short name behind those of
    /// the long name.
    void SetInputSpec(std::shared_ptr<InputSpec> inputSpec);

  private:
    const std::vector<std::string>& Values(const std::string& name) const;

    std::map<std::string, std::vector<std::string>> parameters_;
    std::map<std::string, std::string> context_;
    std::shared_ptr<InputSpec> inputSpec_;
};

} // namespace CppTools::CallSpec
