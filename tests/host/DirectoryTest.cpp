#include <CppTools/autocli/Dispatcher.h>
#include <tests/support/DescriptorText.h>
#include <tests/support/FailingSystemCall.h>
#include <tests/support/StreamCapture.h>
#include <tests/support/TempDirectory.h>

#include <cerrno>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/syscall.h>

using TestSupport::PrintedBy;
using TestSupport::WithFailing;

namespace {

TEST(DirectoryTest, ReadFails_IsReportedEvenWhereAMissingDirectoryIsNot) {
    const TestSupport::TempDirectory directory;
    directory.Write("a.xml", TestSupport::NamespaceDescriptor("storage"));
    CppTools::AutoCli::Dispatcher dispatcher;
    const auto printed = PrintedBy([&] {
        WithFailing(SYS_getdents64, EIO,
                    [&] { dispatcher.AddExternalDirectoryInt(directory.Path(), false); });
    });
    EXPECT_EQ(printed.out, "");
    EXPECT_EQ(printed.err,
              "Unable to read all of directory " + directory.Path() + " for plugin registration\n");
    EXPECT_THAT(dispatcher.GetPluginNames(), testing::ElementsAre("Internal"));
}

TEST(DirectoryTest, EmptyDirectory_IsNoFailure) {
    const TestSupport::TempDirectory directory;
    CppTools::AutoCli::Dispatcher dispatcher;
    const auto printed =
        PrintedBy([&] { dispatcher.AddExternalDirectoryInt(directory.Path(), true); });
    EXPECT_EQ(printed.out + printed.err, "");
    EXPECT_THAT(dispatcher.GetPluginNames(), testing::ElementsAre("Internal"));
}

} // namespace
