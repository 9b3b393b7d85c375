#include <CppTools/autocli/plugins/HeldValues.h>

#include <charconv>
#include <utility>

namespace CppTools::AutoCli {

namespace {

// Neither byte is part of well-formed UTF-8, and so of no template that a document declares.
constexpr char kBegin = '\xFE';
constexpr char kEnd = '\xFF';

} // namespace

std::string HeldValues::Hold(std::string value) {
    values_.push_back(std::move(value));
    return kBegin + std::to_string(values_.size() - 1) + kEnd;
}

std::string HeldValues::Release(std::string_view text) const {
    std::string released;
    std::size_t done = 0;
    for (auto begin = text.find(kBegin); begin != text.npos; begin = text.find(kBegin, begin + 1)) {
        const char* const textEnd = text.data() + text.size();
        std::size_t index = values_.size();
        const auto number = std::from_chars(text.data() + begin + 1, textEnd, index);
        if (index < values_.size() && number.ptr != textEnd && *number.ptr == kEnd) {
            released.append(text.substr(done, begin - done)).append(values_[index]);
            done = static_cast<std::size_t>(number.ptr - text.data()) + 1;
        }
    }
    return released.append(text.substr(done));
}

} // namespace CppTools::AutoCli
