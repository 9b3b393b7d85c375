#include "ShellBatch.h"

#include <CppTools/autocli/plugins/TemplateCheck.h>
#include <tests/support/TemplateFilling.h>

#include <boost/algorithm/string/replace.hpp>

#include <algorithm>
#include <array>
#include <iostream>
#include <string>
#include <string_view>
#include <vector>

// Fills every kind of placeholder in every position with values made of what a shell looks at,
// runs the lines, and prints what came of it as tables for authors of templates. `--quick` leaves
// out the values of three special characters.

namespace {

using CppTools::AutoCli::ExtensionCommand;
using Templates::kCanary;
using Templates::kRan;
using Templates::ShellBatch;

struct Position {
    std::string title;
    std::string text; ///< With P where the placeholder goes.
};

const std::vector<Position> kPositions = {{"bare", "args P"},
                                          {"`'…'`", "args 'P'"},
                                          {"`\"…\"`", "args \"P\""},
                                          {"behind a backslash", "args \\P"},
                                          {"in `$(…)`", "args $(args P)"},
                                          {"in a here-document", "cat <<END\nP\nEND"},
                                          {"in `sh -c \"…\"`", "sh -c \"printf '<%s>' P\""},
                                          {"behind another value", "args $val{early}P"},
                                          {"bare and again in `'…'`", "args P 'P'"},
                                          {"`'a'…'b'`", "args 'a'P'b'"}};

struct Kind {
    std::string title;
    std::string parameter;
    std::string text;
};

const std::vector<Kind> kKinds = {{"`$val`", "name", "$val{name}"},
                                  {"`$if` with `$val`", "name", "$if{name,$val{name}}"},
                                  {"`$list…false`", "ip", "$list{ip,',',false}"},
                                  {"`$list…true`", "ip", "$list{ip,',',true}"},
                                  {"`$multilist…false`", "ip", "$multilist{ip,-i,false}"},
                                  {"`$multilist…true`", "ip", "$multilist{ip,-i,true}"}};

constexpr std::string_view kSpecial = "\n!\"$&'()*;<>\\^`| \t#?[]~={}-,%";

/// The canary with every byte around it, and with the special ones before and behind it.
std::vector<std::string> PlainValues(bool isQuick) {
    std::vector<std::string> values;
    for (int byte = 1; byte < 256; ++byte) {
        const std::string around(1, static_cast<char>(byte));
        values.push_back(around + kCanary + around);
    }
    for (const char first : kSpecial) {
        for (const char second : kSpecial) {
            values.push_back(std::string{first, second} + kCanary);
            values.push_back(first + kCanary + second);
            for (const char third : isQuick ? std::string_view() : kSpecial) {
                values.push_back(std::string{first, second} + kCanary + third);
            }
        }
    }
    return values;
}

/// The canary behind whatever a removed or filled placeholder of the value's own may set free.
std::vector<std::string> SpellingValues() {
    std::vector<std::string> values;
    for (const char* placeholder :
         {"$val{name}", "$val{early}", "$val{zone}", "$val{other}", "$if{name,y}", "$if{x,y}",
          "$if{zone,y}", "$list{ip,',',true}", "$list{ip,'',false}", "$list{x,',',true}",
          "$multilist{ip,x,true}", "$multilist{name,x,true}", "$multilist{name,x,false}",
          "$multilist{zone,;canary,false}"}) {
        for (const char* behind : {"", ";canary", "';canary;'", "\";canary;\"", "`canary`",
                                   "$(canary)", "|canary", "';canary #", "\ncanary\n"}) {
            values.push_back(std::string(placeholder) + behind);
        }
    }
    return values;
}

/// What came of all values in one place.
struct Verdict {
    std::string ran;     ///< The first value that ran the canary.
    std::string split;   ///< The first that changed the number of arguments.
    std::string changed; ///< The first that arrived as something else.
};

class Prober {
  public:
    std::size_t CountOfLines() const { return count_; }

    Verdict Try(const std::string& text, const Kind& kind, const std::vector<std::string>& values) {
        std::vector<std::string> all = {kCanary};
        all.insert(all.end(), values.begin(), values.end());
        std::vector<std::string> lines;
        for (const auto& value : all) {
            lines.push_back(TestSupport::FilledLine(
                text, {{"early", "e"}, {kind.parameter, value}, {"zone", "z"}}));
        }
        count_ += lines.size();
        const auto outputs = batch_.Run(lines);
        Verdict verdict;
        for (std::size_t i = 1; i < all.size(); ++i) {
            Judge(all[i], outputs[i], outputs[0], verdict);
        }
        return verdict;
    }

