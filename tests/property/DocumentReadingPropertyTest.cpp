#include <CppTools/autocli/plugins/XmlUtil.h>
#include <CppTools/metaobj/CppToolException.h>
#include <CppTools/metaobj/MetaList.h>
#include <CppTools/metaobj/MetaStruct.h>

#include <tests/support/SeededTest.h>
#include <tests/support/StreamCapture.h>

#include <gtest/gtest.h>

#include <libxml/parser.h>
#include <libxml/tree.h>

#include <memory>
#include <string>
#include <unistd.h>
#include <utility>
#include <vector>

// A document is read without a tree of it. What comes of it is what would come of its tree.

namespace {

using CppTools::AutoCli::XmlUtil_BuildMetaObject;
using CppTools::AutoCli::XmlUtil_ParseXmlOutput;
using CppTools::MetaObj::MetaList;
using CppTools::MetaObj::MetaObject;
using CppTools::MetaObj::MetaStruct;
using CppTools::MetaObj::MetaType;
using TestSupport::BothSeeds;
using TestSupport::RandomSource;
using TestSupport::SeedName;
using TestSupport::StreamCapture;

/// Everything that is in a value, the templates of lists included.
std::string Description(const std::shared_ptr<MetaObject>& value) {
    if (!value) {
        return "nothing";
    }
    std::string text = MetaTypeString(value->GetType()) + "(";
    if (const auto structure = std::dynamic_pointer_cast<MetaStruct>(value)) {
        text += structure->GetTypeName() + ":";
        for (const auto& name : structure->GetFieldNames()) {
            text += name + "=" + Description(structure->GetField(name)) + ";";
        }
    } else if (const auto list = std::dynamic_pointer_cast<MetaList>(value)) {
        text += MetaTypeString(list->GetListType()) + " " + Description(list->GetListStructure());
        for (const auto& item : list->GetObjects()) {
            text += ", " + Description(item);
        }
    } else {
        text += value->ToString();
    }
    return text + ")";
}

/// What reading gives, or throws, and what it says on standard error.
template <typename Reading>
std::string Outcome(Reading reading) {
    StreamCapture errors(STDERR_FILENO);
    std::string result;
    try {
        result = Description(reading());
    } catch (const CppTools::CppToolException& failure) {
        result = failure.what();
    }
    return result + "\n" + errors.Take();
}

constexpr const char* kWrapping =
    "Error parsing command output.  Unable to build a proper metaobject from output tag.  output "
    "must contain properly formatted tags of type bool, int, string, structure and list. Error "
    "was : ";

/// The same by way of libxml2's tree.
std::shared_ptr<MetaObject> ReadByTree(const std::string& text) {
    const std::unique_ptr<xmlDoc, void (*)(xmlDoc*)> document(
        xmlReadMemory(text.data(), static_cast<int>(text.size()), "STDOUT", nullptr, 0),
        &xmlFreeDoc);
    xmlNode* node = document ? xmlDocGetRootElement(document.get())->children : nullptr;
    const auto isElement = [](const xmlNode& candidate) {
        const std::string name =
            candidate.name != nullptr ? reinterpret_cast<const char*>(candidate.name) : "";
        return candidate.type == XML_ELEMENT_NODE && name != "text" && name != "comment";
    };
    while (node != nullptr && !isElement(*node)) {
        node = node->next;
    }
    if (node == nullptr) {
        return nullptr;
    }
    try {
        return XmlUtil_BuildMetaObject(node);
    } catch (const CppTools::CppToolException& failure) {
        throw CppTools::CppToolException(std::string(kWrapping) + failure.what());
    }
}

void ExpectSameOutcome(const std::string& text) {
    const std::string expected = Outcome([&] { return ReadByTree(text); });
    ASSERT_EQ(Outcome([&] { return XmlUtil_ParseXmlOutput(text); }), expected) << text;
}

/// Documents of values, with everything in them that XML has, and often a fault.
class DocumentGenerator {
  public:
    explicit DocumentGenerator(RandomSource& random) : random_(random) {}

    std::string Document() {
        std::string text = Pick({"", "", "<?xml version=\"1.0\"?>\n",
                                 "<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?>", "<!-- a -->",
                                 "<?a b?>", " ", "\xEF\xBB\xBF"});
        if (random_.Chance(4)) {
            text += "<!DOCTYPE o [<!ENTITY e \"replaced\"><!ATTLIST list type CDATA \"int\">]>";
            entity_ = "&e;";
        }
        text += "<o xmlns:known=\"urn:k\">" + Noise();
        for (std::size_t count = random_.Below(3); count > 0; --count) {
            text += Value(random_.Below(4)) + Noise();
        }
        text += "</o>" + Pick({"", "", "\n", "<!-- b -->", "<?c d?>"});
        return random_.Chance(15) ? Damaged(text) : text;
    }

  private:
    std::string Pick(const std::vector<std::string>& choices) { return random_.Pick(choices); }

    /// What stands between elements.
    std::string Noise() { return random_.Chance(70) ? Pick({"", "\n ", "\n"}) : Piece(); }

    std::string Piece() {
        return Pick({"x",
                     " 12abc",
                     "-7",
                     "+3",
                     "false",
                     "f",
                     "0",
                     "true",
                     "&lt;",
                     "&amp;",
                     "&#38;",
                     "&#x41;",
                     "\xC3\xA9",
                     "<![CDATA[d]]>",
                     "<![CDATA[]]>",
                     "<![CDATA[<&]]>",
                     "<!--c-->",
                     "<!---->",
                     "<?p q?>",
                     "<?p?>",
                     "<b/>",
                     "<text>t</text>",
                     "<comment>c</comment>",
                     "<string>in</string>",
                     "\r\n",
                     entity_,
                     "99999999999999999999"});
    }

