#include <CppTools/autocli/plugins/TemplateRules.h>

namespace CppTools::AutoCli {

namespace {

constexpr HazardSeverity kError = HazardSeverity::Error;
constexpr HazardSeverity kWarning = HazardSeverity::Warning;

const std::string kThroughStdin = "Hand the text over through <stdin>";
const std::string kOwnProgram = "Move the script into a program and call that by its full path";
const std::string kSpellOut = "Write each placeholder out as a whole";

} // namespace

const std::vector<TemplateRule>& AutoCli_GetTemplateRules() {
    static const std::vector<TemplateRule> kRules = {
        {"unknown-parameter", kError, "No parameter has this name, so the placeholder stays.",
         "Declare the parameter or mend the name."},
        {"wrong-kind", kError,
         "Placeholder and parameter do not fit: $val is for single values, "
         "$list and $multilist are for anything but flags.",
         "Use $if for a flag and $list or $multilist for a list."},
        {"malformed-placeholder", kError, "This begins like a placeholder and is none.",
         kSpellOut + "."},
        {"spelled-together", kError, "Pieces around another placeholder may become a placeholder.",
         kSpellOut + "."},
        {"expansion", kError, "The shell expands what begins with this dollar sign.",
         kOwnProgram + "."},
        {"command-substitution", kError, "The shell runs this and reads what it prints.",
         kOwnProgram + "."},
        {"arithmetic", kError, "Shells evaluate names in arithmetic, some of them as commands.",
         kOwnProgram + "."},
        {"backslash", kError, "What a backslash takes away depends on the character behind it.",
         "Use single quotes."},
        {"brace", kError, "Braces outside placeholders take part in the search for those.",
         kOwnProgram + "."},
        {"special-character", kError, "Shells expand this character or differ on it.",
         "Put the constant text between single quotes."},
        {"shell-pattern", kError, "Values in patterns of case or [[ ]] match what they like.",
         kOwnProgram + "."},
        {"comment", kError, "A value with a line end would end the comment.",
         "Put the remark into the description."},
        {"here-document", kError, "The shell expands here-documents.", kThroughStdin + "."},
        {"open-quote", kError, "The quote is never closed.", "Close it."},
        {"complex-shell", kError, "More than simple commands joined by ; && || and |.",
         kOwnProgram + "."},
        {"no-simple-command", kError,
         "Settings such as LANG are put in front of the line, which has to begin with a command.",
         "Begin with the command, on the first line."},
        {"conditional", kError,
         "An $if holds whole words, separated by blanks from all others, and no placeholder but "
         "those of its own parameter, a list as the last thing.",
         "Write it as a word of its own: $if{NAME,--option $val{NAME}}."},
        {"redirection", kError,
         "Redirections name constant files and stand apart from the words before them.",
         "Name the file in the program that is called."},
        {"command-position", kError, "A value would choose the command or set a variable for it.",
         "Write the command out; hand the value over as an argument."},
        {"prefix-option", kError, "It cannot be told which word behind this prefix is the command.",
         "Use the prefix with its plain options only, each apart from its value."},
        {"nested-shell", kError, "This command runs text that it is given.",
         "Call the program itself, by its full path, with the values as arguments."},
        {"unknown-command", kError, "What a name without a path means depends on the shell.",
         "Write the full path of the program."},
        {"printf-format", kError,
         "Some shells evaluate numbers of printf and the value of its option -v.",
         "Begin with a constant format of texts: printf '%s' ..."},
        {"bare-text", kError, "Bare values are for integers, booleans and sets of plain words.",
         "Write '$val{NAME}', quotes included, constrain the parameter, or use <stdin>."},
        {"double-quoted-text", kError, "The shell expands between double quotes.",
         "Write '$val{NAME}' with single quotes, or constrain the parameter."},
        {"quotes-do-not-touch", kError,
         "Single quotes protect a text only when they hold nothing but the placeholder.",
         "Write '$val{NAME}', other constant text in quotes of its own beside it."},
        {"quoted-two-ways", kError, "The last use of the name decides how all uses are filled.",
         "Write the placeholder in the same form everywhere."},
        {"list-of-text", kError, "Values of a list are not protected by the quotes around it.",
         "Constrain the parameter to plain characters, or use <stdin>."},
        {"list-form", kError,
         "The separator or option is not plain, or the list stands where its form does not fit: "
         "$multilist is a bare word of its own, quotes are added to bare lists only.",
         "Write $list{NAME,',',false} or $multilist{NAME,--option,false}."},
        {"option-injection", kWarning, "The value may begin with - and be taken for an option.",
         "Write it behind -- or an option's name, or constrain how it begins."},
        {"may-be-absent", kWarning,
         "Without a value the word vanishes, and without the parameter the placeholder stays.",
         "Require the parameter, or write $if{NAME,$val{NAME}}."},
        {"unchecked-script", kWarning, "The script reads values from <stdin> and was not checked.",
         kOwnProgram + ", or keep to simple commands."}};
    return kRules;
}

const TemplateRule& TextsOf(Rule rule) {
    return AutoCli_GetTemplateRules()[static_cast<std::size_t>(rule)];
}

} // namespace CppTools::AutoCli
