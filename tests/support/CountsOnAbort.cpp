// Part of the library in coverage builds only: its counts are written at exit, which a process that
// aborts does not reach.

#include <csignal>

extern "C" void __gcov_dump();

namespace {

void WriteCounts(int /*signal*/) {
    __gcov_dump();
}

[[maybe_unused]] const auto previousHandler = std::signal(SIGABRT, WriteCounts);

} // namespace