    std::string Pieces() {
        std::string text;
        for (std::size_t count = random_.Below(4); count > 0; --count) {
            text += Piece();
        }
        return text;
    }

    std::string Name(const std::string& name) {
        return random_.Chance(96) ? name : Pick({"known:" + name, "unknown:" + name, name + "s"});
    }

    std::string Attribute(const std::string& name, const std::string& value) {
        if (random_.Chance(95)) {
            return " " + Name(name) + "=\"" + value + "\"";
        }
        return Pick({"", " " + name + "='" + value + "&amp;&#38;&lt;&quot;'",
                     " known:" + name + "=\"k\" " + name + "=\"" + value + "\"",
                     " " + name + "=\"" + value + "\" xml:id=\"i\"", " " + name + "=\"\""});
    }

    std::string Element(const std::string& name, const std::string& attributes,
                        const std::string& contents) {
        const std::string tag = Name(name);
        if (contents.empty() && random_.Chance(50)) {
            return "<" + tag + attributes + "/>";
        }
        return "<" + tag + attributes + ">" + contents + "</" + tag + ">";
    }

    std::string Scalar(const std::string& kind) {
        if (kind == "int" && random_.Chance(80)) {
            return Element("int", "", std::to_string(random_.Below(100)));
        }
        return Element(kind, "", Pieces());
    }

    std::string Structure(std::size_t depth) {
        std::string contents = Noise();
        for (const char* field : {"a", "b", "c"}) {
            if (random_.Chance(90)) {
                std::string value = Noise() + (random_.Chance(95) ? FieldValue(field, depth) : "");
                value += random_.Chance(5) ? Value(0) : "";
                contents += Element("field", Attribute("name", field), value + Noise()) + Noise();
            }
        }
        return Element("structure", Attribute("typeName", Pick({"T", "T", "T", "U"})), contents);
    }

    /// Mostly of one kind for each field, so that lists accept their items.
    std::string FieldValue(const std::string& field, std::size_t depth) {
        if (random_.Chance(5) && depth > 0) {
            return Value(depth - 1);
        }
        return Scalar(field == "a" ? "int" : field == "b" ? "bool" : "string");
    }

    std::string List(std::size_t depth) {
        const std::string type = Pick({"int", "bool", "string", "structure", "structure", "list"});
        std::string contents = Noise();
        for (std::size_t count = random_.Below(4); count > 0; --count) {
            const bool fits = random_.Chance(95);
            contents += !fits                              ? Value(0)
                        : type == "structure" && depth > 0 ? Structure(depth - 1)
                        : type == "list" && depth > 0      ? List(depth - 1)
                                                           : Scalar(type);
            contents += Noise();
        }
        return Element("list", Attribute("type", type), contents);
    }

    std::string Value(std::size_t depth) {
        switch (depth > 0 ? random_.Below(6) : random_.Below(3)) {
        case 0:
            return Scalar("int");
        case 1:
            return Scalar("bool");
        case 2:
            return Scalar("string");
        case 3:
            return Structure(depth - 1);
        default:
            return List(depth - 1);
        }
    }

    std::string Damaged(std::string text) {
        const std::size_t position = random_.Below(text.size());
        switch (random_.Below(3)) {
        case 0:
            text.erase(position, 1 + random_.Below(3));
            break;
        case 1:
            text.insert(position, Pick({"<", "&", "]]>", "\x01", "\xFF", "&undefined;", "\""}));
            break;
        default:
            text.resize(position);
        }
        return text;
    }

    RandomSource& random_;
    std::string entity_ = "&gt;";
};

class DocumentReadingPropertyTest : public TestSupport::SeededTest {};

TEST_P(DocumentReadingPropertyTest, ADocumentGivesWhatItsTreeGives) {
    for (int round = 0; round < 4000 && !HasFailure(); ++round) {
        ExpectSameOutcome(DocumentGenerator(Random()).Document());
    }
}

INSTANTIATE_TEST_SUITE_P(Seeds, DocumentReadingPropertyTest, BothSeeds(), SeedName);

std::string Utf16(const std::string& ascii) {
    std::string text = "\xFF\xFE";
    for (const char character : ascii) {
        text += {character, '\0'};
    }
    return text;
}

TEST(DocumentReadingTest, UnusualDocumentsGiveWhatTheirTreesGive) {
    const std::string deep = "<list type=\"list\">";
    std::string nested;
    for (int i = 0; i < 300; ++i) {
        nested += deep;
    }
    for (const std::string& text :
         {std::string(), std::string("<"), std::string("no document"), std::string(3, '\0'),
          std::string("<o><int>1</int></o>\0", 20), Utf16("<o><string>wide</string></o>"),
          Utf16("<!DOCTYPE o [<!ENTITY e 'wide'>]><o><string>a&e;</string></o>"),
          "<o>" + nested + "</o>", std::string("<o><string xml:id='1'>s</string></o>"),
          std::string("<o><int>1</int></o><o/>")}) {
        ExpectSameOutcome(text);
    }
}

TEST(DocumentReadingTest, TextsOfAnyLengthGiveWhatTheirTreesGive) {
    for (const std::size_t length : {10'000'000U, 10'000'001U}) {
        const std::string characters(length, 'x');
        for (const std::string& content :
             {characters, "<![CDATA[" + characters + "]]>", characters + "<b/>" + characters}) {
            ExpectSameOutcome("<o><string>" + content + "</string></o>");
        }
    }
}

} // namespace
