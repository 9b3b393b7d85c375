#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace CppTools::AutoCli {

/// Keeps values out of a template while it is filled: a mark that is part of no placeholder
/// stands for each of them, until all are put in their places at once.
class HeldValues {
  public:
    /// The mark of the value.
    std::string Hold(std::string value);

    /// The text with values for marks. What looks like a mark and is none stays.
    std::string Release(std::string_view text) const;

  private:
    std::vector<std::string> values_;
};

} // namespace CppTools::AutoCli
