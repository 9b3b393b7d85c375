#include "Checking.h"

#include <tests/support/Thrown.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using DevkitTest::Check;
using DevkitTest::FaultlessCommand;
using DevkitTest::OfRule;
using DevkitTest::Texts;
using testing::ElementsAre;
using testing::IsEmpty;
using TestSupport::CommandDescriptor;
using TestSupport::NamespaceDescriptor;
using TestSupport::ParameterElement;

Texts Refusals(const std::string& descriptor) {
    return OfRule(Check({descriptor}), "refused");
}

TEST(CheckDescriptors, HostPack_HasNothingToFind) {
    for (const char* name : {"kernel", "network", "software", "storage", "system"}) {
        const std::string file = std::string(HOST_DESCRIPTORS) + "/" + name + ".xml";
        EXPECT_THAT(Devkit::CheckDescriptors({file}, SCHEMAS), IsEmpty()) << name;
    }
}

TEST(CheckDescriptors, SeveralRefusals_AreAllFoundInTheOrderOfTheirLines) {
    auto pieces = FaultlessCommand();
    pieces.metaData = "\n<meta-data><entry/></meta-data>";
    pieces.inputSpec = "<input-spec>\n" + ParameterElement("name='xx' type='word'", "") + "\n" +
                       ParameterElement("name='yy' type='int'", "") + "</input-spec>";
    pieces.outputSpec = "\n<output-spec><float/></output-spec>";
    pieces.execute = "\n<execute/>";
    EXPECT_THAT(
        Refusals(CommandDescriptor(pieces)),
        ElementsAre(
            "0.xml:2: error: Found unexpected tag while building meta-data set.  Unexpected "
            "tag was: entry",
            "0.xml:3: error: Unable to parse Input Parameter xx. Missing or invalid "
            "required attribute: 'type'.  Must be one of [string, string-list, bool, "
            "bool-list, int, int-list]",
            "0.xml:4: error: Unable to parse Input Paramter yy. Missing command description",
            "0.xml:5: error: Unable to build output spec.  Error was Unable to make a "
            "MetaObject from a node with tag 'float'",
            "0.xml:6: error: Missing or empty <execute> tag.  This tag must specify a valid "
            "execution string for this command"));
}

TEST(CheckDescriptors, MissingElements_AreAllNamed) {
    auto pieces = FaultlessCommand();
    pieces.inputSpec = "";
    pieces.outputSpec = "";
    pieces.formatParameters = "";
    pieces.execute = "";
    EXPECT_THAT(
        Refusals(CommandDescriptor(pieces)),
        ElementsAre(
            "0.xml:1: error: Unable to find <input-spec> element, which is required for a command",
            "0.xml:1: error: Unable to find <output-spec> element, which is required for a command",
            "0.xml:1: error: Unable to find <format-parameters> element, which is required for a "
            "command",
            "0.xml:1: error: Missing or empty <execute> tag.  This tag must specify a valid "
            "execution string for this command"));
}

TEST(CheckDescriptors, RepeatedParameter_IsRefusedWhereItIsRepeated) {
    auto pieces = FaultlessCommand();
    const std::string parameter =
        ParameterElement("name='xx' type='flag'", "<description>d</description>");
    pieces.inputSpec = "<input-spec>\n" + parameter + "\n" + parameter + "</input-spec>";
    EXPECT_THAT(Refusals(CommandDescriptor(pieces)),
                ElementsAre("0.xml:3: error: Found a duplicate paramater specification for "
                            "parameter named 'xx'"));
}

TEST(CheckDescriptors, RepeatedElement_IsRefusedWhereItIsRepeated) {
    auto pieces = FaultlessCommand();
    pieces.execute = "<execute>true</execute>\n<execute>false</execute>";
    EXPECT_THAT(Refusals(CommandDescriptor(pieces)),
                ElementsAre("0.xml:2: error: Illegal Duplicate tags found.  The tag execute was "
                            "expected only once, but was found multiple times"));
}

