// Wrapping to the width of a display. The input is four bytes, for the indent, the width, the ways
// (bits) and the mark at a break, and the text.

#include <fuzz/Laws.h>
#include <fuzz/Rendering.h>
#include <fuzz/Sections.h>

#include <CppTools/autocli/formatters/CliDispatcherHelpFormatter.h>
#include <CppTools/autocli/formatters/CommandHelpFormatter.h>
#include <CppTools/autocli/formatters/FieldText.h>
#include <CppTools/metaobj/MetaList.h>
#include <CppTools/metaobj/MetaString.h>
#include <CppTools/metaobj/MetaStruct.h>

#include <algorithm>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

namespace {

using namespace CppTools::AutoCli;
using CppTools::MetaObj::MetaList;
using CppTools::MetaObj::MetaStruct;
using CppTools::MetaObj::MetaType;
using Fuzz::Require;
using Lines = std::vector<std::string>;

/// One way to wrap a text.
struct Wrapping {
    int indent;
    int width;
    bool continueLine;
    bool newlineAtEnd;
    bool splitLines;
    char mark;

    std::string operator()(const std::string& text) const {
        std::ostringstream out;
        AutoCli_FitString(indent, width, text, continueLine, out, newlineAtEnd, mark, splitLines);
        return out.str();
    }

    /// One column is the least that an indent takes.
    std::string Margin() const {
        return std::string(static_cast<std::size_t>(std::max(indent, 1)), ' ');
    }

