#include "HeldOutput.h"

#include "Errors.h"

#include <cerrno>
#include <system_error>
#include <unistd.h>

namespace TandrilResult {

void HeldOutput::Write(std::string_view text) {
    held_ += text;
    if (held_.size() > kHeldSize) {
        Flush();
    }
}

void HeldOutput::Flush() {
    std::string_view rest = held_;
    while (!rest.empty()) {
        const ssize_t count = write(descriptor_, rest.data(), rest.size());
        if (count < 0 && errno == EINTR) {
            continue;
        }
        if (count < 0) {
            throw OutputError("Unable to write the result: " +
                              std::generic_category().message(errno));
        }
        hasBegun_ = true;
        rest.remove_prefix(static_cast<std::size_t>(count));
    }
    held_.clear();
}

} // namespace TandrilResult
