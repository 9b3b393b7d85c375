#pragma once

#include <initializer_list>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace HostFacts {

/// The options behind a command's name, each of the form "--name" or "--name=value".
///
/// A descriptor writes every optional value as --name='$val{name}' (or $list). When the user
/// leaves the parameter out, the placeholder itself arrives; no value that the descriptors'
/// constraints let through can look like one, so it counts as absent here.
class Arguments {
  public:
    /// Throws HostError for a word that is no option or not among `known`.
    Arguments(const std::vector<std::string>& words, std::initializer_list<std::string_view> known);

    bool HasFlag(const std::string& name) const { return values_.contains(name); }

    std::optional<std::string> Text(const std::string& name) const;
    std::string Text(const std::string& name, const std::string& otherwise) const;

    /// Integers and booleans are read by the rules that hold for every parameter. Throws
    /// HostError for anything else.
    std::optional<long> Number(const std::string& name) const;
    std::optional<bool> Switch(const std::string& name) const;

    /// Items are separated by commas. Empty when the option is absent.
    std::vector<std::string> List(const std::string& name) const;
    std::vector<long> Numbers(const std::string& name) const;

  private:
    std::map<std::string, std::string> values_;
};

} // namespace HostFacts
