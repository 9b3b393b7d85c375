#include <CppTools/autocli/Dispatcher.h>
#include <tests/support/DescriptorText.h>
#include <tests/support/NamedRow.h>
#include <tests/support/StreamCapture.h>
#include <tests/support/TempDirectory.h>

#include <array>
#include <cerrno>
#include <cstdint>
#include <filesystem>
#include <gtest/gtest.h>
#include <string>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <system_error>
#include <unistd.h>

namespace {

using TestSupport::kRowName;
using TestSupport::NamespaceDescriptor;
using TestSupport::PrintedBy;
using TestSupport::TempDirectory;

constexpr uid_t kOther = 4321;

void Require(int result, const std::string& what) {
    if (result != 0) {
        throw std::system_error(errno, std::generic_category(), what);
    }
}

void GiveAway(const std::string& path) {
    Require(lchown(path.c_str(), kOther, 0), "lchown " + path);
}

void GiveToGroup(const std::string& path) {
    Require(lchown(path.c_str(), 0, kOther), "lchown " + path);
}

void SetMode(const std::string& path, mode_t mode) {
    Require(chmod(path.c_str(), mode), "chmod " + path);
}

/// Lets one more user write, by an access list in the form in which the kernel keeps it; false
/// where the file system has none.
bool AddToAccessList(const std::string& path, std::uint32_t user) {
    struct Entry {
        std::uint16_t tag;
        std::uint16_t permissions;
        std::uint32_t id;
    };

    struct List {
        std::uint32_t version = 2;
        std::array<Entry, 5> entries;
    };

    constexpr std::uint32_t kNoId = 0xffffffff;
    const List list{.entries = {Entry{0x01, 6, kNoId}, Entry{0x02, 6, user}, Entry{0x04, 4, kNoId},
                                Entry{0x10, 6, kNoId}, Entry{0x20, 4, kNoId}}};
    return setxattr(path.c_str(), "system.posix_acl_access", &list, sizeof(list), 0) == 0;
}

void Link(const std::string& target, const std::string& path) {
    std::filesystem::create_symlink(target, path);
}

/// Descriptors in a directory of root's, loaded by root.
class FileTrustTest : public testing::Test {
  protected:
    void SetUp() override {
        if (geteuid() != 0) {
            GTEST_SKIP() << "files are given to other users, which only root can";
        }
        SetMode(file, 0644);
    }

    std::string Place(const std::string& name) const {
        return name.empty() ? directory.Path() : directory / name;
    }

    /// What loading prints when something at `place` is found to be weak.
    static std::string Warning(const std::string& path, const std::string& place,
                               const std::string& reason) {
        return "Warning: plugin " + path + " can be changed by others than root: " + place + " " +
               reason + "\n";
    }

    std::string Owned(const std::string& path, const std::string& place) const {
        return Warning(path, Place(place), "is owned by user 4321");
    }

    /// Loads the file, which must be possible, with an own dispatcher.
    static std::string Load(const std::string& path) {
        CppTools::AutoCli::Dispatcher dispatcher;
        return Load(dispatcher, path);
    }

    static std::string Load(CppTools::AutoCli::Dispatcher& dispatcher, const std::string& path) {
        const auto before = dispatcher.GetPluginNames().size();
        const std::string printed = PrintedBy([&] { dispatcher.AddPlugin(path); }).err;
        EXPECT_EQ(dispatcher.GetPluginNames().size(), before + 1);
        return printed;
    }

