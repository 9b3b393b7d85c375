#pragma once

#include <devkit/Rules.h>

#include <memory>

namespace CppTools::CallSpec {
class InputSpec;
class Output;
} // namespace CppTools::CallSpec

namespace CppTools::MetaObj {
class MetaList;
} // namespace CppTools::MetaObj

namespace Devkit {

/// One thing that is wrong with one file.
struct Finding {
    std::string file;
    long line; ///< 0 when it concerns the file as a whole.
    Severity severity;
    std::string rule;
    std::string message; ///< Without a full stop at its end.
    std::string advice;
};

/// What is found in one file.
class Findings {
  public:
    explicit Findings(std::string file) : file_(std::move(file)) {}

    void Add(Rule rule, long line, const std::string& message);

    /// For rules that are not among those of `GetRules`.
    void Add(Finding finding);

    const std::string& File() const { return file_; }

    bool HasErrors() const;

    /// In the order of their lines.
    std::vector<Finding> InOrder() const;

  private:
    std::string file_;
    std::vector<Finding> findings_;
};

/// "FILE:LINE: SEVERITY: MESSAGE [RULE]. ADVICE"
std::string ToLine(const Finding& finding);

/// A row for each finding.
std::shared_ptr<CppTools::MetaObj::MetaList> RowsOf(const std::vector<Finding>& findings);

/// Adds "strict" and "report", which `Report` reads.
void AddReportParameters(CppTools::CallSpec::InputSpec& spec);

/// How findings become the result of a call.
struct ReportMode {
    bool countsAll; ///< Warnings and notes fail the call as well as errors.
    bool neverFails;
};

/// Errors become messages, so that the call fails; what is left over becomes the result.
void Report(const std::vector<Finding>& findings, ReportMode mode,
            CppTools::CallSpec::Output& output);

} // namespace Devkit
