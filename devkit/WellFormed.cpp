#include <devkit/WellFormed.h>

#include <CppTools/metaobj/CppToolException.h>

namespace Devkit {

XmlDocument ReadWellFormed(const std::string& path, Findings& findings) {
    try {
        return ReadWellFormedText(ReadFile(path), findings);
    } catch (const CppTools::CppToolException& failure) {
        findings.Add(Rule::Unreadable, 0, failure.what());
        return nullptr;
    }
}

XmlDocument ReadWellFormedText(const std::string& text, Findings& findings) {
    std::vector<XmlProblem> problems;
    XmlDocument document = ReadXml(text, findings.File(), problems);
    for (const XmlProblem& problem : problems) {
        findings.Add(Rule::Syntax, problem.line, ToText(problem));
    }
    return document;
}

} // namespace Devkit