    const TempDirectory directory;
    const std::string file = directory.Write("top/inner/a.xml", NamespaceDescriptor("storage"));
};

TEST_F(FileTrustTest, NothingWeak_NothingIsSaid) {
    EXPECT_EQ(Load(file), "");
}

/// What is weak in the fixture's directory, and how.
struct WeakRow : TestSupport::NamedRow {
    void (*weaken)(const std::string& path);
    std::string reason;
};

class WeakPlaceTest : public FileTrustTest, public testing::WithParamInterface<WeakRow> {};

TEST_P(WeakPlaceTest, File) {
    GetParam().weaken(file);
    EXPECT_EQ(Load(file), Warning(file, file, GetParam().reason));
}

TEST_P(WeakPlaceTest, Directory) {
    GetParam().weaken(directory / "top/inner");
    EXPECT_EQ(Load(file), Warning(file, directory / "top/inner", GetParam().reason));
}

TEST_P(WeakPlaceTest, HigherDirectory) {
    GetParam().weaken(directory / "top");
    GiveAway(file);
    EXPECT_EQ(Load(file), Warning(file, directory / "top", GetParam().reason));
}

TEST_P(WeakPlaceTest, WhereALinkLeadsTo) {
    const std::string link = directory / "link.xml";
    Link("top/inner/a.xml", link);
    GetParam().weaken(file);
    EXPECT_EQ(Load(link), Warning(link, file, GetParam().reason));
}

INSTANTIATE_TEST_SUITE_P(Reasons, WeakPlaceTest,
                         testing::Values(WeakRow{{"Owner"}, GiveAway, "is owned by user 4321"},
                                         WeakRow{{"Group"},
                                                 [](const std::string& path) {
                                                     GiveToGroup(path);
                                                     SetMode(path, 0775);
                                                 },
                                                 "can be written by group 4321"},
                                         WeakRow{
                                             {"Everybody"},
                                             [](const std::string& path) { SetMode(path, 0757); },
                                             "can be written by everybody"}),
                         kRowName);

TEST_F(FileTrustTest, GroupsThatCannotWrite_AreNoWeakness) {
    GiveToGroup(file);
    EXPECT_EQ(Load(file), "");
}

TEST_F(FileTrustTest, RootsGroup_IsNoWeakness) {
    SetMode(file, 0664);
    SetMode(directory / "top", 0775);
    EXPECT_EQ(Load(file), "");
}

TEST_F(FileTrustTest, RootsGroup_BesideAnAccessListIsAWeakness) {
    if (!AddToAccessList(file, kOther)) {
        GTEST_SKIP() << "no access lists here";
    }
    EXPECT_EQ(Load(file), Warning(file, file, "can be written by whom its access list names"));
}

TEST_F(FileTrustTest, StickyDirectory_ProtectsWhatIsRoots) {
    SetMode(directory / "top", 01777);
    EXPECT_EQ(Load(file), "");
}

TEST_F(FileTrustTest, StickyDirectory_DoesNotExcuseWhatOthersPutThere) {
    SetMode(directory / "top", 01777);
    GiveAway(directory / "top/inner");
    EXPECT_EQ(Load(file), Owned(file, "top/inner"));
}

TEST_F(FileTrustTest, StickyDirectoryOfAnother_IsWeak) {
    SetMode(directory / "top", 01777);
    GiveAway(directory / "top");
    EXPECT_EQ(Load(file), Owned(file, "top"));
}

TEST_F(FileTrustTest, StickyFile_IsAsWeakAsAnyOther) {
    SetMode(file, 01666);
    EXPECT_EQ(Load(file), Warning(file, file, "can be written by everybody"));
}

TEST_F(FileTrustTest, Link_MayBeWrittenByItsModeAndIsJudgedByItsOwner) {
    const std::string link = directory / "link.xml";
    Link(file, link);
    EXPECT_EQ(Load(link), "");
    GiveAway(link);
    EXPECT_EQ(Load(link), Owned(link, "link.xml"));
}

TEST_F(FileTrustTest, LinkOnTheWay_LeadsThroughDirectoriesThatAreJudged) {
    directory.MakeDirectory("links");
    Link("../top/../top", directory / "links/one");
    Link("links//./one/inner/", directory / "two");
    const std::string path = directory / "two/a.xml";
    EXPECT_EQ(Load(path), "");
    GiveAway(directory / "links");
    EXPECT_EQ(Load(path), Owned(path, "links"));
    Require(lchown((directory / "links").c_str(), 0, 0), "lchown");
    GiveAway(directory / "top");
    EXPECT_EQ(Load(path), Owned(path, "top"));
}

TEST_F(FileTrustTest, Path_IsFollowedAsTheSystemFollowsIt) {
    GiveAway(directory / "top");
    const std::string aside = directory.MakeDirectory("aside");
    Link("top/inner", directory / "link");
    const std::string straight = aside + "/..//./top/inner/a.xml";
    EXPECT_EQ(Load(straight), Owned(straight, "top"));
    const std::string above = "/.." + file;
    EXPECT_EQ(Load(above), Owned(above, "top"));
    directory.Write("top/b.xml", NamespaceDescriptor("storage"));
    const std::string behindLink = directory / "link/../b.xml";
    EXPECT_EQ(Load(behindLink), Owned(behindLink, "top"));
}

TEST_F(FileTrustTest, LinksInACircle_AreLeftToTheLoading) {
    Link("b.xml", directory / "a.xml");
    Link("a.xml", directory / "b.xml");
    const std::string path = directory / "a.xml";
    CppTools::AutoCli::Dispatcher dispatcher;
    const std::string printed =
        PrintedBy([&] { EXPECT_ANY_THROW(dispatcher.AddPlugin(path)); }).err;
    EXPECT_EQ(printed.find("Warning: "), std::string::npos) << printed;
}

TEST_F(FileTrustTest, NothingThere_IsLeftToTheLoading) {
    CppTools::AutoCli::Dispatcher dispatcher;
    const std::string printed =
        PrintedBy([&] { EXPECT_ANY_THROW(dispatcher.AddPlugin(directory / "no/a.xml")); }).err;
    EXPECT_EQ(printed.find("Warning: "), std::string::npos) << printed;
}

/// Stands in another directory until it goes.
class PresentDirectory {
  public:
    explicit PresentDirectory(const std::string& path) { std::filesystem::current_path(path); }

