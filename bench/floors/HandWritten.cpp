// hand-written FORMATTER ROWS [FILE]: prints what a formatter prints for the rows, byte for byte,
// from plain structures: no values, no streams, nothing shared. To /dev/null, or to FILE.

#include "../support/Measure.h"
#include "../support/Rows.h"
#include "BlockWriter.h"

#include <fcntl.h>
#include <iostream>
#include <map>
#include <string>
#include <vector>

namespace {

using namespace Bench;
using PlainRows = std::vector<PlainRow>;

std::string_view JsonEscape(char byte) {
    return byte == '/' ? "\\/" : byte == '"' ? "\\\"" : "\\\\";
}

std::string_view XmlEscape(char byte) {
    switch (byte) {
    case '&':
        return "&amp;";
    case '<':
        return "&lt;";
    case '>':
        return "&gt;";
    case '%':
        return "&#37;";
    case '"':
        return "&quot;";
    default:
        return "&apos;";
    }
}

std::string_view PythonEscape(char byte) {
    return byte == '"' ? "\\\"" : "\\n";
}

void WriteJson(const PlainRows& rows, BlockWriter& out) {
    const SpecialBytes special("/\"\\");
    const auto text = [&](std::string_view key, std::string_view value) {
        out << "         \"" << key << "\": \"";
        WriteEscaped(out, value, special, JsonEscape);
        out << "\"";
    };
    out << "\n[\n";
    for (const auto& row : rows) {
        out << "\n      {\n";
        text("Description", row.description);
        out << ",\n         \"Enabled\": " << (row.enabled ? "true" : "false")
            << ",\n         \"Id\": " << row.id << ",\n";
        text("Name", row.name);
        out << ",\n         \"Size\": " << row.size << ",\n";
        text("State", row.state);
        out << "\n      }" << (&row == &rows.back() ? "\n" : ", \n");
    }
    out << "]\n";
}

void WriteXml(const PlainRows& rows, BlockWriter& out) {
    const SpecialBytes special("&<>%\"'");
    const auto field = [&](std::string_view key, std::string_view kind, auto write) {
        out << "               <field name=\"" << key << "\">\n                  <" << kind << ">";
        write();
        out << "</" << kind << ">\n               </field>\n";
    };
    const auto text = [&](std::string_view key, std::string_view value) {
        field(key, "string", [&] { WriteEscaped(out, value, special, XmlEscape); });
    };
    out << "<?xml version=\"1.0\"?>\n<output xmlns:tandril=\"urn:corvane:tandril:output:1\">\n"
           "   <meta-data>\n   </meta-data>\n   <root>\n      <list type=\"structure\">\n";
    for (const auto& row : rows) {
        out << "            <structure typeName=\"Row\">\n";
        text("Description", row.description);
        field("Enabled", "boolean", [&] { out << (row.enabled ? "true" : "false"); });
        field("Id", "integer", [&] { out << row.id; });
        text("Name", row.name);
        field("Size", "integer", [&] { out << row.size; });
        text("State", row.state);
        out << "            </structure>\n";
    }
    out << "      </list>\n   </root>\n</output>\n";
}

void WritePython(const PlainRows& rows, BlockWriter& out) {
    const SpecialBytes special("\"\n");
    const auto text = [&](std::string_view key, std::string_view value) {
        out << "\"" << key << "\": \"\"\"";
        WriteEscaped(out, value, special, PythonEscape);
        out << "\"\"\", ";
    };
    out << "[";
    for (const auto& row : rows) {
        out << "{";
        text("Description", row.description);
        out << "\"Enabled\": " << (row.enabled ? "True" : "False") << ", \"Id\": " << row.id
            << ", ";
        text("Name", row.name);
        out << "\"Size\": " << row.size << ", ";
        text("State", row.state);
        out << "}, ";
    }
    out << "]\n";
}

void WriteSimple(const PlainRows& rows, BlockWriter& out) {
    for (const auto& row : rows) {
        out << "\nRow:\n   Description: " << row.description
            << "\n   Enabled: " << (row.enabled ? "true" : "false") << "\n   Id: " << row.id
            << "\n   Name: " << row.name << "\n   Size: " << row.size << "\n   State: " << row.state
            << "\n";
    }
    out << "\n";
}

std::size_t Digits(std::int64_t number) {
    std::size_t digits = number < 0 ? 2 : 1;
    while ((number /= 10) != 0) {
        ++digits;
    }
    return digits;
}

/// The columns of the table but the last, each as wide as its widest cell and two blanks.
class TableColumns {
  public:
    static constexpr std::array<std::string_view, 6> kNames = {"Description", "Enabled", "Id",
                                                               "Name",        "Size",    "State"};

