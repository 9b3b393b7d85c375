#include <CppTools/autocli/plugins/XmlPlugin.h>
#include <CppTools/autocli/plugins/XmlUtil.h>

#include <CppTools/autocli/CommandOutput.h>
#include <CppTools/autocli/Dispatcher.h>
#include <CppTools/autocli/formatters/DisplayContext.h>
#include <CppTools/autocli/formatters/FormatParameters.h>
#include <CppTools/metaobj/MetaList.h>
#include <CppTools/metaobj/MetaObject.h>
#include <gtest/gtest.h>
#include <tests/support/ChildRun.h>
#include <tests/support/CommandDescriptor.h>
#include <tests/support/DescriptorText.h>
#include <tests/support/MemoryLimit.h>
#include <tests/support/NamedRow.h>
#include <tests/support/StreamCapture.h>
#include <tests/support/TempDirectory.h>
#include <tests/support/Thrown.h>

#include <array>
#include <cerrno>
#include <iostream>
#include <netinet/in.h>
#include <poll.h>
#include <sstream>
#include <string>
#include <sys/socket.h>
#include <system_error>
#include <unistd.h>

// What documents can ask of the reader: text that stands for very much more, files and hosts that
// they name, depth and size.

namespace {

using CppTools::AutoCli::XmlPlugin;
using CppTools::AutoCli::XmlUtil_ParseXmlOutput;
using CppTools::MetaObj::MetaList;
using TestSupport::DescriptorMessage;
using TestSupport::kRowName;
using TestSupport::LimitGrowth;
using TestSupport::PrintedBy;
using TestSupport::RunInChild;
using TestSupport::TempDirectory;
using TestSupport::ThrownBy;

constexpr std::size_t kMegabyte = 1000 * 1000;

const std::string kTooMuch =
    "The document's entities and attribute defaults stand for too much text";

const std::string kWrapped =
    "Error parsing command output.  Unable to build a proper metaobject from output tag.  output "
    "must contain properly formatted tags of type bool, int, string, structure and list. Error was "
    ": ";

std::string Repeat(const std::string& text, std::size_t count) {
    std::string repeated;
    repeated.reserve(text.size() * count);
    for (; count > 0; --count) {
        repeated += text;
    }
    return repeated;
}

/// A document with these declarations of its own.
std::string Document(const std::string& declarations, const std::string& content) {
    return "<!DOCTYPE o [" + declarations + "]><o>" + content + "</o>";
}

std::string Entity(const std::string& name, const std::string& text) {
    return "<!ENTITY " + name + " \"" + text + "\">";
}

std::string StringList(const std::string& items) {
    return "<list type=\"string\">" + items + "</list>";
}

/// Parameter entities, each of which names the one before it some times. The last one is used.
std::string NestedParameters(const std::string& innermost, std::size_t times, int levels) {
    std::string text = Entity("% p0", innermost);
    for (int level = 1; level < levels; ++level) {
        const std::string inner = "&#37;p" + std::to_string(level - 1) + "; ";
        text += Entity("% p" + std::to_string(level), Repeat(inner, times) + "<?q?>");
    }
    return text + "%p" + std::to_string(levels - 1) + ";";
}

/// Entities, each of which is the one before it, and the uses of all of them in their order: the
/// parser, which bounds how deep they nest, has then met what is inside before.
std::string EntityChain(int length) {
    std::string text = Entity("e0", "x");
    for (int i = 1; i < length; ++i) {
        text += Entity("e" + std::to_string(i), "&e" + std::to_string(i - 1) + ";");
    }
    return text;
}

std::string UsesOfChain(int length) {
    std::string text;
    for (int i = 0; i < length; ++i) {
        text += "&e" + std::to_string(i) + ";";
    }
    return text;
}

struct DocumentRow : TestSupport::NamedRow {
    std::string xml;
};

class MultiplyingDocumentTest : public testing::TestWithParam<DocumentRow> {};

TEST_P(MultiplyingDocumentTest, ParseXmlOutput_IsRefusedWithinLittleMemory) {
    const auto parse = [] { XmlUtil_ParseXmlOutput(GetParam().xml); };
    const auto child = RunInChild([&] {
        LimitGrowth(100 * kMegabyte);
        std::cout << ThrownBy(parse);
    });
    ASSERT_EQ(child.out, kWrapped + kTooMuch) << child.err;
    EXPECT_EQ(child.status, 0);
    EXPECT_EQ(ThrownBy(parse), kWrapped + kTooMuch);
}

TEST_P(MultiplyingDocumentTest, Initialize_IsRefusedWithinLittleMemory) {
    const TempDirectory directory;
    const std::string path = directory.Write("demo.xml", GetParam().xml);
    const auto read = [&] { XmlPlugin::New(path)->Initialize(); };
    const auto child = RunInChild([&] {
        LimitGrowth(100 * kMegabyte);
        std::cout << ThrownBy(read);
    });
    ASSERT_EQ(child.out, DescriptorMessage(path, kTooMuch)) << child.err;
    EXPECT_EQ(ThrownBy(read), DescriptorMessage(path, kTooMuch));
}

INSTANTIATE_TEST_SUITE_P(
    Ways, MultiplyingDocumentTest,
    testing::Values(
        DocumentRow{{"LongEntityInManyTexts"},
                    Document(Entity("e", std::string(100000, 'x')),
                             StringList(Repeat("<string>&e;</string>", 10000)))},
        DocumentRow{{"LongEntityManyTimesInAnAttribute"},
                    Document(Entity("e", std::string(100000, 'x')),
                             "<structure typeName=\"" + Repeat("&e;", 10000) + "\"/>")},
        DocumentRow{{"EntitiesInEntitiesInManyAttributes"},
                    Document(Entity("e", std::string(1000, 'x')) + Entity("f", "&e;&e;&e;") +
                                 Entity("g", "&f;&f;-&f;"),
                             Repeat("<string a=\"&g;\"/>", 2000))},
        DocumentRow{
            {"DefaultOfManyElements"},
            Document("<!ATTLIST structure typeName CDATA '" + std::string(100000, 'x') + "'>",
                     Repeat("<p:structure xmlns:p='urn:p'/>", 10000))},
        DocumentRow{{"ParameterEntityManyTimes"},
                    Document(Entity("% p", "<!--" + std::string(100000, 'x') + "--> <?q?>") +
                                 Repeat("%p;", 10000),
                             "<int>1</int>")},
        DocumentRow{{"ParameterEntitiesInParameterEntities"},
                    Document(NestedParameters("<!--x--> <?q?>", 10, 9), "<int>1</int>")},
        DocumentRow{{"EntitiesThatNestTooDeep"},
                    Document(EntityChain(30000), UsesOfChain(30000) + "<string a=\"&e29999;\"/>")}),
    kRowName);

class BrokenDocumentTest : public testing::TestWithParam<DocumentRow> {};

TEST_P(BrokenDocumentTest, ParseXmlOutput_GivesNothingWithinLittleMemory) {
    const auto child = RunInChild([] {
        LimitGrowth(100 * kMegabyte);
        std::cout << (XmlUtil_ParseXmlOutput(GetParam().xml) == nullptr);
    });
    ASSERT_EQ(child.out, "1") << child.err;
    EXPECT_LT(child.err.size(), 10000U);
    PrintedBy([] { EXPECT_EQ(XmlUtil_ParseXmlOutput(GetParam().xml), nullptr); });
}

INSTANTIATE_TEST_SUITE_P(
    Ways, BrokenDocumentTest,
    testing::Values(
        DocumentRow{{"EntitiesThatMultiplyByThemselves"},
                    Document(Entity("a", Repeat("ha", 10)) + Entity("b", Repeat("&a;", 10)) +
                                 Entity("c", Repeat("&b;", 10)) + Entity("d", Repeat("&c;", 10)) +
                                 Entity("e", Repeat("&d;", 10)) + Entity("f", Repeat("&e;", 10)),
                             "<string a=\"" + Repeat("&f;", 100) + "\"/>")},
        DocumentRow{{"EntitiesInACircle"},
                    Document(Entity("a", "&b;") + Entity("b", "&a;"), "<string a=\"&a;\"/>")},
        DocumentRow{{"ComplaintsThatMultiply"},
                    Document(NestedParameters("<!--x-->", 10, 7), "<int>1</int>")},
        DocumentRow{{"UnknownParameterEntity"}, Document("%p;", "<int>1</int>")},
        DocumentRow{{"Deep"},
                    "<o>" + Repeat("<list type=\"list\">", 100000) + Repeat("</list>", 100000) +
                        "</o>"},
        DocumentRow{{"DeepWithoutEnd"}, "<o>" + Repeat("<a>", 100000)},
        DocumentRow{{"DeepWithADocumentType"},
                    Document("", Repeat("<a>", 100000) + Repeat("</a>", 100000))},
        DocumentRow{{"DeepEntity"},
                    Document(Entity("e", Repeat("<a>", 100000) + Repeat("</a>", 100000)),
                             "&e;<int>1</int>")}),
    kRowName);

struct AcceptedRow : DocumentRow {
    std::size_t size;
};

class AcceptedDocumentTest : public testing::TestWithParam<AcceptedRow> {};

TEST_P(AcceptedDocumentTest, ParseXmlOutput_DeclarationsThatStandForAsMuchAsTheyMay) {
    const auto value = XmlUtil_ParseXmlOutput(GetParam().xml);
    ASSERT_NE(value, nullptr);
    EXPECT_EQ(value->ToString().size(), GetParam().size);
}

INSTANTIATE_TEST_SUITE_P(
    Ways, AcceptedDocumentTest,
    testing::Values(
        AcceptedRow{{{"NineMegabytes"},
                     Document(Entity("e", std::string(90000, 'x')),
                              StringList(Repeat("<string>&e;</string>", 100)))},
                    100 * 90002 - 2},
        AcceptedRow{{{"ThriceALargeDocument"},
                     Document(Entity("e", std::string(60, 'x')),
                              StringList(Repeat("<string>&e;</string>", 200000)))},
                    200000 * 62 - 2},
        AcceptedRow{{{"EntitiesInAnAttribute"},
                     Document(Entity("e", "abc") + Entity("f", "&e;&e;-&e;"),
                              "<structure typeName='A'><field name='&f;x&f;'><int>1</int></field>"
                              "</structure>")},
                    std::string("{'abcabc-abcxabcabc-abc' => '1', }").size()},
        AcceptedRow{
            {{"DefaultOfAnAttribute"},
             Document("<!ATTLIST list type CDATA 'string'>", "<list><string>abc</string></list>")},
            3},
        AcceptedRow{
            {{"ParameterEntities"},
             Document(NestedParameters("<!ENTITY e 'abc'> <?q?>", 3, 5), "<string>&e;</string>")},
            3},
        AcceptedRow{{{"EntityThatATypeElsewhereMayDeclare"},
                     "<!DOCTYPE o SYSTEM 'nowhere.dtd'><o><string a='&e;&e;'>abc</string></o>"},
                    3}),
    kRowName);

/// Listens on this machine and never answers.
class SilentHost {
  public:
    SilentHost() : socket_(socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        socklen_t size = sizeof(address);
        auto* const anyAddress = reinterpret_cast<sockaddr*>(&address);
        if (socket_ < 0 || bind(socket_, anyAddress, size) != 0 || listen(socket_, 8) != 0 ||
            getsockname(socket_, anyAddress, &size) != 0) {
            throw std::system_error(errno, std::generic_category(), "listen");
        }
        port_ = ntohs(address.sin_port);
    }