  private:
    static void Judge(const std::string& value, const std::string& output,
                      const std::string& harmless, Verdict& verdict) {
        const std::string meant = boost::algorithm::replace_all_copy(harmless, kCanary, value);
        if (output.find(kRan) != std::string::npos) {
            Note(verdict.ran, value);
        } else if (CountIn(output) != CountIn(harmless)) {
            Note(verdict.split, value);
        } else if (output != meant) {
            Note(verdict.changed, value);
        }
    }

    static void Note(std::string& first, const std::string& value) {
        first = first.empty() ? value : first;
    }

    /// The number of arguments, where the command tells it.
    static std::string CountIn(const std::string& output) {
        const std::size_t end = output.find_first_not_of("0123456789");
        return end != output.npos && output[end] == ':' ? output.substr(0, end) : "";
    }

    ShellBatch batch_;
    std::size_t count_ = 0;
};

/// A value as code in a table.
std::string Shown(std::string value) {
    static const std::vector<std::pair<std::string, std::string>> kNames = {
        {"\n", "␤"}, {"\t", "␉"}, {" ", "␠"}, {"|", "\\|"}};
    for (const auto& [text, name] : kNames) {
        boost::algorithm::replace_all(value, text, name);
    }
    const bool isPrintable = std::all_of(value.begin(), value.end(), [](char byte) {
        return static_cast<unsigned char>(byte) >= 0x20 && byte != 0x7F;
    });
    value = isPrintable ? value : "a control character";
    return value.find('`') == std::string::npos ? "`" + value + "`" : "`` " + value + " ``";
}

std::string ToCell(const Verdict& verdict) {
    const std::array<std::pair<std::string, const std::string&>, 3> findings = {
        {{"**runs** ", verdict.ran}, {"splits ", verdict.split}, {"changes ", verdict.changed}}};
    for (const auto& [title, value] : findings) {
        if (!value.empty()) {
            return title + Shown(value);
        }
    }
    return "keeps";
}

void PrintTable(Prober& prober, const std::vector<std::string>& values) {
    std::string head = "| position |";
    std::string rule = "|---|";
    for (const auto& kind : kKinds) {
        head += " " + kind.title + " |";
        rule += "---|";
    }
    std::cout << head << "\n" << rule << "\n";
    for (const auto& position : kPositions) {
        std::cout << "| " << position.title << " |";
        for (const auto& kind : kKinds) {
            const std::string text =
                boost::algorithm::replace_all_copy(position.text, "P", kind.text);
            std::cout << " " << ToCell(prober.Try(text, kind, values)) << " |";
        }
        std::cout << std::endl;
    }
}

void PrintRules() {
    std::cout << "| rule | weight | what is wrong | what to write |\n|---|---|---|---|\n";
    for (const auto& rule : CppTools::AutoCli::AutoCli_GetTemplateRules()) {
        const bool isError = rule.severity == CppTools::AutoCli::HazardSeverity::Error;
        std::string row = "| `" + rule.name + "` | " + (isError ? "error" : "warning") + " | ";
        std::string texts = rule.message + "\x1d" + rule.advice;
        boost::algorithm::replace_all(texts, "|", "\\|");
        boost::algorithm::replace_all(texts, "\x1d", " | ");
        std::cout << row << texts << " |\n";
    }
}

} // namespace

int main(int argc, char** argv) {
    const bool isQuick = argc > 1 && std::string(argv[1]) == "--quick";
    Prober prober;
    const auto plain = PlainValues(isQuick);
    const auto spelling = SpellingValues();
    std::cout << "## Values that spell no placeholder\n\n"
              << plain.size() << " values in each place.\n\n";
    PrintTable(prober, plain);
    std::cout << "\n## Values that spell placeholders\n\n"
              << spelling.size()
              << " values in each place, filled in without the switch `StrictTemplates`.\n\n";
    PrintTable(prober, spelling);
    std::cout << "\n## Rules of the checker\n\n";
    PrintRules();
    std::cerr << prober.CountOfLines() << " lines were run.\n";
}
