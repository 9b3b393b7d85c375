#include "Documents.h"

#include <CppTools/autocli/formatters/XmlFormatter.h>
#include <CppTools/autocli/plugins/XmlUtil.h>

#include <tests/support/Rendering.h>
#include <tests/support/SeededTest.h>
#include <tests/support/Thrown.h>
#include <tests/support/ValueGenerator.h>

#include <gtest/gtest.h>

#include <map>
#include <string>
#include <utility>
#include <vector>

namespace {

using CppTools::AutoCli::XmlFormatter;
using CppTools::AutoCli::XmlUtil_ParseXmlOutput;
using RoundTrip::Documents;
using RoundTrip::kRefused;
using RoundTrip::PythonBytes;
using RoundTrip::PythonTuple;
using TestSupport::Int;
using TestSupport::ParameterEntries;
using TestSupport::PlainCharacters;
using TestSupport::RenderAt;
using TestSupport::RenderWith;
using TestSupport::Struct;
using TestSupport::Text;
using TestSupport::TextGenerator;
using TestSupport::ThrownBy;
using TestSupport::Value;
using TestSupport::ValueGenerator;
using TestSupport::With;

std::string XmlOf(const Value& value, const ParameterEntries& entries = {}) {
    return RenderWith<XmlFormatter>(value, entries).second;
}

/// What is to be read from a document.
std::string Read(const Value& value, const ParameterEntries& entries = {}) {
    std::string parameters;
    for (const auto& [key, text] : std::map(entries.begin(), entries.end())) {
        parameters += "(" + PythonBytes(key) + ", " + PythonBytes(text) + "), ";
    }
    return "([" + parameters + "], " + (value ? PythonTuple(value) : "None") + ")";
}

class XmlRoundTripTest : public TestSupport::SeededTest {
  protected:
    ParameterEntries Entries() {
        // A second value for a key would replace the first.
        std::map<std::string, std::string> entries;
        for (std::size_t count = Random().Below(4); count > 0; --count) {
            entries[attributes_.Text()] = attributes_.Text();
        }
        return {entries.begin(), entries.end()};
    }

