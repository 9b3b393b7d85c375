#pragma once

#include <CppTools/autocli/formatters/CommandHelpFormatter.h>
#include <tests/support/Rendering.h>
#include <tests/support/Values.h>

#include <cstdint>
#include <gtest/gtest.h>
#include <string>
#include <utility>
#include <vector>

/// Help records as commands build them, written down in one expression.
namespace TestSupport {

struct HelpOption {
    std::string name;
    std::string shortName;
    std::string description;
    bool required = false;
    bool secret = false;
};

inline Record OptionRecord(const HelpOption& option) {
    return Struct("TandrilCommandParameter", {{"Name", Text(option.name)},
                                              {"Short Name", Text(option.shortName)},
                                              {"Description", Text(option.description)},
                                              {"Required", Bool(option.required)},
                                              {"Secret", Bool(option.secret)}});
}

inline Value OptionList(const std::vector<HelpOption>& options) {
    std::vector<Record> rows;
    for (const auto& option : options) {
        rows.push_back(OptionRecord(option));
    }
    return Rows(OptionRecord({}), rows);
}

/// Examples as pairs of description and syntax.
inline Value ExampleList(const std::vector<std::pair<std::string, std::string>>& examples) {
    std::vector<Record> rows;
    for (const auto& [description, syntax] : examples) {
        rows.push_back(Struct("TandrilCommandExample",
                              {{"Description", Text(description)}, {"Syntax", Text(syntax)}}));
    }
    return Rows(Struct("TandrilCommandExample", {{"Description", Text("")}, {"Syntax", Text("")}}),
                rows);
}

/// The help of the command "disk list".
inline Record HelpRecord(const Value& options, const Value& examples) {
    return Struct("TandrilCommandHelp", {{"Dispatcher", Text("tandril")},
                                         {"Path", Text("disk list")},
                                         {"Description", Text("Lists disks.")},
                                         {"Param List", options},
                                         {"Example List", examples}});
}

/// What stands above the options of that record.
inline constexpr const char* kHelpHeading = "Usage: tandril disk list <options>\n"
                                            "\n"
                                            "Description: Lists disks.\n"
                                            "\n";

/// What follows the description of a secret option.
inline constexpr const char* kSecretWarning =
    "WARNING: Providing secret values on the command line is insecure because it may be logged or "
    "preserved in history files. Instead, specify this option with no value on the command line, "
    "and enter the value on the supplied prompt.";

/// The help that a record becomes on a display of some width.
inline std::string Help(const Value& record, int width = 0) {
    const auto [result, text] = RenderWith<CppTools::AutoCli::CommandHelpFormatter>(
        record, {}, static_cast<std::uint16_t>(width));
    EXPECT_TRUE(result);
    return text;
}

inline std::string HelpOfOptions(const std::vector<HelpOption>& options, int width = 0) {
    return Help(HelpRecord(OptionList(options), ExampleList({})), width);
}

} // namespace TestSupport
