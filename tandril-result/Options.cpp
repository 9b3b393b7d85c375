#include "Options.h"

#include "Errors.h"

#include <CppTools/callspec/ParameterSpec.h>
#include <CppTools/metaobj/MetaStruct.h>

#include <algorithm>
#include <getopt.h>

namespace TandrilResult {

namespace {

enum Letter : int {
    kFrom = 1,
    kStructure,
    kList,
    kOne,
    kField,
    kDefault,
    kFill,
    kInfer,
    kRows,
    kEach,
    kChildren,
    kColumns,
    kEmptyStatus,
    kArgumentFromInput,
    kHelp,
    kVersion
};

const option kOptions[] = {
    {"from", required_argument, nullptr, kFrom},
    {"structure", required_argument, nullptr, kStructure},
    {"list", required_argument, nullptr, kList},
    {"one", no_argument, nullptr, kOne},
    {"field", required_argument, nullptr, kField},
    {"default", required_argument, nullptr, kDefault},
    {"fill", no_argument, nullptr, kFill},
    {"infer", no_argument, nullptr, kInfer},
    {"rows", required_argument, nullptr, kRows},
    {"each", required_argument, nullptr, kEach},
    {"children", required_argument, nullptr, kChildren},
    {"columns", required_argument, nullptr, kColumns},
    {"empty-status", required_argument, nullptr, kEmptyStatus},
    {"argument-from-input", no_argument, nullptr, kArgumentFromInput},
    {"help", no_argument, nullptr, kHelp},
    {"version", no_argument, nullptr, kVersion},
    {nullptr, 0, nullptr, 0},
};

struct NamedFormat {
    const char* name;
    Format format;
};

constexpr NamedFormat kFormats[] = {
    {"json", Format::Json},   {"jsonl", Format::JsonLines}, {"tsv", Format::Tsv},
    {"csv", Format::Csv},     {"pairs", Format::Pairs},     {"nul", Format::Nul},
    {"lines", Format::Lines},
};

[[noreturn]] void Refuse(const std::string& problem) {
    throw ResultError(problem + " (tandril-result --help explains)");
}

Format FormatOf(const std::string& name) {
    for (const NamedFormat& format : kFormats) {
        if (name == format.name) {
            return format.format;
        }
    }
    Refuse("Unknown format '" + name + "' for --from");
}

ScalarType ListTypeOf(const std::string& word) {
    const auto type = ValueTypeOf(word);
    if (!type || type->isList) {
        Refuse("Unknown type '" + word + "' for --list");
    }
    return type->scalar;
}

std::vector<std::string> Split(const std::string& text, char separator) {
    std::vector<std::string> pieces;
    std::size_t start = 0;
    while (start <= text.size()) {
        const auto end = std::min(text.find(separator, start), text.size());
        pieces.push_back(text.substr(start, end - start));
        start = end + 1;
    }
    return pieces;
}

std::vector<std::string> ColumnsOf(const std::string& text) {
    auto columns = Split(text, ',');
    auto sorted = columns;
    std::sort(sorted.begin(), sorted.end());
    const auto twin = std::adjacent_find(sorted.begin(), sorted.end());
    if (twin != sorted.end()) {
        Refuse("--columns names '" + *twin + "' twice");
    }
    return columns;
}

int StatusOf(const std::string& text) {
    long status = 0;
    if (!CppTools::CallSpec::ParameterSpec::GetInt(text, status) || status < 0 || status > 255) {
        Refuse("--empty-status must be a number from 0 to 255, not '" + text + "'");
    }
    return static_cast<int>(status);
}

std::string StructureName(const std::string& name) {
    if (!CppTools::MetaObj::IsValidStructName(name)) {
        Refuse("Invalid name for a structure: '" + name +
               "'; it must consist of letters and digits");
    }
    return name;
}

void AddField(Options& options, const std::string& text) {
    FieldSpec field = ParseFieldSpec(text);
    for (const FieldSpec& other : options.fields.fields) {
        if (other.name == field.name) {
            Refuse("--field '" + field.name + "' is given twice");
        }
    }
    options.fields.fields.push_back(std::move(field));
}

void AddDefault(Options& options, const std::string& text) {
    const auto equals = text.find('=');
    if (equals == std::string::npos) {
        Refuse("--default '" + text + "' has no '=' between field and value");
    }
    options.fields.defaults[text.substr(0, equals)] = text.substr(equals + 1);
}

void Apply(Options& options, int letter, const std::string& value) {
    switch (letter) {
    case kFrom:
        options.formatName = value;
        options.format = FormatOf(value);
        break;
    case kStructure:
        options.fields.structure = StructureName(value);
        break;
    case kList:
        options.listType = ListTypeOf(value);
        break;
    case kOne:
        options.one = true;
        break;
    case kField:
        AddField(options, value);
        break;
    case kDefault:
        AddDefault(options, value);
        break;
    case kFill:
        options.fields.fill = true;
        break;
    case kInfer:
        options.fields.infer = true;
        break;
    case kRows:
        options.rowsPath = Split(value, '.');
        break;
    case kEach:
        options.nesting.each = value;
        break;
    case kChildren:
        options.nesting.children = value;
        break;
    case kColumns:
        options.columns = ColumnsOf(value);
        break;
    case kEmptyStatus:
        options.emptyStatus = StatusOf(value);
        break;
    case kArgumentFromInput:
        options.argumentFromInput = true;
        break;
    case kHelp:
        options.help = true;
        break;
    default:
        options.version = true;
    }
}

/// What follows the options is a program, behind "--".
std::vector<std::string> ProgramBehind(int argc, char** argv) {
    if (optind < argc && std::string(argv[optind - 1]) != "--") {
        Refuse(std::string("Unexpected word '") + argv[optind] + "': a program stands behind --");
    }
    return {argv + optind, argv + argc};
}

void RefuseIf(bool isWrong, const std::string& problem) {
    if (isWrong) {
        Refuse(problem);
    }
}

void CheckTogether(const Options& options) {
    const bool isJson = options.format == Format::Json || options.format == Format::JsonLines;
    const bool isTable = options.format == Format::Tsv || options.format == Format::Csv;
    const bool hasFieldRules = !options.fields.fields.empty() || !options.fields.defaults.empty() ||
                               options.fields.fill || options.fields.infer;
    const bool isNested = !options.nesting.each.empty() || !options.nesting.children.empty();

    RefuseIf(options.formatName.empty(), "--from is needed");
    RefuseIf(options.fields.structure.empty() == !options.listType,
             "Either --structure or --list is needed");
    RefuseIf(
        options.listType && (hasFieldRules || isNested || !options.columns.empty()),
        "--list makes values without fields, so only --structure goes with --field, --default, "
        "--fill, --infer, --each, --children and --columns");
    RefuseIf(options.listType && (isTable || options.format == Format::Pairs),
             "--list does not go with --from " + options.formatName);
    RefuseIf(!options.listType && options.format == Format::Lines,
             "--from lines goes with --list only");
    RefuseIf(!isJson && (isNested || !options.rowsPath.empty()),
             "--rows, --each and --children go with json and jsonl only");
    RefuseIf(!options.columns.empty() && !isTable && options.format != Format::Nul,
             "--columns goes with tsv, csv and nul only");
    RefuseIf(options.emptyStatus && options.program.empty(),
             "--empty-status needs a program behind --");
    RefuseIf(options.argumentFromInput && options.program.empty(),
             "--argument-from-input needs a program behind --");
}

/// What the reading needs to know of the rest.
void Complete(Options& options) {
    options.fields.isTyped = options.format == Format::Json || options.format == Format::JsonLines;
    for (const std::string& key : {options.nesting.each, options.nesting.children}) {
        if (!key.empty()) {
            options.fields.nested.insert(key);
        }
    }
}

} // namespace

Options ParseOptions(int argc, char** argv) {
    Options options;
    opterr = 0;
    optind = 0; // as at the start of the process, whatever was parsed before
    int letter = 0;
    while ((letter = getopt_long(argc, argv, "+:", kOptions, nullptr)) != -1) {
        if (letter == ':') {
            Refuse(std::string("The option ") + argv[optind - 1] + " needs a value");
        }
        if (letter == '?') {
            // A short option, of which there are none, is told of by its letter.
            const std::string word =
                optopt < ' ' ? argv[optind - 1] : std::string{'-', static_cast<char>(optopt)};
            Refuse("Unknown option or value where none belongs: '" + word + "'");
        }
        Apply(options, letter, optarg == nullptr ? "" : optarg);
    }
    options.program = ProgramBehind(argc, argv);
    if (!options.help && !options.version) {
        CheckTogether(options);
        Complete(options);
    }
    return options;
}

} // namespace TandrilResult
