#include <CppTools/autocli/Dispatcher.h>

#include <CppTools/autocli/RootNamespace.h>
#include <CppTools/host/FeatureStates.h>
#include <CppTools/metaobj/CppToolException.h>
#include <tests/support/DescriptorText.h>
#include <tests/support/NamedRow.h>
#include <tests/support/ScriptedPlugin.h>
#include <tests/support/StreamCapture.h>
#include <tests/support/TempDirectory.h>
#include <tests/support/Thrown.h>

#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

using CppTools::AutoCli::Dispatcher;
using CppTools::Host::Feature;
using testing::ElementsAre;
using TestSupport::kRowName;
using TestSupport::NamespaceDescriptor;
using TestSupport::OutdatedDescriptor;
using TestSupport::OutdatedMessage;
using TestSupport::PrintedBy;
using TestSupport::TempDirectory;
using TestSupport::ThrownBy;

namespace {

std::string LoadingError(const std::string& path, const std::string& reason) {
    return "Error loading plugin " + path + " skipping.  Error was: " + reason + "\n";
}

class DispatcherLoadingTest : public testing::Test {
  protected:
    void CopyLibrary(const std::string& library, const std::string& name) const {
        std::filesystem::create_directories(std::filesystem::path(directory / name).parent_path());
        std::filesystem::copy_file(library, directory / name);
    }

    /// Loads the directory without its subdirectory; returns what stands on standard error.
    std::string Load(bool reportMissing = true) {
        return PrintedBy(
                   [&] { dispatcher.AddExternalDirectoryInt(directory.Path(), reportMissing); })
            .err;
    }

    /// The names of the plug-ins below the directory, without the built-in one.
    std::vector<std::string> Loaded() const {
        std::vector<std::string> names = dispatcher.GetPluginNames();
        names.erase(names.begin());
        for (std::string& name : names) {
            name = name.substr(directory.Path().size() + 1);
        }
        return names;
    }

    bool HasTopLevel(const std::string& name) {
        return dispatcher.GetRootNamespace()->HasNamespaceNode(name);
    }

