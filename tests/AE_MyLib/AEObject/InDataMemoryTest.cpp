// Host handle memory through AEO::InData: malloc/free, aligned_new/aligned_free.

#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

#include "AE_MyLib/AEObject/AEO_InData.h"
#include "AE_MyLib/AEObject/HostedCommand.h"
#include "host/checks/HandleHeap.h"

namespace {

struct Payload {
    double values[5];
    int tag;
};

TEST(InDataMalloc, TakesALockedHandleEightBytesLargerAndReturnsTheAddressPastTheHeader)
{
    hosted::HostedCommand command;
    host::HandleHeap& handles = command.host().handles();
    AEO::InData in_data(command.in());
    void* block = in_data.malloc(100);
    ASSERT_NE(block, nullptr);
    ASSERT_EQ(handles.live(), 1u);
    char** const handle = reinterpret_cast<char**>(AEO::InData::handle_of(block));
    ASSERT_TRUE(handles.owns(handle));
    EXPECT_EQ(handles.size(handle), 108u);
    EXPECT_EQ(handles.lock_count(handle), 1);
    EXPECT_EQ(block, static_cast<char*>(*handle) + 8);
    std::memset(block, 0x5A, 100);  // the whole block is usable

    in_data.free(block);
    EXPECT_EQ(handles.live(), 0u) << "free unlocks and disposes of the handle";
    const std::vector<std::string> calls = command.calls();
    ASSERT_GE(calls.size(), 2u);
    EXPECT_EQ(std::vector<std::string>(calls.end() - 2, calls.end()),
              (std::vector<std::string>{"host_unlock_handle", "host_dispose_handle"}));
    EXPECT_EQ(command.host().counters().live(host::Resource::HandleLock), 0) << "no lock outlives the handle";
}

class AlignedNew : public ::testing::TestWithParam<std::size_t> {};

TEST_P(AlignedNew, AlignsTheCopyAndKeepsTheRawBlockJustBelowIt)
{
    const std::size_t alignment = GetParam();
    hosted::HostedCommand command;
    host::HandleHeap& handles = command.host().handles();
    AEO::InData in_data(command.in());
    const Payload tmpl = {{1.5, 2.5, 3.5, 4.5, 5.5}, 42};

    Payload* p = in_data.aligned_new(tmpl, alignment);
    ASSERT_NE(p, nullptr);
    const auto address = reinterpret_cast<std::uintptr_t>(p);
    EXPECT_EQ(address % alignment, 0u);
    EXPECT_EQ(p->tag, 42);
    EXPECT_EQ(p->values[4], 5.5);

    ASSERT_EQ(handles.live(), 1u);
    void* raw = reinterpret_cast<void**>(p)[-1];
    char** const handle = reinterpret_cast<char**>(AEO::InData::handle_of(raw));
    ASSERT_TRUE(handles.owns(handle));
    EXPECT_EQ(handles.size(handle), sizeof(Payload) + alignment + 7 + 8);
    EXPECT_EQ(raw, static_cast<char*>(*handle) + 8);
    const auto gap = address - reinterpret_cast<std::uintptr_t>(raw);
    EXPECT_GE(gap, sizeof(void*)) << "room for the raw pointer below the object";
    EXPECT_LT(gap, sizeof(void*) + alignment);

    in_data.aligned_free(p);
    EXPECT_EQ(handles.live(), 0u);
    EXPECT_EQ(command.host().counters().live(host::Resource::HandleLock), 0);
}

INSTANTIATE_TEST_SUITE_P(Alignments, AlignedNew, ::testing::Values(8, 16, 32, 64));

TEST(InDataMemory, GivesNullWithoutHostMemoryOrInDataAndFreesNothingForNull)
{
    hosted::HostedCommand command;
    command.host().faults().fail_every("host_new_handle", PF_Err_OUT_OF_MEMORY);
    AEO::InData in_data(command.in());
    EXPECT_EQ(in_data.malloc(16), nullptr);
    EXPECT_EQ(in_data.aligned_new(Payload{}, 16), nullptr);

    AEO::InData without(nullptr);
    EXPECT_EQ(without.malloc(16), nullptr);
    without.free(nullptr);
    in_data.free(nullptr);
    in_data.aligned_free(nullptr);
    void* slots[2] = {nullptr, nullptr};
    in_data.aligned_free(&slots[1]);  // raw pointer below is null
    EXPECT_EQ(command.host().counters().total(host::Resource::Handle), 0);
    EXPECT_EQ(command.count("host_dispose_handle"), 0) << "nothing is given back that was not had";
}

}  // namespace
