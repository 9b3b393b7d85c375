#include "Checking.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using DevkitTest::Check;
using DevkitTest::FaultlessCommand;
using DevkitTest::OfRule;
using DevkitTest::RuleRow;
using testing::ElementsAre;
using testing::IsEmpty;
using TestSupport::CommandDescriptor;
using TestSupport::CommandsElement;
using TestSupport::Descriptor;
using TestSupport::kRowName;
using TestSupport::NamespaceElement;
using TestSupport::NamespacesElement;
using TestSupport::ParameterElement;

constexpr const char* kDemo = "Demonstrations.";

std::string WithParameters(const std::string& parameters, const std::string& line = "true") {
    auto pieces = FaultlessCommand();
    pieces.inputSpec = "<input-spec>" + parameters + "</input-spec>";
    pieces.execute = "<execute>" + line + "</execute>";
    return CommandDescriptor(pieces);
}

std::string Parameter(const std::string& attributes, const std::string& constraint = "") {
    return ParameterElement(attributes, "<description>A parameter.</description>" + constraint);
}

std::string Constrained(const std::string& type, const std::string& data) {
    return WithParameters(Parameter("name='name' type='string' required='true'",
                                    "<constraint type='" + type + "'>" + data + "</constraint>"),
                          "true -- '$val{name}'");
}

std::string Matching(const std::string& expression) {
    return Constrained("regex", "<regex>" + expression + "</regex>");
}

std::string Namespaces(const std::string& namespaces) {
    return Descriptor(NamespacesElement(namespaces));
}

std::string Undescribed() {
    auto pieces = FaultlessCommand();
    pieces.description = "";
    return CommandDescriptor(pieces);
}

std::string Remarking(const std::string& entries) {
    auto pieces = FaultlessCommand();
    pieces.metaData = "<meta-data>" + entries + "</meta-data>";
    return CommandDescriptor(pieces);
}

class CommandRules : public testing::TestWithParam<RuleRow> {};

TEST_P(CommandRules, BrokenRule_IsFoundOnce) {
    const RuleRow& row = GetParam();
    EXPECT_THAT(OfRule(Check({row.broken}), row.rule), ElementsAre("0.xml:1: " + row.finding));
}

