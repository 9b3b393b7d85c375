#include <CppTools/autocli/Command.h>
#include <CppTools/autocli/RootNamespace.h>
#include <CppTools/autocli/plugins/TemplateCheck.h>
#include <CppTools/autocli/plugins/XmlPlugin.h>
#include <CppTools/autocli/plugins/XmlUtil.h>

#include <boost/algorithm/string/classification.hpp>
#include <boost/algorithm/string/replace.hpp>
#include <boost/algorithm/string/split.hpp>
#include <gtest/gtest.h>
#include <libxml/parser.h>
#include <tests/support/TreeLookup.h>

#include <filesystem>
#include <list>
#include <memory>
#include <string>
#include <vector>

// The descriptors that come with the tool are examples of how templates are written.

namespace {

using CppTools::AutoCli::AutoCli_CheckTemplate;
using CppTools::AutoCli::HazardSeverity;
using CppTools::AutoCli::RootNamespace;
using CppTools::AutoCli::XmlPlugin;

using Texts = std::vector<std::string>;

std::vector<std::filesystem::path> ShippedDescriptors() {
    std::vector<std::filesystem::path> paths;
    for (const char* folder : {HOST_DESCRIPTORS, EXAMPLE_DESCRIPTORS}) {
        for (const auto& entry : std::filesystem::directory_iterator(folder)) {
            if (entry.path().string().find(".xml") != std::string::npos) {
                paths.push_back(entry.path());
            }
        }
    }
    return paths;
}

/// Where the programs that the host pack calls lie once they are installed.
std::string Configured(std::string text) {
    boost::algorithm::replace_all(text, "@HOST_FACTS@", "/usr/libexec/tandril/tandril-host-facts");
    boost::algorithm::replace_all(text, "@TANDRIL_RESULT@", "/usr/bin/tandril-result");
    return text;
}

using Document = std::unique_ptr<xmlDoc, decltype(&xmlFreeDoc)>;

/// The errors of one command, each with the command's path.
Texts ErrorsOf(xmlNode* command, const std::shared_ptr<RootNamespace>& root) {
    using namespace CppTools::AutoCli;
    const std::string path = XmlUtil_ExtractAttribute(command, "path");
    std::list<std::string> names;
    boost::algorithm::split(names, path, boost::algorithm::is_any_of("."));
    const auto registered = std::dynamic_pointer_cast<Command>(root->ResolveNode(names));
    Texts errors;
    for (const auto& hazard : AutoCli_CheckTemplate(
             Configured(XmlUtil_GetContentForChildByTag(command, "execute")),
             registered->GetInputSpec(), XmlUtil_GetContentForChildByTag(command, "stdin"))) {
        if (hazard.severity == HazardSeverity::Error) {
            errors.push_back(path + " " + hazard.rule + " " + hazard.placeholder);
        }
    }
    return errors;
}

TEST(TemplateDescriptorsTest, Check_ShippedDescriptorsHaveNoErrors) {
    int commands = 0;
    for (const auto& path : ShippedDescriptors()) {
        SCOPED_TRACE(path);
        const auto plugin = XmlPlugin::New(path);
        plugin->Initialize();
        const auto root = TestSupport::NewRoot();
        plugin->RegisterNamespaces(root);
        const Document document(xmlReadFile(path.c_str(), nullptr, 0), xmlFreeDoc);
        xmlNode* const list = CppTools::AutoCli::XmlUtil_FindChildNode(
            xmlDocGetRootElement(document.get()), "commands");
        for (xmlNode* node = list->children; node != nullptr; node = node->next) {
            if (node->type == XML_ELEMENT_NODE) {
                EXPECT_EQ(ErrorsOf(node, root), Texts{});
                ++commands;
            }
        }
    }
    EXPECT_GT(commands, 15);
}

} // namespace
