#include "Samples.h"
#include "Tool.h"

#include <gtest/gtest.h>
#include <libxml/parser.h>

#include <memory>
#include <ostream>

using HostPack::AddEverything;
using HostPack::Machine;
using HostPack::ToolOn;
using HostPack::Words;

namespace {

struct Command {
    const char* path;
    Words options;
    bool isList;
};

const std::vector<Command> kCommands = {
    {"system process list", {}, true},
    {"system process get", {"--pid=3"}, true},
    {"system uptime get", {}, false},
    {"system load get", {}, false},
    {"system memory get", {}, false},
    {"system user list", {}, true},
    {"system environment get", {}, true},
    {"storage filesystem list", {}, true},
    {"storage device list", {}, true},
    {"network interface list", {}, true},
    {"network interface get", {"--name=eth0"}, false},
    {"network route list", {}, true},
    {"network connection list", {}, true},
    {"kernel module list", {}, true},
    {"kernel parameter list", {}, true},
    {"kernel parameter get", {"--name=kernel.ostype"}, true},
    {"software package list", {}, true},
    {"software package get", {"--name=zsh"}, true},
};

std::ostream& operator<<(std::ostream& out, const Command& command) {
    return out << command.path;
}

/// Every command, on a machine with something for each of them.
class FormattersTest : public testing::TestWithParam<Command> {
  protected:
    FormattersTest() { AddEverything(machine_); }

    /// What a run that went well printed.
    std::string Print(const Words& dispatcherOptions) const {
        return Result(ToolOn(machine_).Run(GetParam().path, GetParam().options, dispatcherOptions));
    }

    std::string PrintAs(const std::string& formatter) const {
        return Print({"--formatter", formatter});
    }

    std::string PrintHelp() const {
        return Result(ToolOn(machine_).Run(GetParam().path, {"--help"}));
    }

    Machine machine_;

  private:
    static std::string Result(const TestSupport::ChildRun& run) {
        EXPECT_EQ(run.status, 0);
        EXPECT_EQ(run.err, "");
        return run.out;
    }
};

TEST_P(FormattersTest, DefaultFormatter_PrintsAHeaderAndFields) {
    const std::string text = Print({});
    const std::string errors[] = {"Error getting field", "Error: ", "Unknown column",
                                  "NULL Object"};
    for (const std::string& error : errors) {
        EXPECT_EQ(text.find(error), std::string::npos) << text;
    }
    EXPECT_GE(std::count(text.begin(), text.end(), '\n'), 3) << text;
}

TEST_P(FormattersTest, Simple_EveryFieldIsThere) {
    const std::string text = PrintAs("simple");
    EXPECT_EQ(text.find("Error getting field"), std::string::npos) << text;
    EXPECT_EQ(text.front() == '\n', GetParam().isList) << text;
}

TEST_P(FormattersTest, Table_ListsAreTablesAndStructuresAreRefused) {
    const auto run =
        ToolOn(machine_).Run(GetParam().path, GetParam().options, {"--formatter", "table"});
    EXPECT_EQ(run.status, GetParam().isList ? 0 : 1);
    EXPECT_EQ(run.err, GetParam().isList ? ""
                                         : "Error: Unexpected type for output, formatter, table, "
                                           "expected a List of structs\n");
    EXPECT_EQ(run.out.find("\n---") != std::string::npos, GetParam().isList) << run.out;
}

TEST_P(FormattersTest, Xml_IsWellFormed) {
    const std::string text = PrintAs("xml");
    const std::unique_ptr<xmlDoc, void (*)(xmlDoc*)> document(
        xmlReadMemory(text.data(), static_cast<int>(text.size()), "STDOUT", nullptr, 0),
        xmlFreeDoc);
    EXPECT_NE(document, nullptr) << text;
}

TEST_P(FormattersTest, Json_IsAListOrAnObject) {
    const auto result = nlohmann::json::parse(PrintAs("json"));
    EXPECT_EQ(result.is_array(), GetParam().isList);
    EXPECT_EQ(result.is_object(), !GetParam().isList);
    EXPECT_FALSE(result.empty());
}

TEST_P(FormattersTest, Python_IsOneExpression) {
    const std::string text = PrintAs("python");
    EXPECT_TRUE(text.starts_with(GetParam().isList ? "[{\"" : "{\"")) << text;
    EXPECT_TRUE(text.ends_with(GetParam().isList ? ", }, ]\n" : ", }\n")) << text;
}

TEST_P(FormattersTest, Help_ShowsAnExampleAndTheOptions) {
    const std::string text = PrintHelp();
    const std::string usage =
        std::string("Usage: ") + TANDRIL_PROGRAM + " " + GetParam().path + " <options>\n";
    EXPECT_TRUE(text.starts_with(usage)) << text;
    EXPECT_NE(text.find(std::string(": tandril ") + GetParam().path), std::string::npos) << text;
    EXPECT_TRUE(text.ends_with("Show the help message.\n")) << text;
    EXPECT_EQ(text.find('%'), std::string::npos) << "a placeholder is left in: " << text;
}

INSTANTIATE_TEST_SUITE_P(All, FormattersTest, testing::ValuesIn(kCommands), [](const auto& row) {
    std::string name = row.param.path;
    std::replace(name.begin(), name.end(), ' ', '_');
    return name;
});

class LayoutTest : public testing::Test {
  protected:
    std::string Print(const std::string& path, const Words& options) {
        return ToolOn(machine_).Run(path, options, {"--screen-width", "60"}).out;
    }

