// The module's entry point driven like the host drives it: command table, version and flags,
// About, global data, sequence data.

#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <memory>
#include <string>

#include "AE_Effect.h"
#include "AE_MyLib/AEObject/AEO_InData.h"
#include "AE_MyLib/AEObject/HostedCommand.h"
#include "host/checks/HandleHeap.h"
#include "host/session/Pipl.h"
#include "shell/GlobalData.h"
#include "shell/SequenceData.h"

extern "C" PF_Err EntryPointFunc(PF_Cmd cmd, PF_InData* in_data, PF_OutData* out_data,
                                 PF_ParamDef* params[], PF_LayerDef* output, void* extra);

namespace {

struct Session {
    hosted::HostedCommand command;
    PF_OutData out;
    PF_LayerDef output;

    Session()
    {
        std::memset(&out, 0xA5, sizeof(out));  // anything the module writes shows
        std::memset(&output, 0x5A, sizeof(output));
    }
    PF_Err send(PF_Cmd cmd, void* extra = nullptr)
    {
        return EntryPointFunc(cmd, command.in(), &out, nullptr, &output, extra);
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
        EXPECT_TRUE(s.command.calls().empty()) << "command " << cmd;
        EXPECT_EQ(s.command.host().counters().total(host::Resource::Handle), 0) << "command " << cmd;
    }
}

TEST(GlobalSetup, ReportsVersionAndFlagsAndRegistersWithTheAegpSide)
{
    host::Host session;
    ASSERT_NO_THROW(session.load(ORBIVANE_MODULE_PATH));
    EXPECT_EQ(session.module_version(), 0x8B601u);  // 1.1.6 release, build 1
    EXPECT_EQ(session.out_flags(), 0x02000001);
    EXPECT_EQ(session.out_flags2(), 0x08001406);
    EXPECT_EQ(session.handles().live(), 1u) << "global data is the one live host handle";
    EXPECT_EQ(session.counters().live(host::Resource::Suite), 0) << "every suite taken during set-up is given back";
    {
        std::unique_ptr<host::RenderScope> scope = session.render_scope();
        GlobalDataAccess access(scope->in_data());
        ASSERT_NE(access.get(), nullptr);
        EXPECT_NE(session.registered_plugin_id(), 0);
        EXPECT_EQ(access.get()->plugin_id(), session.registered_plugin_id()) << "the id the host gave at registration";
        EXPECT_EQ(session.registered_name(), "Orbivane");
        EXPECT_EQ(access.get()->aegp_setup_err(), A_Err_NONE);
    }
    // The PiPL the host decoded (the .aex's resource on Windows, the sidecar on Linux) states
    // what global set-up reported, and names the entry point the host called.
    const host::PiplInfo* pipl = session.pipl();
    ASSERT_NE(pipl, nullptr);
    EXPECT_EQ(pipl->effect_version, session.module_version());
    EXPECT_EQ(pipl->global_out_flags, std::uint32_t(session.out_flags()));
    EXPECT_EQ(pipl->global_out_flags2, std::uint32_t(session.out_flags2()));
    EXPECT_EQ(pipl->entry_point, "EntryPointFunc");
    EXPECT_EQ(pipl->match_name, "ORBV Orbivane");
    // About: name and version, then one line of description.
    EXPECT_EQ(session.about(), PF_Err_NONE);
    const std::string about = session.return_msg(), head = "Orbivane, v1.1.6\n";
    ASSERT_EQ(about.rfind(head, 0), 0u) << about;
    EXPECT_GT(about.size(), head.size());
    EXPECT_EQ(about.find('\n', head.size()), std::string::npos) << about;
    EXPECT_EQ(session.unload(), "") << "set-down frees the global data's handle";
    EXPECT_EQ(session.handles().live(), 0u);
}

TEST(GlobalSetup, AFailedRegistrationIsKeptNotReturned)
{
    host::Host session;
    session.faults().fail_every("AEGP_RegisterWithAEGP", A_Err_GENERIC);
    ASSERT_NO_THROW(session.load(ORBIVANE_MODULE_PATH));
    {
        std::unique_ptr<host::RenderScope> scope = session.render_scope();
        GlobalDataAccess access(scope->in_data());
        ASSERT_NE(access.get(), nullptr);
        EXPECT_EQ(access.get()->aegp_setup_err(), A_Err_GENERIC);
    }
    EXPECT_EQ(session.unload(), "");
    EXPECT_EQ(session.handles().live(), 0u);
}

TEST(GlobalSetup, AMissingUtilitySuiteOrNoHostMemoryIsReturnedAndLeavesNothing)
{
    {
        host::Host session;
        session.registry().add(kAEGPUtilitySuite, kAEGPUtilitySuiteVersion5, nullptr);
        EXPECT_THROW(session.load(ORBIVANE_MODULE_PATH), host::HostError);
        EXPECT_EQ(session.last_error(), PF_Err_BAD_CALLBACK_PARAM) << "through the guard";
        EXPECT_EQ(session.handles().live(), 0u);
        EXPECT_EQ(session.counters().live(host::Resource::Suite), 0);
    }
    host::Host session;
    session.faults().fail_every("host_new_handle", PF_Err_OUT_OF_MEMORY);
    EXPECT_THROW(session.load(ORBIVANE_MODULE_PATH), host::HostError);
    EXPECT_EQ(session.last_error(), PF_Err_OUT_OF_MEMORY);
    EXPECT_EQ(session.counters().live(host::Resource::Suite), 0);
}

TEST(GlobalSetdown, WithoutGlobalDataTouchesNothing)
{
    Session s;
    PF_UtilCallbacks utils = *s.command.in()->utils;
    utils.host_lock_handle = nullptr;  // any handle call would crash
    utils.host_dispose_handle = nullptr;
    s.command.in()->utils = &utils;
    s.command.in()->global_data = nullptr;
    EXPECT_EQ(s.send(PF_Cmd_GLOBAL_SETDOWN), PF_Err_NONE);
    EXPECT_TRUE(s.command.calls().empty());
}

TEST(SequenceData, SerializesToFourZeroBytesInAnUnlockedHandle)
{
    hosted::HostedCommand command;
    const host::HandleHeap& handles = command.host().handles();
    const SequenceData data;
    const SerializedSequenceData flat = data.serialize(command.in());
    ASSERT_NE(flat, nullptr);
    char** const handle = reinterpret_cast<char**>(flat);
    ASSERT_TRUE(handles.owns(handle));
    EXPECT_EQ(handles.size(handle), 4u);
    EXPECT_EQ(handles.lock_count(handle), 0);
    A_long stored = -1;
    std::memcpy(&stored, *flat, sizeof(stored));
    EXPECT_EQ(stored, 0);
    EXPECT_EQ(SequenceData(flat).reserved(), 0);
}

}  // namespace
