#include <devkit/lints/Lints.h>
#include <devkit/lints/RunawaySearch.h>

#include <boost/regex.hpp>

namespace Devkit::Lints {

namespace {

void CheckExpression(xmlNode& element, const std::string& parameter, Findings& findings) {
    const std::string expression = TextOf(element);
    const std::string subject = "The expression '" + expression + "' of --" + parameter;
    try {
        const boost::regex compiled(expression);
    } catch (const boost::regex_error& refusal) {
        findings.Add(Rule::BadRegex, LineOf(element),
                     subject + " does not compile: " + refusal.what());
        return;
    }
    if (const auto piece = FindRunawayPiece(expression)) {
        findings.Add(Rule::RunawayRegex, LineOf(element), subject + " can run away in " + *piece);
    }
}

} // namespace

void CheckRegularExpressions(const CommandElement& command, Findings& findings) {
    for (const ParameterElement& parameter : command.parameters) {
        for (xmlNode* constraint : ChildrenOf(*parameter.element, "constraint")) {
            for (xmlNode* expression : ChildrenOf(*constraint, "regex")) {
                CheckExpression(*expression, parameter.name, findings);
            }
        }
    }
}

} // namespace Devkit::Lints
