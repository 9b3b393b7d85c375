#include <CppTools/autocli/plugins/XmlNodeTree.h>

#include <gtest/gtest.h>
#include <tests/support/NamedRow.h>
#include <tests/support/SeededTest.h>
#include <tests/support/StreamCapture.h>

#include <array>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <libxml/parser.h>
#include <libxml/tree.h>
#include <libxml/xmlerror.h>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace {

using CppTools::AutoCli::XmlNodeTree;
using TestSupport::BothSeeds;
using TestSupport::kRowName;
using TestSupport::NamedRow;
using TestSupport::RandomSource;

std::string TextOf(const xmlChar* text) {
    return text != nullptr ? "'" + std::string(reinterpret_cast<const char*>(text)) + "'" : "none";
}

/// All that readers of a document look at, links backwards included, as one text.
std::string Dump(const xmlNode& node) {
    std::string text = "<" + std::to_string(static_cast<int>(node.type));
    if (node.type == XML_ELEMENT_NODE) {
        text += " " + TextOf(node.name);
        for (xmlAttr* attribute = node.properties; attribute != nullptr;
             attribute = attribute->next) {
            const std::unique_ptr<xmlChar, void (*)(void*)> value(
                xmlGetProp(&node, attribute->name), xmlFree);
            text += " " + TextOf(attribute->name) + "=" + TextOf(value.get());
            EXPECT_EQ(attribute->parent, &node);
        }
    } else {
        text += " " + TextOf(node.content);
    }
    const xmlNode* previous = nullptr;
    for (const xmlNode* child = node.children; child != nullptr; child = child->next) {
        text += Dump(*child);
        EXPECT_EQ(child->parent, &node);
        EXPECT_EQ(child->prev, previous);
        previous = child;
    }
    if (node.type == XML_ELEMENT_NODE) {
        EXPECT_EQ(node.last, previous);
    }
    return text + ">";
}

/// The same of libxml2's own tree; nothing when it has any remark on the text, or when the text
/// declares a document type.
std::optional<std::string> DumpByLibrary(const std::string& text) {
    xmlResetLastError();
    const std::unique_ptr<xmlDoc, void (*)(xmlDoc*)> document(
        xmlReadMemory(text.data(), static_cast<int>(text.size()), nullptr, nullptr,
                      XML_PARSE_NOERROR | XML_PARSE_NOWARNING),
        xmlFreeDoc);
    if (!document || xmlGetLastError() != nullptr || document->intSubset != nullptr) {
        return std::nullopt;
    }
    return Dump(*xmlDocGetRootElement(document.get()));
}

std::optional<std::string> DumpByTree(const std::string& text) {
    XmlNodeTree tree;
    const xmlNode* const root = tree.Read(text);
    return root != nullptr ? std::optional(Dump(*root)) : std::nullopt;
}

struct TextRow : NamedRow {
    std::string xml;
};

class XmlNodeTreePlainTest : public testing::TestWithParam<TextRow> {};

TEST_P(XmlNodeTreePlainTest, Read_HasWhatTheLibrarysTreeHas) {
    const auto dump = DumpByTree(GetParam().xml);
    ASSERT_TRUE(dump.has_value());
    EXPECT_EQ(dump, DumpByLibrary(GetParam().xml));
}

