#include <CppTools/autocli/Command.h>
#include <CppTools/autocli/plugins/SharedLibraryPlugin.h>
#include <CppTools/callspec/Input.h>
#include <CppTools/callspec/Output.h>
#include <CppTools/metaobj/MetaObject.h>

#include <gtest/gtest.h>
#include <tests/support/ChildRun.h>
#include <tests/support/TempDirectory.h>
#include <tests/support/Thrown.h>
#include <tests/support/TreeLookup.h>

#include <dlfcn.h>
#include <iostream>
#include <memory>
#include <stdexcept>
#include <string>
#include <sys/stat.h>
#include <vector>

namespace {

using CppTools::CppToolException;
using CppTools::AutoCli::Command;
using CppTools::AutoCli::CommandSpec;
using CppTools::AutoCli::Namespace;
using CppTools::AutoCli::NamespaceNode;
using CppTools::AutoCli::SharedLibraryPlugin;
using CppTools::CallSpec::Input;
using CppTools::CallSpec::Output;
using TestSupport::NewRoot;
using TestSupport::NodeAt;
using TestSupport::RunInChild;
using TestSupport::TempDirectory;
using TestSupport::ThrownBy;

using Texts = std::vector<std::string>;

const std::string kEntryPoint = "AutoCli_RegisterNamespaces";

std::string Fixture(const std::string& name) {
    return PLUGIN_FIXTURES "/" + name + ".so";
}

struct LibraryCloser {
    void operator()(void* handle) const { dlclose(handle); }
};

using Library = std::unique_ptr<void, LibraryCloser>;

/// What the loader says about a file that it refuses.
std::string LoaderMessageFor(const std::string& path) {
    const Library handle(dlopen(path.c_str(), RTLD_LAZY | RTLD_GLOBAL));
    return handle ? "<loaded>" : dlerror();
}

/// What the loader says about a library that lacks the entry point.
std::string MissingSymbolMessageFor(const std::string& path) {
    const Library handle(dlopen(path.c_str(), RTLD_LAZY));
    return dlsym(handle.get(), kEntryPoint.c_str()) != nullptr ? "<found>" : dlerror();
}

bool IsLoaded(const std::string& path) {
    return Library(dlopen(path.c_str(), RTLD_LAZY | RTLD_NOLOAD)) != nullptr;
}

/// The text that a command of the good plug-in answers, or its errors.
struct Answer {
    std::string text;
    Texts errors;
};

Answer Ask(Command& command, const std::string& text) {
    const auto input = Input::New();
    input->AddParameter("text", text);
    input->SetInputSpec(command.GetInputSpec());
    const auto output = Output::New();
    command.Execute(input, output);
    const auto root = output->GetRootObject();
    return {root ? root->ToString() : "<none>", output->GetErrors()};
}

TEST(SharedLibraryPluginTest, Initialize_FifoOrDevice_IsRefusedWithoutBeingOpened) {
    const TempDirectory directory;
    const std::string fifo = directory / "pipe.so";
    ASSERT_EQ(mkfifo(fifo.c_str(), 0600), 0);
    for (const std::string& path : {fifo, std::string("/dev/full")}) {
        EXPECT_EQ(ThrownBy([&] { SharedLibraryPlugin::New(path)->Initialize(); }),
                  "Unable to load plugin from " + path + " : " + path + ": not a regular file");
    }
}

/// The plug-in goes last: its library holds the code of what stands in the tree.
class GoodPluginTest : public testing::Test {
  protected:
    GoodPluginTest() {
        plugin_->Initialize();
        plugin_->RegisterNamespaces(root_);
    }

    std::shared_ptr<Command> CommandNamed(const std::string& name) {
        return NodeAt<Command>(root_, {"fixture", name});
    }

  private:
    std::shared_ptr<SharedLibraryPlugin> plugin_ = SharedLibraryPlugin::New(Fixture("good_plugin"));

