#include <CppTools/autocli/formatters/FieldFormat.h>
#include <CppTools/autocli/formatters/FieldText.h>
#include <CppTools/autocli/formatters/TextBuffer.h>
#include <CppTools/autocli/formatters/Tokens.h>
#include <CppTools/metaobj/MetaString.h>
#include <CppTools/metaobj/StructFields.h>
#include <CppTools/metaobj/ValueCast.h>

#include <algorithm>
#include <iomanip>
#include <ostream>

namespace CppTools::AutoCli {

using MetaObj::FieldValue;
using MetaObj::MetaObject;
using MetaObj::MetaStruct;

namespace {

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
    return level < 1
               ? std::string()
               : std::string(static_cast<std::size_t>(level) * TextBuffer::kIndentPerLevel, ' ');
}

FieldValue* FindSubField(const MetaStruct& structure, std::string_view path) {
    const MetaStruct* current = &structure;
    FieldValue* result = nullptr;
    for (std::size_t begin = 0; begin <= path.size();) {
        if (current == nullptr) {
            return nullptr;
        }
        const std::size_t end = std::min(path.find('.', begin), path.size());
        result = MetaObj::StructFields(*current).Find(path.substr(begin, end - begin));
        if (result != nullptr) {
            const MetaObject* object = result->GetObject();
            current = object != nullptr ? MetaObj::ValueAs<MetaStruct>(*object) : nullptr;
        }
        begin = end + 1;
    }
    return result;
}

std::shared_ptr<MetaObject> GetSubField(std::shared_ptr<MetaStruct> st, const std::string& path) {
    auto* const value = st ? FindSubField(*st, path) : nullptr;
    return value != nullptr ? value->AsObject() : nullptr;
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
    return FieldFormat(typeName, fieldName, params).Text(*value);
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
