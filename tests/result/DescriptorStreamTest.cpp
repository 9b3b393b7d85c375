#include "Support.h"
#include "tests/support/TempDirectory.h"

#include <tandril-result/Descriptor.h>
#include <tandril-result/DescriptorStream.h>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <iterator>

using ResultTests::ErrorOf;
using TandrilResult::Descriptor;
using TandrilResult::DescriptorStream;

namespace {

Descriptor OpenForReading(const std::string& path) {
    return Descriptor(open(path.c_str(), O_RDONLY | O_CLOEXEC));
}

TEST(DescriptorStreamTest, FileLargerThanABlock_IsReadAsItIs) {
    const TestSupport::TempDirectory directory;
    const std::string text = std::string(100'000, 'a') + '\0' + "\r\n\xFF";
    const Descriptor file = OpenForReading(directory.Write("file", text));
    DescriptorStream stream(file.Number());
    EXPECT_EQ(std::string(std::istreambuf_iterator<char>(stream), {}), text);
    EXPECT_FALSE(stream.IsEmpty());
}

TEST(DescriptorStreamTest, EmptyFile_IsEmpty) {
    const TestSupport::TempDirectory directory;
    const Descriptor file = OpenForReading(directory.Write("file", ""));
    DescriptorStream stream(file.Number());
    EXPECT_EQ(stream.get(), EOF);
    EXPECT_TRUE(stream.eof());
    EXPECT_TRUE(stream.IsEmpty());
}

TEST(DescriptorStreamTest, WhatCannotBeRead_IsAnErrorNotAnEnd) {
    const TestSupport::TempDirectory directory;
    const Descriptor file = OpenForReading(directory.Path());
    DescriptorStream stream(file.Number());
    std::string line;
    EXPECT_EQ(ErrorOf([&] { std::getline(stream, line); }), "input: Is a directory");
}

} // namespace