  protected:
    std::shared_ptr<Namespace> root_ = NewRoot();
};

TEST_F(GoodPluginTest, RegisterNamespaces_BringsNamespaceAndCommands) {
    const auto fixture = NodeAt(root_, {"fixture"});
    EXPECT_EQ(fixture->GetDescription(), "Commands of a shared library.");
    EXPECT_EQ(fixture->GetNamespaceNodeNames(),
              (Texts{"greet", "nameStructure", "readAnswer", "refuse"}));
}

TEST_F(GoodPluginTest, Commands_AreCommandsForTheHost) {
    const auto node = NodeAt(root_, {"fixture", "greet"});
    EXPECT_EQ(node->GetType(), NamespaceNode::kCommandType);
    EXPECT_NE(std::dynamic_pointer_cast<Command>(node), nullptr);
    EXPECT_NE(std::dynamic_pointer_cast<CommandSpec>(node), nullptr);
    EXPECT_EQ(std::dynamic_pointer_cast<Namespace>(node), nullptr);
    EXPECT_EQ(node->GetPathString('.'), "fixture.greet");
}

TEST_F(GoodPluginTest, Commands_RunAndTheirResultFitsTheirDeclaration) {
    const auto answer = Ask(*CommandNamed("greet"), "World");
    EXPECT_EQ(answer.text, "Hello World");
    EXPECT_EQ(answer.errors, Texts{});
}

TEST_F(GoodPluginTest, Commands_CastValuesThatTheLibraryMade) {
    const auto answer = Ask(*CommandNamed("readAnswer"),
                            "<out><structure typeName=\"Reply\"><field name=\"answer\"><int>42"
                            "</int></field></structure></out>");
    EXPECT_EQ(answer.text, "a number");
    EXPECT_EQ(answer.errors, Texts{});
}

TEST_F(GoodPluginTest, Commands_CastOfAValueOfAnotherKindFails) {
    const auto command = CommandNamed("readAnswer");
    EXPECT_EQ(Ask(*command, "<out><string>x</string></out>").errors, Texts{"not a structure"});
    EXPECT_EQ(Ask(*command,
                  "<out><structure typeName=\"Reply\"><field name=\"answer\"><string>42</string>"
                  "</field></structure></out>")
                  .text,
              "no number");
}

TEST_F(GoodPluginTest, Commands_CatchWhatTheLibraryThrows) {
    const auto answer = Ask(*CommandNamed("nameStructure"), "bad name");
    EXPECT_EQ(answer.text, "caught: Invalid name specified for MetaStruct: bad name");
    EXPECT_EQ(answer.errors, Texts{});
}

TEST_F(GoodPluginTest, Commands_WhatTheyThrowIsCaughtByTheLibrary) {
    EXPECT_EQ(Ask(*CommandNamed("refuse"), "no").errors,
              Texts{"Error on command refuse : refused: no"});
}

TEST_F(GoodPluginTest, Commands_WhatTheyThrowIsCaughtByTheHost) {
    const auto command = CommandNamed("refuse");
    const auto input = Input::New();
    input->AddParameter("text", "directly");
    input->SetInputSpec(command->GetInputSpec());
    EXPECT_EQ(ThrownBy([&] { command->ExecuteInternal(input, Output::New()); }),
              "refused: directly");
}

TEST(SharedLibraryPluginTest, New_StoresThePathAndTouchesNoFile) {
    const auto plugin = SharedLibraryPlugin::New("/nowhere/at all.so");
    EXPECT_EQ(plugin->GetName(), "/nowhere/at all.so");
}

TEST(SharedLibraryPluginTest, New_LoadsNothing) {
    const auto plugin = SharedLibraryPlugin::New(Fixture("plain_plugin"));
    EXPECT_FALSE(IsLoaded(Fixture("plain_plugin")));
}

TEST(SharedLibraryPluginTest, Initialize_MissingFileIsToldInTheLoadersWords) {
    const TempDirectory directory;
    const std::string path = directory / "missing.so";
    const auto plugin = SharedLibraryPlugin::New(path);
    EXPECT_EQ(ThrownBy([&] { plugin->Initialize(); }),
              "Unable to load plugin from " + path + " : " + LoaderMessageFor(path));
}

TEST(SharedLibraryPluginTest, Initialize_FileThatIsNoLibraryIsToldInTheLoadersWords) {
    const TempDirectory directory;
    const std::string path = directory.Write("text.so", std::string(4096, 'x'));
    const auto plugin = SharedLibraryPlugin::New(path);
    EXPECT_EQ(ThrownBy([&] { plugin->Initialize(); }),
              "Unable to load plugin from " + path + " : " + LoaderMessageFor(path));
}

TEST(SharedLibraryPluginTest, Initialize_EmptyFileIsToldInTheLoadersWords) {
    const TempDirectory directory;
    const std::string path = directory.Write("empty.so", "");
    const auto plugin = SharedLibraryPlugin::New(path);
    EXPECT_EQ(ThrownBy([&] { plugin->Initialize(); }),
              "Unable to load plugin from " + path + " : " + LoaderMessageFor(path));
}

TEST(SharedLibraryPluginTest, Initialize_MissingEntryPointIsToldInTheLoadersWords) {
    const std::string path = Fixture("no_entry_point");
    const auto plugin = SharedLibraryPlugin::New(path);
    EXPECT_EQ(ThrownBy([&] { plugin->Initialize(); }),
              "Unable to get plugin registration point from " + path + " : " +
                  MissingSymbolMessageFor(path));
}

TEST(SharedLibraryPluginTest, Initialize_NullEntryPointIsRefusedWithoutTheLoadersWords) {
    const std::string path = Fixture("null_entry_point");
    const auto plugin = SharedLibraryPlugin::New(path);
    EXPECT_EQ(ThrownBy([&] { plugin->Initialize(); }),
              "Unable to get plugin registration point from " + path + " : (null)");
    EXPECT_FALSE(IsLoaded(path));
}

TEST(SharedLibraryPluginTest, Initialize_MissingEntryPointLeavesNoLibraryOpen) {
    const std::string path = Fixture("no_entry_point");
    const auto plugin = SharedLibraryPlugin::New(path);
    EXPECT_THROW(plugin->Initialize(), CppToolException);
    EXPECT_FALSE(IsLoaded(path));
}

TEST(SharedLibraryPluginTest, Initialize_LibraryStaysLoadedAsLongAsThePlugin) {
    const std::string path = Fixture("plain_plugin");
    auto plugin = SharedLibraryPlugin::New(path);
    plugin->Initialize();
    EXPECT_TRUE(IsLoaded(path));
    plugin.reset();
    EXPECT_FALSE(IsLoaded(path));
}

TEST(SharedLibraryPluginTest, Initialize_TwoPluginsShareOneLibraryUntilTheLastGoes) {
    const std::string path = Fixture("plain_plugin");
    auto first = SharedLibraryPlugin::New(path);
    auto second = SharedLibraryPlugin::New(path);
    first->Initialize();
    second->Initialize();
    first.reset();
    EXPECT_TRUE(IsLoaded(path));
    second.reset();
    EXPECT_FALSE(IsLoaded(path));
}

TEST(SharedLibraryPluginTest, Initialize_SymbolsAreThereForLibrariesLoadedLater) {
    // In a process of its own: a library that the program has looked into is never unloaded.
    const auto child = RunInChild([] {
        const auto plugin = SharedLibraryPlugin::New(Fixture("plain_plugin"));
        const bool before = dlsym(RTLD_DEFAULT, "PlainPlugin_Answer") != nullptr;
        plugin->Initialize();
        const bool after = dlsym(RTLD_DEFAULT, "PlainPlugin_Answer") != nullptr;
        std::cout << "before " << before << ", after " << after;
    });
    EXPECT_EQ(child.out, "before 0, after 1");
}

TEST(SharedLibraryPluginTest, Initialize_FunctionsAreBoundWhenTheyAreFirstCalled) {
    const auto plugin = SharedLibraryPlugin::New(Fixture("unresolved_plugin"));
    const auto root = NewRoot();
    EXPECT_NO_THROW(plugin->Initialize());
    plugin->RegisterNamespaces(root);
    EXPECT_EQ(root->GetDescription(), "seen in spite of the missing function");
}

TEST(SharedLibraryPluginTest, RegisterNamespaces_BeforeInitializeDoesNothing) {
    const auto plugin = SharedLibraryPlugin::New(Fixture("good_plugin"));
    const auto root = NewRoot();
    EXPECT_NO_THROW(plugin->RegisterNamespaces(root));
    EXPECT_EQ(root->GetNamespaceNodeNames(), Texts{});
}

TEST(SharedLibraryPluginTest, RegisterNamespaces_AfterAFailedInitializeDoesNothing) {
    for (const std::string& path : {Fixture("no_entry_point"), Fixture("no_such_file")}) {
        SCOPED_TRACE(path);
        const auto plugin = SharedLibraryPlugin::New(path);
        const auto root = NewRoot();
        EXPECT_THROW(plugin->Initialize(), CppToolException);
        EXPECT_NO_THROW(plugin->RegisterNamespaces(root));
        EXPECT_EQ(root->GetNamespaceNodeNames(), Texts{});
    }
}

TEST(SharedLibraryPluginTest, RegisterNamespaces_HandsTheRootToTheEntryPointAndKeepsNoShare) {
    const auto plugin = SharedLibraryPlugin::New(Fixture("plain_plugin"));
    const auto root = NewRoot();
    plugin->Initialize();
    plugin->RegisterNamespaces(root);
    EXPECT_EQ(root->GetDescription(), "seen by the plain plug-in");
    EXPECT_EQ(root.use_count(), 1);
}

TEST(SharedLibraryPluginTest, RegisterNamespaces_WhatTheEntryPointThrowsReachesTheCaller) {
    const auto plugin = SharedLibraryPlugin::New(Fixture("halfway_plugin"));
    const auto root = NewRoot();
    plugin->Initialize();
    EXPECT_EQ(ThrownBy([&] { plugin->RegisterNamespaces(root); }), "second half missing");
}

TEST(SharedLibraryPluginTest, RegisterNamespaces_WhatWasRegisteredBeforeTheFailureStays) {
    const auto plugin = SharedLibraryPlugin::New(Fixture("halfway_plugin"));
    const auto root = NewRoot();
    plugin->Initialize();
    EXPECT_THROW(plugin->RegisterNamespaces(root), CppToolException);
    EXPECT_NE(NodeAt<Command>(root, {"halfway", "first"}), nullptr);
}

TEST(SharedLibraryPluginTest, RegisterNamespaces_OtherExceptionsReachTheCallerAsTheyAre) {
    const auto plugin = SharedLibraryPlugin::New(Fixture("runtime_error_plugin"));
    plugin->Initialize();
    try {
        plugin->RegisterNamespaces(NewRoot());
        FAIL() << "nothing was thrown";
    } catch (const std::runtime_error& thrown) {
        EXPECT_STREQ(thrown.what(), "out of luck");
    }
}

TEST(SharedLibraryPluginTest, Formatters_ThereAreNone) {
    const auto plugin = SharedLibraryPlugin::New(Fixture("plain_plugin"));
    plugin->Initialize();
    EXPECT_FALSE(plugin->HasFormatter("table"));
    EXPECT_FALSE(plugin->HasFormatter(""));
    EXPECT_EQ(plugin->GetFormatter("table"), nullptr);
    EXPECT_TRUE(plugin->GetFormatters().empty());
}

TEST(SharedLibraryPluginTest, GetFormatters_IsOneVectorForAllInstances) {
    const auto first = SharedLibraryPlugin::New("first.so");
    const auto second = SharedLibraryPlugin::New("second.so");
    EXPECT_EQ(&first->GetFormatters(), &second->GetFormatters());
}

} // namespace
