#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace CppTools::Host {

/// A compiled regular expression in Perl's syntax. It stands between the engine and the
/// regular-expression library, whose templates so are compiled in one source file only.
class Pattern {
  public:
    /// Throws the library's exception, a std::runtime_error, when `expression` is none.
    explicit Pattern(const std::string& expression);
    ~Pattern();

    /// Whether the whole of `text` matches. Throws std::runtime_error when the matcher gives up
    /// on a text for which the expression runs away.
    bool Matches(const std::string& text) const;

    /// The texts of the expression's groups, from left to right, when the whole of `text`
    /// matches; a group that took no part is empty. Throws as `Matches` does.
    std::optional<std::vector<std::string>> GroupsOf(const std::string& text) const;

  private:
    struct Compiled;
    std::unique_ptr<const Compiled> compiled_;
};

} // namespace CppTools::Host