TEST(CheckDescriptors, CommandWithoutPath_IsRefusedAsAWhole) {
    auto pieces = FaultlessCommand();
    pieces.attributes = "";
    EXPECT_THAT(OfRule(Check({CommandDescriptor(pieces)}), "bad-name"),
                ElementsAre("0.xml:1: error: Invalid name '' in the path ''"));
}

TEST(CheckDescriptors, EntitiesOfTheDocument_AreKnownToTheEngine) {
    auto pieces = FaultlessCommand();
    pieces.metaData = "<meta-data><entry>&remark;</entry></meta-data>";
    EXPECT_THAT(
        Refusals("<!DOCTYPE plugin [<!ENTITY remark 'none'>]>" + CommandDescriptor(pieces)),
        ElementsAre(
            "0.xml:1: error: Found unexpected tag while building meta-data set.  Unexpected "
            "tag was: entry"));
}

TEST(CheckDescriptors, LaterDescriptor_MayStandInTheNamespacesOfAnEarlierOne) {
    auto pieces = FaultlessCommand();
    const std::string command =
        TestSupport::Descriptor(TestSupport::CommandsElement(pieces.ToElement()));
    EXPECT_THAT(Check({NamespaceDescriptor("demo"), command}), IsEmpty());
    EXPECT_THAT(OfRule(Check({NamespaceDescriptor("demo"), command, command}), "taken-path"),
                ElementsAre("2.xml:1: error: Tandril path is already registered: demo.run"));
}

TEST(CheckDescriptors, HazardInATemplate_StandsInItsOwnLine) {
    auto pieces = FaultlessCommand();
    pieces.execute = "\n<execute>true\ntrue $if{name,-n}</execute>";
    pieces.standardInput = "<stdin>\n$val{other}</stdin>";
    EXPECT_THAT(
        OfRule(Check({CommandDescriptor(pieces)}), "unknown-parameter"),
        ElementsAre(
            "0.xml:3: error: $if{name,: No parameter has this name, so the placeholder stays",
            "0.xml:4: error: $val{other}: No parameter has this name, so the placeholder stays"));
}

TEST(CheckDescriptors, PlaceholderOfARefusedParameter_IsNotUnknown) {
    auto pieces = FaultlessCommand();
    pieces.inputSpec =
        "<input-spec>" + ParameterElement("name='xx' type='word'", "") + "</input-spec>";
    pieces.execute = "<execute>true -n $val{xx}</execute>";
    EXPECT_THAT(OfRule(Check({CommandDescriptor(pieces)}), "unknown-parameter"), IsEmpty());
}

TEST(CheckDescriptors, FileThatCannotBeRead_IsAFinding) {
    const TestSupport::TempDirectory folder;
    const std::string file = folder / "none.xml";
    const auto found = Devkit::CheckDescriptors({file, folder.Path()}, SCHEMAS);
    ASSERT_EQ(found.size(), 2U);
    EXPECT_EQ(Devkit::ToLine(found[0]), file + ":0: error: Unable to read " + file +
                                            ": No such file or directory [unreadable]. Name a file "
                                            "that you may read.");
    EXPECT_EQ(found[1].message, "Unable to read " + folder.Path() + ": Is a directory");
}

TEST(CheckDescriptors, WithoutGrammar_Throws) {
    const TestSupport::TempDirectory folder;
    const std::string file = folder.Write("a.xml", NamespaceDescriptor("demo"));
    EXPECT_EQ(TestSupport::ThrownBy([&] { Devkit::CheckDescriptors({file}, folder.Path()); }),
              "Unable to read " + folder.Path() + "/descriptor.rng: No such file or directory");
}

TEST(CheckDescriptors, FileInPlaceOfTheGrammar_Throws) {
    const TestSupport::TempDirectory folder;
    const std::string file = folder.Write("descriptor.rng", NamespaceDescriptor("demo"));
    EXPECT_EQ(TestSupport::ThrownBy([&] { Devkit::CheckDescriptors({file}, folder.Path()); }),
              "Unable to use the grammar " + file + ": xmlRelaxNGParse: " + file + " is empty");
}

} // namespace
