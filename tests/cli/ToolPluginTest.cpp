#include "Boxes.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <string>
#include <unistd.h>

using Cli::RunTool;
using Cli::Words;
using TestSupport::ChildRun;
using TestSupport::CommandElementAt;
using TestSupport::CommandsElement;
using TestSupport::Descriptor;
using TestSupport::NamespaceDescriptor;
using TestSupport::OutdatedDescriptor;
using TestSupport::OutdatedMessage;

namespace {

/// A directory of plug-ins and the tool that is told about it.
class ToolPluginTest : public testing::Test {
  protected:
    /// Writes a descriptor with one command at the top, that nothing says anything else about.
    std::string WriteCommand(const std::string& file, const std::string& name) const {
        return plugins_.Write(file, Descriptor(CommandsElement(CommandElementAt(name))));
    }

    std::string WriteNamespace(const std::string& file, const std::string& name,
                               const std::string& description) const {
        return plugins_.Write(file, NamespaceDescriptor(name, description));
    }

    std::string CopyLibrary(const std::string& library, const std::string& name) const {
        std::filesystem::copy_file(library, plugins_ / name);
        return plugins_ / name;
    }

    /// Loads the directory and shows what stands in the tree.
    ChildRun List() const { return RunTool({"--plugin-dir", plugins_.Path()}); }

