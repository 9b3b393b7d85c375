// line-stream LINES: runs a stream of command lines, each of them a trivial command.

#include "../support/EngineCommands.h"
#include "../support/Measure.h"

#include <cstdlib>
#include <iostream>
#include <sstream>

namespace {

class Ping : public Bench::FourParameters {
  public:
    Ping() { SetDefaultOutputFormatter("simple"); }

    std::shared_ptr<InputSpec> GetInputSpecInternal() override { return InputSpec::New(); }
};

} // namespace

int main(int argc, char** argv) {
    const int lines = argc > 1 ? std::atoi(argv[1]) : 0;
    if (lines < 1) {
        std::cerr << "usage: line-stream LINES\n";
        return 2;
    }
    CppTools::AutoCli::CliDispatcher dispatcher;
    dispatcher.GetRootNamespace()->SubNamespace("host")->RegisterNamespaceNode(
        std::make_shared<Ping>(), "ping");
    std::string text;
    for (int i = 0; i < lines; ++i) {
        text += "host ping\n";
    }
    std::istringstream stream(text);
    std::ofstream discard("/dev/null");
    auto* const screen = std::cout.rdbuf(discard.rdbuf());
    const Bench::Stopwatch running;
    const bool succeeded = dispatcher.ParseStreamInput(stream);
    const double microseconds = running.Microseconds();
    std::cout.rdbuf(screen);
    Bench::Report("line stream", "us_per_line", microseconds / lines);
    return succeeded ? 0 : 1;
}