    explicit TableColumns(const PlainRows& rows) {
        for (std::size_t column = 0; column < widths_.size(); ++column) {
            Widen(column, kNames[column].size());
        }
        for (const auto& row : rows) {
            Widen(0, std::strlen(row.description));
            Widen(1, row.enabled ? 4 : 5);
            Widen(2, Digits(row.id));
            Widen(3, std::strlen(row.name));
            Widen(4, Digits(row.size));
        }
    }

    void WriteLeft(BlockWriter& out, std::size_t column, std::string_view text) const {
        out << text;
        out.Blanks(widths_[column] - text.size());
    }

    void WriteRight(BlockWriter& out, std::size_t column, std::int64_t number) const {
        out.Blanks(widths_[column] - 2 - Digits(number));
        out << number << "  ";
    }

    void WriteHeader(BlockWriter& out) const {
        for (std::size_t column = 0; column < widths_.size(); ++column) {
            WriteLeft(out, column, kNames[column]);
        }
        out << kNames.back() << "\n";
        for (std::size_t column = 0; column < widths_.size(); ++column) {
            WriteLeft(out, column, std::string(widths_[column] - 2, '-'));
        }
        out << std::string(kNames.back().size(), '-') << "\n";
    }

  private:
    void Widen(std::size_t column, std::size_t size) {
        widths_[column] = std::max(widths_[column], size + 2);
    }

    std::array<std::size_t, 5> widths_ = {};
};

void WriteTable(const PlainRows& rows, BlockWriter& out) {
    const TableColumns columns(rows);
    columns.WriteHeader(out);
    for (const auto& row : rows) {
        columns.WriteLeft(out, 0, row.description);
        columns.WriteLeft(out, 1, row.enabled ? "true" : "false");
        columns.WriteRight(out, 2, row.id);
        columns.WriteLeft(out, 3, row.name);
        columns.WriteRight(out, 4, row.size);
        out << row.state << "\n";
    }
}

void Measure(const std::string& what, void (*write)(const PlainRows&, BlockWriter&),
             std::size_t count, int file) {
    const double perRow = 1.0 / static_cast<double>(count);
    const double before = HeldBytes();
    const Stopwatch building;
    PlainRows rows(count);
    for (std::size_t i = 0; i < count; ++i) {
        FillRow(rows[i], static_cast<std::int64_t>(i));
    }
    Report(what, "build_us_per_row", building.Microseconds() * perRow);
    Report(what, "held_bytes_per_row", (HeldBytes() - before) * perRow);
    const Stopwatch rendering;
    {
        BlockWriter out(file);
        write(rows, out);
    }
    Report(what, "render_us_per_row", rendering.Microseconds() * perRow);
}

} // namespace

int main(int argc, char** argv) {
    static const std::map<std::string, void (*)(const PlainRows&, BlockWriter&)> writers = {
        {"json", WriteJson},     {"xml", WriteXml},     {"python", WritePython},
        {"simple", WriteSimple}, {"table", WriteTable},
    };
    const auto writer = writers.find(argc > 1 ? argv[1] : "");
    const std::size_t count = argc > 2 ? std::strtoul(argv[2], nullptr, 10) : 0;
    if (writer == writers.end() || count == 0) {
        std::cerr << "usage: hand-written FORMATTER ROWS [FILE]\n";
        return 2;
    }
    const int file =
        open(argc > 3 ? argv[3] : "/dev/null", O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0644);
    Measure("hand-written " + writer->first, writer->second, count, file);
}
