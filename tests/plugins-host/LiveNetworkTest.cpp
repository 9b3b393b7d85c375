#include "Tool.h"

#include <arpa/inet.h>
#include <filesystem>
#include <gtest/gtest.h>
#include <memory>
#include <net/if.h>
#include <netinet/in.h>
#include <set>
#include <sys/socket.h>
#include <sys/stat.h>
#include <unistd.h>

using HostPack::BytesOf;
using HostPack::FileOf;
using HostPack::JsonColumn;
using HostPack::JsonOf;
using HostPack::RowWith;
using HostPack::RunTool;

namespace {

/// A socket that waits for connections on a port of the system's choice.
class ListeningSocket {
  public:
    ListeningSocket() : number_(socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        socklen_t size = sizeof address;
        auto* const generic = reinterpret_cast<sockaddr*>(&address);
        if (bind(number_, generic, size) != 0 || listen(number_, 1) != 0 ||
            getsockname(number_, generic, &size) != 0) {
            throw std::system_error(errno, std::generic_category(), "listen");
        }
        port_ = ntohs(address.sin_port);
    }

    ListeningSocket(const ListeningSocket&) = delete;
    ListeningSocket& operator=(const ListeningSocket&) = delete;

    ~ListeningSocket() { close(number_); }

    int Port() const { return port_; }

    ino_t Inode() const {
        struct stat facts {};

        fstat(number_, &facts);
        return facts.st_ino;
    }

  private:
    int number_;
    int port_ = 0;
};

std::string FirstWord(const std::string& path) {
    const std::string text = FileOf(path);
    return text.substr(0, text.find('\n'));
}

long CountLines(const std::string& text) {
    return std::count(text.begin(), text.end(), '\n');
}

TEST(LiveNetworkTest, Interfaces_AreThoseOfTheSystem) {
    const std::unique_ptr<struct if_nameindex, void (*)(struct if_nameindex*)> all(
        if_nameindex(), if_freenameindex);
    std::set<std::string> names;
    for (const auto* entry = all.get(); entry->if_index != 0; ++entry) {
        names.insert(entry->if_name);
    }
    std::set<std::string> listed;
    for (const auto& name : JsonColumn(JsonOf(RunTool("network interface list")), "Name")) {
        listed.insert(BytesOf(name));
    }
    EXPECT_EQ(listed, names);
}

TEST(LiveNetworkTest, Loopback_IsAsSysfsSaysIt) {
    const auto loopback = JsonOf(RunTool("network interface get", {"--name=lo"}));
    EXPECT_EQ(loopback["Index"], if_nametoindex("lo"));
    EXPECT_EQ(loopback["MTU"], std::stol(FirstWord("/sys/class/net/lo/mtu")));
    EXPECT_EQ(loopback["State"], FirstWord("/sys/class/net/lo/operstate"));
    EXPECT_EQ(loopback["Loopback"], true);
}

TEST(LiveNetworkTest, Loopback_HasItsAddressWhenItIsUp) {
    const auto loopback = RowWith(JsonOf(RunTool("network interface list")), "Name", "lo");
    const auto detail = JsonOf(RunTool("network interface get", {"--name=lo"}));
    if (loopback["Up"]) {
        EXPECT_EQ(loopback["Addresses"][0], "127.0.0.1/8");
        EXPECT_EQ(detail["Addresses"][0]["Address"], "127.0.0.1");
        EXPECT_EQ(detail["Addresses"][0]["Prefix Length"], 8);
        EXPECT_EQ(detail["Addresses"][0]["Family"], 4);
    } else {
        EXPECT_TRUE(loopback["Addresses"].empty());
    }
}

TEST(LiveNetworkTest, Routes_AreAsManyAsTheTableHasLines) {
    const auto list = JsonOf(RunTool("network route list", {"--family=4", "--all"}));
    EXPECT_EQ(list.size(), static_cast<std::size_t>(CountLines(FileOf("/proc/net/route")) - 1));
}

TEST(LiveNetworkTest, Connections_ListeningSocket_IsListedWithItsInode) {
    const ListeningSocket socket;
    const auto list = JsonOf(RunTool("network connection list",
                                     {"--listening", "--port", std::to_string(socket.Port())}));
    const auto row = RowWith(list, "Inode", socket.Inode());
    EXPECT_EQ(row["Protocol"], "tcp");
    EXPECT_EQ(row["Family"], 4);
    EXPECT_EQ(row["State"], "listening");
    EXPECT_EQ(row["Local Address"], "127.0.0.1");
    EXPECT_EQ(row["Local Port"], socket.Port());
    EXPECT_EQ(row["Remote Port"], 0);
}

} // namespace
