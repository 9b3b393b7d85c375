#include "Samples.h"
#include "tests/support/NamedRow.h"

#include <gtest/gtest.h>
#include <ostream>

using HostPack::AddPackages;
using HostPack::Column;
using HostPack::FailsWith;
using HostPack::Machine;
using HostPack::ResultOf;
using HostPack::Words;
using TestSupport::kRowName;

TEST(PackagesTest, Get_EveryField) {
    const Machine machine;
    AddPackages(machine);
    EXPECT_EQ(ResultOf(machine.Ask({"package", "get", "--name=zsh"}))->ToString(),
              "{'Architecture' => 'amd64', 'Dependencies' => 'dpkg, zsh-common (= 5.9-4), "
              "libc6 (>= 2.36) | libc6.1, libtinfo6', "
              "'Description' => 'First line: here.\n\n indented', 'Essential' => 'false', "
              "'Homepage' => 'https://example.org/', 'Installed' => 'true', "
              "'Installed Size' => '2000', 'Maintainer' => 'Z <z@example.org>', 'Name' => 'zsh', "
              "'Priority' => 'optional', 'Section' => 'shells', 'Source' => 'zsh (5.9)', "
              "'State' => 'installed', 'Summary' => 'shell with <lots> of & \"features\"', "
              "'Version' => '5.9-4', }");
}

TEST(PackagesTest, Get_WhatAPackageDoesNotSay_IsEmptyAndItsSourceItsName) {
    const Machine machine;
    AddPackages(machine);
    EXPECT_EQ(ResultOf(machine.Ask({"package", "get", "--name=libx:amd64"}))->ToString(),
              "{'Architecture' => 'amd64', 'Dependencies' => '', 'Description' => '', "
              "'Essential' => 'false', 'Homepage' => '', 'Installed' => 'true', "
              "'Installed Size' => '0', 'Maintainer' => '', 'Name' => 'libx', 'Priority' => '', "
              "'Section' => '', 'Source' => 'libx', 'State' => 'installed', 'Summary' => '', "
              "'Version' => '1', }");
}

TEST(PackagesTest, Get_NameWithoutArchitecture_StandsForEveryOne) {
    const Machine machine;
    AddPackages(machine);
    EXPECT_EQ(Column(machine.Ask({"package", "get", "--name=zsh,libx"}), "Architecture"),
              (Words{"amd64", "amd64", "i386"}));
}

TEST(PackagesTest, Get_UnknownNames_EachHasAnErrorLine) {
    const Machine machine;
    AddPackages(machine);
    EXPECT_TRUE(FailsWith(
        machine.Ask({"package", "get", "--name=no,zsh,libx:arm64"}),
        "ERROR:Unable to find the package 'no': /var/lib/dpkg/status does not list it\n"
        "ERROR:Unable to find the package 'libx:arm64': /var/lib/dpkg/status does not list it\n"));
}

TEST(PackagesTest, NoStatusFile_ErrorSaysWhatAndWhy) {
    const Machine machine;
    const std::string error =
        "ERROR:Unable to read /var/lib/dpkg/status: No such file or directory\n";
    EXPECT_TRUE(FailsWith(machine.Ask({"package", "list"}), error));
    EXPECT_TRUE(FailsWith(machine.Ask({"package", "get", "--name=zsh"}), error));
}

TEST(PackagesTest, List_EmptyStatusFile_ListIsEmpty) {
    const Machine machine;
    machine.Write("/var/lib/dpkg/status", "\n\n");
    EXPECT_EQ(Column(machine.Ask({"package", "list"}), "Name"), Words{});
}

TEST(PackagesTest, List_UnknownOrder_IsAnError) {
    const Machine machine;
    AddPackages(machine);
    EXPECT_TRUE(FailsWith(machine.Ask({"package", "list", "--sort=age"}),
                          "ERROR:Unknown sort order 'age'\n"));
}

namespace {

struct PackageChoice {
    const char* name;
    Words options;
    Words names;
};

std::ostream& operator<<(std::ostream& out, const PackageChoice& choice) {
    return out << choice.name;
}

class PackageChoiceTest : public testing::TestWithParam<PackageChoice> {};

TEST_P(PackageChoiceTest, List_OptionsChooseAndSort) {
    const Machine machine;
    AddPackages(machine);
    Words words{"package", "list"};
    words.insert(words.end(), GetParam().options.begin(), GetParam().options.end());
    EXPECT_EQ(Column(machine.Ask(words), "Name"), GetParam().names);
}

INSTANTIATE_TEST_SUITE_P(
    All, PackageChoiceTest,
    testing::Values(PackageChoice{"Installed", {}, {"libx", "libx", "zsh"}},
                    PackageChoice{"All", {"--all"}, {"libx", "libx", "old", "zsh"}},
                    PackageChoice{"Pattern", {"--match=?sh"}, {"zsh"}},
                    PackageChoice{"Section", {"--section=net,libs"}, {"libx"}},
                    PackageChoice{"Priority", {"--priority=optional,required"}, {"libx", "zsh"}},
                    PackageChoice{"MinimumSize", {"--minimum-size=31"}, {"zsh"}},
                    PackageChoice{"ByName", {"--sort=name"}, {"libx", "libx", "zsh"}},
                    PackageChoice{"BySize", {"--sort=size"}, {"zsh", "libx", "libx"}}),
    kRowName);

} // namespace
