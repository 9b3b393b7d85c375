#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace CppTools::AutoCli {

struct PrintfConversion;
struct PrintfLength;

/// A format of printf that a user wrote, for one value. It is read once and made safe: whatever the
/// format says, nothing but the value is read, and no more than a bounded text is made.
///
/// - Integers and booleans (1 and 0) are for d, i, u, o, x and X, with any of C's length modifiers
///   and L, and for c and lc. The value is converted to the type that the modifier names, as if it
///   had been an argument of that type.
/// - Texts are for s.
/// - A flag or precision that C gives no meaning with a conversion has none.
/// - Every other conversion, a second one, a width or precision of "*" and a number before "$" do
///   not fit, whatever the value. A format without a conversion fits every value.
class PrintfFormat {
  public:
    /// Of width and precision: the columns of the widest display that there can be.
    static constexpr int kLargestWidth = 65535;

    explicit PrintfFormat(std::string_view format);

    struct Result {
        std::string text;
        int error = 0; ///< Of errno, when there is no text.
    };

    /// The text of one value, cut to less than `room` bytes, and at a NUL, of the format too. The
    /// error is EINVAL when the format does not fit, EOVERFLOW when its width or precision is too
    /// large, and snprintf's when that fails. `room` is at least 1.
    Result Apply(long number, std::size_t room) const;
    Result Apply(std::string_view text, std::size_t room) const;

  private:
    void AddConversion(std::string_view& rest);
    std::string TakeWidth(std::string_view& rest);
    int ErrorFor(bool isText) const;

    std::string format_; ///< Its conversion takes the widest type of its kind.
    const PrintfConversion* conversion_ = nullptr;
    const PrintfLength* length_ = nullptr;
    int error_ = 0;
};

} // namespace CppTools::AutoCli
