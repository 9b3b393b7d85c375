#include "ShellBatch.h"

#include <tests/support/ProgramRun.h>

#include <boost/algorithm/string/replace.hpp>

#include <filesystem>
#include <stdexcept>

namespace Templates {

namespace {

/// The text as one word of a shell.
std::string Quoted(const std::string& text) {
    return "'" + boost::algorithm::replace_all_copy(text, "'", "'\\''") + "'";
}

/// Ends the output of one line, whatever that was.
std::string EndMark(std::size_t index) {
    return "\x1e line " + std::to_string(index) + " \x1e";
}

std::string Preamble(const std::string& programs) {
    return "PATH=" + programs + ":/usr/bin:/bin\nexport PATH\n" +
           "canary() { printf RAN; }\n"
           "args() { printf '%d:' $#; [ $# = 0 ] || printf '<%s>' \"$@\"; }\n";
}

std::vector<std::string> Split(const std::string& output, std::size_t count) {
    std::vector<std::string> outputs;
    std::size_t begin = 0;
    for (std::size_t i = 0; i < count; ++i) {
        const std::size_t end = output.find(EndMark(i), begin);
        if (end == std::string::npos) {
            throw std::runtime_error("the shell ended before line " + std::to_string(i));
        }
        outputs.push_back(output.substr(begin, end - begin));
        begin = end + EndMark(i).size();
    }
    return outputs;
}

} // namespace

ShellBatch::ShellBatch() {
    const std::filesystem::path canary = programs_.Write("canary", "#!/bin/sh\nprintf RAN\n");
    std::filesystem::permissions(canary, std::filesystem::perms::owner_all);
}

std::vector<std::string> ShellBatch::Run(const std::vector<std::string>& lines) const {
    std::string script = Preamble(programs_.Path());
    for (std::size_t i = 0; i < lines.size(); ++i) {
        script += "(trap wait 0; eval " + Quoted(lines[i]) + ") 2>/dev/null 3>&1 </dev/null\n" +
                  "printf '%s' '" + EndMark(i) + "'\n";
    }
    const TestSupport::TempDirectory folder;
    const auto run =
        TestSupport::RunProgram({"/bin/sh", scripts_.Write("batch", script)}, folder.Path());
    return Split(run.out, lines.size());
}

} // namespace Templates
