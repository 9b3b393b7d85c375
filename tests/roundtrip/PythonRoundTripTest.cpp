#include "Documents.h"

#include <CppTools/autocli/formatters/PythonFormatter.h>

#include <tests/support/Rendering.h>
#include <tests/support/SeededTest.h>
#include <tests/support/ValueGenerator.h>

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace {

using CppTools::AutoCli::PythonFormatter;
using RoundTrip::Documents;
using RoundTrip::kRefused;
using RoundTrip::PythonTuple;
using TestSupport::Alphabet;
using TestSupport::AsciiBetween;
using TestSupport::Int;
using TestSupport::PlainCharacters;
using TestSupport::RenderWith;
using TestSupport::Struct;
using TestSupport::Text;
using TestSupport::Value;
using TestSupport::ValueGenerator;
using TestSupport::Without;

std::string PythonOf(const Value& value) {
    return RenderWith<PythonFormatter>(value).second;
}

/// What texts of this format can hold: backslashes are written as they are, and the reader takes
/// neither NUL nor ill-formed characters and reads a carriage return as a line end.
Alphabet Carried() {
    return Without({AsciiBetween(0x01, 0x7F), Alphabet::Beyond::Characters}, "\\\r");
}

class PythonRoundTripTest : public TestSupport::SeededTest {};

TEST_P(PythonRoundTripTest, EveryTreeIsReadBackValueByValue) {
    ValueGenerator values(Random(), Carried(), Without(PlainCharacters(), "\"\\"));
    Documents documents("python");
    for (const Value& value : values.Several(200)) {
        documents.Add(PythonOf(value), PythonTuple(value));
    }
    EXPECT_EQ(documents.Compared(), documents.Agreement());
}

INSTANTIATE_TEST_SUITE_P(Seeds, PythonRoundTripTest, TestSupport::BothSeeds(),
                         TestSupport::SeedName);

TEST(PythonLimitsTest, EveryOtherAsciiByteOfATextArrives) {
    Documents documents("python");
    for (const char c : Carried().ascii) {
        for (const std::string& text : {std::string{c}, std::string{'a', c, 'b'}}) {
            documents.Add(PythonOf(Text(text)), PythonTuple(Text(text)));
        }
    }
    EXPECT_EQ(documents.Compared(), documents.Agreement());
}

TEST(PythonLimitsTest, WhatTheFormatCannotCarryArrivesAsSomethingElse) {
    const std::vector<std::pair<std::string, std::string>> rows = {
        {"a\\nb", "a\nb"},   {"C:\\temp", "C:\temp"}, {"a\\\\b", "a\\b"},
        {"\\x41", "A"},      {"\\u00e9", "\xC3\xA9"}, {"a\\'b", "a'b"},
        {"a\\\nb", "a\\nb"}, {"a\rb", "a\nb"},        {"a\r\nb", "a\n\nb"}};
    Documents documents("python");
    for (const auto& [text, arriving] : rows) {
        documents.Add(PythonOf(Text(text)), PythonTuple(Text(arriving)));
    }
    EXPECT_EQ(documents.Compared(), documents.Agreement());
}

TEST(PythonLimitsTest, WhatTheFormatCannotCarryAtAllIsRefused) {
    const std::vector<std::string> texts = {
        "\\",   "a\\", "\\\"", "\\x", "\\u12", "\\N{no such name}", std::string("a\0b", 3),
        "\xC3", "\x80"};
    Documents documents("python");
    for (const std::string& text : texts) {
        documents.Add(PythonOf(Text(text)), kRefused);
    }
    EXPECT_EQ(documents.Compared(), documents.Agreement());
}

TEST(PythonLimitsTest, FieldNamesThatNeedEscapingCannotBeCarried) {
    Documents documents("python");
    for (const std::string name : {"a\"b", "a\nb", "\\"}) {
        documents.Add(PythonOf(Struct("T", {{name, Int(1)}})), kRefused);
    }
    documents.Add(PythonOf(Struct("T", {{"a\\tb", Int(1)}})),
                  PythonTuple(Struct("T", {{"a\tb", Int(1)}})));
    EXPECT_EQ(documents.Compared(), documents.Agreement());
}

} // namespace
