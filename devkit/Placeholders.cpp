#include <devkit/Placeholders.h>

#include <boost/regex.hpp>

namespace Devkit {

std::vector<Placeholder> FindPlaceholders(const std::string& text) {
    static const boost::regex kBeginning(R"(\$(val|if|list|multilist)\{([a-z0-9-]+)[,}])");
    std::vector<Placeholder> found;
    for (boost::sregex_iterator match(text.begin(), text.end(), kBeginning), end; match != end;
         ++match) {
        found.push_back(
            {match->str(1), match->str(2), static_cast<std::size_t>(match->position())});
    }
    return found;
}

} // namespace Devkit
