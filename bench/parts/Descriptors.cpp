#include "../support/DescriptorText.h"

#include <CppTools/CppTools.h>

#include <benchmark/benchmark.h>

#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <stdlib.h>
#include <unistd.h>

namespace {

using namespace CppTools;

/// A descriptor of so many commands, on disk for as long as this lives.
class DescriptorFile {
  public:
    explicit DescriptorFile(long commands) {
        const int file = mkstemps(path_, 4);
        if (file < 0) {
            throw std::runtime_error("no temporary file");
        }
        close(file);
        std::ofstream(path_) << Bench::DescriptorText(commands);
    }

    ~DescriptorFile() { std::filesystem::remove(path_); }

    DescriptorFile(const DescriptorFile&) = delete;
    DescriptorFile& operator=(const DescriptorFile&) = delete;

    const char* Path() const { return path_; }

  private:
    char path_[32] = "/tmp/bench-XXXXXX.xml";
};

void ReadDescriptor(benchmark::State& state) {
    const DescriptorFile file(state.range(0));
    for (auto _ : state) {
        AutoCli::XmlPlugin plugin(file.Path());
        plugin.Initialize();
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void LoadDescriptor(benchmark::State& state) {
    const DescriptorFile file(state.range(0));
    for (auto _ : state) {
        AutoCli::Dispatcher dispatcher;
        dispatcher.AddPlugin(file.Path());
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

} // namespace

BENCHMARK(ReadDescriptor)->Arg(10)->Arg(1000);
BENCHMARK(LoadDescriptor)->Arg(10)->Arg(1000);
