#include "Tool.h"

#include <algorithm>
#include <arpa/inet.h>
#include <filesystem>
#include <gtest/gtest.h>
#include <ifaddrs.h>
#include <memory>
#include <mntent.h>
#include <netinet/in.h>

using HostPack::BytesOf;
using HostPack::JsonColumn;
using HostPack::JsonOf;
using HostPack::RunTool;
using HostPack::Words;

namespace {

Words SortedTexts(const nlohmann::json& list, const std::string& field) {
    Words texts;
    for (const auto& text : JsonColumn(list, field)) {
        texts.push_back(BytesOf(text));
    }
    std::sort(texts.begin(), texts.end());
    return texts;
}

Words MountPoints() {
    const std::unique_ptr<std::FILE, int (*)(std::FILE*)> table(setmntent("/proc/self/mounts", "r"),
                                                                endmntent);
    Words points;
    while (const mntent* const entry = getmntent(table.get())) {
        points.emplace_back(entry->mnt_dir);
    }
    std::sort(points.begin(), points.end());
    return points;
}

Words AddressesOfVersion4() {
    ifaddrs* first = nullptr;
    if (getifaddrs(&first) != 0) {
        throw std::system_error(errno, std::generic_category(), "getifaddrs");
    }
    const std::unique_ptr<ifaddrs, void (*)(ifaddrs*)> all(first, freeifaddrs);
    Words addresses;
    for (const ifaddrs* entry = all.get(); entry != nullptr; entry = entry->ifa_next) {
        if (entry->ifa_addr != nullptr && entry->ifa_addr->sa_family == AF_INET) {
            const auto* const address = reinterpret_cast<const sockaddr_in*>(entry->ifa_addr);
            char text[INET_ADDRSTRLEN] = "";
            addresses.emplace_back(inet_ntop(AF_INET, &address->sin_addr, text, sizeof text));
        }
    }
    std::sort(addresses.begin(), addresses.end());
    return addresses;
}

TEST(LiveForeignToolsTest, Mounts_AreThoseOfTheKernel) {
    EXPECT_EQ(SortedTexts(JsonOf(RunTool("storage mount list")), "Mount Point"), MountPoints());
}

TEST(LiveForeignToolsTest, MountOfProc_IsTheOneWithinWhichItsFilesAre) {
    const auto list = JsonOf(RunTool("storage mount list", {"--within=/proc/self/status"}));
    ASSERT_EQ(list.size(), 1U);
    EXPECT_EQ(list[0]["Mount Point"], "/proc");
    EXPECT_EQ(list[0]["Type"], "proc");
}

TEST(LiveForeignToolsTest, Addresses_AreThoseOfTheSystem) {
    EXPECT_EQ(SortedTexts(JsonOf(RunTool("network address list", {"--family=4"})), "Address"),
              AddressesOfVersion4());
}

TEST(LiveForeignToolsTest, Addresses_OfAnInterfaceThatIsNotThere_AreAnError) {
    const auto run = RunTool("network address list", {"--interface=none77"});
    EXPECT_TRUE(run.err.ends_with("Errors: \n'ip' failed with status 1\n")) << run.err;
    EXPECT_EQ(run.status, 1);
}

TEST(LiveForeignToolsTest, Neighbours_AreBehindInterfacesOfTheSystem) {
    const Words interfaces = SortedTexts(JsonOf(RunTool("network interface list")), "Name");
    for (const auto& name : SortedTexts(JsonOf(RunTool("network neighbour list")), "Interface")) {
        EXPECT_TRUE(std::binary_search(interfaces.begin(), interfaces.end(), name)) << name;
    }
}

TEST(LiveForeignToolsTest, Volumes_HoldEveryDiskOfTheKernel) {
    const Words volumes = SortedTexts(JsonOf(RunTool("storage volume list", {"--all"})), "Name");
    for (const auto& disk : std::filesystem::directory_iterator("/sys/block")) {
        std::string name = disk.path().filename();
        std::replace(name.begin(), name.end(), '!', '/');
        EXPECT_TRUE(std::binary_search(volumes.begin(), volumes.end(), name)) << name;
    }
}

} // namespace
