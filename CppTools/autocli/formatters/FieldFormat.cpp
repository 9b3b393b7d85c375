#include <CppTools/autocli/formatters/FieldFormat.h>
#include <CppTools/autocli/formatters/FormatParameters.h>
#include <CppTools/autocli/formatters/TextBuffer.h>
#include <CppTools/host/ProcessSpawn.h>
#include <CppTools/metaobj/MetaBool.h>
#include <CppTools/metaobj/MetaInt.h>
#include <CppTools/metaobj/MetaString.h>
#include <CppTools/metaobj/PlainText.h>
#include <CppTools/metaobj/ValueCast.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <utility>

namespace CppTools::AutoCli {

using MetaObj::FieldValue;
using MetaObj::MetaObject;
using MetaObj::ValueAs;

namespace {

/// What the field's text may need beyond the lengths of the format and of the plain text.
constexpr std::size_t kSpareFormatRoom = 65;

const std::string* FindParameter(const FormatParameters& params, const std::string& key) {
    const auto found = params.GetParameters().find(key);
    return found != params.GetParameters().end() ? &found->second : nullptr;
}

/// Formats one value. Structures and lists format as nothing.
struct Printer {
    PrintfFormat::Result operator()(long number) const { return format.Apply(number, room); }

    PrintfFormat::Result operator()(bool truth) const { return (*this)(truth ? 1L : 0L); }

    PrintfFormat::Result operator()(std::string_view text) const {
        return format.Apply(text, room);
    }

    PrintfFormat::Result operator()(const MetaObject& value) const {
        if (const auto* number = ValueAs<MetaObj::MetaInt>(value)) {
            return (*this)(number->GetValue());
        }
        if (const auto* truth = ValueAs<MetaObj::MetaBool>(value)) {
            return (*this)(truth->GetValue());
        }
        if (const auto* text = ValueAs<MetaObj::MetaString>(value)) {
            return (*this)(std::string_view(text->GetValue()));
        }
        return {};
    }

    const PrintfFormat& format;
    std::size_t room;
};

struct PlainWriter {
    void operator()(long number) const { out << number; }

    void operator()(bool truth) const { out << truth; }

    void operator()(std::string_view text) const { out << text; }

    void operator()(const MetaObject& value) const {
        if (const auto* text = ValueAs<MetaObj::MetaString>(value)) {
            out << text->GetValue();
        } else {
            out << value.ToString();
        }
    }

    TextBuffer& out;
};

struct PlainLength {
    std::size_t operator()(long number) const {
        std::array<char, 24> digits;
        const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), number).ptr;
        return static_cast<std::size_t>(end - digits.data());
    }

    std::size_t operator()(bool truth) const { return truth ? 4 : 5; }

    std::size_t operator()(std::string_view text) const { return text.size(); }

    std::size_t operator()(const MetaObject& value) const {
        const auto* text = ValueAs<MetaObj::MetaString>(value);
        return text != nullptr ? text->GetValue().size() : value.ToString().size();
    }
};

} // namespace

FieldFormat::FieldFormat(const std::string& typeName, const std::string& fieldName,
                         const FormatParameters& params)
    : printfKey_("printf:" + typeName + "." + fieldName),
      units_(FindParameter(params, "units:" + typeName + "." + fieldName)) {
    if (const std::string* const format = FindParameter(params, printfKey_)) {
        printf_.emplace(*format);
        printfRoom_ = format->size() + kSpareFormatRoom;
    }
}

void FieldFormat::Write(const FieldValue& value, TextBuffer& out) const {
    if (IsPlain()) {
        value.Visit(PlainWriter{out});
    } else {
        out << Text(value);
    }
}

void FieldFormat::WriteLeft(const FieldValue& value, Padding padding, TextBuffer& out) const {
    const std::size_t length = Length(value);
    Write(value, out);
    out.Fill(padding.width - std::min(padding.width, length), padding.fill);
}

void FieldFormat::WriteRight(const FieldValue& value, Padding padding, TextBuffer& out) const {
    const std::size_t length = Length(value);
    out.Fill(padding.width - std::min(padding.width, length), padding.fill);
    Write(value, out);
}

std::size_t FieldFormat::Length(const FieldValue& value) const {
    return IsPlain() ? value.Visit(PlainLength{}) : Text(value).size();
}

std::string FieldFormat::Text(const MetaObject& value) const {
    return TextOf(value);
}

std::string FieldFormat::Text(const FieldValue& value) const {
    return value.Visit([this](const auto& content) { return TextOf(content); });
}

template <typename Content>
std::string FieldFormat::TextOf(const Content& content) const {
    std::string text;
    MetaObj::PlainTextWriter(text).Append(content);
    if (printf_) {
        auto formatted = Printer{*printf_, printfRoom_ + text.size()}(content);
        if (formatted.error != 0) {
            return "Error while handling formatting parameter " + printfKey_ +
                   ".  Unable to format field: " + Host::StatusText(formatted.error);
        }
        text = std::move(formatted.text);
    }
    if (units_ != nullptr) {
        text += ' ' + *units_;
    }
    return text;
}

} // namespace CppTools::AutoCli
