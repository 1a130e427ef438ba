// Host handle memory through AEO::InData: malloc/free, aligned_new/aligned_free.

#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>

#include "AE_MyLib/AEObject/AEO_InData.h"
#include "AE_MyLib/AEObject/FakeHost.h"

namespace {

struct Payload {
    double values[5];
    int tag;
};

TEST(InDataMalloc, TakesALockedHandleEightBytesLargerAndReturnsTheAddressPastTheHeader)
{
    fake::FakeHost host;
    AEO::InData in_data(host.in());
    void* block = in_data.malloc(100);
    ASSERT_NE(block, nullptr);
    ASSERT_EQ(host.handles.size(), 1u);
    const PF_Handle handle = host.handles.begin()->first;
    EXPECT_EQ(host.handles.begin()->second.size, 108u);
    EXPECT_EQ(host.handles.begin()->second.locks, 1);
    EXPECT_EQ(block, static_cast<char*>(*handle) + 8);
    EXPECT_EQ(AEO::InData::handle_of(block), handle);
    std::memset(block, 0x5A, 100);  // the whole block is usable

    in_data.free(block);
    EXPECT_TRUE(host.handles.empty()) << "free unlocks and disposes of the handle";
}

class AlignedNew : public ::testing::TestWithParam<std::size_t> {};

TEST_P(AlignedNew, AlignsTheCopyAndKeepsTheRawBlockJustBelowIt)
{
    const std::size_t alignment = GetParam();
    fake::FakeHost host;
    AEO::InData in_data(host.in());
    const Payload tmpl = {{1.5, 2.5, 3.5, 4.5, 5.5}, 42};

    Payload* p = in_data.aligned_new(tmpl, alignment);
    ASSERT_NE(p, nullptr);
    const auto address = reinterpret_cast<std::uintptr_t>(p);
    EXPECT_EQ(address % alignment, 0u);
    EXPECT_EQ(p->tag, 42);
    EXPECT_EQ(p->values[4], 5.5);

    ASSERT_EQ(host.handles.size(), 1u);
    EXPECT_EQ(host.handles.begin()->second.size, sizeof(Payload) + alignment + 7 + 8);
    void* raw = reinterpret_cast<void**>(p)[-1];
    EXPECT_EQ(raw, static_cast<char*>(*host.handles.begin()->first) + 8);
    const auto gap = address - reinterpret_cast<std::uintptr_t>(raw);
    EXPECT_GE(gap, sizeof(void*)) << "room for the raw pointer below the object";
    EXPECT_LT(gap, sizeof(void*) + alignment);

    in_data.aligned_free(p);
    EXPECT_TRUE(host.handles.empty());
}

INSTANTIATE_TEST_SUITE_P(Alignments, AlignedNew, ::testing::Values(8, 16, 32, 64));

TEST(InDataMemory, GivesNullWithoutHostMemoryOrInDataAndFreesNothingForNull)
{
    fake::FakeHost host;
    host.fail_new_handle = true;
    AEO::InData in_data(host.in());
    EXPECT_EQ(in_data.malloc(16), nullptr);
    EXPECT_EQ(in_data.aligned_new(Payload{}, 16), nullptr);

    AEO::InData without(nullptr);
    EXPECT_EQ(without.malloc(16), nullptr);
    without.free(nullptr);
    in_data.free(nullptr);
    in_data.aligned_free(nullptr);
    void* slots[2] = {nullptr, nullptr};
    in_data.aligned_free(&slots[1]);  // raw pointer below is null
    EXPECT_EQ(host.handles_made, 0);
}

}  // namespace
