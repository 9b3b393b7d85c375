#include <devkit/XmlErrors.h>
#include <devkit/XmlFile.h>

#include <CppTools/CppTools.h>

#include <array>
#include <cerrno>
#include <cstdio>
#include <system_error>

#include <libxml/parser.h>

namespace Devkit {

namespace {

using File = std::unique_ptr<std::FILE, int (*)(std::FILE*)>;

[[noreturn]] void Refuse(const std::string& path) {
    throw CppTools::CppToolException("Unable to read " + path + ": " +
                                     std::generic_category().message(errno));
}

struct FreeContext {
    void operator()(xmlParserCtxt* context) const { xmlFreeParserCtxt(context); }
};

/// A parser hands itself to its handler of errors.
void CollectFromParser(void* parser, XmlErrorPointer error) {
    CollectError(static_cast<xmlParserCtxt*>(parser)->_private, error);
}

} // namespace

std::string ReadFile(const std::string& path) {
    const File file(std::fopen(path.c_str(), "rb"), &std::fclose);
    if (!file) {
        Refuse(path);
    }
    std::string content;
    std::array<char, 65536> block{};
    while (const std::size_t size = std::fread(block.data(), 1, block.size(), file.get())) {
        content.append(block.data(), size);
    }
    if (std::ferror(file.get()) != 0) {
        Refuse(path);
    }
    return content;
}

XmlDocument ReadXml(const std::string& text, const std::string& name,
                    std::vector<XmlProblem>& problems) {
    const std::unique_ptr<xmlParserCtxt, FreeContext> parser(xmlNewParserCtxt());
    parser->_private = &problems;
    parser->sax->serror = CollectFromParser;
    return XmlDocument(xmlCtxtReadMemory(parser.get(), text.data(), static_cast<int>(text.size()),
                                         name.c_str(), nullptr, XML_PARSE_BIG_LINES));
}

std::string ToText(const XmlProblem& problem) {
    return problem.column == 0 ? problem.text
                               : "column " + std::to_string(problem.column) + ": " + problem.text;
}

long LineOf(const xmlNode& node) {
    return xmlGetLineNo(&node);
}

std::vector<xmlNode*> ChildrenOf(const xmlNode& parent, const std::string& name) {
    std::vector<xmlNode*> found;
    for (auto* child = parent.children; child != nullptr; child = child->next) {
        if (child->type == XML_ELEMENT_NODE && (name.empty() || NameOf(*child) == name)) {
            found.push_back(child);
        }
    }
    return found;
}

xmlNode* ChildOf(const xmlNode& parent, const std::string& name) {
    const auto found = ChildrenOf(parent, name);
    return found.empty() ? nullptr : found.front();
}

std::string NameOf(const xmlNode& node) {
    return reinterpret_cast<const char*>(node.name);
}

std::string AttributeOf(xmlNode& node, const std::string& name) {
    return CppTools::AutoCli::XmlUtil_ExtractAttribute(&node, name);
}

std::string TextOf(xmlNode& node) {
    return CppTools::AutoCli::XmlUtil_GetContent(&node);
}

std::string TextOfChild(xmlNode& node, const std::string& name) {
    auto* const child = ChildOf(node, name);
    return child == nullptr ? "" : TextOf(*child);
}

} // namespace Devkit
