#pragma once

#include <CppTools/callspec/ParameterSpec.h>

/// Short forms of what every command declares.
namespace Devkit {

inline std::shared_ptr<CppTools::CallSpec::ParameterSpec>
Required(const char* name, CppTools::CallSpec::ParameterType type, const char* description) {
    auto parameter = CppTools::CallSpec::ParameterSpec::New(name, type);
    parameter->SetDescription(description);
    return parameter;
}

inline std::shared_ptr<CppTools::CallSpec::ParameterSpec>
Optional(const char* name, CppTools::CallSpec::ParameterType type, const char* description) {
    auto parameter = Required(name, type, description);
    parameter->SetRequired(false);
    return parameter;
}

} // namespace Devkit
