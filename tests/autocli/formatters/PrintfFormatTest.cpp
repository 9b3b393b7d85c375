#include <CppTools/autocli/formatters/FieldText.h>
#include <CppTools/autocli/formatters/FormatParameters.h>
#include <CppTools/metaobj/MetaBool.h>
#include <CppTools/metaobj/MetaInt.h>
#include <CppTools/metaobj/MetaString.h>

#include <tests/support/NamedRow.h>

#include <gtest/gtest.h>

#include <cerrno>
#include <cstdio>
#include <limits>
#include <memory>
#include <string>
#include <system_error>

// Formats of printf come from users. What C says of one holds; where C says nothing, we do.

namespace {

using CppTools::AutoCli::AutoCli_FormatField;
using CppTools::AutoCli::FormatParameters;
using CppTools::MetaObj::MetaBool;
using CppTools::MetaObj::MetaInt;
using CppTools::MetaObj::MetaObject;
using CppTools::MetaObj::MetaString;
using TestSupport::kRowName;

using Value = std::shared_ptr<MetaObject>;

std::string Formatted(const std::string& format, const Value& value) {
    FormatParameters params;
    params.SetParameter("printf:T.F", format);
    return AutoCli_FormatField("T", "F", value, params);
}

std::string Refusal(int error) {
    return "Error while handling formatting parameter printf:T.F.  Unable to format field: " +
           std::generic_category().message(error);
}

struct FormatRow : TestSupport::NamedRow {
    std::string format;
    Value value;
    std::string text;
};

class PrintfFormatTest : public testing::TestWithParam<FormatRow> {};

TEST_P(PrintfFormatTest, TextIsAsDefined) {
    EXPECT_EQ(Formatted(GetParam().format, GetParam().value), GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(
    Conversion, PrintfFormatTest,
    testing::Values(FormatRow{{"Decimal"}, "%ld", MetaInt::New(-42), "-42"},
                    FormatRow{{"DecimalByI"}, "%li", MetaInt::New(-42), "-42"},
                    FormatRow{{"Unsigned"}, "%lu", MetaInt::New(-1), "18446744073709551615"},
                    FormatRow{{"Octal"}, "%lo", MetaInt::New(8), "10"},
                    FormatRow{{"Hexadecimal"}, "%lx", MetaInt::New(255), "ff"},
                    FormatRow{{"CapitalHexadecimal"}, "%lX", MetaInt::New(255), "FF"},
                    FormatRow{{"Character"}, "<%c>", MetaInt::New('A'), "<A>"},
                    FormatRow{{"CharacterOfAByte"}, "%c", MetaInt::New(256 + 'A'), "A"},
                    FormatRow{{"CharacterThatEndsTheText"}, "<%c>", MetaInt::New(0), "<"},
                    FormatRow{{"WideCharacter"}, "<%lc>", MetaInt::New('A'), "<A>"},
                    FormatRow{{"CharacterOfABool"}, "<%c>", MetaBool::New(true), "<\x01>"},
                    FormatRow{{"Text"}, "<%s>", MetaString::New("sda"), "<sda>"}),
    kRowName);

INSTANTIATE_TEST_SUITE_P(
    LengthOfAnInteger, PrintfFormatTest,
    testing::Values(FormatRow{{"Hhd"}, "%hhd", MetaInt::New(200), "-56"},
                    FormatRow{{"Hhu"}, "%hhu", MetaInt::New(-1), "255"},
                    FormatRow{{"Hd"}, "%hd", MetaInt::New(40000), "-25536"},
                    FormatRow{{"Hx"}, "%hx", MetaInt::New(-1), "ffff"},
                    FormatRow{{"D"}, "%d", MetaInt::New(5), "5"},
                    FormatRow{{"DOfMoreThanAnInt"}, "%d", MetaInt::New(5000000000), "705032704"},
                    FormatRow{{"DOfANegativeInteger"}, "%d", MetaInt::New(-7), "-7"},
                    FormatRow{{"UOfANegativeInteger"}, "%u", MetaInt::New(-1), "4294967295"},
                    FormatRow{{"Lld"},
                              "%lld",
                              MetaInt::New(std::numeric_limits<long>::min()),
                              "-9223372036854775808"},
                    FormatRow{{"Ld"}, "%Ld", MetaInt::New(5000000000), "5000000000"},
                    FormatRow{{"Jd"}, "%jd", MetaInt::New(5000000000), "5000000000"},
                    FormatRow{{"Zu"}, "%zu", MetaInt::New(5000000000), "5000000000"},
                    FormatRow{{"Td"}, "%td", MetaInt::New(-5000000000), "-5000000000"}),
    kRowName);

INSTANTIATE_TEST_SUITE_P(LengthOfABool, PrintfFormatTest,
                         testing::Values(FormatRow{{"D"}, "%d", MetaBool::New(true), "1"},
                                         FormatRow{{"Ld"}, "%ld", MetaBool::New(true), "1"},
                                         FormatRow{{"Hhd"}, "%hhd", MetaBool::New(false), "0"},
                                         FormatRow{{"Lx"}, "%#lx", MetaBool::New(true), "0x1"}),
                         kRowName);

INSTANTIATE_TEST_SUITE_P(
    Flags, PrintfFormatTest,
    testing::Values(FormatRow{{"Zeros"}, "%05ld", MetaInt::New(-42), "-0042"},
                    FormatRow{{"Left"}, "<%-5ld>", MetaInt::New(42), "<42   >"},
                    FormatRow{{"Sign"}, "%+ld", MetaInt::New(42), "+42"},
                    FormatRow{{"Blank"}, "<% ld>", MetaInt::New(42), "< 42>"},
                    FormatRow{{"Alternative"}, "%#lo", MetaInt::New(8), "010"},
                    FormatRow{{"Several"}, "<%-+5ld>", MetaInt::New(42), "<+42  >"},
                    FormatRow{{"Repeated"}, "%00005ld", MetaInt::New(42), "00042"},
                    FormatRow{{"Grouping"}, "%'ld", MetaInt::New(1234567), "1234567"},
                    FormatRow{{"LeftText"}, "<%-5s>", MetaString::New("ab"), "<ab   >"},
                    FormatRow{{"LeftCharacter"}, "<%-3c>", MetaInt::New('A'), "<A  >"}),
    kRowName);

INSTANTIATE_TEST_SUITE_P(
    WithoutMeaning, PrintfFormatTest,
    testing::Values(FormatRow{{"AlternativeDecimal"}, "%#ld", MetaInt::New(8), "8"},
                    FormatRow{{"GroupedHexadecimal"}, "%'lx", MetaInt::New(0xfffff), "fffff"},
                    FormatRow{{"SignOfTheUnsigned"}, "%+lu", MetaInt::New(8), "8"},
                    FormatRow{{"ZerosBeforeText"}, "<%05s>", MetaString::New("ab"), "<   ab>"},
                    FormatRow{{"ZerosBeforeACharacter"}, "<%03c>", MetaInt::New('A'), "<  A>"},
                    FormatRow{{"PrecisionOfACharacter"}, "<%.0c>", MetaInt::New('A'), "<A>"}),
    kRowName);

INSTANTIATE_TEST_SUITE_P(
    Precision, PrintfFormatTest,
    testing::Values(FormatRow{{"Digits"}, "%.5ld", MetaInt::New(-42), "-00042"},
                    FormatRow{{"DigitsInAWidth"}, "<%7.5ld>", MetaInt::New(42), "<  00042>"},
                    FormatRow{{"NoDigits"}, "<%.ld>", MetaInt::New(0), "<>"},
                    FormatRow{{"CutsText"}, "%.2s", MetaString::New("sda"), "sd"},
                    FormatRow{{"CutsAllText"}, "<%.s>", MetaString::New("sda"), "<>"}),
    kRowName);

INSTANTIATE_TEST_SUITE_P(
    TextAround, PrintfFormatTest,
    testing::Values(FormatRow{{"PercentSigns"}, "%%%ld%%%%", MetaInt::New(42), "%42%%"},
                    FormatRow{{"NoConversionForABool"}, "100%%", MetaBool::New(true), "100%"},
                    FormatRow{{"NoConversionForAText"}, "100%%", MetaString::New("a"), "100%"},
                    FormatRow{
                        {"NulEndsTheFormat"}, std::string("%ld\0%n", 6), MetaInt::New(42), "42"}),
    kRowName);

class PrintfFormatRefusalTest : public testing::TestWithParam<FormatRow> {};

TEST_P(PrintfFormatRefusalTest, FormatThatDoesNotFit_IsAnInvalidArgument) {
    EXPECT_EQ(Formatted(GetParam().format, GetParam().value), Refusal(EINVAL));
}

INSTANTIATE_TEST_SUITE_P(
    OtherKind, PrintfFormatRefusalTest,
    testing::Values(FormatRow{{"TextForAnInteger"}, "%s", MetaInt::New(42), ""},
                    FormatRow{{"TextForABool"}, "%s", MetaBool::New(true), ""},
                    FormatRow{{"IntegerForAText"}, "%ld", MetaString::New("42"), ""},
                    FormatRow{{"CharacterForAText"}, "%c", MetaString::New("4"), ""},
                    FormatRow{{"WideText"}, "%ls", MetaString::New("a"), ""},
                    FormatRow{{"LongLongCharacter"}, "%llc", MetaInt::New('A'), ""}),
    kRowName);

INSTANTIATE_TEST_SUITE_P(
    AnyKind, PrintfFormatRefusalTest,
    testing::Values(FormatRow{{"SecondConversion"}, "%ld %ld", MetaInt::New(42), ""},
                    FormatRow{{"SecondConversionOfAText"}, "%s%s", MetaString::New("a"), ""},
                    FormatRow{{"CountOfBytes"}, "%n", MetaInt::New(42), ""},
                    FormatRow{{"CountOfBytesForAText"}, "%n", MetaString::New("a"), ""},
                    FormatRow{{"Pointer"}, "%p", MetaString::New("a"), ""},
                    FormatRow{{"FloatingPoint"}, "%f", MetaInt::New(42), ""},
                    FormatRow{{"SystemError"}, "%m", MetaInt::New(42), ""},
                    FormatRow{{"WidthFromAnArgument"}, "%*ld", MetaInt::New(42), ""},
                    FormatRow{{"PrecisionFromAnArgument"}, "%.*s", MetaString::New("a"), ""},
                    FormatRow{{"NegativePrecision"}, "%.-5ld", MetaInt::New(42), ""},
                    FormatRow{{"Position"}, "%1$ld", MetaInt::New(42), ""},
                    FormatRow{{"LonePercentSign"}, "100%", MetaInt::New(42), ""},
                    FormatRow{{"OpenEnd"}, "%-5l", MetaInt::New(42), ""},
                    FormatRow{{"PercentSignWithAWidth"}, "%5%", MetaInt::New(42), ""},
                    FormatRow{{"UnknownConversion"}, "%ly", MetaInt::New(42), ""},
                    FormatRow{{"NulForAConversion"}, std::string("%\0d", 3), MetaInt::New(42), ""}),
    kRowName);

// As many columns as a display can have.
TEST(PrintfFormatBoundTest, LargestWidthAndPrecision_AreTaken) {
    EXPECT_EQ(Formatted("%65535ld", MetaInt::New(7)), std::string(8 + 1 + 64, ' '));
    EXPECT_EQ(Formatted("%.65535ld", MetaInt::New(7)), std::string(9 + 1 + 64, '0'));
    EXPECT_EQ(Formatted("%.65535s", MetaString::New("sda")), "sda");
}

TEST(PrintfFormatBoundTest, LargerWidthOrPrecision_IsTooLarge) {
    for (const std::string number : {"65536", "2000000000", "2147483648", "99999999999999999999"}) {
        for (const std::string& format : {"%" + number + "ld", "%." + number + "ld",
                                          "%-" + number + "c", "<%0" + number + ".1X>"}) {
            EXPECT_EQ(Formatted(format, MetaInt::New(7)), Refusal(EOVERFLOW)) << format;
        }
        EXPECT_EQ(Formatted("%" + number + "s", MetaString::New("a")), Refusal(EOVERFLOW));
    }
}

TEST(PrintfFormatBoundTest, LargeWidthThatDoesNotFitEither_IsAnInvalidArgument) {
    EXPECT_EQ(Formatted("%99999n", MetaInt::New(7)), Refusal(EINVAL));
    EXPECT_EQ(Formatted("%99999ld%n", MetaInt::New(7)), Refusal(EINVAL));
    EXPECT_EQ(Formatted("%99999ld", MetaString::New("a")), Refusal(EINVAL));
    EXPECT_EQ(Formatted("%99999s", MetaInt::New(7)), Refusal(EINVAL));
    EXPECT_EQ(Formatted("%ld%99999ld", MetaInt::New(7)), Refusal(EINVAL));
}

TEST(PrintfFormatFailureTest, CharacterUnknownToTheLocale_IsTheSystemsError) {
    EXPECT_EQ(Formatted("%lc", MetaInt::New(0x20AC)), Refusal(EILSEQ));
}

/// What C says of one format and a number of the right type.
template <typename Number>
std::string ByTheLibrary(const std::string& format, Number number) {
    std::string text(200, '\0');
    const int length = std::snprintf(text.data(), text.size(), format.c_str(), number);
    text.resize(static_cast<std::size_t>(length));
    return text;
}

TEST(PrintfFormatAgreementTest, EveryDefinedFormatOfAnInteger_IsTheLibrarysText) {
    for (const std::string flags : {"", "-", "0", "+", " ", "-+", "+0", " 0"}) {
        for (const std::string sizes : {"", "1", "12", ".0", ".3", "12.7", "12."}) {
            for (const char* conversion : {"ld", "li", "lu", "lo", "lx", "lX"}) {
                const std::string format = "<%" + flags + sizes + conversion + "|";
                for (const long number :
                     {0L, 7L, -7L, 123456789012L, std::numeric_limits<long>::min()}) {
                    EXPECT_EQ(Formatted(format, MetaInt::New(number)), ByTheLibrary(format, number))
                        << format;
                }
            }
        }
    }
}

TEST(PrintfFormatAgreementTest, EveryDefinedFormatOfABool_IsTheLibrarysText) {
    for (const std::string flags : {"", "-", "0", "+", " "}) {
        for (const std::string sizes : {"", "3", ".0", "5.2"}) {
            for (const char* conversion : {"d", "i", "u", "o", "x", "X", "hhd", "hu"}) {
                const std::string format = "%" + flags + sizes + conversion;
                for (const bool truth : {false, true}) {
                    EXPECT_EQ(Formatted(format, MetaBool::New(truth)),
                              ByTheLibrary(format, truth ? 1 : 0))
                        << format;
                }
            }
        }
    }
}

} // namespace
