// The module's entry point driven like the host drives it: command table, version and flags,
// About, global data, sequence data.

#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "AE_Effect.h"
#include "AE_MyLib/AEObject/AEO_InData.h"
#include "AE_MyLib/AEObject/FakeHost.h"
#include "shell/CommandNames.h"
#include "shell/GlobalData.h"
#include "shell/SequenceData.h"

extern "C" PF_Err EntryPointFunc(PF_Cmd cmd, PF_InData* in_data, PF_OutData* out_data,
                                 PF_ParamDef* params[], PF_LayerDef* output, void* extra);

namespace {

struct Session {
    fake::FakeHost host;
    PF_OutData out;
    PF_LayerDef output;

    Session()
    {
        std::memset(&out, 0xA5, sizeof(out));  // anything the module writes shows
        std::memset(&output, 0x5A, sizeof(output));
    }
    PF_Err send(PF_Cmd cmd, void* extra = nullptr)
    {
        return EntryPointFunc(cmd, host.in(), &out, nullptr, &output, extra);
    }
};

bool sameBytes(const void* a, const void* b, std::size_t n) { return std::memcmp(a, b, n) == 0; }

// The sequence commands and the plain render are answered and do nothing; the effect leaves
// its sequence data as the host gave it.
TEST(CommandTable, CommandsTheEffectDoesNotActOnSucceedAndTouchNothing)
{
    const PF_Cmd idle[] = {PF_Cmd_SEQUENCE_SETUP, PF_Cmd_SEQUENCE_RESETUP, PF_Cmd_SEQUENCE_FLATTEN,
                           PF_Cmd_SEQUENCE_SETDOWN, PF_Cmd_RENDER, 2, 9, 10, 12, 15, 16, 17, 18, 19, 20, 21, 22, 25,
                           26, 27, 31, 34, 99, -1};
    for (PF_Cmd cmd : idle) {
        Session s;
        s.out.sequence_data = reinterpret_cast<PF_Handle>(&s);
        const PF_OutData before = s.out;
        const PF_LayerDef output_before = s.output;
        EXPECT_EQ(s.send(cmd), PF_Err_NONE) << "command " << cmd;
        EXPECT_TRUE(sameBytes(&before, &s.out, sizeof(before))) << "command " << cmd;
        EXPECT_TRUE(sameBytes(&output_before, &s.output, sizeof(output_before))) << "command " << cmd;
        EXPECT_TRUE(s.host.suite_log.empty()) << "command " << cmd;
        EXPECT_EQ(s.host.handles_made, 0) << "command " << cmd;
    }
}

TEST(CommandTable, DiagnosticNamesFollowTheCommandCodes)
{
    ASSERT_EQ(cmd_str_count, 28);
    EXPECT_STREQ(cmd_str[PF_Cmd_ABOUT], "PF_Cmd_ABOUT");
    EXPECT_STREQ(cmd_str[PF_Cmd_USER_CHANGED_PARAM], "PF_Cmd_USER_CHANGED_PARAM");
    EXPECT_STREQ(cmd_str[PF_Cmd_SMART_RENDER], "PF_Cmd_SMART_RENDER");
    EXPECT_STREQ(cmd_str[25], "PF_Cmd_RESERVED1");
    EXPECT_STREQ(cmd_str[27], "PF_Cmd_NUM_CMDS");
}

TEST(About, NameVersionAndOneLineOfDescription)
{
    Session s;
    ASSERT_EQ(s.send(PF_Cmd_ABOUT), PF_Err_NONE);
    const std::string text(s.out.return_msg);
    const std::string head = "Orbivane, v1.1.6\n";
    ASSERT_EQ(text.compare(0, head.size(), head), 0) << text;
    const std::string description = text.substr(head.size());
    EXPECT_FALSE(description.empty());
    EXPECT_EQ(description.find('\n'), std::string::npos) << "one line";
}

TEST(GlobalSetup, ReportsVersionAndFlagsAndRegistersWithTheAegpSide)
{
    Session s;
    ASSERT_EQ(s.send(PF_Cmd_GLOBAL_SETUP), PF_Err_NONE);
    EXPECT_EQ(s.out.my_version, 0x8B601u);  // 1.1.6 release, build 1
    EXPECT_EQ(s.out.out_flags, 0x02000001);
    EXPECT_EQ(s.out.out_flags2, 0x08001406);
    EXPECT_EQ(s.host.registered_name, "Orbivane");

    ASSERT_EQ(s.host.handles.count(s.out.global_data), 1u) << "global data is a live host handle";
    s.host.in()->global_data = s.out.global_data;
    {
        GlobalDataAccess access(s.host.in());
        ASSERT_NE(access.get(), nullptr);
        EXPECT_EQ(access.get()->plugin_id(), 77);
        EXPECT_EQ(access.get()->aegp_setup_err(), A_Err_NONE);
    }
    EXPECT_EQ(s.host.live_suites(), 0) << "every suite taken during set-up is given back";

    ASSERT_EQ(s.send(PF_Cmd_GLOBAL_SETDOWN), PF_Err_NONE);
    EXPECT_TRUE(s.host.handles.empty()) << "set-down frees the global data's handle";
    EXPECT_EQ(s.host.live_suites(), 0);
}

TEST(GlobalSetup, AFailedRegistrationIsKeptNotReturned)
{
    Session s;
    s.host.register_error = A_Err_GENERIC;
    ASSERT_EQ(s.send(PF_Cmd_GLOBAL_SETUP), PF_Err_NONE);
    s.host.in()->global_data = s.out.global_data;
    {
        GlobalDataAccess access(s.host.in());
        ASSERT_NE(access.get(), nullptr);
        EXPECT_EQ(access.get()->aegp_setup_err(), A_Err_GENERIC);
    }
    EXPECT_EQ(s.send(PF_Cmd_GLOBAL_SETDOWN), PF_Err_NONE);
    EXPECT_TRUE(s.host.handles.empty());
}

TEST(GlobalSetup, AMissingUtilitySuiteOrNoHostMemoryIsReturnedAndLeavesNothing)
{
    {
        Session s;
        s.host.acquire_errors["AEGP Utility Suite"] = fake::kSuiteNotFound;
        EXPECT_EQ(s.send(PF_Cmd_GLOBAL_SETUP), PF_Err_BAD_CALLBACK_PARAM) << "through the guard";
        EXPECT_TRUE(s.host.handles.empty());
        EXPECT_EQ(s.host.live_suites(), 0);
    }
    Session s;
    s.host.fail_new_handle = true;
    EXPECT_EQ(s.send(PF_Cmd_GLOBAL_SETUP), PF_Err_OUT_OF_MEMORY);
    EXPECT_EQ(s.host.live_suites(), 0);
}

TEST(GlobalSetdown, WithoutGlobalDataTouchesNothing)
{
    Session s;
    s.host.in()->global_data = nullptr;
    s.host.utils.host_lock_handle = nullptr;  // any handle call would crash
    s.host.utils.host_dispose_handle = nullptr;
    EXPECT_EQ(s.send(PF_Cmd_GLOBAL_SETDOWN), PF_Err_NONE);
}

TEST(SequenceData, SerializesToFourZeroBytesInAnUnlockedHandle)
{
    fake::FakeHost host;
    const SequenceData data;
    const SerializedSequenceData flat = data.serialize(host.in());
    ASSERT_NE(flat, nullptr);
    ASSERT_EQ(host.handles.count(flat), 1u);
    EXPECT_EQ(host.handles[flat].size, 4u);
    EXPECT_EQ(host.handles[flat].locks, 0);
    A_long stored = -1;
    std::memcpy(&stored, *flat, sizeof(stored));
    EXPECT_EQ(stored, 0);
    EXPECT_EQ(SequenceData(flat).reserved(), 0);
}

}  // namespace
