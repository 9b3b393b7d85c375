#pragma once

#include "tests/support/ChildRun.h"
#include "tests/support/TempDirectory.h"

#include <CppTools/metaobj/MetaObject.h>
#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace HostPack {

using Words = std::vector<std::string>;
using Environment = std::vector<std::pair<std::string, std::string>>;

/// Runs a program with `words` as its arguments, `input` on its standard input and `environment`
/// added to this process's own.
TestSupport::ChildRun Run(const std::string& program, const Words& words,
                          const std::string& input = "", const Environment& environment = {});

/// The result that a document holds, read as the engine reads it. Throws for anything else.
std::shared_ptr<CppTools::MetaObj::MetaObject> ResultOf(const TestSupport::ChildRun& run);

/// One field of every structure in a list, in their order, as plain text.
Words Column(const TestSupport::ChildRun& run, const std::string& field);

/// What a run that failed leaves: its error lines, nothing else, and status 1.
testing::AssertionResult FailsWith(const TestSupport::ChildRun& run, const std::string& out);

/// One process of a made-up machine.
struct MadeUpProcess {
    long pid = 1;
    std::string name = "init";
    std::string commandLine = ""; ///< Words, each with a NUL behind it.
    std::string state = "S";
    long parent = 0;
    long uid = 0;
    long residentKb = 100;
    long ticks = 0; ///< Half of them for the user, half for the system.
    long flags = 0;
    long nice = 0;
    long startTicks = 0;
};

/// A directory that stands in for the root of a machine, and the program that reads it.
class Machine {
  public:
    /// Paths are absolute on that machine.
    void Write(const std::string& path, const std::string& content) const;
    void MakeDirectory(const std::string& path) const;
    void MakeLink(const std::string& path, const std::string& target) const;
    void AddProcess(const MadeUpProcess& process) const;

    /// The accounts root (0) and ada (1000), with groups of their names.
    void AddAccounts() const;

    const std::string& Root() const { return directory_.Path(); }

    /// Asks the program, without the tool around it.
    TestSupport::ChildRun Ask(Words words, const std::string& input = "") const;

  private:
    TestSupport::TempDirectory directory_;
};

} // namespace HostPack