    const TempDirectory directory;
    Dispatcher dispatcher;
};

TEST_F(DispatcherLoadingTest, AddPlugin_Descriptor_IsInitialisedAndRegistered) {
    const std::string path = directory.Write("storage.xml", NamespaceDescriptor("storage"));
    dispatcher.AddPlugin(path);
    EXPECT_THAT(dispatcher.GetPluginNames(), ElementsAre("Internal", path));
    EXPECT_TRUE(HasTopLevel("storage"));
}

TEST_F(DispatcherLoadingTest, AddPlugin_SharedLibrary_IsInitialisedAndRegistered) {
    dispatcher.AddPlugin(REGISTERING_PLUGIN);
    EXPECT_THAT(dispatcher.GetPluginNames(), ElementsAre("Internal", REGISTERING_PLUGIN));
    EXPECT_TRUE(dispatcher.GetRootNamespace()->SubNamespace("library")->HasNamespaceNode("part"));
}

TEST_F(DispatcherLoadingTest, AddPlugin_KindIsChosenByTheEndOfTheName) {
    const std::string text = NamespaceDescriptor("storage");
    const std::string library = directory.Write("descriptor.xml.so", text);
    EXPECT_THAT(ThrownBy([&] { dispatcher.AddPlugin(library); }),
                testing::StartsWith("Unable to load plugin from " + library + " : "));
    dispatcher.AddPlugin(directory.Write("library.so.xml", text));
    EXPECT_THAT(Loaded(), ElementsAre("library.so.xml"));
}

TEST_F(DispatcherLoadingTest, AddPlugin_FailingInitialisation_IsThrownUnwrapped) {
    const std::string path = directory.Write("old.xml", OutdatedDescriptor());
    EXPECT_EQ(ThrownBy([&] { dispatcher.AddPlugin(path); }), OutdatedMessage(path));
    EXPECT_THAT(dispatcher.GetPluginNames(), ElementsAre("Internal"));
}

TEST_F(DispatcherLoadingTest, AddPlugin_FailingRegistration_IsThrownWrapped) {
    dispatcher.AddPlugin(directory.Write("one.xml", NamespaceDescriptor("storage", "One.")));
    const std::string path = directory.Write("two.xml", NamespaceDescriptor("storage", "Two."));
    EXPECT_EQ(ThrownBy([&] { dispatcher.AddPlugin(path); }),
              "Error while trying to register the plugin " + path +
                  " Duplicate top-level namespaces must have the same description: storage The "
                  "functionality in " +
                  path + " will not be available until this issue is resolved.");
    EXPECT_THAT(Loaded(), ElementsAre("one.xml"));
}

TEST_F(DispatcherLoadingTest, AddPlugin_LineEndsInsideTheName_DoNotMatter) {
    CopyLibrary(REGISTERING_PLUGIN, "b\nb.so");
    dispatcher.AddPlugin(directory / "b\nb.so");
    dispatcher.AddPlugin(directory.Write("a\na.xml", NamespaceDescriptor("storage")));
    EXPECT_THAT(Loaded(), ElementsAre("b\nb.so", "a\na.xml"));
}

struct IgnoredRow : TestSupport::NamedRow {
    std::string file;
};

class DispatcherIgnoredFileTest : public DispatcherLoadingTest,
                                  public testing::WithParamInterface<IgnoredRow> {};

TEST_P(DispatcherIgnoredFileTest, AddPlugin_NameOfNeitherKind_IsIgnored) {
    const std::string path = directory.Write(GetParam().file, OutdatedDescriptor());
    const auto printed = PrintedBy([&] { dispatcher.AddPlugin(path); });
    EXPECT_EQ(printed.out + printed.err, "");
    EXPECT_THAT(dispatcher.GetPluginNames(), ElementsAre("Internal"));
}

INSTANTIATE_TEST_SUITE_P(
    Files, DispatcherIgnoredFileTest,
    testing::Values(IgnoredRow{{"Text"}, "c.txt"}, IgnoredRow{{"NoExtension"}, "xml"},
                    IgnoredRow{{"UpperCaseDescriptor"}, "a.XML"},
                    IgnoredRow{{"UpperCaseLibrary"}, "a.SO"},
                    IgnoredRow{{"VersionedLibrary"}, "a.so.1"}, IgnoredRow{{"Backup"}, "a.xml~"},
                    IgnoredRow{{"LineEndBehind"}, "a.xml\n"}, IgnoredRow{{"NoDot"}, "axml"},
                    IgnoredRow{{"LibraryOnTheFirstLine"}, "a.so\nb"},
                    IgnoredRow{{"DescriptorOnTheFirstLine"}, "a.xml\nb"}),
    kRowName);

TEST_F(DispatcherLoadingTest, AddPlugin_NothingBeforeTheExtension_IsIgnored) {
    for (const char* path : {".xml", ".so", ""}) {
        EXPECT_NO_THROW(dispatcher.AddPlugin(path)) << path;
    }
    EXPECT_THAT(dispatcher.GetPluginNames(), ElementsAre("Internal"));
}

TEST_F(DispatcherLoadingTest, Directory_LoadsLibrariesAndDescriptorsInNameOrder) {
    CopyLibrary(REGISTERING_PLUGIN, "b.so");
    directory.Write("a.xml", NamespaceDescriptor("storage"));
    directory.Write("c.txt", "no plug-in");
    EXPECT_EQ(Load(), "");
    EXPECT_THAT(Loaded(), ElementsAre("a.xml", "b.so"));
}

TEST_F(DispatcherLoadingTest, Directory_OrderIsByteWise) {
    for (const char* name : {"b", "a", "B", "aa", "a-b", "1"}) {
        directory.Write(std::string(name) + ".xml", NamespaceDescriptor("storage"));
    }
    EXPECT_EQ(Load(), "");
    EXPECT_THAT(Loaded(), ElementsAre("1.xml", "B.xml", "a-b.xml", "a.xml", "aa.xml", "b.xml"));
}

TEST_F(DispatcherLoadingTest, Directory_HiddenFiles_AreLoaded) {
    CopyLibrary(REGISTERING_PLUGIN, ".x.so");
    directory.Write("..y.xml", NamespaceDescriptor("storage"));
    directory.Write(".xml", NamespaceDescriptor("network"));
    EXPECT_EQ(Load(), "");
    EXPECT_THAT(Loaded(), ElementsAre("..y.xml", ".x.so", ".xml"));
}

TEST_F(DispatcherLoadingTest, Directory_SubdirectoriesAreNotEntered) {
    directory.Write("inner/a.xml", NamespaceDescriptor("storage"));
    EXPECT_EQ(Load(), "");
    EXPECT_THAT(Loaded(), testing::IsEmpty());
}

TEST_F(DispatcherLoadingTest, Directory_SubdirectoryNamedLikeAPlugIn_IsTriedAndReported) {
    const std::string inner = directory.MakeDirectory("inner.xml");
    directory.Write("later.xml", NamespaceDescriptor("storage"));
    EXPECT_THAT(Load(), testing::EndsWith(LoadingError(
                            inner, "Unable to handle XML Plugin " + inner +
                                       ".  There was an error while parsing: Unable to parse XML "
                                       "descriptor: " +
                                       inner)));
    EXPECT_THAT(Loaded(), ElementsAre("later.xml"));
}

TEST_F(DispatcherLoadingTest, Directory_FailingFiles_AreReportedAndSkipped) {
    directory.Write("a.xml", NamespaceDescriptor("storage", "One."));
    const std::string clash = directory.Write("b.xml", NamespaceDescriptor("storage", "Two."));
    const std::string old = directory.Write("c.xml", OutdatedDescriptor());
    directory.Write("d.xml", NamespaceDescriptor("network"));
    EXPECT_EQ(Load(),
              LoadingError(clash, "Error while trying to register the plugin " + clash +
                                      " Duplicate top-level namespaces must have the same "
                                      "description: storage The functionality in " +
                                      clash +
                                      " will not be available until this issue is resolved.") +
                  LoadingError(old, OutdatedMessage(old)));
    EXPECT_THAT(Loaded(), ElementsAre("a.xml", "d.xml"));
}

TEST_F(DispatcherLoadingTest, Directory_OtherException_EndsTheScanAndPasses) {
    directory.Write("a.xml", NamespaceDescriptor("storage"));
    CopyLibrary(FAILING_PLUGIN, "b.so");
    directory.Write("c.xml", NamespaceDescriptor("network"));
    EXPECT_THROW(dispatcher.AddExternalDirectoryInt(directory.Path(), true), std::runtime_error);
    EXPECT_THAT(Loaded(), ElementsAre("a.xml"));
}

TEST_F(DispatcherLoadingTest, MissingDirectory_IsReportedOnlyWhenAskedFor) {
    const std::string missing = directory / "missing";
    const auto reported = PrintedBy([&] { dispatcher.AddExternalDirectoryInt(missing, true); });
    EXPECT_EQ(reported.out, "");
    EXPECT_EQ(reported.err, "Unable to open directory " + missing + " for plugin registration\n");
    const auto silent = PrintedBy([&] { dispatcher.AddExternalDirectoryInt(missing, false); });
    EXPECT_EQ(silent.out + silent.err, "");
}

TEST_F(DispatcherLoadingTest, FileInPlaceOfADirectory_CannotBeOpened) {
    const std::string file = directory.Write("a.xml", NamespaceDescriptor("storage"));
    EXPECT_EQ(PrintedBy([&] { dispatcher.AddExternalDirectory(file); }).err,
              "Unable to open directory " + file + " for plugin registration\n");
    EXPECT_THAT(dispatcher.GetPluginNames(), ElementsAre("Internal"));
}

TEST_F(DispatcherLoadingTest, Names_AreTheDirectoryASlashAndTheFile) {
    directory.Write("a.xml", NamespaceDescriptor("storage"));
    dispatcher.AddExternalDirectoryInt(directory.Path() + "/", true);
    EXPECT_THAT(dispatcher.GetPluginNames(), ElementsAre("Internal", directory.Path() + "//a.xml"));
}

TEST_F(DispatcherLoadingTest, AddExternalDirectory_LoadsLib64First) {
    directory.Write("a.xml", NamespaceDescriptor("storage"));
    directory.Write("lib64/z.xml", NamespaceDescriptor("network"));
    const auto printed = PrintedBy([&] { dispatcher.AddExternalDirectory(directory.Path()); });
    EXPECT_EQ(printed.out + printed.err, "");
    EXPECT_THAT(Loaded(), ElementsAre("lib64/z.xml", "a.xml"));
}

TEST_F(DispatcherLoadingTest, AddExternalDirectory_WithoutLib64_SaysNothing) {
    directory.Write("a.xml", NamespaceDescriptor("storage"));
    const auto printed = PrintedBy([&] { dispatcher.AddExternalDirectory(directory.Path()); });
    EXPECT_EQ(printed.out + printed.err, "");
    EXPECT_THAT(Loaded(), ElementsAre("a.xml"));
}

TEST_F(DispatcherLoadingTest, AddExternalDirectory_Missing_IsReportedOnce) {
    const std::string missing = directory / "missing";
    EXPECT_EQ(PrintedBy([&] { dispatcher.AddExternalDirectory(missing); }).err,
              "Unable to open directory " + missing + " for plugin registration\n");
}

TEST_F(DispatcherLoadingTest, DefaultDirectories_AreTheTwoOfTheTool) {
    EXPECT_THAT(Dispatcher::GetDefaultDirectories(),
                ElementsAre("/usr/lib/corvane/tandril", "/usr/lib/corvane/tandril/ext"));
}

TEST_F(DispatcherLoadingTest, AddDefaultDirectories_ReportsTheMissingOnesInOrder) {
    std::string expected;
    for (const std::string& name : Dispatcher::GetDefaultDirectories()) {
        if (!std::filesystem::is_directory(name)) {
            expected += "Unable to open directory " + name + " for plugin registration\n";
        }
    }
    EXPECT_EQ(PrintedBy([&] { dispatcher.AddDefaultDirectories(); }).err, expected);
}

/// Switches that a test sets by hand.
class ManualSource : public CppTools::Host::FeatureStateSource {
  public:
    ManualSource(bool syslog, bool pelorquen) : syslog_(syslog), pelorquen_(pelorquen) {}