INSTANTIATE_TEST_SUITE_P(
    Texts, XmlNodeTreePlainTest,
    testing::Values(
        TextRow{{"RootAlone"}, "<a/>"}, TextRow{{"EmptyRoot"}, "<a></a>"},
        TextRow{{"Declaration"}, "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<a>b</a>\n"},
        TextRow{{"Nested"}, "<a>\n <b><c/>x</b>\n <b/>y\n</a>"},
        TextRow{{"Attributes"}, R"(<a b="1" c='2' d=""><e b="3"/></a>)"},
        TextRow{{"AttributeEscapes"}, R"(<a b="&lt;&gt;&amp;&quot;&apos;&#38;&#x41;&amp;#38;"/>)"},
        TextRow{{"AttributeBlanks"}, "<a b=' x\ty\nz\r\n&#10;&#9; '/>"},
        TextRow{{"ContentEscapes"}, "<a>x&lt;&gt;&amp;&quot;&apos;&#38;&#x41;&amp;lt;y</a>"},
        TextRow{{"LineEnds"}, "<a>x\r\ny\rz\n\r</a>"},
        TextRow{{"CharacterData"}, "<a>x<![CDATA[<b>&amp;]]]]><![CDATA[>]]>y<b/><![CDATA[]]></a>"},
        TextRow{{"CharacterDataInARow"}, "<a><![CDATA[x]]><![CDATA[y]]></a>"},
        TextRow{{"Comments"}, "<!--0--><a>x<!--1-->y<!----><!-- 2 --></a><!--3-->"},
        TextRow{{"Instructions"}, "<?p 0?><a>x<?p?>y<?p  1 ?><?p 2?></a><?p 3?>"},
        TextRow{{"DefaultNamespace"}, R"(<a xmlns="urn:x"><b/></a>)"},
        TextRow{{"Prefixes"}, R"(<p:a xmlns:p="urn:x" p:b="1" b="2" xml:lang="en"><p:c/></p:a>)"},
        TextRow{{"OtherLetters"}, "<\xc3\xa4 \xc3\xb6='\xe2\x82\xac'>\xf0\x9f\x98\x80</\xc3\xa4>"},
        TextRow{{"ByteOrderMark"}, "\xef\xbb\xbf<a>b</a>"},
        TextRow{{"OtherEncoding"},
                "<?xml version='1.0' encoding='ISO-8859-1'?><a b='\xe4'>\xf6</a>"},
        TextRow{{"ElementsNamedAsNodes"}, "<text><comment>x</comment><text/></text>"},
        TextRow{{"LongTexts"},
                "<a b='" + std::string(100000, 'x') + "'>" + std::string(1000000, 'y') + "&amp;" +
                    std::string(1000000, 'z') + "</a>"}),
    kRowName);

class XmlNodeTreeOtherTest : public testing::TestWithParam<TextRow> {};

TEST_P(XmlNodeTreeOtherTest, Read_IsNullAndPrintsNothing) {
    const auto printed =
        TestSupport::PrintedBy([] { EXPECT_EQ(XmlNodeTree().Read(GetParam().xml), nullptr); });
    EXPECT_EQ(printed.out, "");
    EXPECT_EQ(printed.err, "");
}

INSTANTIATE_TEST_SUITE_P(
    Texts, XmlNodeTreeOtherTest,
    testing::Values(
        TextRow{{"Empty"}, ""}, TextRow{{"Blank"}, " "}, TextRow{{"NoRoot"}, "<!-- a -->"},
        TextRow{{"OpenElement"}, "<a><b></a>"}, TextRow{{"TextBehindTheRoot"}, "<a/>b"},
        TextRow{{"TwoRoots"}, "<a/><b/>"}, TextRow{{"AttributeTwice"}, "<a b='1' b='2'/>"},
        TextRow{{"EndOfCharacterDataInText"}, "<a>" + std::string(5000, 'x') + "]]></a>"},
        TextRow{{"EndOfCharacterDataBeforeMore"},
                "<a>]]><b>" + std::string(90000, 'x') + "</b></a>"},
        TextRow{{"UnknownEntity"}, "<a>&b;</a>"}, TextRow{{"BrokenEncoding"}, "<a>\xff</a>"},
        TextRow{{"ControlCharacter"}, "<a>\x01</a>"}, TextRow{{"UndeclaredPrefix"}, "<p:a/>"},
        TextRow{{"RemarkOnly"}, "<a xmlns='relative'/>"},
        TextRow{{"UnknownVersion"}, "<?xml version='1.7'?><a/>"},
        TextRow{{"DocumentType"}, "<!DOCTYPE a><a/>"},
        TextRow{{"DefaultedAttribute"}, "<!DOCTYPE a [<!ATTLIST a b CDATA 'c'>]><a/>"},
        TextRow{{"DeclaredEntity"}, "<!DOCTYPE a [<!ENTITY b 'c'>]><a>&b;</a>"},
        TextRow{{"TooLong"}, "<a>" + std::string(10000001, 'x') + "</a>"}),
    kRowName);

std::string Nested(int depth) {
    std::string text;
    for (int level = 0; level < depth; ++level) {
        text += "<a>";
    }
    for (int level = 0; level < depth; ++level) {
        text += "</a>";
    }
    return text;
}

TEST(XmlNodeTreeTest, Read_DepthsAroundTheParsersLimit_AnswerAsTheLibrary) {
    for (int depth = 254; depth <= 260; ++depth) {
        EXPECT_EQ(DumpByTree(Nested(depth)), DumpByLibrary(Nested(depth))) << depth;
    }
    EXPECT_TRUE(DumpByTree(Nested(254)).has_value());
    EXPECT_FALSE(DumpByTree(Nested(260)).has_value());
}

TEST(XmlNodeTreeTest, Read_EveryDescriptorOfThisProject_HasWhatTheLibrarysTreeHas) {
    int count = 0;
    for (const char* folder : {HOST_DESCRIPTORS, EXAMPLE_DESCRIPTORS}) {
        for (const auto& entry : std::filesystem::directory_iterator(folder)) {
            if (entry.path().filename().string().find(".xml") == std::string::npos) {
                continue;
            }
            SCOPED_TRACE(entry.path());
            std::ifstream file(entry.path());
            const std::string text(std::istreambuf_iterator<char>(file), {});
            const auto dump = DumpByTree(text);
            EXPECT_TRUE(dump.has_value());
            EXPECT_EQ(dump, DumpByLibrary(text));
            ++count;
        }
    }
    EXPECT_GT(count, 0);
}

class XmlNodeTreeGeneratedTest : public TestSupport::SeededTest {
  protected:
    std::string Content(int depth) {
        static const std::vector<std::string> kPieces = {"x",
                                                         " ",
                                                         "\n  ",
                                                         "&amp;",
                                                         "&#65;",
                                                         "]]",
                                                         "\r\n",
                                                         "<!---->",
                                                         "<!-- c -->",
                                                         "<![CDATA[d&]]>",
                                                         "<![CDATA[]]>",
                                                         "<?p?>",
                                                         "<?p q?>",
                                                         "\xc3\xa4",
                                                         "&gt;",
                                                         "'\"",
                                                         "<b c='&lt;'/>",
                                                         "<text>t</text>"};
        std::string text;
        for (std::size_t count = Random().Below(6); count > 0; --count) {
            text += depth < 5 && Random().Chance(40) ? Element(depth + 1) : Random().Pick(kPieces);
        }
        return text;
    }

    std::string Element(int depth) {
        static constexpr std::array<const char*, 8> kAttributes = {
            "",           " b='1'",         " b=\"x&amp;y\" c=''", " xmlns='urn:x'",
            " xml:b='1'", " b='\n &#10; '", " path='a.b'",         " xmlns:p='urn:y' p:b='1'"};
        const std::string attributes = Random().Pick(kAttributes);
        return "<e" + attributes + ">" + Content(depth) + "</e>";
    }

    /// A text with some of its bytes lost, doubled or replaced.
    std::string Damaged(std::string text) {
        static const std::string kBytes = "<>&;/='\"![]-? ax\x01\xff\n:";
        for (std::size_t count = Random().Between(1, 3); count > 0 && !text.empty(); --count) {
            const std::size_t at = Random().Below(text.size());
            if (Random().Chance(40)) {
                text.erase(at, Random().Between(1, 4));
            } else if (Random().Chance(50)) {
                text.insert(at, text.substr(at, Random().Between(1, 8)));
            } else {
                text[at] = Random().Pick(kBytes);
            }
        }
        return text;
    }
};

TEST_P(XmlNodeTreeGeneratedTest, Read_SoundTexts_HaveWhatTheLibrarysTreeHas) {
    for (int round = 0; round < 500; ++round) {
        const std::string text = Element(0);
        const auto dump = DumpByTree(text);
        ASSERT_TRUE(dump.has_value()) << text;
        ASSERT_EQ(dump, DumpByLibrary(text)) << text;
    }
}

TEST_P(XmlNodeTreeGeneratedTest, Read_DamagedTexts_AreReadExactlyWhenTheLibraryHasNoRemark) {
    for (int round = 0; round < 2000; ++round) {
        const std::string text = Damaged(Element(0));
        ASSERT_EQ(DumpByTree(text), DumpByLibrary(text)) << text;
    }
}

INSTANTIATE_TEST_SUITE_P(Seeds, XmlNodeTreeGeneratedTest, BothSeeds(), TestSupport::SeedName);

} // namespace
