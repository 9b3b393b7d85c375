#include "Samples.h"

#include <arpa/inet.h>
#include <array>
#include <cstdio>

namespace HostPack {

namespace {

/// An address as the kernel prints it: 32-bit words in the machine's own byte order.
std::string InWords(int family, const char* address) {
    std::array<unsigned, 4> words{};
    inet_pton(family, address, words.data());
    std::string text;
    for (std::size_t i = 0; i < (family == AF_INET ? 1U : 4U); ++i) {
        std::array<char, 9> word{};
        std::snprintf(word.data(), word.size(), "%08X", words[i]);
        text += word.data();
    }
    return text;
}

std::string InWords(const char* address) {
    return InWords(AF_INET, address);
}

const std::string kSocketHeader = "  sl  local_address rem_address   st tx_queue rx_queue tr "
                                  "tm->when retrnsmt   uid  timeout inode\n";

std::string Socket(const std::string& local, const std::string& remote, const std::string& state) {
    return "   0: " + local + " " + remote + " " + state +
           " 0000000A:0000000B 00:00000000 00000000  1000        0 4711 1 0000000000000000 100\n";
}

} // namespace

void AddProcesses(const Machine& machine) {
    machine.AddAccounts();
    machine.AddProcess({.pid = 1, .name = "init", .residentKb = 100, .ticks = 20});
    machine.AddProcess({.pid = 20, .name = "kworker/0:1", .state = "I", .flags = 0x00200000});
    machine.AddProcess({.pid = 3,
                        .name = "editor",
                        .state = "R",
                        .parent = 1,
                        .uid = 1000,
                        .residentKb = 900,
                        .ticks = 40});
}

void AddDevices(const Machine& machine) {
    machine.Write("/sys/block/sda/size", "2000\n");
    machine.Write("/sys/block/sda/ro", "0\n");
    machine.Write("/sys/block/sda/removable", "1\n");
    machine.Write("/sys/block/sda/queue/rotational", "1\n");
    machine.Write("/sys/block/sda/device/model", "DISK <& 7   \n");
    machine.Write("/sys/block/sda/sda1/partition", "1\n");
    machine.Write("/sys/block/sda/sda1/size", "1200\n");
    machine.Write("/sys/block/sda/sda1/ro", "1\n");
    machine.Write("/sys/block/sda/sda2/partition", "2\n");
    machine.Write("/sys/block/sda/sda2/size", "800\n");
    machine.Write("/sys/block/loop0/size", "0\n");
    machine.Write("/sys/block/cciss!c0d0/size", "40\n");
}

void AddInterfaces(const Machine& machine) {
    const std::string ethernet = "/sys/class/net/eth0/";
    machine.Write(ethernet + "ifindex", "2\n");
    machine.Write(ethernet + "operstate", "up\n");
    machine.Write(ethernet + "flags", "0x1003\n");
    machine.Write(ethernet + "mtu", "1500\n");
    machine.Write(ethernet + "speed", "1000\n");
    machine.Write(ethernet + "address", "02:00:00:00:00:01\n");
    machine.Write(ethernet + "statistics/rx_bytes", "18446744073\n");
    machine.Write(ethernet + "statistics/tx_packets", "77\n");
    machine.Write("/sys/class/net/lo/ifindex", "1\n");
    machine.Write("/sys/class/net/lo/operstate", "unknown\n");
    machine.Write("/sys/class/net/lo/flags", "0x8\n");
    machine.Write("/sys/class/net/bonding_masters", "\n");
}

void AddRoutes(const Machine& machine) {
    machine.Write("/proc/net/route", kRouteHeader + "eth0\t00000000\t" + InWords("192.0.2.1") +
                                         "\t0003\t0\t0\t100\t00000000\t0\t0\t0   \n" + "eth1\t" +
                                         InWords("192.0.2.0") + "\t00000000\t0001\t0\t0\t0\t" +
                                         InWords("255.255.254.0") + "\t0\t0\t0\n");
    const std::string zero(32, '0');
    machine.Write("/proc/net/ipv6_route",
                  "20010db8000000000000000000000000 20 " + zero + " 00 " + zero +
                      " 00000100 00000001 00000000 00000001     eth0\n" + zero + " 00 " + zero +
                      " 00 fe800000000000000000000000000001"
                      " 00000400 00000001 00000000 00000003     eth0\n" +
                      zero + " 00 " + zero + " 00 " + zero +
                      " ffffffff 00000001 00000000 00200200       lo\n");
}

void AddSockets(const Machine& machine) {
    machine.AddAccounts();
    machine.Write("/proc/net/tcp",
                  kSocketHeader +
                      Socket(InWords("127.0.0.1") + ":0016", InWords("0.0.0.0") + ":0000", "0A") +
                      Socket(InWords("192.0.2.2") + ":FFFF", InWords("192.0.2.9") + ":0050", "01"));
    machine.Write("/proc/net/tcp6",
                  kSocketHeader + Socket(InWords(AF_INET6, "2001:db8::1") + ":0016",
                                         InWords(AF_INET6, "::") + ":0000", "0A"));
    machine.Write("/proc/net/udp", kSocketHeader + Socket(InWords("0.0.0.0") + ":0035",
                                                          InWords("0.0.0.0") + ":0000", "07"));
}

void AddModules(const Machine& machine) {
    machine.Write("/proc/modules", "ext4 1069056 2 - Live 0xffffffffc0a00000\n"
                                   "jbd2 180224 1 ext4, Live 0x0000000000000000\n"
                                   "shared 4096 2 a,b, Loading 0x0000000000000000 (OE)\n"
                                   "idle_one 16384 0 - Live 0x0000000000000000\n"
                                   "fixed 16384 - - Live 0x0000000000000000\n");
}

void AddParameters(const Machine& machine) {
    machine.Write("/proc/sys/kernel/ostype", "Linux\n");
    machine.Write("/proc/sys/net/ipv4/conf/eth0.100/forwarding", "1\n");
    machine.Write("/proc/sys/net/ipv4/tcp_rmem", "4096\t131072\t6291456\n");
    machine.MakeLink("/proc/sys/kernel/broken", "nowhere");
}

void AddPackages(const Machine& machine) {
    machine.Write("/var/lib/dpkg/status",
                  "Package: zsh\n"
                  "Status: install ok installed\n"
                  "Priority: optional\n"
                  "Section: shells\n"
                  "Installed-Size: 2000\n"
                  "Maintainer: Z <z@example.org>\n"
                  "Architecture: amd64\n"
                  "Source: zsh (5.9)\n"
                  "Version: 5.9-4\n"
                  "Depends: zsh-common (= 5.9-4), libc6 (>= 2.36) | libc6.1 ,\n"
                  " libtinfo6\n"
                  "Pre-Depends: dpkg\n"
                  "Conffiles:\n"
                  " /etc/zsh/zshrc 6f8d\n"
                  "Description: shell with <lots> of & \"features\"\n"
                  " First line: here.\n"
                  " .\n"
                  "  indented\n"
                  "Homepage: https://example.org/\n"
                  "\n"
                  "Package: libx\n"
                  "Status: install ok installed\n"
                  "Essential: yes\n"
                  "Priority: required\n"
                  "Section: libs\n"
                  "Installed-Size: 30\n"
                  "Architecture: i386\n"
                  "Version: 1\n"
                  "Description: x\n"
                  "\n\n"
                  "Package: libx\n"
                  "Status: install ok installed\n"
                  "Architecture: amd64\n"
                  "Version: 1\n"
                  "\n"
                  "Package: old\n"
                  "Status: deinstall ok config-files\n"
                  "Architecture: all\n"
                  "Version: 0\n");
}

void AddSystemFacts(const Machine& machine) {
    machine.Write("/proc/uptime", "180062.91 350000.11\n");
    machine.Write("/proc/loadavg", "2.05 0.70 11.00 3/456 7890\n");
    machine.Write("/proc/stat", "cpu  1 2\ncpu0 1\ncpu1 1\nintr 5\nbtime 1000000000\n");
    machine.Write("/proc/meminfo", "MemTotal:        1000 kB\nMemFree:          100 kB\n"
                                   "MemAvailable:     250 kB\nBuffers:           10 kB\n"
                                   "Cached:            20 kB\nShmem:              5 kB\n"
                                   "SwapTotal:         80 kB\nSwapFree:          70 kB\n"
                                   "HugePages_Total:     0\n");
    machine.Write("/proc/self/environ", std::string("EDITOR=vi\0TOKEN=it's}$x\0", 25));
}

void AddMounts(const Machine& machine) {
    machine.Write("/proc/self/mountinfo",
                  "22 27 0:21 / / rw,relatime shared:1 - ext4 /dev/sda1 rw\n"
                  "23 22 0:22 / /gone ro - fuse.x x rw\n");
}

void AddEverything(const Machine& machine) {
    AddProcesses(machine);
    AddSystemFacts(machine);
    AddMounts(machine);
    AddDevices(machine);
    AddInterfaces(machine);
    AddRoutes(machine);
    AddSockets(machine);
    AddModules(machine);
    AddParameters(machine);
    AddPackages(machine);
}

} // namespace HostPack