    PresentDirectory(const PresentDirectory&) = delete;
    PresentDirectory& operator=(const PresentDirectory&) = delete;

    ~PresentDirectory() { std::filesystem::current_path(before_); }

  private:
    std::filesystem::path before_ = std::filesystem::current_path();
};

TEST_F(FileTrustTest, RelativePath_BeginsWhereTheProcessIs) {
    GiveAway(directory / "top");
    const PresentDirectory inner(directory / "top/inner");
    EXPECT_EQ(Load("a.xml"), Owned("a.xml", "top"));
    directory.Write("b.xml", NamespaceDescriptor("storage"));
    EXPECT_EQ(Load("../../b.xml"), Owned("../../b.xml", "top"));
}

TEST_F(FileTrustTest, RelativePath_WhereTheDirectoryIsGoneThereIsNothing) {
    const PresentDirectory gone(directory.MakeDirectory("gone"));
    std::filesystem::remove(directory / "gone");
    CppTools::AutoCli::Dispatcher dispatcher;
    const std::string printed =
        PrintedBy([&] { EXPECT_ANY_THROW(dispatcher.AddPlugin("nothing.xml")); }).err;
    EXPECT_EQ(printed.find("Warning: "), std::string::npos) << printed;
}

TEST_F(FileTrustTest, LibraryWithoutASlash_IsNotTheFileOfThatName) {
    const PresentDirectory inner(directory / "top/inner");
    GiveAway(directory.Write("top/inner/cpptools-none.so", ""));
    CppTools::AutoCli::Dispatcher dispatcher;
    EXPECT_EQ(PrintedBy([&] { EXPECT_ANY_THROW(dispatcher.AddPlugin("cpptools-none.so")); }).err,
              "");
    EXPECT_EQ(PrintedBy([&] { EXPECT_ANY_THROW(dispatcher.AddPlugin("./cpptools-none.so")); }).err,
              Owned("./cpptools-none.so", "top/inner/cpptools-none.so"));
}

TEST_F(FileTrustTest, OneWarningForEachFile) {
    GiveAway(directory / "top");
    const std::string other = directory.Write("top/inner/b.xml", NamespaceDescriptor("network"));
    CppTools::AutoCli::Dispatcher dispatcher;
    EXPECT_EQ(Load(dispatcher, file), Owned(file, "top"));
    EXPECT_EQ(Load(dispatcher, file), "");
    EXPECT_EQ(Load(dispatcher, other), Owned(other, "top"));
}

TEST_F(FileTrustTest, EachDirectoryIsLookedAtOnce) {
    const std::string other = directory.Write("top/inner/b.xml", NamespaceDescriptor("network"));
    CppTools::AutoCli::Dispatcher dispatcher;
    EXPECT_EQ(Load(dispatcher, file), "");
    GiveAway(directory / "top");
    EXPECT_EQ(Load(dispatcher, other), "");
}

TEST_F(FileTrustTest, DirectoryOfPlugins_WarnsInTheOrderOfLoading) {
    GiveAway(directory / "top");
    const std::string other = directory.Write("top/inner/b.xml", NamespaceDescriptor("network"));
    directory.Write("top/inner/notes.txt", "");
    CppTools::AutoCli::Dispatcher dispatcher;
    EXPECT_EQ(
        PrintedBy([&] { dispatcher.AddExternalDirectoryInt(directory / "top/inner", true); }).err,
        Owned(file, "top") + Owned(other, "top"));
}

/// This process as another user, until it goes.
class OtherUser {
  public:
    OtherUser() { Require(seteuid(kOther), "seteuid"); }

    OtherUser(const OtherUser&) = delete;
    OtherUser& operator=(const OtherUser&) = delete;

    ~OtherUser() { EXPECT_EQ(seteuid(0), 0); }
};

TEST_F(FileTrustTest, AnotherUser_IsNotWarned) {
    SetMode(directory.Path(), 0777);
    EXPECT_NE(Load(file), "");
    const OtherUser other;
    EXPECT_EQ(Load(file), "");
}

} // namespace