    SilentHost(const SilentHost&) = delete;
    SilentHost& operator=(const SilentHost&) = delete;

    ~SilentHost() { close(socket_); }

    std::string Url(const std::string& name) const {
        return "http://127.0.0.1:" + std::to_string(port_) + "/" + name;
    }

    /// Whether somebody has connected, or tried to.
    bool WasCalled() const {
        pollfd waiting{socket_, POLLIN, 0};
        return poll(&waiting, 1, 0) != 0;
    }

  private:
    int socket_;
    int port_ = 0;
};

/// A document that names others, each time by an address that the test puts in.
struct NamingRow : TestSupport::NamedRow {
    std::string (*document)(const std::string& address);
};

class NamingDocumentTest : public testing::TestWithParam<NamingRow> {
  protected:
    /// All that the reader makes of it and says of it.
    static std::string AllOf(const std::string& xml) {
        std::string value;
        const auto printed = PrintedBy([&] {
            const std::string message = ThrownBy([&] {
                const auto read = XmlUtil_ParseXmlOutput(xml);
                value = read ? read->ToString() : "<nothing>";
            });
            value += message;
        });
        return value + printed.out + printed.err;
    }

    static std::string AllOfDescriptor(const std::string& path) {
        std::string message;
        const auto printed =
            PrintedBy([&] { message = ThrownBy([&] { XmlPlugin::New(path)->Initialize(); }); });
        return message + printed.out + printed.err;
    }

