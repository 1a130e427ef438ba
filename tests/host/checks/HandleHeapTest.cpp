#include <gtest/gtest.h>

#include <cstring>

#include "host/session/Host.h"
#include "host/checks/HandleHeap.h"

namespace {

// New handles are filled with the poison byte (or zeros when poison is off) and counted.
TEST(HandleHeap, NewHandleIsPoisonedAndCounted) {
    for (bool poison : {true, false}) {
        host::HostOptions options;
        options.poison = poison;
        host::Host session(options);
        PF_UtilCallbacks* utils = session.render_scope()->in_data()->utils;
        PF_Handle h = utils->host_new_handle(16);
        ASSERT_NE(h, nullptr);
        const auto* bytes = static_cast<const unsigned char*>(utils->host_lock_handle(h));
        for (int i = 0; i < 16; ++i) EXPECT_EQ(bytes[i], poison ? host::HandleHeap::kPoisonByte : 0) << i;
        EXPECT_EQ(utils->host_get_handle_size(h), 16u);
        EXPECT_EQ(session.counters().live(host::Resource::Handle), 1);
        EXPECT_EQ(session.counters().live(host::Resource::HandleLock), 1);
        utils->host_unlock_handle(h);
        utils->host_dispose_handle(h);
        EXPECT_EQ(session.leaks(), "");
    }
}

TEST(HandleHeap, LeakedHandleAndLockAreReportedAndFailedAllocationsHoldNothing) {
    host::Host session;
    PF_UtilCallbacks* utils = session.render_scope()->in_data()->utils;
    PF_Handle kept = utils->host_new_handle(4);
    PF_Handle freed = utils->host_new_handle(4);
    utils->host_lock_handle(freed);
    utils->host_dispose_handle(freed);  // disposing of a locked handle drops its lock too
    const std::string report = session.leaks();
    EXPECT_NE(report.find("leaked 1 x handle"), std::string::npos) << report;
    EXPECT_EQ(report.find("handle lock"), std::string::npos) << report;
    utils->host_dispose_handle(kept);
    EXPECT_EQ(session.leaks(), "");
    // A failed allocation holds nothing.
    session.faults().fail_every("host_new_handle", PF_Err_OUT_OF_MEMORY);
    EXPECT_EQ(utils->host_new_handle(4), nullptr);
    EXPECT_EQ(session.leaks(), "");
}

// Resizing keeps the contents and the handle; misuse is reported, not crashed on.
TEST(HandleHeap, ResizeKeepsContentsAndMisuseIsReported) {
    host::Host session;
    PF_UtilCallbacks* utils = session.render_scope()->in_data()->utils;
    PF_Handle h = utils->host_new_handle(4);
    std::memcpy(*reinterpret_cast<char**>(h), "abcd", 4);
    PF_Handle same = h;
    ASSERT_EQ(utils->host_resize_handle(1000, &h), PF_Err_NONE);
    EXPECT_EQ(h, same);
    EXPECT_EQ(std::memcmp(*reinterpret_cast<char**>(h), "abcd", 4), 0);
    EXPECT_EQ(utils->host_get_handle_size(h), 1000u);
    utils->host_unlock_handle(h);  // never locked
    utils->host_dispose_handle(h);
    utils->host_dispose_handle(h);  // twice
    const std::string report = session.leaks();
    EXPECT_NE(report.find("not locked"), std::string::npos) << report;
    EXPECT_NE(report.find("unknown handle"), std::string::npos) << report;
}

}  // namespace
