#include <CppTools/autocli/plugins/XmlPlugin.h>

#include <gtest/gtest.h>
#include <tests/support/CommandDescriptor.h>
#include <tests/support/StreamCapture.h>
#include <tests/support/TempDirectory.h>
#include <tests/support/Thrown.h>
#include <tests/support/TreeLookup.h>

#include <filesystem>
#include <libxml/parser.h>
#include <libxml/tree.h>
#include <string>
#include <sys/stat.h>
#include <vector>

namespace {

using CppTools::AutoCli::XmlPlugin;
using TestSupport::CommandDescriptor;
using TestSupport::CommandPieces;
using TestSupport::CommandsElement;
using TestSupport::Descriptor;
using TestSupport::DescriptorMessage;
using TestSupport::NamespaceElement;
using TestSupport::NamespacesElement;
using TestSupport::NewRoot;
using TestSupport::TempDirectory;
using TestSupport::ThrownBy;

using Texts = std::vector<std::string>;

TEST(XmlPluginTest, New_StoresThePathAndTouchesNoFile) {
    const auto plugin = XmlPlugin::New("/nowhere/at all.xml");
    EXPECT_EQ(plugin->GetName(), "/nowhere/at all.xml");
}

TEST(XmlPluginTest, RegisterNamespaces_BeforeInitializeRegistersNothing) {
    const auto root = NewRoot();
    XmlPlugin::New("/nowhere/at all.xml")->RegisterNamespaces(root);
    EXPECT_EQ(root->GetNamespaceNodeNames(), Texts{});
}

TEST(XmlPluginTest, Initialize_MissingFileIsRefused) {
    const TempDirectory directory;
    const std::string path = directory / "missing.xml";
    EXPECT_EQ(ThrownBy([&] { XmlPlugin::New(path)->Initialize(); }),
              DescriptorMessage(path, "Unable to parse XML descriptor: " + path));
}

TEST(XmlPluginTest, Initialize_DirectoryIsRefused) {
    const TempDirectory directory;
    const std::string path = directory.MakeDirectory("folder.xml");
    EXPECT_EQ(ThrownBy([&] { XmlPlugin::New(path)->Initialize(); }),
              DescriptorMessage(path, "Unable to parse XML descriptor: " + path));
}

TEST(XmlPluginTest, Initialize_BrokenFile_PrintsTheXmlLibrarysOwnWordsOnce) {
    const TempDirectory directory;
    const std::string path = directory.Write("broken.xml", "<plugin>\n<version>1.0.0</plugin>\n");
    const auto expected =
        TestSupport::PrintedBy([&] { EXPECT_EQ(xmlReadFile(path.c_str(), nullptr, 0), nullptr); });
    std::string thrown;
    const auto printed = TestSupport::PrintedBy(
        [&] { thrown = ThrownBy([&] { XmlPlugin::New(path)->Initialize(); }); });
    EXPECT_EQ(thrown, DescriptorMessage(path, "Unable to parse XML descriptor: " + path));
    EXPECT_NE(expected.err, "");
    EXPECT_EQ(printed.err, expected.err);
}

TEST(XmlPluginTest, Initialize_RemarkOnASoundFile_IsPrintedOnceAndTheFileIsRead) {
    const TempDirectory directory;
    const std::string path = directory.Write(
        "remark.xml", "<plugin xmlns=\"relative\"><version>1.0.0</version>" +
                          NamespacesElement(NamespaceElement("demo", "Words.")) + "</plugin>\n");
    const auto expected =
        TestSupport::PrintedBy([&] { xmlFreeDoc(xmlReadFile(path.c_str(), nullptr, 0)); });
    const auto plugin = XmlPlugin::New(path);
    const auto printed = TestSupport::PrintedBy([&] { plugin->Initialize(); });
    EXPECT_NE(expected.err, "");
    EXPECT_EQ(printed.err, expected.err);
    const auto root = NewRoot();
    plugin->RegisterNamespaces(root);
    EXPECT_EQ(root->GetNamespaceNode("demo")->GetDescription(), "Words.");
}

TEST(XmlPluginTest, Initialize_CommentsAndInstructions_MayStandEverywhere) {
    const TempDirectory directory;
    const auto plugin = XmlPlugin::New(directory.Write(
        "demo.xml",
        "<!-- 1 --><?one?>" +
            Descriptor("<!-- 2 --><?two?><?three 3?>" +
                       NamespacesElement(NamespaceElement("first", "<!-- 4 -->one") +
                                         NamespaceElement("second", "one<![CDATA[<two>]]>") +
                                         NamespaceElement("third", "one<!--two-->") +
                                         NamespaceElement("fourth", "one<?two three?>"))) +
            "<!-- 5 -->"));
    plugin->Initialize();
    const auto root = NewRoot();
    plugin->RegisterNamespaces(root);
    EXPECT_EQ(root->GetNamespaceNode("first")->GetDescription(), "one");
    EXPECT_EQ(root->GetNamespaceNode("second")->GetDescription(), "<two>");
    EXPECT_EQ(root->GetNamespaceNode("third")->GetDescription(), "two");
    EXPECT_EQ(root->GetNamespaceNode("fourth")->GetDescription(), "three");
}

TEST(XmlPluginTest, Initialize_DescriptorOfElevenMillionBytes_IsReadLikeAnyOther) {
    const TempDirectory directory;
    std::string blanks;
    for (int line = 0; line < 11000; ++line) {
        blanks += "<!---->" + std::string(992, ' ') + "\n";
    }
    const auto plugin = XmlPlugin::New(directory.Write(
        "demo.xml", Descriptor(blanks + NamespacesElement(NamespaceElement("demo", "Words.")))));
    plugin->Initialize();
    const auto root = NewRoot();
    plugin->RegisterNamespaces(root);
    EXPECT_EQ(root->GetNamespaceNode("demo")->GetDescription(), "Words.");
}

TEST(XmlPluginTest, Initialize_FifoOrDevice_IsRefusedWithoutBeingOpened) {
    const TempDirectory directory;
    const std::string fifo = directory / "pipe.xml";
    ASSERT_EQ(mkfifo(fifo.c_str(), 0600), 0);
    for (const std::string& path : {fifo, std::string("/dev/full")}) {
        EXPECT_EQ(
            ThrownBy([&] { XmlPlugin::New(path)->Initialize(); }),
            "Unable to handle XML Plugin " + path +
                ".  There was an error while parsing: Unable to parse XML descriptor: " + path);
    }
}

TEST(XmlPluginTest, Initialize_TextsOfOtherEncodingsBecomeUtf8) {
    const TempDirectory directory;
    const auto plugin = XmlPlugin::New(directory.Write(
        "demo.xml", "<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?>" +
                        Descriptor(NamespacesElement(NamespaceElement("demo", "Gr\xF6n.")))));
    plugin->Initialize();
    const auto root = NewRoot();
    plugin->RegisterNamespaces(root);
    EXPECT_EQ(root->GetNamespaceNode("demo")->GetDescription(), "Gr\xC3\xB6n.");
}

TEST(XmlPluginTest, Initialize_TextCdataAndEntitiesAreSeveralPieces) {
    const TempDirectory directory;
    const auto plugin = XmlPlugin::New(directory.Write(
        "demo.xml",
        "<!DOCTYPE plugin [<!ENTITY more \"two\">]>" +
            Descriptor(NamespacesElement(NamespaceElement("first", "one&more;") +
                                         NamespaceElement("second", "one<![CDATA[two]]>")))));
    plugin->Initialize();
    const auto root = NewRoot();
    plugin->RegisterNamespaces(root);
    EXPECT_EQ(root->GetNamespaceNode("first")->GetDescription(), "two");
    EXPECT_EQ(root->GetNamespaceNode("second")->GetDescription(), "two");
}

TEST(XmlPluginTest, Initialize_ReadsTheFileOnceAndNotAtRegistration) {
    const TempDirectory directory;
    const std::string path = directory.Write("demo.xml", CommandDescriptor({}));
    const auto plugin = XmlPlugin::New(path);
    plugin->Initialize();
    std::filesystem::remove(path);
    const auto root = NewRoot();
    plugin->RegisterNamespaces(root);
    EXPECT_EQ(root->GetNamespaceNodeNames(), Texts{"demo"});
}

TEST(XmlPluginTest, Initialize_ASecondCallReadsTheFileAfresh) {
    const TempDirectory directory;
    const std::string path = directory.Write("demo.xml", CommandDescriptor({}));
    const auto plugin = XmlPlugin::New(path);
    plugin->Initialize();
    directory.Write("demo.xml", Descriptor(NamespacesElement(NamespaceElement("other", "Other."))));
    plugin->Initialize();
    const auto root = NewRoot();
    plugin->RegisterNamespaces(root);
    EXPECT_EQ(root->GetNamespaceNodeNames(), Texts{"other"});
}

TEST(XmlPluginTest, Initialize_WhatWasReadBeforeTheFaultStays) {
    const TempDirectory directory;
    CommandPieces broken;
    broken.attributes = "path=\"demo.broken\"";
    broken.execute = "";
    const std::string path = directory.Write(
        "demo.xml", Descriptor(NamespacesElement(NamespaceElement("demo", "Demonstrations.")) +
                               CommandsElement(CommandPieces{}.ToElement() + broken.ToElement())));
    const auto plugin = XmlPlugin::New(path);
    EXPECT_EQ(ThrownBy([&] { plugin->Initialize(); }),
              DescriptorMessage(
                  path,
                  "Unable to register the command 'tandril demo.broken'  Error was Missing or "
                  "empty <execute> tag.  This tag must specify a valid execution string for "
                  "this command."));
    const auto root = NewRoot();
    plugin->RegisterNamespaces(root);
    EXPECT_EQ(root->GetNamespaceNodeNames(), Texts{"demo"});
    EXPECT_EQ(root->GetNamespaceNode("demo")->GetNamespaceNodeNames(), Texts{"run"});
}

TEST(XmlPluginTest, Initialize_AnEmptyNamespacesElementRegistersNothing) {
    const TempDirectory directory;
    const std::string path = directory.Write("demo.xml", Descriptor("<namespaces/>"));
    const auto plugin = XmlPlugin::New(path);
    plugin->Initialize();
    const auto root = NewRoot();
    plugin->RegisterNamespaces(root);
    EXPECT_EQ(root->GetNamespaceNodeNames(), Texts{});
}

TEST(XmlPluginTest, HasFormatter_IsAlwaysFalse) {
    const auto plugin = XmlPlugin::New("demo.xml");
    EXPECT_FALSE(plugin->HasFormatter("table"));
    EXPECT_FALSE(plugin->HasFormatter(""));
}

TEST(XmlPluginTest, GetFormatter_AlwaysThrows) {
    const auto plugin = XmlPlugin::New("demo.xml");
    EXPECT_EQ(ThrownBy([&] { plugin->GetFormatter("table"); }),
              "Xml Plugin doesn't not support formatters");
    EXPECT_EQ(ThrownBy([&] { plugin->GetFormatter(""); }),
              "Xml Plugin doesn't not support formatters");
}

TEST(XmlPluginTest, GetFormatters_IsOneEmptyVectorForAllInstances) {
    const auto first = XmlPlugin::New("first.xml");
    const auto second = XmlPlugin::New("second.xml");
    EXPECT_TRUE(first->GetFormatters().empty());
    EXPECT_EQ(&first->GetFormatters(), &second->GetFormatters());
}

} // namespace
