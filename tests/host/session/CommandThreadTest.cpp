// Which command runs on which thread: every session serves the AEGP suites itself, and the
// strict render-thread rule applies to the command running on the calling thread only.
#include <gtest/gtest.h>

#include <thread>

#include "AE_GeneralPlug.h"
#include "host/api/AegpSuites.h"
#include "host/comp/Composition.h"
#include "host/session/Host.h"

namespace host {
namespace {

TEST(CurrentCommand, NestsAndRestoresPerThread) {
    CallContext outer, inner;
    EXPECT_EQ(CallContext::current(), nullptr);
    {
        CurrentCommand a(&outer);
        EXPECT_EQ(CallContext::current(), &outer);
        {
            CurrentCommand b(&inner);
            EXPECT_EQ(CallContext::current(), &inner);
            CallContext* seen_elsewhere = &inner;
            std::thread([&] { seen_elsewhere = CallContext::current(); }).join();
            EXPECT_EQ(seen_elsewhere, nullptr);  // another thread runs no command
        }
        EXPECT_EQ(CallContext::current(), &outer);
    }
    EXPECT_EQ(CallContext::current(), nullptr);
}

class SessionSuites : public ::testing::Test {
protected:
    static HostOptions strict() {
        HostOptions o;
        o.strict_render_thread = true;
        return o;
    }

    SessionSuites() : session(strict()) {
        auto comp = std::make_shared<Composition>("Main", 64, 64, 25, 2);
        Layer solid;
        solid.kind = LayerKind::Solid;
        solid.source.width = solid.source.height = 64;
        layer_id = comp->add_layer(solid).id;
        session.set_composition(comp, layer_id);
        const void* table = nullptr;
        EXPECT_EQ(session.pica_basic()->AcquireSuite(kAEGPStreamSuite, kAEGPStreamSuiteVersion4, &table), 0);
        streams = static_cast<const AEGP_StreamSuite4*>(table);
    }
    ~SessionSuites() override { session.pica_basic()->ReleaseSuite(kAEGPStreamSuite, kAEGPStreamSuiteVersion4); }

    // A new stream reference changes the project: refused on a render thread in strict mode.
    A_Err new_stream() {
        AEGP_StreamRefH stream = nullptr;
        const A_Err err = streams->AEGP_GetNewLayerStream(0, session.aegp().layer_handle(layer_id),
                                                          AEGP_LayerStream_OPACITY, &stream);
        if (stream != nullptr) {
            EXPECT_EQ(streams->AEGP_DisposeStream(stream), A_Err_NONE);
        }
        return err;
    }

    Host session;
    int layer_id = 0;
    const AEGP_StreamSuite4* streams = nullptr;
};

TEST_F(SessionSuites, StrictRuleFollowsTheCommandOfTheCallingThread) {
    EXPECT_EQ(new_stream(), A_Err_NONE);  // no command running
    {
        auto scope = session.render_scope();
        EXPECT_EQ(new_stream(), A_Err_WRONG_THREAD);
        A_Err from_other_thread = A_Err_GENERIC;
        std::thread([&] { from_other_thread = new_stream(); }).join();
        EXPECT_EQ(from_other_thread, A_Err_NONE);
    }
    EXPECT_EQ(new_stream(), A_Err_NONE);  // the render has ended
    EXPECT_EQ(session.leaks().find("stream"), std::string::npos) << session.leaks();
}

}  // namespace
}  // namespace host
