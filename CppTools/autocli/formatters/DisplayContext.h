#pragma once

#include <CppTools/Export.h>

#include <cstdint>

namespace CppTools::AutoCli {

/// The size of the display in character cells; 0 means unknown.
class CPPTOOLS_EXPORT DisplayContext {
  public:
    std::uint16_t width = 0;  ///< Where lines of text are wrapped.
    std::uint16_t height = 0; ///< Carried along; no formatter reads it.
};

} // namespace CppTools::AutoCli
