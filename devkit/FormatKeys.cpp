#include <devkit/FormatKeys.h>

#include <CppTools/CppTools.h>

#include <boost/algorithm/string/trim.hpp>

namespace Devkit {

namespace {

using CppTools::MetaObj::MetaObject;
using CppTools::MetaObj::MetaStruct;

FormatKey Split(xmlNode& element) {
    FormatKey key{LineOf(element), AttributeOf(element, "name"), TextOf(element), "", "", ""};
    const std::size_t colon = key.key.find(':');
    key.word = key.key.substr(0, colon);
    if (colon != std::string::npos) {
        const std::string rest = key.key.substr(colon + 1);
        const std::size_t dot = rest.find('.');
        key.type = rest.substr(0, dot);
        key.field = dot == std::string::npos ? "" : rest.substr(dot + 1);
    }
    return key;
}

} // namespace

std::vector<FormatKey> FormatKeysOf(const CommandElement& command) {
    std::vector<FormatKey> keys;
    if (auto* const parameters = ChildOf(*command.element, "format-parameters")) {
        for (xmlNode* element : ChildrenOf(*parameters, "format-parameter")) {
            keys.push_back(Split(*element));
        }
    }
    return keys;
}

ShownOutput::ShownOutput(CppTools::AutoCli::ExtensionCommand& command)
    : types_(TypesOf(command.GetOutputSpecInternal()->GetRootObject())),
      rowType_(RowTypeOf(command.GetOutputSpecInternal()->GetRootObject())),
      isTable_(command.GetDefaultOutputFormatParameters().GetFormatter() == "table") {}

std::shared_ptr<MetaObject> ShownOutput::FindField(const std::shared_ptr<MetaStruct>& structure,
                                                   const std::string& name) const {
    return isTable_ ? CppTools::AutoCli::GetSubField(structure, boost::trim_copy(name))
                    : structure->GetField(name);
}

} // namespace Devkit
