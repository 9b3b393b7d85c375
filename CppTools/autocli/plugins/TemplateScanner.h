#pragma once

#include <CppTools/autocli/plugins/PlaceholderText.h>
#include <CppTools/autocli/plugins/TemplateRules.h>

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace CppTools::AutoCli {

/// Where a piece of a word stands. `SingleAlone` is between single quotes that hold nothing else.
enum class Place { Bare, Single, SingleAlone, Double };

/// Constant text of a word, or one placeholder in it.
struct Piece {
    Place place;
    std::size_t position;
    std::string text; ///< A placeholder as the template has it.
    std::optional<Placeholder> placeholder;
};

struct Word {
    std::vector<Piece> pieces;
    std::string condition; ///< The parameter of the $if that it is in, if any.

    /// Its text when it is there in every call and the same.
    std::optional<std::string> GetConstant() const;
    bool HasPlaceholder() const;

    /// Whether any of it is quoted, which keeps a shell from taking it for syntax.
    bool IsQuoted() const;
};

struct SimpleCommand {
    std::size_t position;
    std::vector<Word> words;
};

/// The characters that mean themselves in every shell, wherever they stand in a word.
extern const std::string_view kPlainCharacters;

/// The simple commands of a template's command line; whatever is not part of one is reported.
std::vector<SimpleCommand> ScanTemplate(std::string_view text, Findings& findings);

} // namespace CppTools::AutoCli