    std::size_t Room() const {
        return width > indent ? static_cast<std::size_t>(width - indent) : 0;
    }
};

/// A text without the one separator at its end, which begins no piece.
std::string Closed(const std::string& text, char separator) {
    return text.ends_with(separator) ? text.substr(0, text.size() - 1) : text;
}

/// The lines of a wrapped text without margins, and without marks, which stand at each break.
Lines Bare(const std::string& wrapped, const Wrapping& wrapping) {
    const char mark = wrapping.mark == '\0' ? ' ' : wrapping.mark;
    Lines lines = Fuzz::Split(wrapped, '\n');
    for (std::size_t i = 0; i < lines.size(); ++i) {
        if (i > 0) {
            Require(lines[i].starts_with(wrapping.Margin()), "a further line is indented", wrapped);
            lines[i].erase(0, wrapping.Margin().size());
        }
        if (i + 1 < lines.size()) {
            Require(lines[i].ends_with(mark), "a line that is broken is marked", wrapped);
            lines[i].pop_back();
        }
    }
    return lines;
}

/// What a line would have to take in for the next line's first word.
std::size_t RoomForNext(const std::string& line, const std::string& next, bool isEmpty) {
    const std::size_t word = std::min(next.find(' '), next.size());
    return (isEmpty ? 0 : line.size() + 1) + word + 1;
}

/// Of a text without line ends, wrapped behind an indent that is already there.
void CheckWrapped(const std::string& text, const std::string& wrapped, const Wrapping& wrapping) {
    const std::size_t room = wrapping.Room();
    if (room == 0 || text.size() <= room) {
        Require(wrapped == text, "a text that fits stays", wrapped);
        return;
    }
    const Lines lines = Bare(wrapped, wrapping);
    std::string joined = lines[0];
    for (std::size_t i = 1; i < lines.size(); ++i) {
        joined += ' ' + lines[i];
    }
    const std::string words = Closed(text, ' ');
    const bool isFirstEmpty = joined == ' ' + words;
    Require(isFirstEmpty || joined == words, "every word stays, in its place", wrapped);
    for (std::size_t i = 0; i < lines.size(); ++i) {
        Require(lines[i].size() < room || lines[i].find(' ') == lines[i].npos,
                "only a single word is wider than the display", wrapped);
        Require(i + 1 == lines.size() ||
                    RoomForNext(lines[i], lines[i + 1], i == 0 && isFirstEmpty) > room,
                "a line takes in what it can", wrapped);
    }
}

void CheckLine(const std::string& line, Wrapping wrapping) {
    wrapping.splitLines = false;
    wrapping.continueLine = true;
    wrapping.newlineAtEnd = false;
    const std::string wrapped = wrapping(line);
    CheckWrapped(line, wrapped, wrapping);
    wrapping.newlineAtEnd = true;
    Require(wrapping(line) == wrapped + "\n", "a line end is added");
    wrapping.continueLine = false;
    Require(wrapping(line) == wrapping.Margin() + wrapped + "\n", "an indent precedes the text");
}

void CheckLines(const std::string& text, const Wrapping& wrapping) {
    const Lines lines = text.empty() ? Lines() : Fuzz::Split(Closed(text, '\n'), '\n');
    Wrapping each = wrapping;
    each.splitLines = false;
    std::string expected;
    for (std::size_t i = 0; i < lines.size(); ++i) {
        each.continueLine = i == 0 && wrapping.continueLine;
        expected += (i > 0 && !wrapping.newlineAtEnd ? "\n" : "") + each(lines[i]);
        CheckLine(lines[i], wrapping);
    }
    Wrapping whole = wrapping;
    whole.splitLines = true;
    Require(whole(text) == expected, "each line is wrapped by itself", whole(text));
}

/// Of lines behind a column: what stands there is one word, or no wider than the display.
void CheckBehind(std::size_t column, const std::string& text, int width) {
    for (const std::string& line : Fuzz::Split(text, '\n')) {
        const std::string behind = line.substr(std::min(column, line.size()));
        Require(line.size() <= static_cast<std::size_t>(width) ||
                    Closed(behind, ' ').find(' ') == behind.npos,
                "only a single word is wider than the display", line);
    }
}

/// Whether all words of a text stand in another, in their order.
bool HoldsWords(const std::string& text, const std::string& words) {
    std::istringstream in(text);
    std::istringstream wanted(words);
    std::string found;
    for (std::string word; wanted >> word;) {
        while (in >> found && found != word) {
        }
        if (!in) {
            return false;
        }
    }
    return true;
}

std::shared_ptr<MetaList> ListOf(const std::shared_ptr<MetaStruct>& row) {
    auto list = MetaList::New(MetaType::Struct, row);
    list->Add(row);
    return list;
}

void CheckCommandHelp(const std::string& text, int width, bool isRequired, bool isSecret) {
    const auto option = MetaStruct::New("Parameter");
    option->SetField("Name", "name");
    option->SetField("Short Name", "n");
    option->SetField("Description", text);
    option->SetField("Required", isRequired);
    option->SetField("Secret", isSecret);
    const auto record = MetaStruct::New("TandrilCommandHelp");
    record->SetField("Param List", ListOf(option));
    static CommandHelpFormatter formatter;
    const std::string help = Fuzz::Render(formatter, record, {}, width).text;
    const std::string start = "Usage:   <options>\n\nDescription: \n\n  -n|--name   ";
    Require(help.starts_with(start), "help begins with its usage", help);
    Require(HoldsWords(help, text), "help keeps every word", help);
    if (width > 14) {
        CheckBehind(14, help.substr(start.size() - 14), width);
    }
}

void CheckListing(const std::string& text, int width, bool isCommand) {
    const auto node = MetaStruct::New("Node");
    node->SetField("Type", isCommand ? "Command" : "Namespace");
    node->SetField("Name", "disk");
    node->SetField("Description", text);
    const auto record = MetaStruct::New("TandrilCommandPrint");
    record->SetField("Path", MetaList::New(MetaType::String));
    record->SetField("NamespaceNodes", ListOf(node));
    static CliDispatcherHelpFormatter formatter;
    const std::string help = Fuzz::Render(formatter, record, {}, width).text;
    Require(HoldsWords(help, "disk " + text), "a listing keeps every word", help);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size < 4) {
        return 0;
    }
    const std::string text(Fuzz::TextOf(data + 4, size - 4));
    const unsigned ways = data[2];
    const Wrapping wrapping = {static_cast<std::int8_t>(data[0]) / 2,
                               data[1],
                               (ways & 1) != 0,
                               (ways & 2) != 0,
                               (ways & 4) != 0,
                               static_cast<char>(data[3])};
    if (wrapping.mark != '\n') {
        CheckLines(text, wrapping);
    }
    CheckCommandHelp(text, wrapping.width, (ways & 8) != 0, (ways & 16) != 0);
    CheckListing(text, wrapping.width, (ways & 32) != 0);
    return 0;
}
