#include <CppTools/autocli/formatters/FieldText.h>
#include <CppTools/autocli/formatters/FormatParameters.h>
#include <CppTools/autocli/formatters/Tokens.h>
#include <CppTools/host/ProcessSpawn.h>
#include <CppTools/metaobj/MetaBool.h>
#include <CppTools/metaobj/MetaInt.h>
#include <CppTools/metaobj/MetaString.h>
#include <CppTools/metaobj/MetaStruct.h>

#include <boost/algorithm/string/classification.hpp>
#include <boost/algorithm/string/split.hpp>

#include <cerrno>
#include <cstdio>
#include <iomanip>
#include <ostream>
#include <vector>

namespace CppTools::AutoCli {

using MetaObj::MetaObject;
using MetaObj::MetaStruct;

namespace {

constexpr int kIndentPerLevel = 3;

/// What the field's text may need beyond the lengths of the format and of the plain text.
constexpr std::size_t kSpareFormatRoom = 65;

/// Formats one value; returns what snprintf does. Structures and lists format as nothing. The
/// format comes from the user, who answers for its fitting the value.
int PrintValue(std::vector<char>& buffer, const char* format, const MetaObject& value) {
    if (const auto* number = dynamic_cast<const MetaObj::MetaInt*>(&value)) {
        return std::snprintf(buffer.data(), buffer.size(), format, number->GetValue());
    }
    if (const auto* truth = dynamic_cast<const MetaObj::MetaBool*>(&value)) {
        return std::snprintf(buffer.data(), buffer.size(), format, truth->GetValue() ? 1 : 0);
    }
    if (const auto* text = dynamic_cast<const MetaObj::MetaString*>(&value)) {
        return std::snprintf(buffer.data(), buffer.size(), format, text->GetValue().c_str());
    }
    return 0;
}

/// One column is the least that an indent takes, whatever its number says.
void WriteIndent(std::ostream& out, int indent) {
    out << std::setw(indent) << " ";
}

void FitLines(int indent, int width, const std::string& text, bool continueLine, std::ostream& out,
              bool newlineAtEnd, char breakMark) {
    bool isFirst = true;
    for (const auto& line : SplitTokens(text, '\n')) {
        if (!isFirst && !newlineAtEnd) {
            out << '\n';
        }
        AutoCli_FitString(indent, width, line, isFirst && continueLine, out, newlineAtEnd,
                          breakMark, false);
        isFirst = false;
    }
}

void FitWords(int indent, int width, const std::string& text, std::ostream& out, char breakMark) {
    const long available = static_cast<long>(width) - indent;
    long room = available;
    bool isFirst = true;
    for (const auto& word : SplitTokens(text, ' ')) {
        const long cost = static_cast<long>(word.size()) + 1;
        room -= cost;
        if (room < 0) {
            out << (breakMark == '\0' ? ' ' : breakMark) << '\n';
            WriteIndent(out, indent);
            room = available - cost;
        } else if (!isFirst) {
            out << ' ';
        }
        out << word;
        isFirst = false;
    }
}

} // namespace

std::string GetIndent(int level) {
    return level < 1 ? std::string()
                     : std::string(static_cast<std::size_t>(level) * kIndentPerLevel, ' ');
}

std::shared_ptr<MetaObject> GetSubField(std::shared_ptr<MetaStruct> st, const std::string& path) {
    if (path.find('.') == std::string::npos) {
        return st ? st->GetField(path) : nullptr;
    }
    std::vector<std::string> parts;
    boost::algorithm::split(parts, path, boost::algorithm::is_any_of("."));
    std::shared_ptr<MetaObject> result;
    for (const auto& part : parts) {
        if (!st) {
            return nullptr;
        }
        result = st->GetField(part);
        if (result) {
            st = std::dynamic_pointer_cast<MetaStruct>(result);
        }
    }
    return result;
}

std::string GetStringField(std::shared_ptr<MetaStruct> st, const std::string& fieldName) {
    const auto text =
        std::dynamic_pointer_cast<MetaObj::MetaString>(st ? st->GetField(fieldName) : nullptr);
    return text ? text->GetValue() : std::string();
}

std::string AutoCli_FormatField(const std::string& typeName, const std::string& fieldName,
                                std::shared_ptr<MetaObject> value, FormatParameters& params) {
    if (!value) {
        return "NULL Object";
    }
    const std::string field = typeName + "." + fieldName;
    const std::string unitsKey = "units:" + field;
    const std::string printfKey = "printf:" + field;
    std::string result = value->ToString();
    if (params.HasParameter(printfKey)) {
        const std::string& format = params.GetParameter(printfKey);
        std::vector<char> buffer(format.size() + result.size() + kSpareFormatRoom);
        if (PrintValue(buffer, format.c_str(), *value) < 0) {
            return "Error while handling formatting parameter " + printfKey +
                   ".  Unable to format field: " + Host::StatusText(errno);
        }
        result = buffer.data();
    }
    if (params.HasParameter(unitsKey)) {
        result += " " + params.GetParameter(unitsKey);
    }
    return result;
}

void AutoCli_FitString(const int& indent, const int& width, const std::string& text,
                       bool continueLine, std::ostream& out, bool newlineAtEnd, char breakMark,
                       bool splitLines) {
    if (splitLines) {
        FitLines(indent, width, text, continueLine, out, newlineAtEnd, breakMark);
        return;
    }
    if (!continueLine) {
        WriteIndent(out, indent);
    }
    const long available = static_cast<long>(width) - indent;
    const bool fits = available <= 0 || static_cast<long>(text.size()) <= available;
    if (fits) {
        out << text;
    } else {
        FitWords(indent, width, text, out, breakMark);
    }
    if (newlineAtEnd) {
        out << '\n';
    }
}

} // namespace CppTools::AutoCli
