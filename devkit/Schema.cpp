#include <devkit/Schema.h>
#include <devkit/XmlErrors.h>

#include <CppTools/metaobj/CppToolException.h>

#include <dlfcn.h>
#include <filesystem>

#include <libxml/relaxng.h>

namespace Devkit {

namespace {

struct FreeGrammar {
    void operator()(xmlRelaxNGParserCtxt* parser) const { xmlRelaxNGFreeParserCtxt(parser); }

    void operator()(xmlRelaxNG* grammar) const { xmlRelaxNGFree(grammar); }

    void operator()(xmlRelaxNGValidCtxt* run) const { xmlRelaxNGFreeValidCtxt(run); }
};

using Grammar = std::unique_ptr<xmlRelaxNG, FreeGrammar>;

Grammar ReadGrammar(const std::string& path) {
    ReadFile(path); // libxml2 would complain about a missing one on standard error.
    std::vector<XmlProblem> problems;
    const std::unique_ptr<xmlRelaxNGParserCtxt, FreeGrammar> parser(
        xmlRelaxNGNewParserCtxt(path.c_str()));
    xmlRelaxNGSetParserStructuredErrors(parser.get(), CollectError, &problems);
    Grammar grammar(xmlRelaxNGParse(parser.get()));
    if (!grammar) {
        throw CppTools::CppToolException("Unable to use the grammar " + path + ": " +
                                         (problems.empty() ? "" : problems.front().text));
    }
    return grammar;
}

/// When an element does not fit, neither do those around it: the innermost complaints say why.
void KeepInnermost(std::vector<XmlProblem>& problems) {
    int depth = 0;
    for (const XmlProblem& problem : problems) {
        depth = std::max(depth, problem.depth);
    }
    std::erase_if(problems, [&](const XmlProblem& problem) { return problem.depth < depth; });
}

/// Without its directory when the system does not say where this library is.
std::filesystem::path OwnFolder() {
    Dl_info found{};
    if (dladdr(reinterpret_cast<void*>(&FindSchemaFolder), &found) == 0) {
        return {};
    }
    return std::filesystem::path(found.dli_fname).parent_path();
}

} // namespace

std::string FindSchemaFolder() {
    const auto folder = OwnFolder();
    const auto nextToIt = folder / "schemas";
    if (std::filesystem::is_directory(nextToIt)) {
        return nextToIt;
    }
    return (folder / "../../../share/tandril/schemas").lexically_normal();
}

std::vector<XmlProblem> Validate(xmlDoc& document, const std::string& grammarPath) {
    const Grammar grammar = ReadGrammar(grammarPath);
    std::vector<XmlProblem> problems;
    const std::unique_ptr<xmlRelaxNGValidCtxt, FreeGrammar> run(
        xmlRelaxNGNewValidCtxt(grammar.get()));
    xmlRelaxNGSetValidStructuredErrors(run.get(), CollectError, &problems);
    xmlRelaxNGValidateDoc(run.get(), &document);
    KeepInnermost(problems);
    for (XmlProblem& problem : problems) {
        problem.column = 0; // The grammar knows elements, not columns.
    }
    return problems;
}

} // namespace Devkit
