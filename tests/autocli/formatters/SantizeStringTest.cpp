#include <CppTools/autocli/formatters/XmlFormatter.h>

#include <tests/support/NamedRow.h>

#include <gtest/gtest.h>

#include <string>

namespace {

using CppTools::AutoCli::SantizeString;
using TestSupport::kRowName;
using TestSupport::NamedRow;

struct EntityCase : NamedRow {
    std::string text;
    std::string sanitised;
};

class SantizeStringTableTest : public testing::TestWithParam<EntityCase> {};

TEST_P(SantizeStringTableTest, EveryOccurrenceIsReplacedOnce) {
    EXPECT_EQ(SantizeString(GetParam().text), GetParam().sanitised);
}

INSTANTIATE_TEST_SUITE_P(
    Texts, SantizeStringTableTest,
    testing::Values(EntityCase{{"Empty"}, "", ""}, EntityCase{{"Plain"}, "abc 123", "abc 123"},
                    EntityCase{{"Mixed"}, "a<b & \"c\"", "a&lt;b &amp; &quot;c&quot;"},
                    EntityCase{{"Percent"}, "50%", "50&#37;"},
                    EntityCase{{"Runs"},
                               "&&<<>>%%\"\"''",
                               "&amp;&amp;&lt;&lt;&gt;&gt;&#37;&#37;&quot;&quot;&apos;&apos;"},
                    EntityCase{{"EntitiesOfTheTextAreEscaped"},
                               "&lt; &amp; &#37;",
                               "&amp;lt; &amp;amp; &amp;#37;"},
                    EntityCase{{"MultiByteCharacters"},
                               "na\xC3\xAFve <\xE2\x82\xAC>",
                               "na\xC3\xAFve &lt;\xE2\x82\xAC&gt;"},
                    EntityCase{{"InvalidSequences"}, "\xC3<\xFF", "\xC3&lt;\xFF"},
                    EntityCase{{"ControlCharacters"},
                               std::string("\0\x01\t\r\n\x7F&", 7),
                               std::string("\0\x01\t\r\n\x7F&amp;", 11)}),
    kRowName);

TEST(SantizeStringTest, LongText_IsReplacedToTheEnd) {
    std::string expected;
    for (int i = 0; i < 300'000; ++i) {
        expected += "&amp;";
    }
    EXPECT_EQ(SantizeString(std::string(300'000, '&')), expected);
}

} // namespace
