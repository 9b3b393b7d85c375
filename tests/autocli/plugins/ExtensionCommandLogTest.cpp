#include <CppTools/autocli/plugins/ExtensionCommand.h>
#include <CppTools/callspec/Output.h>

#include <gtest/gtest.h>
#include <tests/support/EnvironmentVariable.h>
#include <tests/support/StreamCapture.h>
#include <tests/support/TemplateFilling.h>
#include <tests/support/VirtualSlot.h>
#include <tests/support/VirtualTableSize.h>

#include <memory>
#include <string>
#include <syslog.h>
#include <unistd.h>

namespace {

using CppTools::AutoCli::ExtensionCommand;
using CppTools::CallSpec::Output;

/// Shows on standard error what is logged at one priority and at no other.
class ShownLog {
  public:
    explicit ShownLog(int priority) : maskBefore_(setlogmask(LOG_MASK(priority))) {
        openlog("shown", LOG_PERROR, LOG_USER);
    }

    ShownLog(const ShownLog&) = delete;
    ShownLog& operator=(const ShownLog&) = delete;

    ~ShownLog() {
        closelog();
        openlog(nullptr, 0, LOG_USER);
        setlogmask(maskBefore_);
    }

    std::string Take() { return standardError_.Take(); }

  private:
    int maskBefore_;
    TestSupport::StreamCapture standardError_{STDERR_FILENO};
};

class ExtensionCommandLogTest : public testing::Test {
  protected:
    /// What is logged at a priority while a line runs.
    std::string LoggedBy(const std::string& line, int priority) {
        const auto command = TestSupport::NewTemplateCommand();
        command->SetExecuteCommand(line);
        ShownLog log(priority);
        command->ExecuteInternal(TestSupport::NewInput(*command, {}), output_);
        return log.Take();
    }

    const TestSupport::EnvironmentVariable lang_{"LANG", "C"};
    const std::shared_ptr<Output> output_ = Output::New();
};

TEST_F(ExtensionCommandLogTest, NoOutput_IsLoggedAsAnErrorInTheWordsOfTheMessage) {
    const std::string message = "Got no data from process.\nCommand \"exit 3\"\n\xD0\xB5xited with "
                                "error code: 1";
    EXPECT_EQ(LoggedBy("exit 3", LOG_ERR), "shown: " + message + "\n");
    EXPECT_EQ(output_->GetErrors(), std::vector<std::string>{message});
}

TEST_F(ExtensionCommandLogTest, NoOutput_TheLineIsNoFormat) {
    EXPECT_EQ(LoggedBy(": %s %n %5$d 100%", LOG_ERR),
              "shown: Got no data from process.\nCommand \": %s %n %5$d 100%\"\n\xD0\xB5xited with "
              "error code: 1\n");
}

TEST_F(ExtensionCommandLogTest, NoOutput_IsLoggedAtNoOtherPriority) {
    for (const int priority : {LOG_EMERG, LOG_ALERT, LOG_CRIT, LOG_WARNING, LOG_NOTICE, LOG_INFO}) {
        EXPECT_EQ(LoggedBy("true", priority), "") << "priority " << priority;
    }
}

TEST_F(ExtensionCommandLogTest, SomeOutput_IsNotLogged) {
    EXPECT_EQ(LoggedBy("echo '<out/>'; exit 3", LOG_ERR), "");
    EXPECT_EQ(LoggedBy("echo ERROR:disk full", LOG_ERR), "");
    EXPECT_EQ(LoggedBy("echo '<out><float/></out>'", LOG_ERR), "");
}

TEST(ExtensionCommandSlotTest, Slots_AreThoseOfCommandsAndNoMore) {
    using TestSupport::VirtualSlotOf;
    EXPECT_EQ(VirtualSlotOf(&ExtensionCommand::GetInputSpecInternal), 14);
    EXPECT_EQ(VirtualSlotOf(&ExtensionCommand::GetOutputSpecInternal), 15);
    EXPECT_EQ(VirtualSlotOf(&ExtensionCommand::ExecuteInternal), 17);
    EXPECT_EQ(TestSupport::VirtualTableSizeOf<ExtensionCommand>(), 18);
}

} // namespace
