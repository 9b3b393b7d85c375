#include <CppTools/autocli/plugins/ShellPrograms.h>

#include <algorithm>
#include <array>

namespace CppTools::AutoCli {

namespace {

constexpr std::array<std::string_view, 20> kReservedWords = {
    "!",       "case",     "coproc", "do", "done",   "elif",   "else", "esac", "fi",    "for",
    "foreach", "function", "if",     "in", "repeat", "select", "then", "time", "until", "while"};

/// They run text that stands in an argument or comes on the standard input.
constexpr std::array<std::string_view, 82> kRunners = {
    ".",       "alias", "ash",     "at",      "awk",     "bash",    "batch",       "bc",
    "builtin", "bun",   "busybox", "chroot",  "cron",    "crontab", "csh",         "dash",
    "dc",      "deno",  "docker",  "ed",      "emacs",   "eval",    "ex",          "expect",
    "fc",      "find",  "fish",    "flock",   "gawk",    "gdb",     "git",         "guile",
    "irb",     "ksh",   "ld.so",   "let",     "lua",     "m4",      "make",        "mawk",
    "mksh",    "nawk",  "node",    "nodejs",  "nsenter", "oksh",    "parallel",    "pdksh",
    "perl",    "php",   "podman",  "posh",    "psql",    "python",  "rbash",       "rksh",
    "rsh",     "rsync", "ruby",    "runuser", "scp",     "screen",  "script",      "sed",
    "sh",      "socat", "source",  "sqlite",  "ssh",     "su",      "systemd-run", "tar",
    "tclsh",   "tcsh",  "tmux",    "toybox",  "trap",    "unshare", "vi",          "vim",
    "watch",   "xargs"};

/// Those of them that a script may well use on data of its own.
constexpr std::array<std::string_view, 11> kFilters = {
    "awk", "find", "gawk", "git", "let", "mawk", "nawk", "rsync", "sed", "tar", "trap"};

/// Harmless in every shell, builtin or not, whatever their arguments are.
constexpr std::array<std::string_view, 16> kHarmless = {
    "basename", "cat", "cut",    "date", "dirname", "echo", "false", "grep",
    "head",     "id",  "printf", "tail", "tr",      "true", "uname", "wc"};

/// A program that runs its arguments. An option that has a value is apart from it.
struct Prefix {
    std::string_view name;
    std::string_view flags;
    std::string_view valued;
    std::size_t operands;
    bool setsVariables;
};

constexpr std::array<Prefix, 11> kPrefixes = {{{"command", "", "", 0, false},
                                               {"doas", "n", "u", 0, false},
                                               {"env", "i", "u", 0, true},
                                               {"exec", "", "", 0, false},
                                               {"ionice", "t", "cn", 0, false},
                                               {"nice", "", "n", 0, false},
                                               {"nohup", "", "", 0, false},
                                               {"setsid", "", "", 0, false},
                                               {"stdbuf", "", "eio", 0, false},
                                               {"sudo", "nEH", "ug", 0, true},
                                               {"timeout", "", "ks", 1, false}}};

template <typename Names>
bool IsIn(const Names& names, std::string_view name) {
    return std::find(names.begin(), names.end(), name) != names.end();
}

std::string_view BaseName(std::string_view path) {
    return path.substr(path.rfind('/') + 1);
}

/// A program's name without its path and version, as in /usr/bin/python3.11.
std::string_view ProgramName(std::string_view path) {
    const std::string_view base = BaseName(path);
    return base.substr(0, std::max(base.find_last_not_of("-.0123456789") + 1, std::size_t{1}));
}

const Prefix* FindPrefix(std::string_view command) {
    const auto* const found =
        std::find_if(kPrefixes.begin(), kPrefixes.end(),
                     [&](const Prefix& prefix) { return prefix.name == BaseName(command); });
    return found == kPrefixes.end() ? nullptr : found;
}

/// Whether the word is one of these short options.
bool HasLetter(std::string_view letters, std::string_view word) {
    return word.size() == 2 && letters.find(word[1]) != std::string_view::npos;
}

bool IsConstantAt(const std::vector<Word>& words, std::size_t index) {
    return index < words.size() && words[index].GetConstant();
}

} // namespace

bool IsReservedWord(std::string_view word) {
    return IsIn(kReservedWords, word);
}

bool IsAssignment(std::string_view word) {
    const std::size_t nameEnd =
        word.find_first_not_of("abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789_");
    return nameEnd != 0 && word.substr(std::min(nameEnd, word.size())).starts_with('=');
}

std::optional<Rule> ProgramRule(const std::string& command) {
    if (IsIn(kRunners, ProgramName(command))) {
        return Rule::NestedShell;
    }
    if (command.starts_with('/') || IsIn(kHarmless, command)) {
        return std::nullopt;
    }
    return Rule::UnknownCommand;
}

bool MayRunItsInput(std::string_view word) {
    const std::string_view name = ProgramName(word);
    return IsIn(kRunners, name) && !IsIn(kFilters, name);
}

bool IsPrefix(const std::string& command) {
    return FindPrefix(command) != nullptr;
}

std::optional<std::size_t> SkipPrefix(const std::vector<Word>& words, std::size_t prefix) {
    const Prefix& known = *FindPrefix(*words[prefix].GetConstant());
    std::size_t operands = known.operands;
    std::size_t next = prefix + 1;
    for (; next < words.size(); ++next) {
        const auto text = words[next].GetConstant();
        if (!text) {
            return std::nullopt;
        }
        if (text->starts_with('-')) {
            const bool isValued = HasLetter(known.valued, *text) && IsConstantAt(words, next + 1);
            if (!isValued && !HasLetter(known.flags, *text)) {
                return std::nullopt;
            }
            next += isValued ? 1 : 0;
        } else if (known.setsVariables && IsAssignment(*text)) {
            continue;
        } else if (operands == 0) {
            return next;
        } else {
            --operands;
        }
    }
    return next;
}

} // namespace CppTools::AutoCli
