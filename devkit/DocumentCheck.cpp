#include <devkit/DocumentCheck.h>
#include <devkit/Schema.h>
#include <devkit/WellFormed.h>

#include <CppTools/CppTools.h>

namespace Devkit {

namespace {

using CppTools::CppToolException;
using CppTools::CallSpec::Output;
using CppTools::CallSpec::OutputSpec;

constexpr const char* kErrorMark = "ERROR:";

/// What the library reads, or what it says; null when there is no value.
std::shared_ptr<CppTools::MetaObj::MetaObject> ReadValue(const std::string& text, long line,
                                                         Findings& findings) {
    try {
        auto value = CppTools::AutoCli::XmlUtil_ParseXmlOutput(text);
        if (!value) {
            findings.Add(Rule::EmptyDocument, line, "The document holds no value");
        }
        return value;
    } catch (const CppToolException& refusal) {
        findings.Add(Rule::Refused, line, refusal.what());
        return nullptr;
    }
}

void CompareWith(const OutputSpec& declared,
                 const std::shared_ptr<CppTools::MetaObj::MetaObject>& value, long line,
                 Findings& findings) {
    const auto output = Output::New();
    output->SetRootObject(value);
    std::vector<std::string> differences;
    declared.Validate(output, &differences);
    for (const std::string& difference : differences) {
        findings.Add(Rule::OtherShape, line, difference);
    }
}

void CheckWellFormed(xmlDoc& document, const std::string& text, const std::string& schemaFolder,
                     const OutputSpec* declared, Findings& findings) {
    for (const XmlProblem& problem : Validate(document, schemaFolder + "/result.rng")) {
        findings.Add(Rule::Grammar, problem.line, problem.text);
    }
    const xmlNode& root = *xmlDocGetRootElement(&document);
    const auto elements = ChildrenOf(root);
    const long line = LineOf(elements.empty() ? root : *elements.front());
    const auto value = ReadValue(text, line, findings);
    if (value && declared != nullptr) {
        CompareWith(*declared, value, line, findings);
    }
}

} // namespace

std::vector<Finding> CheckDocument(const std::string& text, const std::string& name,
                                   const std::string& schemaFolder, const OutputSpec* declared) {
    Findings findings(name);
    if (text.empty()) {
        findings.Add(Rule::EmptyDocument, 0, "Nothing was printed");
    } else if (text.starts_with(kErrorMark)) {
        findings.Add(Rule::ErrorLines, 1, text.substr(0, text.find('\n')));
    } else if (const auto document = ReadWellFormedText(text, findings)) {
        CheckWellFormed(*document, text, schemaFolder, declared, findings);
    }
    return findings.InOrder();
}

} // namespace Devkit
