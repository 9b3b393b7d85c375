#include "InterfaceReader.h"

#include "HostError.h"
#include "TextTools.h"

#include <arpa/inet.h>
#include <array>
#include <bit>
#include <cerrno>
#include <ifaddrs.h>
#include <map>
#include <memory>
#include <net/if.h>
#include <netinet/in.h>

namespace HostFacts {

namespace {

const char kDirectory[] = "/sys/class/net/";

using AddressesByInterface = std::map<std::string, std::vector<InterfaceAddress>>;

template <typename Address>
long CountBits(const Address& mask) {
    long count = 0;
    for (const auto byte : std::bit_cast<std::array<unsigned char, sizeof(Address)>>(mask)) {
        count += std::popcount(byte);
    }
    return count;
}

template <typename Address>
InterfaceAddress MakeAddress(long family, const Address& address, const Address* mask) {
    std::array<char, INET6_ADDRSTRLEN> text{};
    inet_ntop(family == 4 ? AF_INET : AF_INET6, &address, text.data(), text.size());
    return {text.data(), mask != nullptr ? CountBits(*mask) : 0, family};
}

void Append(AddressesByInterface& addresses, const ifaddrs& entry) {
    if (entry.ifa_addr == nullptr) {
        return;
    }
    std::vector<InterfaceAddress>& ofInterface = addresses[entry.ifa_name];
    if (entry.ifa_addr->sa_family == AF_INET) {
        const auto* address = reinterpret_cast<const sockaddr_in*>(entry.ifa_addr);
        const auto* mask = reinterpret_cast<const sockaddr_in*>(entry.ifa_netmask);
        ofInterface.push_back(
            MakeAddress(4, address->sin_addr, mask != nullptr ? &mask->sin_addr : nullptr));
    } else if (entry.ifa_addr->sa_family == AF_INET6) {
        const auto* address = reinterpret_cast<const sockaddr_in6*>(entry.ifa_addr);
        const auto* mask = reinterpret_cast<const sockaddr_in6*>(entry.ifa_netmask);
        ofInterface.push_back(
            MakeAddress(6, address->sin6_addr, mask != nullptr ? &mask->sin6_addr : nullptr));
    }
}

/// The addresses are no files; a tree that stands in for the machine has none.
AddressesByInterface AskForAddresses(const HostFiles& files) {
    AddressesByInterface addresses;
    if (!files.IsLive()) {
        return addresses;
    }
    ifaddrs* first = nullptr;
    if (getifaddrs(&first) != 0) {
        const int reason = errno;
        throw HostError("Unable to get the addresses of the network interfaces", reason);
    }
    const std::unique_ptr<ifaddrs, void (*)(ifaddrs*)> owner(first, freeifaddrs);
    for (const ifaddrs* entry = first; entry != nullptr; entry = entry->ifa_next) {
        Append(addresses, *entry);
    }
    return addresses;
}

Interface Read(const HostFiles& files, const std::string& name,
               const AddressesByInterface& addresses) {
    const std::string directory = kDirectory + name + "/";
    const std::string flagsText = files.FirstLine(directory + "flags");
    const auto flags = HexNumber(flagsText.substr(flagsText.starts_with("0x") ? 2 : 0)).value_or(0);
    Interface interface;
    interface.name = name;
    interface.index = LeadingNumber(files.Read(directory + "ifindex")).value_or(0);
    interface.state = files.FirstLine(directory + "operstate");
    interface.isUp = (flags & IFF_UP) != 0;
    interface.isLoopback = (flags & IFF_LOOPBACK) != 0;
    interface.mtu = files.Number(directory + "mtu", 0);
    interface.speed = files.Number(directory + "speed", -1);
    interface.hardwareAddress = files.FirstLine(directory + "address");
    if (const auto found = addresses.find(name); found != addresses.end()) {
        interface.addresses = found->second;
    }
    return interface;
}

} // namespace

std::vector<Interface> ReadInterfaces(const HostFiles& files) {
    const AddressesByInterface addresses = AskForAddresses(files);
    std::vector<Interface> interfaces;
    for (const std::string& name : files.Names(kDirectory)) {
        try {
            interfaces.push_back(Read(files, name, addresses));
        } catch (const HostError& error) {
            // Gone meanwhile, or one of the files that stand beside the interfaces here.
            if (!error.IsGone()) {
                throw;
            }
        }
    }
    return interfaces;
}

Interface ReadInterface(const HostFiles& files, const std::string& name) {
    if (name.empty() || name == "." || name == ".." || name.find('/') != std::string::npos) {
        throw HostError("'" + name + "' is not the name of a network interface");
    }
    return Read(files, name, AskForAddresses(files));
}

long InterfaceCounter(const HostFiles& files, const std::string& interface,
                      const std::string& counter) {
    return files.Number(kDirectory + interface + "/statistics/" + counter, 0);
}

} // namespace HostFacts
