#include <devkit/Rules.h>

#include <array>

namespace Devkit {

const std::string& NameOf(Severity severity) {
    static const std::array<std::string, 3> kNames = {"error", "warning", "note"};
    return kNames[static_cast<std::size_t>(severity)];
}

const std::vector<RuleTexts>& GetRules() {
    static const std::vector<RuleTexts> kRules = {
        {"unreadable", Severity::Error, "The file cannot be read.",
         "Name a file that you may read."},
        {"syntax", Severity::Error, "The document is not well-formed XML.",
         "Mend this first; the rest is checked afterwards."},
        {"grammar", Severity::Error, "The document is not what its grammar allows.",
         "Compare it with the grammar in the folder of schemas."},
        {"refused", Severity::Error, "The tool refuses it, in these words.",
         "Mend it; the tool takes nothing of a file that it refuses."},
        {"bad-name", Severity::Error, "A part of a path is no name.",
         "Use letters and digits as in fooBar, beginning with a small one."},
        {"taken-path", Severity::Error, "Something else stands at this path already.",
         "Choose another path; only first namespaces may be shared, with one description."},
        {"missing-namespace", Severity::Error, "The namespace above has not been declared yet.",
         "Declare it first, or name the descriptor that does in front of this one."},
        {"undescribed-command", Severity::Note, "Listings show the command without a word.",
         "Give it a description."},
        {"help-redefined", Severity::Error, "Every command has --help and -h already.",
         "Choose another name."},
        {"short-name-clash", Severity::Error, "Two parameters have the same short name.",
         "Leave one of them without."},
        {"undescribed-value", Severity::Warning,
         "A value without a description is not among those to choose from.",
         "Write what it means between the tags."},
        {"bad-regex", Severity::Error, "The regular expression does not compile.",
         "Mend it; every call that gives the parameter would fail."},
        {"runaway-regex", Severity::Warning,
         "The regular expression takes time without measure on some values.",
         "Repeat nothing that repeats the same characters itself."},
        {"unused-parameter", Severity::Warning, "No template uses the parameter.",
         "Use it, or take it out of the declaration."},
        {"list-of-one", Severity::Warning, "A placeholder for lists names a single value.",
         "Write $val, or declare the parameter with a list's type."},
        {"no-output", Severity::Error, "Without a declared shape no result is accepted.",
         "Declare the result in output-spec."},
        {"no-formatter", Severity::Warning, "Without a formatter the result is not shown.",
         "Name simple, table, xml, json or python."},
        {"unknown-formatter", Severity::Error, "There is no such formatter.",
         "Name simple, table, xml, json or python."},
        {"table-of-other", Severity::Error, "A table shows nothing but a list of structures.",
         "Use simple, or declare a list of structures."},
        {"unknown-format-parameter", Severity::Warning, "No formatter knows the parameter.",
         "Compare with the formatters' parameters."},
        {"unknown-type", Severity::Warning, "No structure of the result has this type.",
         "Write a typeName of output-spec."},
        {"unknown-field", Severity::Error, "The structure has no such field.",
         "Write the name of a field of output-spec."},
        {"printf-mismatch", Severity::Error, "The format does not fit the kind of the field.",
         "Use one conversion: %ld for int, %d for bool, %s for string."},
        {"empty-document", Severity::Error, "The document holds no result.",
         "Print a value, or a line that begins with ERROR: when there is none."},
        {"error-lines", Severity::Note, "The command reports errors instead of a result.",
         "Check a document of a call that succeeds, too."},
        {"other-shape", Severity::Error, "The result is not what the command declares.",
         "Change the document, or output-spec."},
    };
    return kRules;
}

const RuleTexts& TextsOf(Rule rule) {
    return GetRules()[static_cast<std::size_t>(rule)];
}

} // namespace Devkit
