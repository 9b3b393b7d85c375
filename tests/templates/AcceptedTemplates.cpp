#include "ShellBatch.h"
#include "ShellWords.h"
#include "TemplateMaker.h"

#include <CppTools/autocli/plugins/PlaceholderText.h>
#include <CppTools/autocli/plugins/StrictFilling.h>
#include <CppTools/autocli/plugins/TemplateCheck.h>
#include <CppTools/callspec/Input.h>
#include <CppTools/callspec/InputSpec.h>
#include <CppTools/callspec/Output.h>

#include <boost/algorithm/string/erase.hpp>
#include <boost/algorithm/string/replace.hpp>

#include <algorithm>
#include <cstdlib>
#include <iostream>
#include <map>
#include <stdexcept>
#include <string>
#include <vector>

// Fills templates that the checker accepted with values that attack them, as strictly as the tool
// does, and compares what a shell reads with what was meant: the same commands and words, with the
// values in their places. A model of the shell's words reads all lines, the shell itself some.
//
//     template_acceptance PAIRS SHELL-LINES SEED
//
// PAIRS are those that are not refused.

namespace {

using namespace CppTools::AutoCli;
using CppTools::CallSpec::Input;
using CppTools::CallSpec::InputSpec;
using CppTools::CallSpec::Output;
using Templates::ReadShellLine;
using Templates::ShellToken;
using Templates::TemplateMaker;
using TestSupport::GivenParameters;

using Tokens = std::vector<ShellToken>;

bool IsAccepted(const std::string& text, const std::shared_ptr<InputSpec>& spec) {
    const auto hazards = AutoCli_CheckTemplate(text, spec, "");
    return std::none_of(hazards.begin(), hazards.end(), [](const TemplateHazard& hazard) {
        return hazard.severity == HazardSeverity::Error;
    });
}

std::shared_ptr<Input> NewInput(const GivenParameters& given,
                                const std::shared_ptr<InputSpec>& spec) {
    auto input = Input::New();
    for (const auto& [name, value] : given) {
        input->AddParameter(name, value);
    }
    input->SetInputSpec(spec);
    return input;
}

std::string Fill(const std::string& text, const GivenParameters& given,
                 const std::shared_ptr<InputSpec>& spec) {
    return FillTemplate(text, TemplatePurpose::CommandLine, *spec, *NewInput(given, spec));
}

/// Stands for a value in the words that were meant. No other text of a template looks like it.
std::string MarkOf(std::size_t index) {
    return "Q" + std::to_string(index) + "Z";
}

/// What a shell should read: the template filled with marks, and then values for the marks. Single
/// quotes are taken out of free text; nothing else holds any. A bare word without text is none.
Tokens MeantTokens(const std::string& text, const GivenParameters& given,
                   const std::shared_ptr<InputSpec>& spec) {
    GivenParameters marks = given;
    for (std::size_t i = 0; i < marks.size(); ++i) {
        marks[i].second = MarkOf(i);
    }
    const auto tokens = ReadShellLine(Fill(text, marks, spec));
    if (!tokens) {
        throw std::runtime_error("more than words even with harmless values: " + text);
    }
    Tokens meant;
    for (ShellToken token : *tokens) {
        const bool isOperator = token.isOperator;
        const bool isMarked = token.text.find('Q') != token.text.npos;
        for (std::size_t i = 0; i < given.size() && isMarked; ++i) {
            boost::algorithm::replace_all(token.text, MarkOf(i),
                                          boost::algorithm::erase_all_copy(given[i].second, "'"));
        }
        if (isOperator || token.isQuoted || !token.text.empty()) {
            meant.push_back(token);
        }
    }
    return meant;
}

bool IsRefused(const std::string& text, const GivenParameters& given,
               const std::shared_ptr<InputSpec>& spec) {
    const CommandTemplates templates = {
        {{text, TemplatePurpose::CommandLine}, {"", TemplatePurpose::StandardInput}}};
    return !AreHarmless(templates, *spec, *NewInput(given, spec), *Output::New());
}

/// How many words stand before the command that is run in the end.
std::size_t PrefixLength(const std::vector<std::string>& words) {
    static const std::map<std::string, std::size_t> kPrefixes = {
        {"nice", 1}, {"exec", 1}, {"env", 2}, {"timeout", 2}};
    std::size_t length = 0;
    while (length < words.size() && kPrefixes.contains(words[length])) {
        length += kPrefixes.at(words[length]);
    }
    return length;
}

/// What the program reports when it is called by these words; empty when it is not.
std::string ReportOf(const std::vector<std::string>& words, const std::string& program) {
    const std::size_t begin = PrefixLength(words);
    if (begin >= words.size() || words[begin] != program) {
        return "";
    }
    std::string report = std::to_string(words.size() - begin - 1) + ":";
    for (std::size_t i = begin + 1; i < words.size(); ++i) {
        report += "<" + words[i] + ">";
    }
    return report;
}

/// What calls of the program report, from the words that were meant. Sorted, because commands of
/// a pipeline run at once.
std::vector<std::string> MeantCalls(const Tokens& tokens, const std::string& program) {
    std::vector<std::string> calls;
    std::vector<std::string> words;
    const auto finish = [&] {
        if (const auto report = ReportOf(words, program); !report.empty()) {
            calls.push_back(report);
        }
        words.clear();
    };
    bool isFile = false;
    for (const auto& token : tokens) {
        const bool redirects =
            token.isOperator && (token.text.front() == '<' || token.text.front() == '>');
        if (token.isOperator && !redirects) {
            finish();
        } else if (!token.isOperator && !isFile) {
            words.push_back(token.text);
        }
        isFile = redirects;
    }
    finish();
    std::sort(calls.begin(), calls.end());
    return calls;
}

/// Whether the words of an accepted template that begin with the program's path are the path.
bool NamesProgramOnly(const std::string& text, const std::string& program) {
    for (auto begin = text.find(program); begin != text.npos;
         begin = text.find(program, begin + 1)) {
        const std::string behind = text.substr(begin + program.size(), 1);
        if (behind.find_first_not_of(" \t\n;&|<>") != behind.npos) {
            return false;
        }
    }
    return true;
}

/// Whether every command of an accepted template certainly runs, with no file missing that it
/// reads.
bool RunsAll(const std::string& text) {
    return text.find("||") == text.npos && text.find('<') == text.npos &&
           text.find("cat") == text.npos && text.find("exec") == text.npos &&
           NamesProgramOnly(text, PRINT_ARGUMENTS);
}

std::vector<std::string> ReportedCalls(const std::string& output) {
    std::vector<std::string> calls;
    for (std::size_t begin = output.find('\x1d'); begin != output.npos;) {
        const std::size_t end = output.find('\x1d', begin + 1);
        calls.push_back(output.substr(begin + 1, end - begin - 1));
        begin = output.find('\x1d', end + 1);
    }
    std::sort(calls.begin(), calls.end());
    return calls;
}

/// One filled line and what it should call.
struct Probe {
    std::string text;
    std::string line;
    std::vector<std::string> calls;
    bool runsAll; ///< Whether every command of it runs.
};

class Proof {
  public:
    Proof(std::size_t seed) : maker_(seed, PRINT_ARGUMENTS), spec_(maker_.Spec()) {}

