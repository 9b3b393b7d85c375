// xml-writer ROWS: the rows written by libxml2's xmlTextWriter, indented.

#include "../support/Measure.h"
#include "../support/Rows.h"

#include <iostream>
#include <libxml/xmlwriter.h>
#include <vector>

namespace {

const xmlChar* Text(const char* text) {
    return reinterpret_cast<const xmlChar*>(text);
}

void WriteField(xmlTextWriterPtr writer, const char* name, const char* kind, const char* value) {
    xmlTextWriterStartElement(writer, Text("field"));
    xmlTextWriterWriteAttribute(writer, Text("name"), Text(name));
    xmlTextWriterWriteElement(writer, Text(kind), Text(value));
    xmlTextWriterEndElement(writer);
}

void WriteRow(xmlTextWriterPtr writer, const Bench::PlainRow& row) {
    xmlTextWriterStartElement(writer, Text("structure"));
    xmlTextWriterWriteAttribute(writer, Text("typeName"), Text("Row"));
    WriteField(writer, "Description", "string", row.description);
    WriteField(writer, "Enabled", "boolean", row.enabled ? "true" : "false");
    WriteField(writer, "Id", "integer", std::to_string(row.id).c_str());
    WriteField(writer, "Name", "string", row.name);
    WriteField(writer, "Size", "integer", std::to_string(row.size).c_str());
    WriteField(writer, "State", "string", row.state);
    xmlTextWriterEndElement(writer);
}

void WriteRows(const std::vector<Bench::PlainRow>& rows) {
    auto* const writer = xmlNewTextWriterFilename("/dev/null", 0);
    xmlTextWriterSetIndent(writer, 1);
    xmlTextWriterSetIndentString(writer, Text("   "));
    xmlTextWriterStartDocument(writer, nullptr, nullptr, nullptr);
    xmlTextWriterStartElement(writer, Text("output"));
    xmlTextWriterStartElement(writer, Text("list"));
    xmlTextWriterWriteAttribute(writer, Text("type"), Text("structure"));
    for (const auto& row : rows) {
        WriteRow(writer, row);
    }
    xmlTextWriterEndDocument(writer);
    xmlFreeTextWriter(writer);
}

} // namespace

int main(int argc, char** argv) {
    using namespace Bench;
    const std::size_t count = argc > 1 ? std::strtoul(argv[1], nullptr, 10) : 0;
    if (count == 0) {
        std::cerr << "usage: xml-writer ROWS\n";
        return 2;
    }
    std::vector<PlainRow> rows(count);
    for (std::size_t i = 0; i < count; ++i) {
        FillRow(rows[i], static_cast<std::int64_t>(i));
    }
    const Stopwatch rendering;
    WriteRows(rows);
    Report("xmlTextWriter", "render_us_per_row",
           rendering.Microseconds() / static_cast<double>(count));
}
