#include "DevkitTool.h"

#include <devkit/XmlFile.h>

#include <gtest/gtest.h>

namespace {

using DevkitTest::RunDevkit;

class NewPlugin : public testing::Test {
  protected:
    TestSupport::ChildRun Run(const std::vector<std::string>& words) {
        return RunDevkit(words, folder_);
    }

    TestSupport::ChildRun New(const std::string& kind, const std::string& name,
                              const std::string& directory = ".") {
        return Run({"plugin", "new", "--kind", kind, "--name", name, "--directory", directory});
    }

    TestSupport::TempDirectory folder_;
};

TEST_F(NewPlugin, Descriptor_HasNothingToFindAndWorks) {
    const auto run = Run({"plugin", "new", "--kind", "descriptor", "--name", "fooBar2"});
    EXPECT_EQ(run.err, "");
    EXPECT_EQ(run.out, "File         Purpose\n"
                       "-----------  -------\n"
                       "fooBar2.xml  the descriptor\n");
    const auto check = Run({"plugin", "descriptor", "check", "--file", "fooBar2.xml", "--strict"});
    EXPECT_EQ(check.err, "");
    EXPECT_EQ(check.status, 0);
    const auto call =
        Run({"--plugin", "fooBar2.xml", "fooBar2", "show", "--colour", "red", "--count", "3"});
    EXPECT_EQ(call.err, "");
    EXPECT_EQ(call.out, "Name  Count\n"
                        "----  -----\n"
                        "red       3  \n");
}

TEST_F(NewPlugin, Library_ComesWithWhatBuildsIt) {
    folder_.MakeDirectory("disks");
    const auto run = New("library", "disks", "disks");
    EXPECT_EQ(run.err, "");
    EXPECT_EQ(run.out, "File            Purpose\n"
                       "--------------  -------\n"
                       "disks.cpp       the library\n"
                       "CMakeLists.txt  builds it with CMake\n"
                       "Makefile        builds it with make\n");
    for (const char* file : {"disks/disks.cpp", "disks/CMakeLists.txt", "disks/Makefile"}) {
        EXPECT_EQ(Devkit::ReadFile(folder_ / file).find("@NAME@"), std::string::npos) << file;
    }
}

TEST_F(NewPlugin, FileThatExists_IsNamedAndNothingIsWritten) {
    folder_.Write("Makefile", "mine");
    const auto run = New("library", "disks");
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(
        run.err,
        "Errors: \nError on command plugin new : ./Makefile exists already; nothing was written\n");
    EXPECT_FALSE(std::filesystem::exists(folder_ / "disks.cpp"));
    EXPECT_EQ(Devkit::ReadFile(folder_ / "Makefile"), "mine");
}

TEST_F(NewPlugin, LinkToNothing_IsAFileThatExists) {
    std::filesystem::create_symlink("nowhere", folder_ / "disks.xml");
    EXPECT_EQ(New("descriptor", "disks").err, "Errors: \nError on command plugin new : ./disks.xml "
                                              "exists already; nothing was written\n");
}

TEST_F(NewPlugin, BadOrTakenName_IsRefused) {
    EXPECT_EQ(New("descriptor", "../Disks").err,
              "Errors: \nInvalid name '../Disks': use letters and digits as in fooBar, beginning "
              "with a small one\n");
    EXPECT_EQ(New("descriptor", "plugin").err,
              "Errors: \nThe tool has a namespace 'plugin' already\n");
}

TEST_F(NewPlugin, MissingDirectory_IsNamed) {
    EXPECT_EQ(
        New("descriptor", "disks", "none").err,
        "Errors: \nError on command plugin new : Unable to write none/disks.xml: No such file or "
        "directory\n");
}

} // namespace