    const TempDirectory directory_;
    const std::string canary_ = directory_.Write("canary", "<string>sesame</string>");
    const SilentHost host_;
};

TEST_P(NamingDocumentTest, Files_AreNotRead) {
    for (const std::string& address : {canary_, "file://" + canary_}) {
        const std::string xml = GetParam().document(address);
        EXPECT_EQ(AllOf(xml).find("sesame"), std::string::npos) << xml;
        const std::string path = directory_.Write("demo.xml", xml);
        EXPECT_EQ(AllOfDescriptor(path).find("sesame"), std::string::npos) << xml;
    }
}

TEST_P(NamingDocumentTest, Hosts_AreNotCalled) {
    const std::string xml = GetParam().document(host_.Url("canary"));
    AllOf(xml);
    EXPECT_FALSE(host_.WasCalled());
    AllOfDescriptor(directory_.Write("demo.xml", xml));
    EXPECT_FALSE(host_.WasCalled());
}

INSTANTIATE_TEST_SUITE_P(
    Ways, NamingDocumentTest,
    testing::Values(
        NamingRow{{"EntityInAText"},
                  [](const std::string& address) {
                      return Document("<!ENTITY e SYSTEM '" + address + "'>",
                                      "<string>&e;</string>");
                  }},
        NamingRow{{"EntityAsTheValue"},
                  [](const std::string& address) {
                      return Document("<!ENTITY e PUBLIC 'x' '" + address + "'>",
                                      "&e;<list type='string'>&e;</list>");
                  }},
        NamingRow{{"EntityInAnAttribute"},
                  [](const std::string& address) {
                      return Document("<!ENTITY e SYSTEM '" + address + "'>",
                                      "<structure typeName='&e;'/>");
                  }},
        NamingRow{{"ParameterEntity"},
                  [](const std::string& address) {
                      return Document("<!ENTITY % p SYSTEM '" + address + "'>%p;", "<int>1</int>");
                  }},
        NamingRow{{"ParameterEntityThatMakesAnother"},
                  [](const std::string& address) {
                      return Document(
                          Entity("% p", "<!ENTITY &#37; q SYSTEM '" + address + "'> &#37;q;") +
                              "%p;",
                          "<int>1</int>");
                  }},
        NamingRow{{"DocumentType"},
                  [](const std::string& address) {
                      return "<!DOCTYPE o SYSTEM '" + address + "'><o><string>&e;</string></o>";
                  }},
        NamingRow{{"Inclusion"},
                  [](const std::string& address) {
                      return "<o xmlns:xi='http://www.w3.org/2001/XInclude'><string><xi:include "
                             "parse='text' href='" +
                             address + "'/></string><xi:include href='" + address + "'/></o>";
                  }},
        NamingRow{{"StyleAndSchema"},
                  [](const std::string& address) {
                      return "<?xml-stylesheet href='" + address +
                             "'?><o xmlns:x='http://www.w3.org/2001/XMLSchema-instance' "
                             "x:noNamespaceSchemaLocation='" +
                             address + "'><int>1</int></o>";
                  }}),
    kRowName);

TEST(XmlTreeTest, Initialize_DescriptorOfAnotherHost_IsNotAskedFor) {
    const SilentHost host;
    const std::string path = host.Url("demo.xml");
    std::string message;
    PrintedBy([&] { message = ThrownBy([&] { XmlPlugin::New(path)->Initialize(); }); });
    EXPECT_EQ(message, DescriptorMessage(path, "Unable to parse XML descriptor: " + path));
    EXPECT_FALSE(host.WasCalled());
}

TEST(XmlTreeTest, Initialize_MoreThanAnyDocument_IsNotHeld) {
    const TempDirectory directory;
    const std::string path = directory.Write("demo.xml", "");
    ASSERT_EQ(truncate(path.c_str(), 10L << 30), 0);
    const auto read = [&] { XmlPlugin::New(path)->Initialize(); };
    const auto child = RunInChild([&] {
        LimitGrowth(100 * kMegabyte);
        std::cout << ThrownBy(read);
    });
    EXPECT_EQ(child.out, DescriptorMessage(path, "Unable to parse XML descriptor: " + path));
    PrintedBy([&] { EXPECT_NE(ThrownBy(read), ""); });
}

TEST(XmlTreeTest, Initialize_DeepDescriptor_IsRefused) {
    const TempDirectory directory;
    const std::string path =
        directory.Write("demo.xml", TestSupport::Descriptor(Repeat("<commands>", 100000) +
                                                            Repeat("</commands>", 100000)));
    std::string message;
    PrintedBy([&] { message = ThrownBy([&] { XmlPlugin::New(path)->Initialize(); }); });
    EXPECT_EQ(message, DescriptorMessage(path, "Unable to parse XML descriptor: " + path));
}

TEST(XmlTreeTest, ParseXmlOutput_DeepestDocument_IsComparedAndShownByEveryFormatter) {
    constexpr std::size_t kLevels = 126;
    const auto value =
        XmlUtil_ParseXmlOutput("<o>" + Repeat("<structure typeName='A'><field name='a'>", kLevels) +
                               "<int>1</int>" + Repeat("</field></structure>", kLevels) + "</o>");
    ASSERT_NE(value, nullptr);
    EXPECT_TRUE(value->IsSameStructure(value, nullptr));
    EXPECT_EQ(value->ToString(), Repeat("{'a' => '", kLevels) + "1" + Repeat("', }", kLevels));
    CppTools::AutoCli::Dispatcher dispatcher;
    for (const char* formatter : {"simple", "xml", "json", "python"}) {
        const auto output = CppTools::AutoCli::CommandOutput::New();
        output->SetRootObject(value);
        CppTools::AutoCli::FormatParameters parameters;
        parameters.SetFormatter(formatter);
        CppTools::AutoCli::DisplayContext display;
        std::ostringstream text;
        EXPECT_TRUE(dispatcher.FormatOutput(output, parameters, display, text)) << formatter;
        EXPECT_NE(text.str().find('1'), std::string::npos) << formatter;
    }
}

std::string HundredMegabytes(const std::string& declaration) {
    return declaration + "<o>" +
           StringList(Repeat("<string>" + std::string(kMegabyte, 'x') + "</string>", 100)) + "</o>";
}

TEST(XmlTreeTest, ParseXmlOutput_HundredMegabytes_TakeMemoryInStep) {
    for (const char* declaration : {"", "<!DOCTYPE o>"}) {
        const auto child = RunInChild([&] {
            const std::string xml = HundredMegabytes(declaration);
            LimitGrowth(400 * kMegabyte);
            const auto value = XmlUtil_ParseXmlOutput(xml);
            std::cout << std::dynamic_pointer_cast<MetaList>(value)->GetCount();
        });
        EXPECT_EQ(child.out, "100") << child.err;
    }
}

TEST(XmlTreeTest, Initialize_HundredMegabytes_TakeMemoryInStep) {
    const TempDirectory directory;
    for (const char* declaration : {"", "<!DOCTYPE plugin>"}) {
        std::string namespaces;
        for (int i = 0; i < 100; ++i) {
            namespaces +=
                TestSupport::NamespaceElement("n" + std::to_string(i), std::string(kMegabyte, 'x'));
        }
        const std::string path = directory.Write(
            "demo.xml",
            declaration + TestSupport::Descriptor(TestSupport::NamespacesElement(namespaces)));
        const auto child = RunInChild([&] {
            LimitGrowth(500 * kMegabyte);
            XmlPlugin::New(path)->Initialize();
        });
        EXPECT_EQ(child.status, 0) << child.err;
    }
}

} // namespace
