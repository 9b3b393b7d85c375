#include <CppTools/metaobj/MetaBool.h>
#include <CppTools/metaobj/MetaInt.h>
#include <CppTools/metaobj/MetaString.h>

#include <gtest/gtest.h>

#include <atomic>
#include <cstdlib>
#include <functional>
#include <memory>
#include <new>
#include <string>

#include "tests/support/NamedRow.h"

namespace {

std::atomic<long> allocations = 0;

void* Allocate(std::size_t size) noexcept {
    ++allocations;
    return std::malloc(size == 0 ? 1 : size);
}

} // namespace

// This program's own allocation functions serve the library too, which is how allocations within
// it can be counted.
void* operator new(std::size_t size) {
    if (void* const memory = Allocate(size)) {
        return memory;
    }
    throw std::bad_alloc();
}

void* operator new(std::size_t size, const std::nothrow_t& /*unused*/) noexcept {
    return Allocate(size);
}

void operator delete(void* memory) noexcept {
    std::free(memory);
}

void operator delete(void* memory, std::size_t /*size*/) noexcept {
    std::free(memory);
}

namespace {

using CppTools::MetaObj::MetaBool;
using CppTools::MetaObj::MetaInt;
using CppTools::MetaObj::MetaObject;
using CppTools::MetaObj::MetaString;
using TestSupport::NamedRow;

long AllocationsOf(const std::function<void()>& action) {
    const long before = allocations;
    action();
    return allocations - before;
}

TEST(SharedInstancesTest, Counting_UncachedValues_SeesTheLibrarysAllocations) {
    EXPECT_GT(AllocationsOf([] { MetaInt::New(21); }), 0);
    EXPECT_GT(AllocationsOf([] { MetaInt::New(-2); }), 0);
    EXPECT_GT(AllocationsOf([] { MetaString::New("x"); }), 0);
}

struct Making : NamedRow {
    std::function<void()> make;
};

class SharedInstancesAllocationTest : public testing::TestWithParam<Making> {};

TEST_P(SharedInstancesAllocationTest, New_CommonValue_AllocatesNothing) {
    EXPECT_EQ(AllocationsOf(GetParam().make), 0);
}

INSTANTIATE_TEST_SUITE_P(
    Values, SharedInstancesAllocationTest,
    testing::Values(Making{{"MetaBool without value"}, [] { MetaBool::New(); }},
                    Making{{"MetaBool false"}, [] { MetaBool::New(false); }},
                    Making{{"MetaBool true"}, [] { MetaBool::New(true); }},
                    Making{{"MetaInt without value"}, [] { MetaInt::New(); }},
                    Making{{"MetaInt -1"}, [] { MetaInt::New(-1); }},
                    Making{{"MetaInt 20"}, [] { MetaInt::New(20); }},
                    Making{{"MetaString without text"}, [] { MetaString::New(); }},
                    Making{{"MetaString of no characters"}, [] { MetaString::New(""); }},
                    Making{{"MetaString of an empty string"},
                           [] { MetaString::New(std::string()); }},
                    Making{{"MetaString of empty raw text"},
                           [] { MetaString::NewUtf8WithEscapes(std::string()); }}));

// Made before main, as the constants of a plug-in or a program are.
const std::shared_ptr<MetaObject> earlyTrue = MetaBool::New(true);
const std::shared_ptr<MetaObject> earlyInt = MetaInt::New(20);
const std::shared_ptr<MetaObject> earlyString = MetaString::New("");

TEST(SharedInstancesTest, New_DuringStaticInitialisation_YieldsTheInstancesOfLater) {
    EXPECT_EQ(earlyTrue, MetaBool::New(true));
    EXPECT_EQ(earlyInt, MetaInt::New(20));
    EXPECT_EQ(earlyString, MetaString::New());
    ASSERT_NE(earlyTrue, nullptr);
    EXPECT_EQ(earlyTrue->ToString(), "true");
    ASSERT_NE(earlyInt, nullptr);
    EXPECT_EQ(earlyInt->ToString(), "20");
    ASSERT_NE(earlyString, nullptr);
    EXPECT_EQ(earlyString->ToString(), "");
}

TEST(SharedInstancesTest, Release_OfEveryHolder_LeavesTheInstanceInPlace) {
    const MetaInt* instance = nullptr;
    {
        const auto holder = MetaInt::New(5);
        instance = holder.get();
    }
    EXPECT_EQ(MetaInt::New(5).get(), instance);
    EXPECT_EQ(instance->GetValue(), 5);
}

} // namespace
