#include <devkit/FormatKeys.h>
#include <devkit/lints/Lints.h>

#include <CppTools/CppTools.h>

#include <boost/regex.hpp>

namespace Devkit::Lints {

namespace {

using CppTools::MetaObj::MetaType;

/// What a field of the kind is handed to printf as, in the form of its conversion. Nothing is
/// handed over for structures and lists.
const boost::regex& ConversionFor(MetaType kind) {
    static const boost::regex kInt("(?:l|ll|j|z|t)[diouxX]");
    static const boost::regex kBool("[diouxX]");
    static const boost::regex kString("s");
    static const boost::regex kNone("(?!)");
    switch (kind) {
    case MetaType::Int:
        return kInt;
    case MetaType::Bool:
        return kBool;
    case MetaType::String:
        return kString;
    default:
        return kNone;
    }
}

/// What stands behind the flags, width and precision of each conversion.
std::vector<std::string> ConversionsOf(const std::string& format) {
    static const boost::regex kConversion(
        R"(%(?:%|[-+ #0']*\d*(?:\.\d*)?([hlLqjzt]*[a-zA-Z])|(.?)))", boost::regex::mod_s);
    std::vector<std::string> conversions;
    for (boost::sregex_iterator match(format.begin(), format.end(), kConversion), end; match != end;
         ++match) {
        if (match->str() != "%%") {
            conversions.push_back(match->str(1));
        }
    }
    return conversions;
}

} // namespace

void CheckPrintfFormats(const CommandElement& command, Findings& findings) {
    if (!command.command) {
        return;
    }
    const ShownOutput output(*command.command);
    for (const FormatKey& key : FormatKeysOf(command)) {
        const auto type = output.Types().find(key.type);
        if (key.word != "printf" || type == output.Types().end()) {
            continue;
        }
        const auto field = output.FindField(type->second, key.field);
        const auto conversions = ConversionsOf(key.value);
        if (field && (conversions.size() != 1 ||
                      !boost::regex_match(conversions.front(), ConversionFor(field->GetType())))) {
            findings.Add(Rule::PrintfMismatch, key.line,
                         "The format '" + key.value + "' of '" + key.key +
                             "' does not fit the kind of the field");
        }
    }
}

} // namespace Devkit::Lints
