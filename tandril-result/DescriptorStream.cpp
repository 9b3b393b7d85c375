#include "DescriptorStream.h"

#include "Errors.h"

#include <cerrno>
#include <system_error>
#include <unistd.h>

namespace TandrilResult {

DescriptorBuffer::int_type DescriptorBuffer::underflow() {
    ssize_t count = -1;
    do {
        count = read(descriptor_, block_.data(), block_.size());
    } while (count < 0 && errno == EINTR);
    if (count < 0) {
        throw InputError(std::generic_category().message(errno));
    }
    if (count == 0) {
        return traits_type::eof();
    }
    hasRead_ = true;
    setg(block_.data(), block_.data(), block_.data() + count);
    return traits_type::to_int_type(block_.front());
}

} // namespace TandrilResult
