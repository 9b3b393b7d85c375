#pragma once

#include <CppTools/autocli/formatters/DisplayContext.h>
#include <CppTools/autocli/formatters/FormatParameters.h>
#include <CppTools/autocli/formatters/Formatter.h>
#include <CppTools/callspec/Output.h>

#include <cstdint>
#include <memory>
#include <sstream>
#include <string>

namespace Fuzz {

/// What a formatter writes of a value, and what it says of its success.
struct Rendering {
    bool succeeded;
    std::string text;
};

inline Rendering Render(CppTools::AutoCli::Formatter& formatter,
                        const std::shared_ptr<CppTools::MetaObj::MetaObject>& value,
                        CppTools::AutoCli::FormatParameters parameters = {}, int width = 0) {
    CppTools::AutoCli::DisplayContext display;
    display.width = static_cast<std::uint16_t>(width);
    auto output = CppTools::CallSpec::Output::New();
    output->SetRootObject(value);
    std::ostringstream out;
    const bool succeeded = formatter.Format(output, parameters, display, out);
    return {succeeded, out.str()};
}

} // namespace Fuzz
