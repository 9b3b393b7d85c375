#include <devkit/Declarations.h>
#include <devkit/Finding.h>

#include <CppTools/CppTools.h>

#include <algorithm>

namespace Devkit {

namespace {

using CppTools::CallSpec::ParameterType;
using CppTools::MetaObj::MetaList;
using CppTools::MetaObj::MetaString;
using CppTools::MetaObj::MetaStruct;
using CppTools::MetaObj::MetaType;

std::string WithoutFullStop(std::string text) {
    while (!text.empty() && (text.back() == '.' || text.back() == '\n')) {
        text.pop_back();
    }
    return text;
}

/// Names of files and parts of documents may hold any bytes.
std::shared_ptr<MetaString> AnyText(std::string text) {
    return MetaString::NewUtf8WithEscapes(std::move(text));
}

std::shared_ptr<MetaStruct> RowOf(const Finding& finding) {
    auto row = MetaStruct::New("Finding");
    row->SetField("File", AnyText(finding.file));
    row->SetField("Line", finding.line);
    row->SetField("Severity", NameOf(finding.severity));
    row->SetField("Rule", finding.rule);
    row->SetField("Message", AnyText(finding.message));
    row->SetField("Advice", finding.advice);
    return row;
}

} // namespace

void Findings::Add(Rule rule, long line, const std::string& message) {
    const RuleTexts& texts = TextsOf(rule);
    Add({file_, line, texts.severity, texts.id, message, texts.advice});
}

void Findings::Add(Finding finding) {
    finding.message = WithoutFullStop(std::move(finding.message));
    findings_.push_back(std::move(finding));
}

bool Findings::HasErrors() const {
    return std::any_of(findings_.begin(), findings_.end(),
                       [](const Finding& finding) { return finding.severity == Severity::Error; });
}

std::vector<Finding> Findings::InOrder() const {
    auto sorted = findings_;
    std::stable_sort(sorted.begin(), sorted.end(),
                     [](const Finding& a, const Finding& b) { return a.line < b.line; });
    return sorted;
}

std::string ToLine(const Finding& finding) {
    return finding.file + ":" + std::to_string(finding.line) + ": " + NameOf(finding.severity) +
           ": " + finding.message + " [" + finding.rule + "]. " + finding.advice;
}

std::shared_ptr<MetaList> RowsOf(const std::vector<Finding>& findings) {
    auto rows = MetaList::New(MetaType::Struct, RowOf({"", 0, Severity::Note, "", "", ""}));
    for (const Finding& finding : findings) {
        rows->Add(RowOf(finding));
    }
    return rows;
}

void AddReportParameters(CppTools::CallSpec::InputSpec& spec) {
    spec.AddParameter(Optional("strict", ParameterType::Flag,
                               "Fail on warnings and notes as well as on errors."));
    spec.AddParameter(Optional("report", ParameterType::Flag,
                               "Show all findings as rows and do not fail on any."));
}

void Report(const std::vector<Finding>& findings, ReportMode mode,
            CppTools::CallSpec::Output& output) {
    for (const Finding& finding : findings) {
        const bool counts = mode.countsAll || finding.severity == Severity::Error;
        if (counts && !mode.neverFails) {
            output.AddErrorMessage(ToLine(finding));
        }
    }
    output.SetRootObject(RowsOf(findings));
}

} // namespace Devkit
