#include <CppTools/autocli/formatters/Tokens.h>

#include <boost/algorithm/string/split.hpp>

namespace CppTools::AutoCli {

std::vector<std::string> SplitTokens(const std::string& text, char separator) {
    std::vector<std::string> tokens;
    boost::algorithm::split(tokens, text,
                            [separator](char character) { return character == separator; });
    if (tokens.back().empty()) {
        tokens.pop_back();
    }
    return tokens;
}

} // namespace CppTools::AutoCli
