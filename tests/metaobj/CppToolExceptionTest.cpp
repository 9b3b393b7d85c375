#include <CppTools/metaobj/CppToolException.h>

#include <gtest/gtest.h>

#include <exception>
#include <memory>
#include <string>
#include <type_traits>

namespace {

using CppTools::MetaObj::CppToolException;

TEST(CppToolExceptionTest, Construct_FromLiteral_WhatReturnsTheText) {
    const CppToolException exception("Structure is locked, unable to remove fields");
    EXPECT_STREQ(exception.what(), "Structure is locked, unable to remove fields");
}

TEST(CppToolExceptionTest, Construct_FromString_WhatReturnsTheText) {
    const std::string message = "Root object cannot be set to null";
    const CppToolException exception(message);
    EXPECT_STREQ(exception.what(), "Root object cannot be set to null");
    EXPECT_EQ(message, "Root object cannot be set to null");
}

TEST(CppToolExceptionTest, Construct_FromEmptyText_WhatIsEmpty) {
    EXPECT_STREQ(CppToolException("").what(), "");
}

TEST(CppToolExceptionTest, Copy_KeepsItsMessageWithoutTheOriginal) {
    auto original = std::make_unique<CppToolException>(std::string(100, 'm'));
    const CppToolException copy(*original);
    original.reset();
    EXPECT_EQ(copy.what(), std::string(100, 'm'));
}

TEST(CppToolExceptionTest, Assign_ReplacesTheMessage) {
    CppToolException exception("first");
    exception = CppToolException("second");
    EXPECT_STREQ(exception.what(), "second");
}

TEST(CppToolExceptionTest, Throw_CaughtAsStandardException_CarriesTheMessage) {
    try {
        throw CppToolException("Null object passed to Add");
    } catch (const std::exception& caught) {
        EXPECT_STREQ(caught.what(), "Null object passed to Add");
    }
}

TEST(CppToolExceptionTest, Names_ShortAndLong_AreTheSameType) {
    EXPECT_TRUE((std::is_same_v<CppTools::CppToolException, CppTools::MetaObj::CppToolException>));
}

} // namespace
