#pragma once

#include <CppTools/Export.h>

#include <map>
#include <string>
#include <vector>

namespace CppTools::AutoCli {

/// How a result is to be shown: the name of a formatter, and its parameters in ascending order
/// of their keys.
class CPPTOOLS_EXPORT FormatParameters {
  public:
    /// Names the formatter; whether it exists shows when a result is rendered.
    void SetFormatter(std::string name);
    void SetFormatter(const char* name);

    /// Empty until set, which means that nothing is printed.
    const std::string& GetFormatter() const { return formatter_; }

    /// All parameters by their keys; valid until they change.
    const std::map<std::string, std::string>& GetParameters() const { return parameters_; }

    /// A parameter with an empty value counts as present.
    bool HasParameter(const std::string& key) const;

    /// The empty string when the key is absent; valid until the parameters change.
    const std::string& GetParameter(const std::string& key) const;

    /// Sets or replaces a parameter. Pointers must not be null.
    void SetParameter(std::string key, std::string value);
    void SetParameter(const char* key, const char* value);

    /// Lays `other` over this: its parameters win, and so does its formatter unless it is empty.
    void OverrideValues(FormatParameters& other);

    /// The value split at every comma, untrimmed and without a trailing empty item; empty for an
    /// absent key and for an empty value.
    std::vector<std::string> GetParameterAsList(const std::string& key) const;

  private:
    std::string formatter_;
    std::map<std::string, std::string> parameters_;
};

} // namespace CppTools::AutoCli
