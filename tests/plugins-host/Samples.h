#pragma once

#include "Machine.h"

#include <string>

/// What the made-up machines of several tests have.
namespace HostPack {

/// Process 1 of root, 3 of ada, and 20, a thread of the kernel; the accounts.
void AddProcesses(const Machine& machine);

/// Uptime, load, memory and the environment.
void AddSystemFacts(const Machine& machine);

/// The root, and a mount point that is not there.
void AddMounts(const Machine& machine);

/// A disk with two partitions, a small one, and a loop device without a medium.
void AddDevices(const Machine& machine);

void AddInterfaces(const Machine& machine);

inline const std::string kRouteHeader = "Iface\tDestination\tGateway \tFlags\tRefCnt\tUse\tMetric\t"
                                        "Mask\t\tMTU\tWindow\tIRTT\n";

/// Two routes of IPv4, three of IPv6, the last one the kernel's own.
void AddRoutes(const Machine& machine);

/// Three sockets of TCP, one of UDP, no table for UDP over IPv6; the accounts.
void AddSockets(const Machine& machine);

void AddModules(const Machine& machine);
void AddParameters(const Machine& machine);
void AddPackages(const Machine& machine);

void AddEverything(const Machine& machine);

} // namespace HostPack
