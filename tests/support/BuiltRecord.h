#pragma once
// The render record ConstructRenderInfo builds from a session's current parameters, as the
// driver builds it at full resolution, at a composition time in seconds.

#include <memory>

#include <gtest/gtest.h>

#include "host/session/Session.h"
#include "render/ConstructRenderInfo.h"

namespace test_support {

struct BuiltRecord {
    explicit BuiltRecord(host::Session& session, double seconds = 0.0)
        : scope(session.host().render_scope(32, seconds)), info(scope->in_data())
    {
        EXPECT_EQ(ConstructRenderInfo(scope->in_data(), info), PF_Err_NONE);
    }

    std::unique_ptr<host::RenderScope> scope;
    RenderInfo info;
};

}  // namespace test_support