    TestSupport::TempDirectory plugins_;
};

/// What the tool lists at the top with these rows of tables.
std::string TopListing(const std::string& namespaces, const std::string& commands) {
    return "Usage: tandril [disp options] <namespaces> <command>\n\n"
           "For help please run tandril --help\n\n"
           "Available Namespaces: \n\n" +
           namespaces +
           "tandril  Commands that operate on the tandril system itself allowing users to get "
           "additional information.\n\n"
           "Available Commands: \n\n" +
           commands + "\n";
}

std::string AlreadyRegistered(const std::string& file, const std::string& path) {
    return "Error while trying to register the plugin " + file +
           " Tandril path is already registered: " + path + " The functionality in " + file +
           " will not be available until this issue is resolved.";
}

std::string Skipped(const std::string& file, const std::string& reason) {
    return "Error loading plugin " + file + " skipping.  Error was: " + reason + "\n";
}

TEST_F(ToolPluginTest, Descriptor_IsLoadedByItsName) {
    const ChildRun run = RunTool({"--plugin", WriteNamespace("a.xml", "apples", "Red.")});
    EXPECT_EQ(run.out, TopListing("apples   Red.\n", ""));
    EXPECT_EQ(run.err, "");
    EXPECT_EQ(run.status, 1);
}

TEST_F(ToolPluginTest, Descriptors_SeveralAreLoadedInTheirOrder) {
    const std::string first = WriteCommand("b.xml", "pear");
    const std::string second = WriteCommand("a.xml", "pear");
    const ChildRun run =
        RunTool({"--plugin", first, "--plugin", second, "--plugin", WriteCommand("c.xml", "fig")});
    EXPECT_EQ(run.out, TopListing("", "fig   Runs.\npear  Runs.\n"));
    EXPECT_EQ(run.err,
              "Unable to load plugin " + second + ": " + AlreadyRegistered(second, "pear") + "\n");
}

TEST_F(ToolPluginTest, EmptyNamesAndOtherExtensions_ArePassedOverInSilence) {
    const std::string text = WriteCommand("a.txt", "pear");
    const ChildRun run = RunTool({"--plugin", text, "--plugin", "", "--plugin-dir", "", "--plugin",
                                  "/nowhere", "--plugin", ".xml", "--plugin"});
    EXPECT_EQ(run.out, TopListing("", ""));
    EXPECT_EQ(run.err, "");
}

TEST_F(ToolPluginTest, MissingDescriptor_IsReportedAndTheLineGoesOn) {
    const std::string missing = plugins_ / "missing.xml";
    const ChildRun run = RunTool({"--plugin", missing, "tandril", "command", "list", "-c", "x"});
    EXPECT_EQ(run.out, "Namespace  Command  Description\n---------  -------  -----------\n");
    EXPECT_EQ(run.err, "I/O warning : failed to load external entity \"" + missing +
                           "\"\nUnable to load plugin " + missing +
                           ": Unable to handle XML Plugin " + missing +
                           ".  There was an error while parsing: Unable to parse XML descriptor: " +
                           missing + "\n");
    EXPECT_EQ(run.status, 0);
}

TEST_F(ToolPluginTest, RefusedDescriptor_IsReportedAndTheNextIsLoaded) {
    const std::string outdated = plugins_.Write("old.xml", OutdatedDescriptor());
    const ChildRun run = RunTool({"--plugin", outdated, "--plugin", WriteCommand("a.xml", "fig")});
    EXPECT_EQ(run.out, TopListing("", "fig   Runs.\n"));
    EXPECT_EQ(run.err,
              "Unable to load plugin " + outdated + ": " + OutdatedMessage(outdated) + "\n");
}

TEST_F(ToolPluginTest, FaultDeepInADescriptor_CarriesEveryPrefix) {
    const std::string file = plugins_.Write(
        "demo.xml",
        TestSupport::ParameterDescriptor(TestSupport::ParameterElement(
            R"(name="force" type="flag" secret="true")", "<description>D.</description>")));
    const ChildRun run = RunTool({"--plugin", file});
    EXPECT_EQ(run.out, TopListing("", ""));
    EXPECT_EQ(run.err,
              "Unable to load plugin " + file + ": " +
                  TestSupport::DescriptorMessage(
                      file, TestSupport::CommandMessage(
                                "Unable to parse Input Paramter force. Invalid type flag for "
                                "secret, must be 'string'")) +
                  "\n");
}

TEST_F(ToolPluginTest, SharedLibrary_ItsCommandsRun) {
    const std::string file = CopyLibrary(GOOD_PLUGIN, "good.so");
    const Words load = {"--plugin", file, "--formatter", "simple", "fixture"};
    const ChildRun run = RunTool(Cli::Join(load, {"greet", "--text", "you"}));
    EXPECT_EQ(run.out, "Hello you\n");
    EXPECT_EQ(run.err, "");
    EXPECT_EQ(run.status, 0);
}

TEST_F(ToolPluginTest, SharedLibrary_ItsExceptionsBecomeMessages) {
    const std::string file = CopyLibrary(GOOD_PLUGIN, "good.so");
    const ChildRun run = RunTool({"--plugin", file, "fixture", "refuse", "--text=this"});
    EXPECT_EQ(run.out, "");
    EXPECT_EQ(run.err, "Errors: \nError on command fixture refuse : refused: this\n");
    EXPECT_EQ(run.status, 1);
}

TEST_F(ToolPluginTest, BrokenSharedLibraries_AreReportedAndTheLineGoesOn) {
    const std::string text = plugins_.Write("text.so", std::string(100, 'x'));
    const std::string missing = plugins_ / "missing.so";
    const std::string noPlugin = CopyLibrary(NO_ENTRY_POINT, "none.so");
    const ChildRun run = RunTool({"--plugin", text, "--plugin", missing, "--plugin", noPlugin});
    EXPECT_EQ(run.out, TopListing("", ""));
    EXPECT_EQ(run.err, "Unable to load plugin " + text + ": Unable to load plugin from " + text +
                           " : " + text + ": invalid ELF header\n" + "Unable to load plugin " +
                           missing + ": Unable to load plugin from " + missing + " : " + missing +
                           ": cannot open shared object file: No such file or directory\n" +
                           "Unable to load plugin " + noPlugin +
                           ": Unable to get plugin registration point from " + noPlugin + " : " +
                           noPlugin + ": undefined symbol: AutoCli_RegisterNamespaces\n");
}

TEST_F(ToolPluginTest, LibraryThatGivesUpHalfway_KeepsWhatItRegistered) {
    const std::string file = CopyLibrary(HALFWAY_PLUGIN, "halfway.so");
    const ChildRun run = RunTool({"--plugin", file, "halfway", "first", "-n", "halfway"});
    EXPECT_EQ(run.out, "Namespace  Command  Description\n"
                       "---------  -------  -----------\n"
                       "halfway    first    List all of the tandril commands.\n");
    EXPECT_EQ(run.err, "Unable to load plugin " + file +
                           ": Error while trying to register the plugin " + file +
                           " second half missing The functionality in " + file +
                           " will not be available until this issue is resolved.\n");
    EXPECT_EQ(run.status, 0);
}

TEST_F(ToolPluginTest, FileThatOthersMayChange_IsLoadedWithAWarningForRoot) {
    if (geteuid() != 0) {
        GTEST_SKIP() << "only root is warned";
    }
    const std::string file = WriteCommand("a.xml", "fig");
    std::filesystem::permissions(plugins_.Path(), std::filesystem::perms::all);
    const ChildRun run = List();
    EXPECT_EQ(run.out, TopListing("", "fig   Runs.\n"));
    EXPECT_EQ(run.err, "Warning: plugin " + file + " can be changed by others than root: " +
                           plugins_.Path() + " can be written by everybody\n");
}

TEST_F(ToolPluginTest, Directory_IsLoadedInTheOrderOfItsNames) {
    const std::string later = WriteCommand("b.xml", "pear");
    WriteCommand("a.xml", "pear");
    WriteCommand("B.xml", "fig");
    const std::string late = WriteCommand("c.xml", "fig");
    const ChildRun run = List();
    EXPECT_EQ(run.out, TopListing("", "fig   Runs.\npear  Runs.\n"));
    EXPECT_EQ(run.err, Skipped(later, AlreadyRegistered(later, "pear")) +
                           Skipped(late, AlreadyRegistered(late, "fig")));
    EXPECT_EQ(run.status, 1);
}

TEST_F(ToolPluginTest, Directory_ItsLib64FolderIsLoadedFirst) {
    WriteCommand("lib64/z.xml", "pear");
    const std::string later = WriteCommand("a.xml", "pear");
    const ChildRun run = List();
    EXPECT_EQ(run.out, TopListing("", "pear  Runs.\n"));
    EXPECT_EQ(run.err, Skipped(later, AlreadyRegistered(later, "pear")));
}

TEST_F(ToolPluginTest, Directory_HiddenPluginsAreLoadedOthersAreIgnored) {
    WriteCommand(".hidden.xml", "fig");
    WriteCommand("notes.txt", "pear");
    WriteCommand("backup.xml~", "plum");
    WriteCommand("upper.XML", "date");
    WriteCommand("deeper/a.xml", "lime");
    const ChildRun run = List();
    EXPECT_EQ(run.out, TopListing("", "fig   Runs.\n"));
    EXPECT_EQ(run.err, "");
}

TEST_F(ToolPluginTest, Directory_DescriptorsBehindASwitchAreLoaded) {
    WriteCommand("tandril-syslog.xml", "fig");
    WriteCommand("pelorquencmd.xml", "pear");
    EXPECT_EQ(List().out, TopListing("", "fig   Runs.\npear  Runs.\n"));
}

TEST_F(ToolPluginTest, Directory_BadFilesAreReportedAndSkipped) {
    WriteCommand("a.xml", "fig");
    const std::string outdated = plugins_.Write("b.xml", OutdatedDescriptor());
    const std::string broken = plugins_.Write("c.so", "");
    const std::string noPlugin = CopyLibrary(NO_ENTRY_POINT, "d.so");
    CopyLibrary(GOOD_PLUGIN, "e.so");
    const ChildRun run = List();
    EXPECT_EQ(run.out, TopListing("fixture  Commands of a shared library.\n", "fig   Runs.\n"));
    EXPECT_EQ(run.err, Skipped(outdated, OutdatedMessage(outdated)) +
                           Skipped(broken, "Unable to load plugin from " + broken + " : " + broken +
                                               ": file too short") +
                           Skipped(noPlugin, "Unable to get plugin registration point from " +
                                                 noPlugin + " : " + noPlugin +
                                                 ": undefined symbol: AutoCli_RegisterNamespaces"));
}

TEST_F(ToolPluginTest, Directories_AreLoadedInTheirOrderAndBeforeSinglePlugins) {
    const TestSupport::TempDirectory other;
    const std::string descriptor = Descriptor(CommandsElement(CommandElementAt("pear")));
    const std::string first = other.Write("z.xml", descriptor);
    const std::string second = WriteCommand("a.xml", "pear");
    const std::string single = plugins_.Write("single.txt.d/s.xml", descriptor);
    const ChildRun run = RunTool(
        {"--plugin", single, "--plugin-dir", other.Path(), "--plugin-dir", plugins_.Path()});
    EXPECT_EQ(run.out, TopListing("", "pear  Runs.\n"));
    EXPECT_EQ(run.err, Skipped(second, AlreadyRegistered(second, "pear")) +
                           "Unable to load plugin " + single + ": " +
                           AlreadyRegistered(single, "pear") + "\n");
}

TEST_F(ToolPluginTest, MissingDirectory_IsReportedOnceAndTheLineGoesOn) {
    const ChildRun run = RunTool({"--plugin-dir", "/nowhere", "--plugin-dir", plugins_.Path(),
                                  "tandril", "command", "list", "-c", "list"});
    EXPECT_EQ(run.out, "Namespace        Command  Description\n"
                       "---------------  -------  -----------\n"
                       "tandril.command  list     List all of the tandril commands.\n");
    EXPECT_EQ(run.err, "Unable to open directory /nowhere for plugin registration\n");
    EXPECT_EQ(run.status, 0);
}

TEST_F(ToolPluginTest, SharedNamespaces_WithDifferentDescriptionsAreRefused) {
    WriteNamespace("a.xml", "storage", "Disks.");
    WriteNamespace("b.xml", "storage", "Disks.");
    const std::string other = WriteNamespace("c.xml", "storage", "Tapes.");
    const ChildRun run = List();
    EXPECT_EQ(run.out, TopListing("storage  Disks.\n", ""));
    EXPECT_EQ(run.err,
              Skipped(other, "Error while trying to register the plugin " + other +
                                 " Duplicate top-level namespaces must have the same description: "
                                 "storage The functionality in " +
                                 other + " will not be available until this issue is resolved."));
}

} // namespace
