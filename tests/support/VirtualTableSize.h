#pragma once

#include <cstddef>

#include "tests/support/VirtualSlot.h"

namespace TestSupport {

/// `Base` with one operation more, which takes the first free place behind those of `Base`.
template <typename Base>
class Extended : public Base {
  public:
    virtual void Next() = 0;
};

/// The number of places that the virtual operations of `Base` take, its destructor's two included.
template <typename Base>
std::ptrdiff_t VirtualTableSizeOf() {
    return VirtualSlotOf(&Extended<Base>::Next);
}

} // namespace TestSupport