TEST_P(CommandRules, KeptRule_NothingIsFound) {
    EXPECT_THAT(Check({GetParam().kept}), IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(
    Documents, CommandRules,
    testing::Values(
        RuleRow{{"Syntax"},
                "syntax",
                "<plugin><version>1.0.0</version></plug>",
                "error: column 40: Opening and ending tag mismatch: plugin line 1 and plug",
                CommandDescriptor(FaultlessCommand())},
        RuleRow{{"Grammar"},
                "grammar",
                Remarking("<remark/>"),
                "error: Element meta-data has extra content: remark",
                Remarking("<meta-data-entry name='author'>me</meta-data-entry>")},
        RuleRow{{"Refused"},
                "refused",
                WithParameters(Parameter("name='name' type='word'")),
                "error: Unable to parse Input Parameter name. Missing or invalid required "
                "attribute: 'type'.  Must be one of [string, string-list, bool, bool-list, int, "
                "int-list]",
                WithParameters(Parameter("name='name' type='flag'"), "true $if{name,-n}")}),
    kRowName);

INSTANTIATE_TEST_SUITE_P(
    Paths, CommandRules,
    testing::Values(
        RuleRow{
            {"BadName"},
            "bad-name",
            Namespaces(NamespaceElement("demo", kDemo) + NamespaceElement("demo.Part", kDemo)),
            "error: Invalid name 'Part' in the path 'demo.Part'",
            Namespaces(NamespaceElement("demo", kDemo) + NamespaceElement("demo.fooBar.", kDemo))},
        RuleRow{{"TakenPath"},
                "taken-path",
                Descriptor(NamespacesElement(NamespaceElement("demo", kDemo)) +
                           CommandsElement(FaultlessCommand().ToElement() +
                                           FaultlessCommand().ToElement())),
                "error: Tandril path is already registered: demo.run",
                Namespaces(NamespaceElement("demo", kDemo) + NamespaceElement("demo", kDemo))},
        RuleRow{{"TakenByTheTool"},
                "taken-path",
                Namespaces(NamespaceElement("tandril", kDemo)),
                "error: Duplicate top-level namespaces must have the same description: tandril",
                Namespaces(NamespaceElement("tandril.demo", kDemo))},
        RuleRow{{"MissingNamespace"},
                "missing-namespace",
                Namespaces(NamespaceElement("demo.part", kDemo) + NamespaceElement("demo", kDemo)),
                "error: There is no namespace 'demo' for 'demo.part'",
                Namespaces(NamespaceElement("demo", kDemo) + NamespaceElement("demo.part", kDemo))},
        RuleRow{{"CommandAsNamespace"},
                "missing-namespace",
                Namespaces(NamespaceElement("tandril.command.list.part", kDemo)),
                "error: There is no namespace 'tandril.command.list' for "
                "'tandril.command.list.part'",
                Namespaces(NamespaceElement("tandril.command.part", kDemo))}),
    kRowName);

INSTANTIATE_TEST_SUITE_P(
    Parameters, CommandRules,
    testing::Values(
        RuleRow{{"UndescribedCommand"},
                "undescribed-command",
                Undescribed(),
                "note: The command 'demo.run' has no description",
                CommandDescriptor(FaultlessCommand())},
        RuleRow{{"HelpRedefined"},
                "help-redefined",
                WithParameters(Parameter("name='help' type='flag'"), "true $if{help,-h}"),
                "error: The parameter --help is the tool's own",
                WithParameters(Parameter("name='helper' type='flag'"), "true $if{helper,-h}")},
        RuleRow{
            {"ShortHelpRedefined"},
            "help-redefined",
            WithParameters(Parameter("name='host' type='flag' shortname='h'"), "true $if{host,-h}"),
            "error: The short name -h of --host is that of --help",
            WithParameters(Parameter("name='host' type='flag' shortname='H'"),
                           "true $if{host,-h}")},
        RuleRow{{"ShortNameClash"},
                "short-name-clash",
                WithParameters(Parameter("name='all' type='flag' shortname='a'") +
                                   Parameter("name='any' type='flag' shortname='a'"),
                               "true $if{all,-a} $if{any,-b}"),
                "error: The short name -a of --any is that of --all",
                WithParameters(Parameter("name='all' type='flag' shortname='a'") +
                                   Parameter("name='any' type='flag' shortname='A'") +
                                   Parameter("name='no' type='flag'") +
                                   Parameter("name='none' type='flag'"),
                               "true $if{all,-a} $if{any,-b} $if{no,-c} $if{none,-d}")},
        RuleRow{{"UndescribedValue"},
                "undescribed-value",
                Constrained("stringenum", "<enum><enum-value value='on'>works</enum-value>"
                                          "<enum-value value='off'/></enum>"),
                "warning: The value 'off' of --name has no description",
                Constrained("stringenum", "<enum><enum-value value='on'>works</enum-value>"
                                          "<enum-value value='off'>does not</enum-value></enum>")},
        RuleRow{{"BadRegex"},
                "bad-regex",
                Matching("(a"),
                "error: The expression '(a' of --name does not compile: Unmatched marking "
                "parenthesis ( or \\(.  The error occurred while parsing the regular expression: "
                "'(a>>>HERE>>>'",
                Matching("[a-z]+")},
        RuleRow{{"RunawayRegex"},
                "runaway-regex",
                Matching("x([a-z]+)*y"),
                "warning: The expression 'x([a-z]+)*y' of --name can run away in ([a-z]+)*",
                Matching("x([a-z]+,)*y")}),
    kRowName);

INSTANTIATE_TEST_SUITE_P(
    Templates, CommandRules,
    testing::Values(
        RuleRow{{"UnusedParameter"},
                "unused-parameter",
                WithParameters(Parameter("name='all' type='flag'"), "true $if{al,-a}"),
                "warning: No template uses --all",
                WithParameters(Parameter("name='all' type='flag'"), "true $if{all,-a}")},
        RuleRow{{"ListOfOne"},
                "list-of-one",
                WithParameters(Parameter("name='size' type='int' required='true'"),
                               "true -s $list{size,',',false}"),
                "warning: $list names --size, which has a single value",
                WithParameters(Parameter("name='size' type='int-list' required='true'"),
                               "true -s $list{size,',',false}")},
        RuleRow{{"ValueOfList"},
                "wrong-kind",
                WithParameters(Parameter("name='size' type='int-list' required='true'"),
                               "true -s $val{size}"),
                "error: $val{size}: Placeholder and parameter do not fit: $val is for single "
                "values, $list and $multilist are for anything but flags",
                WithParameters(Parameter("name='size' type='int' required='true'"),
                               "true -s $val{size}")},
        RuleRow{{"UnknownParameter"},
                "unknown-parameter",
                WithParameters("", "true $if{all,-a}"),
                "error: $if{all,: No parameter has this name, so the placeholder stays",
                WithParameters("")}),
    kRowName);

} // namespace