    Machine machine_;
};

TEST_F(LayoutTest, Table_UnitsAndWrappedLastColumn) {
    machine_.AddAccounts();
    machine_.AddProcess({.pid = 3,
                         .name = "editor",
                         .commandLine = std::string("editor\0--title\0one\ntwo\0", 23),
                         .uid = 1000,
                         .residentKb = 900});
    EXPECT_EQ(Print("system process list", {}),
              "PID  User  State     Threads  Resident  CPU Time  Command\n"
              "---  ----  --------  -------  --------  --------  -------\n"
              "  3  ada   sleeping        3    900 kB      0 ms  editor \n"
              "                                                  --title \n"
              "                                                  one\n"
              "                                                  two\n");
}

TEST_F(LayoutTest, Simple_AlignedFieldsUnitsAndPrintf) {
    HostPack::AddSystemFacts(machine_);
    EXPECT_EQ(Print("system load get", {}), "Load:\n"
                                            "   One Minute     :  205 %\n"
                                            "   Five Minutes   :   70 %\n"
                                            "   Fifteen Minutes: 1100 %\n"
                                            "   Processors     : 2\n"
                                            "   Overloaded     : true\n"
                                            "   Running        : 3\n"
                                            "   Tasks          : 456\n");
    EXPECT_EQ(Print("system uptime get", {}), "Uptime:\n"
                                              "   Duration: 2 days 02:01:02\n"
                                              "   Booted  : 2001-09-09T01:46:40Z\n"
                                              "   Seconds : 180062 s\n");
}

TEST_F(LayoutTest, Simple_HeaderHoldsTheName) {
    HostPack::AddParameters(machine_);
    EXPECT_EQ(Print("kernel parameter get", {"--name=kernel.ostype"}), "\n"
                                                                       "kernel.ostype:\n"
                                                                       "   Value   : Linux\n"
                                                                       "   Writable: true\n"
                                                                       "\n");
}

TEST_F(LayoutTest, Listing_NamespacesOfThePack) {
    EXPECT_EQ(Print("storage", {}), std::string("Usage: ") + TANDRIL_PROGRAM +
                                        " [disp options] storage <namespaces> <command>\n\n"
                                        "For help please run " +
                                        TANDRIL_PROGRAM +
                                        " --help\n\n"
                                        "Available Namespaces: \n\n"
                                        "device      Block devices\n"
                                        "filesystem  Mounted file systems\n"
                                        "mount       Mounts of every kind\n"
                                        "volume      Block devices with what is on them\n"
                                        "\n"
                                        "Available Commands: \n\n"
                                        "\n");
}

} // namespace
