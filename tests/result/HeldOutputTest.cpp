#include "tests/support/TempDirectory.h"

#include <tandril-result/Descriptor.h>
#include <tandril-result/Errors.h>
#include <tandril-result/HeldOutput.h>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <iterator>

using TandrilResult::Descriptor;
using TandrilResult::HeldOutput;
using TandrilResult::OutputError;

namespace {

/// An output into a file.
class HeldOutputTest : public testing::Test {
  protected:
    std::string Written() const {
        std::ifstream file(path_, std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }

  private:
    TestSupport::TempDirectory directory_;
    std::string path_ = directory_.Write("file", "");
    Descriptor file_{open(path_.c_str(), O_WRONLY | O_CLOEXEC)};

  protected:
    HeldOutput output_{file_.Number()};
};

TEST_F(HeldOutputTest, UpToTheLimit_NothingGoesOutByItself) {
    output_.Write(std::string(HeldOutput::kHeldSize, 'a'));
    EXPECT_FALSE(output_.HasBegun());
    EXPECT_EQ(Written(), "");
}

TEST_F(HeldOutputTest, BeyondTheLimit_EverythingGoesOut) {
    const std::string text(HeldOutput::kHeldSize, 'a');
    output_.Write(text);
    output_.Write("b");
    EXPECT_TRUE(output_.HasBegun());
    EXPECT_EQ(Written(), text + "b");
}

TEST_F(HeldOutputTest, Flush_EverythingGoesOutOnce) {
    output_.Write("a");
    output_.Flush();
    output_.Flush();
    output_.Write("b");
    output_.Flush();
    EXPECT_EQ(Written(), "ab");
}

TEST_F(HeldOutputTest, Discard_WhatWasHeldNeverGoesOut) {
    output_.Write("a");
    output_.Discard();
    output_.Write("b");
    output_.Flush();
    EXPECT_EQ(Written(), "b");
}

TEST(HeldOutputFailureTest, FullDevice_ErrorSaysWhy) {
    const Descriptor full(open("/dev/full", O_WRONLY | O_CLOEXEC));
    HeldOutput output(full.Number());
    output.Write("a");
    std::string error = "<nothing was thrown>";
    try {
        output.Flush();
    } catch (const OutputError& thrown) {
        error = thrown.what();
    }
    EXPECT_EQ(error, "Unable to write the result: No space left on device");
    EXPECT_FALSE(output.HasBegun());
}

} // namespace
