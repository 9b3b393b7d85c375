#pragma once

#include <string>
#include <string_view>

/// Internet addresses in the notations that the kernel prints below /proc/net. All functions
/// throw HostError for text that is none.
namespace HostFacts {

/// One or four 32-bit words in the machine's own byte order: /proc/net/tcp, tcp6, route.
std::string AddressOfWords(std::string_view hex);

/// Sixteen bytes in the order of the network: /proc/net/ipv6_route.
std::string AddressOfBytes(std::string_view hex);

/// How many bits of an IPv4 mask, written as one word, are set.
long PrefixLength(std::string_view hexMask);

/// A hexadecimal number such as a port or a set of flags.
long HexValue(std::string_view hex);

} // namespace HostFacts
