#pragma once

#include "HostFiles.h"

#include <string>
#include <vector>

namespace HostFacts {

struct InterfaceAddress {
    std::string address;
    long prefixLength = 0;
    long family = 0; // 4 or 6
};

/// A network interface as /sys/class/net shows it, with its addresses.
struct Interface {
    std::string name;
    long index = 0;
    std::string state;
    bool isUp = false;
    bool isLoopback = false;
    long mtu = 0;
    /// Mbit/s; -1 when the interface does not say.
    long speed = -1;
    std::string hardwareAddress;
    std::vector<InterfaceAddress> addresses;
};

/// In byte order of the names. An interface that is taken away meanwhile is left out. Throws
/// HostError.
std::vector<Interface> ReadInterfaces(const HostFiles& files);

/// Throws HostError when there is no such interface.
Interface ReadInterface(const HostFiles& files, const std::string& name);

/// One of the interface's counters, such as "rx_bytes".
long InterfaceCounter(const HostFiles& files, const std::string& interface,
                      const std::string& counter);

} // namespace HostFacts