    void Initialize() override {}

    bool IsOn(Feature feature) const override {
        return feature == Feature::BuiltInSyslog ? syslog_ : pelorquen_;
    }

  private:
    bool syslog_;
    bool pelorquen_;
};

class DispatcherFeatureTest : public DispatcherLoadingTest {
  protected:
    DispatcherFeatureTest() {
        for (const char* name : {"tandril-syslog.xml", "pelorquencmd.xml", "other.xml",
                                 ".tandril-syslog.xml", ".pelorquencmd.xml"}) {
            directory.Write(name, NamespaceDescriptor("storage"));
        }
    }

    ~DispatcherFeatureTest() override { CppTools::Host::SetFeatureStateSource(nullptr); }

    static void Switch(bool syslog, bool pelorquen) {
        CppTools::Host::SetFeatureStateSource(std::make_shared<ManualSource>(syslog, pelorquen));
    }
};

TEST_F(DispatcherFeatureTest, WithoutAHostSource_BothDescriptorsLoad) {
    EXPECT_EQ(Load(), "");
    EXPECT_THAT(Loaded(), ElementsAre(".pelorquencmd.xml", ".tandril-syslog.xml", "other.xml",
                                      "pelorquencmd.xml", "tandril-syslog.xml"));
}

TEST_F(DispatcherFeatureTest, BuiltInSyslogOn_SkipsItsDescriptorWithoutAWord) {
    Switch(true, true);
    EXPECT_EQ(Load(), "");
    EXPECT_THAT(Loaded(), ElementsAre(".pelorquencmd.xml", ".tandril-syslog.xml", "other.xml",
                                      "pelorquencmd.xml"));
}

TEST_F(DispatcherFeatureTest, PelorquenCommandsOff_SkipsItsDescriptorWithoutAWord) {
    Switch(false, false);
    EXPECT_EQ(Load(), "");
    EXPECT_THAT(Loaded(), ElementsAre(".pelorquencmd.xml", ".tandril-syslog.xml", "other.xml",
                                      "tandril-syslog.xml"));
}

TEST_F(DispatcherFeatureTest, Lib64_FollowsTheSwitchesToo) {
    Switch(true, false);
    directory.Write("lib64/tandril-syslog.xml", NamespaceDescriptor("storage"));
    directory.Write("lib64/pelorquencmd.xml", NamespaceDescriptor("storage"));
    dispatcher.AddExternalDirectory(directory.Path());
    EXPECT_THAT(Loaded(), ElementsAre(".pelorquencmd.xml", ".tandril-syslog.xml", "other.xml"));
}

TEST_F(DispatcherFeatureTest, AddPlugin_LoadsWhatTheSwitchesWouldSkip) {
    Switch(true, false);
    dispatcher.AddPlugin(directory / "tandril-syslog.xml");
    dispatcher.AddPlugin(directory / "pelorquencmd.xml");
    EXPECT_THAT(Loaded(), ElementsAre("tandril-syslog.xml", "pelorquencmd.xml"));
}

} // namespace
