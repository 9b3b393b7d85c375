#pragma once

#include <array>
#include <bit>
#include <cstddef>

namespace TestSupport {

/// The place of a virtual function in the table that libraries built apart agree on. The first
/// word of a member pointer holds its offset, on some machines with the lowest bit set.
template <typename Member>
std::ptrdiff_t VirtualSlotOf(Member member) {
    const auto words = std::bit_cast<std::array<std::ptrdiff_t, 2>>(member);
    return words[0] / static_cast<std::ptrdiff_t>(sizeof(void*));
}

} // namespace TestSupport
