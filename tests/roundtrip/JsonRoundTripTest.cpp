#include "Documents.h"

#include <CppTools/autocli/formatters/JsonFormatter.h>

#include <tests/support/Rendering.h>
#include <tests/support/SeededTest.h>
#include <tests/support/ValueGenerator.h>

#include <gtest/gtest.h>

#include <string>

namespace {

using CppTools::AutoCli::JsonFormatter;
using RoundTrip::Documents;
using RoundTrip::kRefused;
using RoundTrip::PythonTuple;
using TestSupport::AnyBytes;
using TestSupport::Int;
using TestSupport::PlainCharacters;
using TestSupport::RenderWith;
using TestSupport::Struct;
using TestSupport::Value;
using TestSupport::ValueGenerator;

std::string JsonOf(const Value& value) {
    return RenderWith<JsonFormatter>(value).second;
}

class JsonRoundTripTest : public TestSupport::SeededTest {};

TEST_P(JsonRoundTripTest, EveryTreeIsReadBackValueByValue) {
    // Names are written as they are, so they may hold nothing that has to be escaped.
    ValueGenerator values(Random(), AnyBytes(), Without(PlainCharacters(), "\"\\"));
    Documents documents("json");
    for (const Value& value : values.Several(200)) {
        documents.Add(JsonOf(value), PythonTuple(value));
    }
    EXPECT_EQ(documents.Compared(), documents.Agreement());
}

INSTANTIATE_TEST_SUITE_P(Seeds, JsonRoundTripTest, TestSupport::BothSeeds(), TestSupport::SeedName);

TEST(JsonLimitsTest, EveryByteOfATextArrives) {
    Documents documents("json");
    for (int code = 0; code < 256; ++code) {
        const Value value = TestSupport::Text("a" + std::string(1, static_cast<char>(code)) + "b");
        documents.Add(JsonOf(value), PythonTuple(value));
    }
    EXPECT_EQ(documents.Compared(), documents.Agreement());
}

TEST(JsonLimitsTest, FieldNamesThatNeedEscapingCannotBeCarried) {
    Documents documents("json");
    for (const std::string name : {"a\"b", "a\nb", "a\tb", "\\", "a\x01", "\xC3"}) {
        documents.Add(JsonOf(Struct("T", {{name, Int(1)}})), kRefused);
    }
    documents.Add(JsonOf(Struct("T", {{"a\\nb", Int(1)}})),
                  PythonTuple(Struct("T", {{"a\nb", Int(1)}})));
    EXPECT_EQ(documents.Compared(), documents.Agreement());
}

} // namespace
