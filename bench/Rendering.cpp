// rendering FORMATTER ROWS: builds ROWS rows of six fields, renders them to /dev/null, and prints
// the time for each row and how much the peak of memory grew while rendering.

#include <CppTools/CppTools.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iostream>
#include <sys/resource.h>

namespace {

using namespace CppTools;
using MetaObj::MetaList;
using MetaObj::MetaStruct;

std::shared_ptr<MetaStruct> NewRow(long number) {
    auto row = MetaStruct::New("Row");
    row->SetField("Id", number);
    row->SetField("Size", number * 4096);
    row->SetField("Active", number % 3 == 0);
    row->SetField("Name", "device-" + std::to_string(number));
    row->SetField("Path", "/dev/disk/by-id/device-" + std::to_string(number));
    row->SetField("Description", "a disk with a rather ordinary description");
    return row;
}

std::shared_ptr<MetaList> NewRows(long count) {
    auto rows = MetaList::New(MetaObj::MetaType::Struct, NewRow(0));
    for (long number = 0; number < count; ++number) {
        rows->Add(NewRow(number));
    }
    return rows;
}

long PeakKilobytes() {
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return usage.ru_maxrss;
}

int Measure(const std::string& formatterName, long count) {
    AutoCli::Dispatcher dispatcher;
    const auto formatter = dispatcher.GetFormatter(formatterName);
    if (!formatter || count < 1) {
        std::cerr << "usage: rendering FORMATTER ROWS\n";
        return 1;
    }
    auto output = CallSpec::Output::New();
    output->SetRootObject(NewRows(count));
    AutoCli::FormatParameters params;
    AutoCli::DisplayContext display;
    std::ofstream out("/dev/null");

    const long peakBefore = PeakKilobytes();
    const auto begin = std::chrono::steady_clock::now();
    formatter->Format(output, params, display, out);
    const std::chrono::duration<double, std::micro> took = std::chrono::steady_clock::now() - begin;
    std::printf("%-7s %9ld rows  %7.3f us a row  held %7ld kB, grew by %ld kB\n",
                formatterName.c_str(), count, took.count() / static_cast<double>(count), peakBefore,
                PeakKilobytes() - peakBefore);
    return 0;
}

} // namespace

int main(int argc, char** argv) {
    return Measure(argc > 1 ? argv[1] : "", argc > 2 ? std::atol(argv[2]) : 0);
}
