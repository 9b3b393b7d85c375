#pragma once

#include <CppTools/callspec/InputSpec.h>
#include <CppTools/callspec/OutputSpec.h>

#include <string>
#include <utility>
#include <vector>

struct _xmlNode;

/// The elements that describe one command in a descriptor, each read by a function of its own.
/// Mistakes are thrown as `CppToolException`.
namespace CppTools::AutoCli {

class CommandSpec;

/// The parameters and supported contexts of an input-spec element.
std::shared_ptr<CallSpec::InputSpec> ExtractInputSpec(_xmlNode* element);

/// One parameter element.
std::shared_ptr<CallSpec::ParameterSpec> ExtractInputParam(_xmlNode* element);

/// One constraint element.
std::shared_ptr<CallSpec::ParameterConstraint> ExtractParamConstraint(_xmlNode* element);

/// The values and texts of an enum element, in document order.
std::vector<std::pair<std::string, std::string>> ExtractEnum(_xmlNode* element);

/// The prototype of an output-spec element; one without an element gives none.
std::shared_ptr<CallSpec::OutputSpec> ExtractOutputSpec(_xmlNode* element);

/// Applies a format-parameters element to the command's defaults.
void ExtractFormatParams(_xmlNode* element, CommandSpec& command);

/// Checks a meta-data element; commands have no place for what it holds.
void ExtractMetaData(_xmlNode* element);

} // namespace CppTools::AutoCli
