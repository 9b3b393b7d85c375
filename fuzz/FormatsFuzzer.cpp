// Formats of printf that users give. The input is the format, the units, and a value: a letter for
// its kind (i, b, s), and its text.

#include <fuzz/Laws.h>
#include <fuzz/Sections.h>

#include <CppTools/autocli/formatters/FieldText.h>
#include <CppTools/autocli/formatters/FormatParameters.h>
#include <CppTools/metaobj/MetaBool.h>
#include <CppTools/metaobj/MetaInt.h>
#include <CppTools/metaobj/MetaString.h>

#include <algorithm>
#include <boost/regex.hpp>
#include <cerrno>
#include <charconv>
#include <cstdio>
#include <memory>
#include <optional>
#include <string>
#include <system_error>
#include <vector>

namespace {

using CppTools::AutoCli::FormatParameters;
using CppTools::MetaObj::MetaBool;
using CppTools::MetaObj::MetaInt;
using CppTools::MetaObj::MetaObject;
using CppTools::MetaObj::MetaString;
using Fuzz::Require;

/// A value, the formats that fit it, and those of them of which C says what they mean with it.
struct Subject {
    std::shared_ptr<MetaObject> value;
    const boost::regex& fitting;
    const boost::regex& defined;
    std::string (*byTheLibrary)(const std::string& format, const MetaObject& value,
                                std::size_t room);
};

/// Text around one conversion, or alone.
boost::regex Around(const std::string& conversion) {
    const std::string text = "(?>[^%]|%%)*+";
    return boost::regex(text + "(?:%" + conversion + text + ")?");
}

template <typename Argument>
std::string Print(const std::string& format, Argument argument, std::size_t room) {
    std::vector<char> buffer(room);
    std::snprintf(buffer.data(), room, format.c_str(), argument);
    return buffer.data();
}

std::string PrintInt(const std::string& format, const MetaObject& value, std::size_t room) {
    return Print(format, static_cast<const MetaInt&>(value).GetValue(), room);
}

std::string PrintBool(const std::string& format, const MetaObject& value, std::size_t room) {
    return Print(format, static_cast<const MetaBool&>(value).GetValue() ? 1 : 0, room);
}

std::string PrintText(const std::string& format, const MetaObject& value, std::size_t room) {
    return Print(format, static_cast<const MetaString&>(value).GetValue().c_str(), room);
}

Subject NewSubject(const std::string& text) {
    static const std::string anySizes = "[-+ #0']*[0-9]*(?:\\.[0-9]*)?";
    static const std::string sizes = "[0-9]{0,4}(?:\\.[0-9]{0,4})?";
    static const boost::regex fittingNumber =
        Around(anySizes + "(?:(?:hh|h|ll|l|L|j|z|t)?[diouxX]|l?c)");
    static const boost::regex fittingText = Around(anySizes + "s");
    static const boost::regex definedInt =
        Around("(?:[-+ 0]*" + sizes + "l[diu]|[-#0]*" + sizes + "l[oxX])");
    static const boost::regex definedBool =
        Around("(?:[-+ 0]*" + sizes + "h{0,2}[diu]|[-#0]*" + sizes + "h{0,2}[oxX])");
    static const boost::regex definedText = Around("-*" + sizes + "s");

    const std::string rest = text.substr(std::min<std::size_t>(1, text.size()));
    if (text.starts_with('i')) {
        long number = 0;
        std::from_chars(rest.data(), rest.data() + rest.size(), number);
        return {MetaInt::New(number), fittingNumber, definedInt, PrintInt};
    }
    if (text.starts_with('b')) {
        return {MetaBool::New(rest == "1"), fittingNumber, definedBool, PrintBool};
    }
    return {MetaString::New(rest), fittingText, definedText, PrintText};
}

std::string Refusal(int error) {
    return "Error while handling formatting parameter printf:T.F.  Unable to format field: " +
           std::generic_category().message(error);
}

std::string Format(const Subject& subject, const std::string& format,
                   const std::optional<std::string>& units) {
    FormatParameters parameters;
    parameters.SetParameter("printf:T.F", format);
    if (units) {
        parameters.SetParameter("units:T.F", *units);
    }
    return CppTools::AutoCli::AutoCli_FormatField("T", "F", subject.value, parameters);
}

bool IsRefusal(const std::string& text) {
    return text == Refusal(EINVAL) || text == Refusal(EOVERFLOW) || text == Refusal(EILSEQ);
}

void Check(const Subject& subject, const std::string& format) {
    const std::string text = Format(subject, format, std::nullopt);
    const std::size_t room = format.size() + subject.value->ToString().size() + 65;
    Require(text.size() < room || IsRefusal(text), "the text is cut", text);
    Require((text == Refusal(EINVAL)) != boost::regex_match(format, subject.fitting),
            "what does not fit, and nothing else, is refused", format + "\n" + text);
    if (boost::regex_match(format, subject.defined)) {
        Require(text == subject.byTheLibrary(format, *subject.value, room), "what C defines holds",
                format + "\n" + text);
    }
}

void CheckUnits(const Subject& subject, const std::string& format, const std::string& units) {
    const std::string plain = Format(subject, format, std::nullopt);
    const std::string text = Format(subject, format, units);
    Require(text == (IsRefusal(plain) ? plain : plain + " " + units), "units follow the text",
            text);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Fuzz::Sections sections(data, size);
    const std::string format = sections.Next();
    const std::string units = sections.Next();
    const Subject subject = NewSubject(sections.Next());
    Check(subject, format);
    CheckUnits(subject, format, units);
    return 0;
}
