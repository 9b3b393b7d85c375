#include <CppTools/autocli/formatters/SimpleFormatter.h>

#include <tests/support/NamedRow.h>
#include <tests/support/Rendering.h>
#include <tests/support/Values.h>

#include <gtest/gtest.h>

#include <regex>
#include <string>
#include <vector>

namespace {

using CppTools::AutoCli::SimpleFormatter;
using TestSupport::Bool;
using TestSupport::Int;
using TestSupport::kRowName;
using TestSupport::ParameterEntries;
using TestSupport::Record;
using TestSupport::Rendering;
using TestSupport::RenderWith;
using TestSupport::Rows;
using TestSupport::Struct;
using TestSupport::Text;
using TestSupport::Texts;

/// What stands above the fields of a structure of type T under this header text.
std::string HeaderOf(const Record& st, const std::string& header) {
    return RenderWith<SimpleFormatter>(st, {{"header:T", header}, {"fields:T", ""}}).second;
}

Record MakeDisk() {
    return Struct("T", {{"Name", Text("sda")},
                        {"Size", Int(512)},
                        {"On", Bool(true)},
                        {"Tags", Texts({"a", "b"})},
                        {"Inner", Struct("I", {{"x", Int(1)}})},
                        {"Empty", Text("")},
                        {"Odd%", Text("odd")},
                        {"%", Text("percent")},
                        {"two\nlines", Text("2")},
                        {"Two Words", Text("2 words")},
                        {"None", Text("<NONE>")},
                        {"Self", Text("%Self%")},
                        {"Tag", Text("%Name%")}});
}

struct HeaderCase : TestSupport::NamedRow {
    std::string header;
    std::string written;
};

class SimpleFormatterHeaderTest : public testing::TestWithParam<HeaderCase> {};

TEST_P(SimpleFormatterHeaderTest, HeaderTextStandsAboveTheFields) {
    EXPECT_EQ(HeaderOf(MakeDisk(), GetParam().header), GetParam().written);
}

INSTANTIATE_TEST_SUITE_P(Plain, SimpleFormatterHeaderTest,
                         testing::Values(HeaderCase{{"Text"}, "A disk", "A disk:\n"},
                                         HeaderCase{{"Empty"}, "", ":\n"},
                                         HeaderCase{{"None"}, "<NONE>", ""},
                                         HeaderCase{{"NoneInLowerCase"}, "<none>", "<none>:\n"},
                                         HeaderCase{{"NoneWithABlank"}, "<NONE> ", "<NONE> :\n"},
                                         HeaderCase{{"ValueIsNone"}, "%None%", ""}),
                         kRowName);

INSTANTIATE_TEST_SUITE_P(
    OneTag, SimpleFormatterHeaderTest,
    testing::Values(HeaderCase{{"AtTheEnd"}, "Disk %Name%", "Disk sda:\n"},
                    HeaderCase{{"AtTheBeginning"}, "%Name% disk", "sda disk:\n"},
                    HeaderCase{{"Alone"}, "%Name%", "sda:\n"},
                    HeaderCase{{"InsideAWord"}, "/dev/%Name%1", "/dev/sda1:\n"},
                    HeaderCase{{"NameOfTwoWords"}, "%Two Words%", "2 words:\n"},
                    HeaderCase{{"Integer"}, "%Size% MB", "512 MB:\n"},
                    HeaderCase{{"Bool"}, "on: %On%", "on: true:\n"},
                    HeaderCase{{"EmptyValue"}, "[%Empty%]", "[]:\n"},
                    HeaderCase{{"List"}, "%Tags%", "a, b:\n"},
                    HeaderCase{{"Structure"}, "%Inner%", "{'x' => '1', }:\n"},
                    HeaderCase{{"LineEndAroundTheTag"}, "Disk\n%Name%\n!", "Disk\nsda\n!:\n"},
                    HeaderCase{{"LineEndInsideTheTag"}, "%two\nlines%", "2:\n"}),
    kRowName);

INSTANTIATE_TEST_SUITE_P(
    NoTag, SimpleFormatterHeaderTest,
    testing::Values(HeaderCase{{"AbsentField"}, "Disk %Nope%", "Disk %Nope%:\n"},
                    HeaderCase{{"CaseMatters"}, "Disk %name%", "Disk %name%:\n"},
                    HeaderCase{{"NothingIsTrimmed"}, "Disk % Name %", "Disk % Name %:\n"},
                    HeaderCase{{"NamesAreNoPaths"}, "%Inner.x%", "%Inner.x%:\n"},
                    HeaderCase{{"OnePercentSign"}, "100%", "100%:\n"},
                    HeaderCase{{"TwoPercentSigns"}, "a%%b", "a%%b:\n"},
                    HeaderCase{{"NothingButTwoPercentSigns"}, "%%", "%%:\n"},
                    HeaderCase{{"UnclosedTag"}, "Disk %Name", "Disk %Name:\n"}),
    kRowName);

INSTANTIATE_TEST_SUITE_P(
    SeveralTags, SimpleFormatterHeaderTest,
    testing::Values(HeaderCase{{"OnlyTheLastIsReplaced"}, "%Name% of %Size%", "%Name% of 512:\n"},
                    HeaderCase{{"TheSameIsReplacedEverywhere"}, "%Name%, %Name%", "sda, sda:\n"},
                    HeaderCase{{"AbsentLastLeavesAll"}, "%Name% of %Nope%", "%Name% of %Nope%:\n"},
                    HeaderCase{{"AbsentFirstDoesNoHarm"}, "%Nope% of %Name%", "%Nope% of sda:\n"},
                    HeaderCase{{"PercentSignBeforeTheTag"}, "100% of %Name%", "100% of sda:\n"},
                    HeaderCase{{"PercentSignBehindTheTagOpensTheLastPair"},
                               "%Name% at 100%",
                               "%Name% at 100%:\n"},
                    HeaderCase{{"AdjacentTags"}, "%Size%%Name%", "%Size%sda:\n"},
                    HeaderCase{{"DoubledPercentSignsAroundTheTag"}, "%%Name%%", "%%Name%%:\n"},
                    HeaderCase{{"FieldThatEndsInAPercentSign"}, "%%Odd%%", "%odd:\n"},
                    HeaderCase{{"ThreePercentSignsNameTheFieldPercent"}, "%%%", "percent:\n"},
                    HeaderCase{{"ValueIsNotSubstitutedAgain"}, "%Self% %Self%", "%Self% %Self%:\n"},
                    HeaderCase{{"TagsInTheValueStay"}, "%Name% %Tag%", "%Name% %Name%:\n"}),
    kRowName);

TEST(SimpleFormatterHeaderTextTest, None_KeepsTheIndentOfTheFields) {
    EXPECT_EQ(RenderWith<SimpleFormatter>(Struct("T", {{"a", Int(1)}}), {{"header:T", "<NONE>"}}),
              Rendering(true, "   a: 1\n"));
}

TEST(SimpleFormatterHeaderTextTest, None_InAListLeavesTheEmptyLines) {
    const auto list = Rows({Struct("T", {{"a", Int(1)}}), Struct("T", {{"a", Int(2)}})});
    EXPECT_EQ(RenderWith<SimpleFormatter>(list, {{"header:T", "<NONE>"}}),
              Rendering(true, "\n   a: 1\n\n   a: 2\n\n"));
}

TEST(SimpleFormatterHeaderTextTest, OtherTypes_KeepTheirTypeName) {
    const ParameterEntries entries{{"header", "no"}, {"header:", "no"}, {"header:t", "no"}};
    EXPECT_EQ(RenderWith<SimpleFormatter>(Struct("T", {{"a", Int(1)}}), entries),
              Rendering(true, "T:\n   a: 1\n"));
}

TEST(SimpleFormatterHeaderTextTest, InnerStructure_HeaderIsIndentedAndFilledFromItsOwnFields) {
    const auto inner = Struct("Inner", {{"Name", Text("inner")}});
    const auto root = Struct("T", {{"Name", Text("outer")}, {"a", inner}});
    EXPECT_EQ(RenderWith<SimpleFormatter>(root, {{"header:Inner", "Module %Name%"}}),
              Rendering(true, "T:\n"
                              "   Name: outer\n"
                              "   a: \n"
                              "      Module inner:\n"
                              "         Name: inner\n"));
}

TEST(SimpleFormatterHeaderTextTest, Tag_NamesFieldsThatAreNotListed) {
    EXPECT_EQ(RenderWith<SimpleFormatter>(MakeDisk(),
                                          {{"header:T", "Disk %Name%"}, {"fields:T", "Size"}}),
              Rendering(true, "Disk sda:\n   Size: 512\n"));
}

TEST(SimpleFormatterHeaderTextTest, Tag_TakesNoUnitsOrPrintf) {
    EXPECT_EQ(RenderWith<SimpleFormatter>(MakeDisk(), {{"header:T", "%Size%"},
                                                       {"fields:T", "Size"},
                                                       {"printf:T.Size", "%05ld"},
                                                       {"units:T.Size", "MB"}}),
              Rendering(true, "512:\n   Size: 00512 MB\n"));
}

/// All texts of at most this length over a percent sign, a letter and a line end.
std::vector<std::string> TextsUpTo(std::size_t length) {
    std::vector<std::string> texts{""};
    for (std::size_t i = 0; i < texts.size() && texts[i].size() < length; ++i) {
        for (const char c : {'%', 'a', '\n'}) {
            texts.push_back(texts[i] + c);
        }
    }
    return texts;
}

TEST(SimpleFormatterHeaderTextTest, EveryShortHeader_IsReadAsTheGreedyPatternReadsIt) {
    const auto st = CppTools::MetaObj::MetaStruct::New("T");
    for (const auto& name : TextsUpTo(5)) {
        st->SetField(name, "<" + name + ">");
    }
    const std::regex pattern("[\\s\\S]*%([\\s\\S]+)%[\\s\\S]*");
    for (const auto& header : TextsUpTo(7)) {
        std::string expected = header;
        std::smatch match;
        if (std::regex_match(header, match, pattern)) {
            const std::string tag = "%" + match.str(1) + "%";
            const std::string value = "<" + match.str(1) + ">";
            for (auto at = expected.find(tag); at != std::string::npos;
                 at = expected.find(tag, at + value.size())) {
                expected.replace(at, tag.size(), value);
            }
        }
        ASSERT_EQ(HeaderOf(st, header), expected + ":\n") << "header '" << header << "'";
    }
}

TEST(SimpleFormatterHeaderTextTest, LongHeaderWithoutTag_StaysAsItIs) {
    const std::string left(200'000, 'x');
    const std::string right(200'000, 'y');
    for (const char* signs : {"%", "%%"}) {
        EXPECT_EQ(HeaderOf(MakeDisk(), left + signs + right), left + signs + right + ":\n");
    }
}

TEST(SimpleFormatterHeaderTextTest, LongHeaderWithTag_IsSubstituted) {
    const std::string left(200'000, 'x');
    const std::string right(200'000, 'y');
    EXPECT_EQ(HeaderOf(MakeDisk(), left + "%Name%" + right), left + "sda" + right + ":\n");
}

TEST(SimpleFormatterHeaderTextTest, LongRunOfPercentSigns_IsSubstitutedFromTheLeft) {
    std::string written;
    for (int i = 0; i < 50'000; ++i) {
        written += "percent";
    }
    EXPECT_EQ(HeaderOf(MakeDisk(), std::string(150'001, '%')), written + "%:\n");
}

} // namespace
