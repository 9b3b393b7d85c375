#pragma once

#include <string>

namespace CppTools::CallSpec {
class Input;
} // namespace CppTools::CallSpec

namespace CppTools::AutoCli {

class HeldValues;

/// What a template is filled for: values are sanitised for a command line only.
enum class TemplatePurpose { CommandLine, StandardInput };

/// A template on its way to the text that it stands for. Parameters are filled in one by one;
/// the text of one is searched for the placeholders of those that come after it.
///
/// Each placeholder is described by the pattern that it matches. The patterns are scanned for by
/// hand, in linear time: a matcher that backtracks takes quadratic time over openings that are
/// never closed.
class CommandTemplate {
  public:
    CommandTemplate(std::string text, TemplatePurpose purpose);

    /// Replaces the placeholders of a parameter that `input` has. Where values go, `held` puts
    /// its marks, unless there is none.
    void Fill(const std::string& name, const CallSpec::Input& input, HeldValues* held = nullptr);

    /// Removes the conditional pieces of parameters that were not filled in.
    void RemoveUnfilled();

    const std::string& GetText() const { return text_; }

    static bool IsBadCharacter(char character);

    /// A copy with a backslash before every bad character.
    static std::string Sanitize(const std::string& text);

    /// A copy without the character.
    static std::string Remove(const std::string& text, char character);

  private:
    void FillValue(const std::string& name, const CallSpec::Input& input);
    void FillConditional(const std::string& name);
    void FillList(const std::string& name, const CallSpec::Input& input);
    void FillMultiList(const std::string& name, const CallSpec::Input& input);
    std::string JoinOptions(const std::string& name, const CallSpec::Input& input,
                            const std::string& option, bool quote) const;
    std::string Inserted(std::string value) const;

    bool IsForCommandLine() const { return purpose_ == TemplatePurpose::CommandLine; }

    std::string text_;
    TemplatePurpose purpose_;
    HeldValues* held_ = nullptr; ///< Of the parameter that is filled in.
};

} // namespace CppTools::AutoCli