    TextGenerator attributes_{Random(), PlainCharacters()};
};

TEST_P(XmlRoundTripTest, EveryTreeIsWellFormedAndReadBackValueByValue) {
    ValueGenerator values(Random(), With(PlainCharacters(), "\t\n\x7F"), PlainCharacters());
    Documents documents("xml");
    for (const Value& value : values.Several(200)) {
        const ParameterEntries entries = Entries();
        documents.Add(XmlOf(value, entries), Read(value, entries));
    }
    documents.Add(XmlOf(nullptr), Read(nullptr));
    EXPECT_EQ(documents.Compared(), documents.Agreement());

    const auto lint = documents.Run({"xmllint", "--noout"});
    EXPECT_EQ(lint.out + lint.err, "");
    EXPECT_EQ(lint.status, 0);
}

INSTANTIATE_TEST_SUITE_P(Seeds, XmlRoundTripTest, TestSupport::BothSeeds(), TestSupport::SeedName);

TEST(XmlLimitsTest, EveryAsciiCharacterOfATextThatXmlAllowsArrives) {
    Documents documents("xml");
    for (const char c : TestSupport::AnyAscii().ascii) {
        const bool allowed = c >= ' ' || c == '\t' || c == '\n';
        const Value text = Text(std::string{'a', c, 'b'});
        if (c != '\r') {
            documents.Add(XmlOf(text), allowed ? Read(text) : kRefused);
        }
    }
    EXPECT_EQ(documents.Compared(), documents.Agreement());
}

TEST(XmlLimitsTest, WhatTheFormatCannotCarryArrivesAsSomethingElse) {
    const std::vector<std::pair<Value, Value>> rows = {
        {Text("a\rb"), Text("a\nb")},
        {Text("a\r\nb"), Text("a\nb")},
        {Struct("T", {{"a\tb", Int(1)}}), Struct("T", {{"a b", Int(1)}})},
        {Struct("T", {{"a\nb", Int(1)}}), Struct("T", {{"a b", Int(1)}})},
        {Struct("T", {{"a\r\nb", Int(1)}}), Struct("T", {{"a b", Int(1)}})}};
    Documents documents("xml");
    for (const auto& [written, arriving] : rows) {
        documents.Add(XmlOf(written), Read(arriving));
    }
    documents.Add(XmlOf(Int(1), {{"fields", "a\tb"}}), Read(Int(1), {{"fields", "a b"}}));
    EXPECT_EQ(documents.Compared(), documents.Agreement());
}

TEST(XmlLimitsTest, WhatXmlForbidsMakesADocumentThatBothReadersRefuse) {
    Documents documents("xml");
    for (const std::string text : {"\x01", "\x1B[1m", "\xC3", "\x80", "\xEF\xBF\xBE"}) {
        documents.Add(XmlOf(Text(text)), kRefused);
        Documents alone("xml");
        alone.Add(XmlOf(Text(text)), kRefused);
        EXPECT_EQ(alone.Run({"xmllint", "--noout"}).status, 1) << testing::PrintToString(text);
    }
    EXPECT_EQ(documents.Compared(), documents.Agreement());
}

TEST(XmlLimitsTest, TheReaderOfCommandOutputKnowsOtherElements) {
    const std::string refusal =
        "Error parsing command output.  Unable to build a proper metaobject from output tag.  "
        "output must contain properly formatted tags of type bool, int, string, structure and "
        "list. Error was : ";
    const auto refused = [](const std::string& document) {
        return ThrownBy([&] { XmlUtil_ParseXmlOutput(document); });
    };
    const auto alone = [](const Value& value) {
        return "<output>" + RenderAt<XmlFormatter>(0, value) + "</output>";
    };
    EXPECT_EQ(refused(XmlOf(Text("x"))),
              refusal + "Unable to make a MetaObject from a node with tag 'meta-data'");
    EXPECT_EQ(refused(alone(Int(1))),
              refusal + "Unable to make a MetaObject from a node with tag 'integer'");
    EXPECT_EQ(refused(alone(Struct("T", {{"a", TestSupport::Bool(true)}}))),
              refusal + "Unable to make a MetaObject from a node with tag 'boolean'");
    for (const auto& list : {TestSupport::Ints({}), TestSupport::Bools({})}) {
        EXPECT_EQ(refused(alone(list)),
                  refusal + "Invalid list type attribute.  Must be one of [string, int, bool, "
                            "structure, list]");
    }
}

TEST(XmlLimitsTest, WithoutIntegersAndBooleansValuesAreReadAsCommandOutput) {
    const auto row = [](const std::string& text) {
        return Struct("Row", {{"<a> & \"b\"", Text(text)}, {"c", TestSupport::Texts({"", text})}});
    };
    for (const std::string text :
         {"", "two words", "<a href='x'>50% &amp; \"b\"</a>", "\xC3\xA9"}) {
        const Value tree = Struct("T", {{"rows", TestSupport::Rows({row(text), row("x")})},
                                        {"none", TestSupport::Rows(nullptr, {})},
                                        {"in", row(text)}});
        const Value read =
            XmlUtil_ParseXmlOutput("<output>" + RenderAt<XmlFormatter>(1, tree) + "</output>");
        ASSERT_TRUE(read);
        EXPECT_EQ(PythonTuple(read), PythonTuple(tree));
    }
}

TEST(XmlLimitsTest, AStylesheetIsWrittenAsItIs) {
    Documents documents("xml");
    documents.Add(XmlOf(Int(1), {{"stylesheet", "a&b<c"}}),
                  Read(Int(1), {{"stylesheet", "a&b<c"}}));
    documents.Add(XmlOf(Int(1), {{"stylesheet", "?>"}}), kRefused);
    EXPECT_EQ(documents.Compared(), documents.Agreement());
}

} // namespace
