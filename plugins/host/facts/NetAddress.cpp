#include "NetAddress.h"

#include "HostError.h"
#include "TextTools.h"

#include <arpa/inet.h>
#include <array>
#include <bit>
#include <cstdint>
#include <cstring>
#include <vector>

namespace HostFacts {

namespace {

constexpr std::size_t kBytesOfIp4 = 4;
constexpr std::size_t kBytesOfIp6 = 16;

std::string AddressText(const std::vector<unsigned char>& bytes) {
    std::array<char, INET6_ADDRSTRLEN> text{};
    const int family = bytes.size() == kBytesOfIp4 ? AF_INET : AF_INET6;
    inet_ntop(family, bytes.data(), text.data(), text.size());
    return text.data();
}

} // namespace

std::string AddressOfWords(std::string_view hex) {
    if (hex.size() != 2 * kBytesOfIp4 && hex.size() != 2 * kBytesOfIp6) {
        throw HostError("'" + std::string(hex) + "' is not an internet address");
    }
    std::vector<unsigned char> bytes(hex.size() / 2);
    for (std::size_t start = 0; start < bytes.size(); start += sizeof(std::uint32_t)) {
        const auto word = static_cast<std::uint32_t>(HexValue(hex.substr(start * 2, 8)));
        std::memcpy(bytes.data() + start, &word, sizeof word);
    }
    return AddressText(bytes);
}

std::string AddressOfBytes(std::string_view hex) {
    if (hex.size() != 2 * kBytesOfIp6) {
        throw HostError("'" + std::string(hex) + "' is not an internet address");
    }
    std::vector<unsigned char> bytes(kBytesOfIp6);
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        bytes[i] = static_cast<unsigned char>(HexValue(hex.substr(i * 2, 2)));
    }
    return AddressText(bytes);
}

long PrefixLength(std::string_view hexMask) {
    return std::popcount(static_cast<std::uint32_t>(HexValue(hexMask)));
}

long HexValue(std::string_view hex) {
    const auto value = HexNumber(hex);
    if (!value) {
        throw HostError("'" + std::string(hex) + "' is not a hexadecimal number");
    }
    return static_cast<long>(*value);
}

} // namespace HostFacts
