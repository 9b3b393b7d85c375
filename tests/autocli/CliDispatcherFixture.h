#pragma once

#include <CppTools/autocli/CliDispatcher.h>
#include <CppTools/autocli/CommandOutput.h>
#include <CppTools/autocli/OptionParser.h>
#include <CppTools/autocli/RootNamespace.h>
#include <CppTools/autocli/formatters/FormatParameters.h>
#include <CppTools/metaobj/MetaInt.h>
#include <CppTools/metaobj/MetaString.h>
#include <tests/support/ScriptedCommand.h>
#include <tests/support/ScriptedPlugin.h>
#include <tests/support/StreamCapture.h>

#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <vector>

namespace TestSupport {

inline std::string UsageText(const std::string& dispatcherName) {
    return dispatcherName +
           " [dispatcher options] <namespaces> <command> [options]\n"
           "      For a list of available namespaces run " +
           dispatcherName +
           " with no arguments.  \n"
           "      Objects can be listed by specifying just the namespace.\n"
           "      Commands can be listed by specifying the namespace and object.\n"
           "\n"
           " Dispatcher Options: \n"
           "       --plugin-dir                    Add all the plug-ins from this directory\n"
           "       --plugin                        Add a specific file plugin.  (Multiple --plugin "
           "options can be passed.)\n"
           "       --formatter <formatter>         Override the formatter to use for a given "
           "command\n"
           "       --format-param <key>=<value>    Set a formatter parameter to give the formatter "
           "information about how to format the command\n"
           "       --screen-width <width>          Use the specified screen width when formatting "
           "text\n"
           "    -h|--help                          Show this message.\n"
           "\n";
}

/// The beginning of every listing; `path` has a blank before each of its names.
inline std::string ListingHead(const std::string& dispatcherName, const std::string& path) {
    return "Usage: " + dispatcherName + " [disp options]" + path +
           " <namespaces> <command>\n\nFor help please run " + dispatcherName + " --help\n\n";
}

/// A dispatcher with the namespace "system" and these commands in it:
/// - "count" takes the integer "limit" and the flag "all" and gives 7, shown by "simple";
/// - "echo" takes "text" and gives it back, shown by "simple";
/// - "fail" reports two errors.
/// The formatter "probe" prints its own name.
class CliDispatcherFixture : public testing::Test {
  protected:
    CliDispatcherFixture() {
        using CppTools::CallSpec::ParameterType;
        const auto system = dispatcher.GetRootNamespace()->SubNamespace("system");
        system->SetDescription("The system.");
        count->SetDescription("Counts things.");
        count->SetDefaultOutputFormatter("simple");
        const auto limit = OptionalParameter("limit", ParameterType::Int, "l");
        limit->SetDescription("The limit.");
        const auto all = OptionalParameter("all", ParameterType::Flag);
        all->SetDescription("Count all.");
        count->parameters = {limit, all};
        system->RegisterNamespaceNode(count, "count");
        echo->SetDescription("Repeats.");
        echo->SetDefaultOutputFormatter("simple");
        const auto text = OptionalParameter("text", ParameterType::String);
        text->SetDescription("The text.");
        echo->parameters = {text};
        echo->prototype = CppTools::MetaObj::MetaString::New();
        echo->work = [](const auto& input, const auto& output) {
            output->SetRootObject(CppTools::MetaObj::MetaString::New(input->GetParameter("text")));
        };
        system->RegisterNamespaceNode(echo, "echo");
        fail->SetDescription("Fails.");
        fail->work = [](const auto&, const auto& output) {
            output->AddErrorMessage("first");
            output->AddErrorMessage("second");
        };
        system->RegisterNamespaceNode(fail, "fail");
        dispatcher.RegisterPlugin(ScriptedPlugin::New("probing", {}, {probe}));
    }

    /// The width belongs to the process, so every test takes back what it set.
    ~CliDispatcherFixture() override { ApplyOptions({"--screen-width=0"}); }

    /// Handles one line; what it prints is in `printed`.
    bool Handle(const std::vector<std::string>& words, bool allowInput = false) {
        CppTools::AutoCli::OptionParser parser;
        parser.ParseVector(words);
        bool result = false;
        printed = PrintedBy([&] { result = dispatcher.HandleOptions(parser, allowInput); });
        return result;
    }

    /// Applies dispatcher options alone; what they set is in `format` and `output`.
    bool ApplyOptions(const std::vector<std::string>& words) {
        CppTools::AutoCli::OptionParser parser;
        parser.ParseVector(words);
        bool result = false;
        printed =
            PrintedBy([&] { result = dispatcher.HandleDispatcherOptions(parser, format, output); });
        return result;
    }

    CppTools::AutoCli::CliDispatcher dispatcher;
    const std::shared_ptr<ScriptedCommand> count =
        ScriptedCommand::Giving(CppTools::MetaObj::MetaInt::New(7));
    const std::shared_ptr<ScriptedCommand> echo = ScriptedCommand::New();
    const std::shared_ptr<ScriptedCommand> fail = ScriptedCommand::New();
    const std::shared_ptr<ScriptedFormatter> probe =
        std::make_shared<ScriptedFormatter>("probe", "probe\n");
    CppTools::AutoCli::FormatParameters format;
    const std::shared_ptr<CppTools::AutoCli::CommandOutput> output =
        CppTools::AutoCli::CommandOutput::New();
    Printed printed;
};

} // namespace TestSupport
