# What every target of this project is compiled and linked with; not passed on to its users.
add_library(CppToolsWarnings INTERFACE)
target_compile_options(CppToolsWarnings INTERFACE -Wall -Wextra -Wpedantic -Wconversion)
if(CPPTOOLS_WERROR)
  target_compile_options(CppToolsWarnings INTERFACE -Werror)
endif()

# What is installed also has the flags of a tool that runs as root.
add_library(CppToolsBuildFlags INTERFACE)
target_link_libraries(CppToolsBuildFlags INTERFACE CppToolsWarnings)
target_compile_options(CppToolsBuildFlags INTERFACE -fstack-protector-strong)
target_link_options(CppToolsBuildFlags INTERFACE -Wl,-z,relro -Wl,-z,now -Wl,-z,noexecstack)
if(CPPTOOLS_SANITIZE)
  # Shared libraries and executables agree on one runtime only when all are instrumented.
  add_compile_options(-fsanitize=address,undefined -fno-sanitize-recover=undefined
                      -fno-omit-frame-pointer)
  add_link_options(-fsanitize=address,undefined)
else()
  # Fortified functions need the optimiser.
  target_compile_definitions(CppToolsBuildFlags
                             INTERFACE $<$<NOT:$<CONFIG:Debug>>:_FORTIFY_SOURCE=2>)
  target_link_options(CppToolsBuildFlags INTERFACE -Wl,--no-undefined)
endif()

if(CPPTOOLS_FUZZ)
  # What the library reaches steers the fuzzers; each of them brings libFuzzer's main in itself.
  add_compile_options(-fsanitize=fuzzer-no-link)
endif()

# The standard headers that most sources include, parsed once for each target. Not under the
# sanitizers, so that one build tells whether each source includes what it uses.
function(cpptools_precompile_standard_headers target)
  if(NOT CPPTOOLS_SANITIZE)
    target_precompile_headers(
      ${target}
      PRIVATE
      <algorithm>
      <array>
      <functional>
      <ostream>
      <map>
      <memory>
      <optional>
      <string>
      <vector>
      ${ARGN})
  endif()
endfunction()
