#include "Samples.h"

#include <gtest/gtest.h>
#include <sys/statvfs.h>

using HostPack::AddDevices;
using HostPack::Column;
using HostPack::FailsWith;
using HostPack::Machine;
using HostPack::ResultOf;
using HostPack::Words;

namespace {

const std::string kMounts = "/proc/self/mountinfo";

std::string Mount(const std::string& mountPoint, const std::string& options = "rw",
                  const std::string& superOptions = "rw") {
    return "22 27 0:21 / " + mountPoint + " " + options + ",relatime shared:1 - ext4 /dev/sda1 " +
           superOptions + "\n";
}

std::string KiloBytes(const struct statvfs& numbers, fsblkcnt_t blocks) {
    return std::to_string(blocks * numbers.f_frsize / 1024);
}

TEST(FilesystemsTest, List_SizesAreThoseOfTheMountPoint) {
    const Machine machine;
    machine.MakeDirectory("/data");
    machine.Write(kMounts, Mount("/data"));

    struct statvfs numbers {};

    ASSERT_EQ(statvfs((machine.Root() + "/data").c_str(), &numbers), 0);
    const auto run = machine.Ask({"filesystem", "list", "--all"});
    EXPECT_EQ(Column(run, "Size"), (Words{KiloBytes(numbers, numbers.f_blocks)}));
    EXPECT_EQ(Column(run, "Inodes"), (Words{std::to_string(numbers.f_files)}));
    EXPECT_EQ(Column(run, "Measured"), (Words{"true"}));
    EXPECT_EQ(Column(run, "Problem"), (Words{""}));
}

TEST(FilesystemsTest, List_MountPointThatCannotBeMeasured_RowSaysWhy) {
    const Machine machine;
    machine.Write(kMounts, Mount("/gone"));
    EXPECT_EQ(ResultOf(machine.Ask({"filesystem", "list"}))->ToString(),
              "{'Available' => '0', 'Free Inodes' => '0', 'Inodes' => '0', 'Measured' => 'false', "
              "'Mount Point' => '/gone', 'Problem' => 'No such file or directory', "
              "'Read Only' => 'false', 'Size' => '0', 'Source' => '/dev/sda1', 'Type' => 'ext4', "
              "'Used' => '0', 'Used Percent' => '0', }");
}

TEST(FilesystemsTest, List_OctalEscapes_AreDecoded) {
    const Machine machine;
    machine.Write(kMounts, Mount("/a\\040b\\011c\\012d\\134e\\0407\\400\\08"));
    EXPECT_EQ(Column(machine.Ask({"filesystem", "list"}), "Mount Point"),
              (Words{"/a b\tc\nd\\e 7\\400\\08"}));
}

TEST(FilesystemsTest, List_ReadOnlyMountOrFilesystem_IsReadOnly) {
    const Machine machine;
    machine.Write(kMounts, Mount("/a") + Mount("/b", "ro") + Mount("/c", "rw", "ro,errors=x"));
    EXPECT_EQ(Column(machine.Ask({"filesystem", "list"}), "Read Only"),
              (Words{"false", "true", "true"}));
}

TEST(FilesystemsTest, List_MountHiddenByALaterOne_IsLeftOut) {
    const Machine machine;
    machine.Write(kMounts, Mount("/a") + Mount("/b") + Mount("/a", "ro"));
    EXPECT_EQ(Column(machine.Ask({"filesystem", "list"}), "Read Only"), (Words{"false", "true"}));
    EXPECT_EQ(Column(machine.Ask({"filesystem", "list"}), "Mount Point"), (Words{"/b", "/a"}));
}

TEST(FilesystemsTest, List_EmptySource_IsAnEmptyText) {
    const Machine machine;
    machine.Write(kMounts, "22 27 0:21 / /a rw - tmpfs  rw,size=4k\n");
    EXPECT_EQ(Column(machine.Ask({"filesystem", "list"}), "Source"), (Words{""}));
    EXPECT_EQ(Column(machine.Ask({"filesystem", "list"}), "Type"), (Words{"tmpfs"}));
}

TEST(FilesystemsTest, List_Type_Chooses) {
    const Machine machine;
    machine.Write(kMounts, Mount("/a") + "22 27 0:21 / /b rw - fuse.x y rw\n");
    EXPECT_EQ(Column(machine.Ask({"filesystem", "list", "--type=xfs,fuse.x"}), "Mount Point"),
              (Words{"/b"}));
}

TEST(FilesystemsTest, List_MinimumUse_LeavesOutWhatIsEmptier) {
    const Machine machine;
    machine.Write(kMounts, Mount("/a"));
    EXPECT_EQ(Column(machine.Ask({"filesystem", "list", "--minimum-use=1"}), "Mount Point"),
              Words{});
}

TEST(FilesystemsTest, List_Within_InnermostMountAroundThePathIsChosen) {
    const Machine machine;
    machine.MakeDirectory("/data/it's $HOME {x}");
    machine.MakeDirectory("/database");
    machine.Write(kMounts, Mount("/") + Mount("/data") + Mount("/data/other"));
    const Words words{"filesystem", "list", "--within"};
    EXPECT_EQ(Column(machine.Ask(words, "/data/it's $HOME {x}"), "Mount Point"), (Words{"/data"}));
    EXPECT_EQ(Column(machine.Ask(words, "/data"), "Mount Point"), (Words{"/data"}));
    EXPECT_EQ(Column(machine.Ask(words, "/database"), "Mount Point"), (Words{"/"}));
}

TEST(FilesystemsTest, List_WithinPathThatIsNotThere_ErrorSaysWhatAndWhy) {
    const Machine machine;
    machine.Write(kMounts, Mount("/"));
    EXPECT_TRUE(FailsWith(machine.Ask({"filesystem", "list", "--within"}, "/no\nthing"),
                          "ERROR:Unable to find '/no\\nthing': No such file or directory\n"));
}

TEST(FilesystemsTest, List_LineThatIsNoMount_ErrorNamesTheFile) {
    const Machine machine;
    machine.Write(kMounts, "22 27 0:21 / /a rw\n");
    EXPECT_TRUE(FailsWith(machine.Ask({"filesystem", "list"}),
                          "ERROR:Unable to read /proc/self/mountinfo: unexpected contents\n"));
}

TEST(BlockDevicesTest, List_EveryFieldOfADisk) {
    const Machine machine;
    AddDevices(machine);
    EXPECT_EQ(ResultOf(machine.Ask({"device", "list", "--rotational=true"}))->ToString(),
              "{'Kind' => 'disk', 'Model' => 'DISK <& 7', 'Name' => 'sda', 'Parent' => '', "
              "'Partitions' => '2', 'Read Only' => 'false', 'Removable' => 'true', "
              "'Rotational' => 'true', 'Size' => '1000', }");
}

TEST(BlockDevicesTest, List_Partitions_FollowTheirDisk) {
    const Machine machine;
    AddDevices(machine);
    const auto run = machine.Ask({"device", "list", "--partitions"});
    EXPECT_EQ(Column(run, "Name"), (Words{"cciss/c0d0", "sda", "sda1", "sda2"}));
    EXPECT_EQ(Column(run, "Parent"), (Words{"", "", "sda", "sda"}));
    EXPECT_EQ(Column(run, "Kind"), (Words{"disk", "disk", "partition", "partition"}));
    EXPECT_EQ(Column(run, "Size"), (Words{"20", "1000", "600", "400"}));
    EXPECT_EQ(Column(run, "Read Only"), (Words{"false", "false", "true", "false"}));
}

TEST(BlockDevicesTest, List_All_DevicesWithoutAMediumAreListedToo) {
    const Machine machine;
    AddDevices(machine);
    EXPECT_EQ(Column(machine.Ask({"device", "list", "--all"}), "Name"),
              (Words{"cciss/c0d0", "loop0", "sda"}));
}

TEST(BlockDevicesTest, List_MinimumSize_LeavesOutWhatIsSmaller) {
    const Machine machine;
    AddDevices(machine);
    EXPECT_EQ(Column(machine.Ask({"device", "list", "--minimum-size=1000"}), "Name"),
              (Words{"sda"}));
    EXPECT_EQ(Column(machine.Ask({"device", "list", "--minimum-size=1001"}), "Name"), Words{});
}

TEST(BlockDevicesTest, List_LinkThatLeadsNowhere_DeviceIsTakenForGone) {
    const Machine machine;
    AddDevices(machine);
    machine.MakeLink("/sys/block/sdz", "../devices/sdz");
    EXPECT_EQ(Column(machine.Ask({"device", "list"}), "Name"), (Words{"cciss/c0d0", "sda"}));
}

TEST(BlockDevicesTest, List_NoSysfs_ErrorSaysWhatAndWhy) {
    const Machine machine;
    EXPECT_TRUE(FailsWith(machine.Ask({"device", "list"}),
                          "ERROR:Unable to read /sys/block: No such file or directory\n"));
}

} // namespace
