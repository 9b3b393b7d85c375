#pragma once

#include <CppTools/autocli/Namespace.h>
#include <CppTools/autocli/formatters/DisplayContext.h>
#include <CppTools/autocli/formatters/FormatParameters.h>
#include <CppTools/autocli/formatters/Formatter.h>
#include <CppTools/autocli/plugins/Plugin.h>

#include <cstdint>
#include <functional>
#include <memory>
#include <ostream>
#include <string>
#include <utility>
#include <vector>

namespace TestSupport {

/// A formatter that writes a fixed text and remembers what it was given.
class ScriptedFormatter : public CppTools::AutoCli::Formatter {
  public:
    explicit ScriptedFormatter(const std::string& name, std::string printedText = "",
                               bool answer = true)
        : Formatter(name), text(std::move(printedText)), result(answer) {}

    bool Format(const std::shared_ptr<CppTools::CallSpec::Output>& output,
                CppTools::AutoCli::FormatParameters& params,
                CppTools::AutoCli::DisplayContext& display, std::ostream& out) override {
        seenOutput = output;
        seenParams = params;
        seenWidth = display.width;
        seenHeight = display.height;
        out << text;
        return result;
    }

    std::string text;
    bool result;
    std::shared_ptr<CppTools::CallSpec::Output> seenOutput;
    CppTools::AutoCli::FormatParameters seenParams;
    std::uint16_t seenWidth = 0;
    std::uint16_t seenHeight = 0;
};

/// A plug-in whose registration and formatters are handed in.
class ScriptedPlugin : public CppTools::AutoCli::Plugin {
  public:
    using Registration = std::function<void(std::shared_ptr<CppTools::AutoCli::Namespace>)>;
    using FormatterList = std::vector<std::shared_ptr<CppTools::AutoCli::Formatter>>;

    explicit ScriptedPlugin(std::string name, Registration registration = {},
                            FormatterList offered = {})
        : formatters(std::move(offered)), name_(std::move(name)),
          registration_(std::move(registration)) {}

    static std::shared_ptr<ScriptedPlugin>
    New(const std::string& name, Registration registration = {}, FormatterList offered = {}) {
        return std::make_shared<ScriptedPlugin>(name, std::move(registration), std::move(offered));
    }

    void Initialize() override { ++initializations; }

    const std::string& GetName() const override { return name_; }

    void RegisterNamespaces(std::shared_ptr<CppTools::AutoCli::Namespace> root) override {
        if (registration_) {
            registration_(std::move(root));
        }
    }

    bool HasFormatter(const std::string& name) override {
        return !deniesFormatters && GetFormatter(name) != nullptr;
    }

    std::shared_ptr<CppTools::AutoCli::Formatter> GetFormatter(const std::string& name) override {
        for (const auto& formatter : formatters) {
            if (formatter->GetName() == name) {
                return formatter;
            }
        }
        return nullptr;
    }

    FormatterList& GetFormatters() override { return formatters; }

    FormatterList formatters;
    bool deniesFormatters = false; ///< Whether `HasFormatter` answers false for all of them.
    int initializations = 0;

  private:
    std::string name_;
    Registration registration_;
};

} // namespace TestSupport
