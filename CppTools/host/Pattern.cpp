#include <CppTools/host/Pattern.h>

#include <boost/regex.hpp>

namespace CppTools::Host {

struct Pattern::Compiled {
    boost::regex expression;
};

Pattern::Pattern(const std::string& expression)
    : compiled_(std::make_unique<const Compiled>(Compiled{boost::regex(expression)})) {}

Pattern::~Pattern() = default;

bool Pattern::Matches(const std::string& text) const {
    return boost::regex_match(text, compiled_->expression);
}

std::optional<std::vector<std::string>> Pattern::GroupsOf(const std::string& text) const {
    boost::smatch match;
    if (!boost::regex_match(text, match, compiled_->expression)) {
        return std::nullopt;
    }
    std::vector<std::string> groups;
    for (std::size_t group = 1; group < match.size(); ++group) {
        groups.push_back(match.str(static_cast<int>(group)));
    }
    return groups;
}

} // namespace CppTools::Host
