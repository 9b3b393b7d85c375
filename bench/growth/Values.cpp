#include "Curves.h"

#include <CppTools/CppTools.h>

#include <fstream>

namespace Bench {

using namespace CppTools;
using MetaObj::MetaList;
using MetaObj::MetaObject;
using MetaObj::MetaStruct;
using MetaObj::MetaType;

namespace {

void MeasureFormatter(const std::string& curve, const char* name,
                      const std::shared_ptr<MetaObject>& value,
                      AutoCli::FormatParameters parameters = {}) {
    AutoCli::Dispatcher dispatcher;
    const auto formatter = dispatcher.GetFormatter(name);
    const auto output = CallSpec::Output::New();
    output->SetRootObject(value);
    AutoCli::DisplayContext display;
    display.width = 80;
    std::ofstream out("/dev/null");
    Report(curve, name, LeastMilliseconds([&] {
               formatter->Format(output, parameters, display, out);
               out.flush();
           }));
}

std::shared_ptr<MetaStruct> NewWideRow(long columns) {
    auto row = MetaStruct::New("Row");
    for (long i = 0; i < columns; ++i) {
        row->SetField("Field" + std::to_string(i), "a text of some length");
    }
    return row;
}

std::shared_ptr<MetaList> NewWideRows(long columns) {
    auto rows = MetaList::New(MetaType::Struct, NewWideRow(columns));
    for (int i = 0; i < 1000; ++i) {
        rows->Add(NewWideRow(columns));
    }
    return rows;
}

std::shared_ptr<MetaStruct> NewNest(long depth) {
    auto inner = MetaStruct::New("Level");
    inner->SetField("Name", "innermost");
    for (long level = 1; level < depth; ++level) {
        auto outer = MetaStruct::New("Level");
        outer->SetField("Inner", inner);
        inner = outer;
    }
    return inner;
}

/// So many bytes, in words.
std::string TextOf(long size) {
    std::string text(static_cast<std::size_t>(size), 'x');
    for (std::size_t i = 9; i < text.size(); i += 10) {
        text[i] = ' ';
    }
    return text;
}

} // namespace

void MeasureColumns(long size) {
    Report("columns", "build", LeastMilliseconds([=] { NewWideRows(size); }));
    const auto rows = NewWideRows(size);
    for (const char* formatter : {"json", "xml", "table", "python", "simple"}) {
        MeasureFormatter("columns", formatter, rows);
    }
    const std::shared_ptr<MetaObject> others = NewWideRows(size);
    Report("columns", "compare",
           LeastMilliseconds([&] { return rows->IsSameStructure(others, nullptr); }));
}

/// One line each: the indented formats grow with the square of the depth, as their text does.
void MeasureNesting(long size) {
    Report("nesting", "build", LeastMilliseconds([=] { NewNest(size); }));
    const auto nest = NewNest(size);
    MeasureFormatter("nesting", "python", nest);
    const std::shared_ptr<MetaObject> other = NewNest(size);
    Report("nesting", "compare",
           LeastMilliseconds([&] { return nest->IsSameStructure(other, nullptr); }));
    Report("nesting", "plain text", LeastMilliseconds([&] { return nest->ToString(); }));
}

void MeasureValue(long size) {
    const std::string text = TextOf(size);
    const auto value = MetaObj::MetaString::New(text);
    for (const char* formatter : {"json", "xml", "python", "simple"}) {
        MeasureFormatter("value", formatter, value);
    }
    AutoCli::FormatParameters wrapping;
    wrapping.SetParameter("wrap-last", "true");
    auto row = MetaStruct::New("Row");
    row->SetField("Name", "the column beside which it is wrapped");
    row->SetField("Text", text);
    auto rows = MetaList::New(MetaType::Struct, row);
    rows->Add(row);
    MeasureFormatter("value", "table", rows, wrapping);

    const std::string document = "<output><string>" + text + "</string></output>";
    Report("value", "read",
           LeastMilliseconds([&] { return AutoCli::XmlUtil_ParseXmlOutput(document); }));
    const std::string line = "host ping --name \"" + text + "\"";
    Report("value", "parse", LeastMilliseconds([&] { AutoCli::OptionParser().ParseString(line); }));
    AutoCli::ExtensionCommand command;
    Report("value", "sanitise", LeastMilliseconds([&] { return command.SanitizeInput(text); }));
}

} // namespace Bench
