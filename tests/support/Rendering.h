#pragma once

#include <CppTools/autocli/formatters/DisplayContext.h>
#include <CppTools/autocli/formatters/FormatParameters.h>
#include <CppTools/autocli/formatters/Formatter.h>
#include <CppTools/callspec/Output.h>
#include <CppTools/metaobj/MetaObject.h>
#include <tests/support/NamedRow.h>
#include <tests/support/Values.h>

#include <cstdint>
#include <memory>
#include <sstream>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

/// Formatters driven the way the dispatcher drives them.
namespace TestSupport {

using ParameterEntries = std::vector<std::pair<std::string, std::string>>;

inline CppTools::AutoCli::FormatParameters ParametersOf(const ParameterEntries& entries) {
    CppTools::AutoCli::FormatParameters params;
    for (const auto& [key, value] : entries) {
        params.SetParameter(key, value);
    }
    return params;
}

/// What `Format` answered, and the text it wrote.
using Rendering = std::pair<bool, std::string>;

inline Rendering Render(CppTools::AutoCli::Formatter& formatter,
                        const std::shared_ptr<CppTools::MetaObj::MetaObject>& root,
                        const ParameterEntries& entries = {}, std::uint16_t width = 0) {
    const auto output = CppTools::CallSpec::Output::New();
    output->SetRootObject(root);
    CppTools::AutoCli::FormatParameters params = ParametersOf(entries);
    CppTools::AutoCli::DisplayContext display;
    display.width = width;
    std::ostringstream out;
    const bool result = formatter.Format(output, params, display, out);
    return {result, out.str()};
}

/// The same with a formatter made for this one call.
template <typename ConcreteFormatter>
Rendering RenderWith(const std::shared_ptr<CppTools::MetaObj::MetaObject>& root,
                     const ParameterEntries& entries = {}, std::uint16_t width = 0) {
    ConcreteFormatter formatter;
    return Render(formatter, root, entries, width);
}

/// The text of one value at a nesting level, from a formatter that looks at no parameters.
template <typename ConcreteFormatter>
std::string RenderAt(int level, const std::shared_ptr<CppTools::MetaObj::MetaObject>& value) {
    std::ostringstream out;
    ConcreteFormatter().Format(value, out, level);
    return out.str();
}

/// Name, description and flag of every documented parameter.
using DocumentedParams = std::vector<std::tuple<std::string, std::string, bool>>;

inline DocumentedParams DocumentedParamsOf(const CppTools::AutoCli::Formatter& formatter) {
    DocumentedParams table;
    for (const auto& param : formatter.GetParams()) {
        table.emplace_back(param.name, param.description, param.flag);
    }
    return table;
}

/// A root object, and the text that it becomes.
struct RootCase : NamedRow {
    Value root;
    std::string text;
};

/// A root object that a formatter refuses.
struct WrongRoot : NamedRow {
    Value root;
};

} // namespace TestSupport