    void Run(std::size_t pairs, std::size_t shellLines) {
        const std::size_t every =
            std::max(pairs / std::max(shellLines, std::size_t{1}), std::size_t{1});
        while (compared_ < pairs || ran_ < shellLines) {
            const std::string text = maker_.Template();
            ++made_;
            // A constant script may be anything.
            if (!HoldsPlaceholderOpening(text) || !IsAccepted(text, spec_)) {
                continue;
            }
            ++accepted_;
            for (int i = 0; i < 10; ++i) {
                TryPair(text, maker_.Values(text), every);
            }
        }
        RunProbes();
    }

    void Print() const {
        std::cout << made_ << " templates made, " << accepted_ << " accepted; " << pairs_
                  << " pairs of template and values, " << refused_ << " of them refused, "
                  << compared_ << " compared with the model, " << ran_
                  << " run by the shell: " << failures_ << " failures.\n";
    }

    bool HasFailed() const { return failures_ > 0; }

  private:
    void TryPair(const std::string& text, const GivenParameters& given, std::size_t every) {
        ++pairs_;
        if (IsRefused(text, given, spec_)) {
            ++refused_;
            return;
        }
        const std::string line = Fill(text, given, spec_);
        const Tokens meant = MeantTokens(text, given, spec_);
        const auto tokens = ReadShellLine(line);
        if (!tokens || *tokens != meant) {
            Fail("the model reads other words", text, line);
        }
        if (++compared_ % every == 0) {
            probes_.push_back({text, line, MeantCalls(meant, PRINT_ARGUMENTS), RunsAll(text)});
            ++ran_;
        }
        if (probes_.size() == 1000) {
            RunProbes();
        }
    }

    void RunProbes() {
        std::vector<std::string> lines;
        for (const auto& probe : probes_) {
            lines.push_back(probe.line);
        }
        const auto outputs = batch_.Run(lines);
        for (std::size_t i = 0; i < probes_.size(); ++i) {
            const auto& probe = probes_[i];
            const auto calls = ReportedCalls(outputs[i]);
            const bool isMeant = probe.runsAll
                                     ? calls == probe.calls
                                     : std::includes(probe.calls.begin(), probe.calls.end(),
                                                     calls.begin(), calls.end());
            if (outputs[i].find(Templates::kRan) != std::string::npos || !isMeant) {
                Fail("the shell does something else", probe.text, probe.line);
            }
        }
        probes_.clear();
    }

    void Fail(const std::string& what, const std::string& text, const std::string& line) {
        ++failures_;
        std::cerr << what << "\n  template: " << text << "\n  line:     " << line << "\n";
    }

    TemplateMaker maker_;
    std::shared_ptr<InputSpec> spec_;
    Templates::ShellBatch batch_;
    std::vector<Probe> probes_;
    std::size_t made_ = 0;
    std::size_t accepted_ = 0;
    std::size_t pairs_ = 0;
    std::size_t refused_ = 0;
    std::size_t compared_ = 0;
    std::size_t ran_ = 0;
    std::size_t failures_ = 0;
};

} // namespace

int main(int argc, char** argv) {
    if (argc != 4) {
        std::cerr << "usage: template_acceptance PAIRS SHELL-LINES SEED\n";
        return 2;
    }
    Proof proof(std::stoull(argv[3]));
    proof.Run(std::stoull(argv[1]), std::stoull(argv[2]));
    proof.Print();
    return proof.HasFailed() ? 1 : 0;
}
