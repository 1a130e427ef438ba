#include "reliability/Lifetime.h"

#include <functional>

#include "host/session/Host.h"
#include "reliability/TestScene.h"
#include "shell/ParamIds.h"

namespace reliability {

namespace {

constexpr double kFrameSeconds = 0.4;  // inside the control layer's rotation keys

PF_Err renderFrame(host::Host& host, short depth) {
    host::RenderRequest request;
    request.seconds = kFrameSeconds;
    request.bitdepth = depth;
    return host.render(request).err;
}

}  // namespace

LifetimeResult runLifetime(Session& session) {
    LifetimeResult result;
    host::Host& host = session.host();
    // Runs `body` as one step, recording its call range, its error and any HostError it raised.
    auto runStep = [&](const std::string& name, StepKind kind, const std::function<PF_Err()>& body) {
        StepResult step;
        step.name = name;
        step.kind = kind;
        step.first_call = host.faults().calls() + 1;
        try {
            step.err = body();
        } catch (const host::HostError& e) {
            step.host_error = e.what();
        }
        step.end_call = host.faults().calls() + 1;
        result.steps.push_back(step);
        return step.host_error.empty();
    };

    result.loaded = runStep("load", StepKind::Load, [&] {
        host.load(ORBIVANE_MODULE_PATH);
        return PF_Err_NONE;
    });
    if (!result.loaded) {
        result.leaks = host.leaks();
        return result;
    }
    runStep("sequence set-up", StepKind::UpdateUi, [&] { return host.sequence_setup(); });
    session.chooseLayers();
    runStep("interface update", StepKind::UpdateUi, [&] { return host.update_params_ui(); });

    host.set_param(PARAM_CONTROL_LAYER, host::ParamValue::layer(session.layers().control));
    runStep("choose control layer", StepKind::ChangeParam,
              [&] { return host.user_changed_param(PARAM_CONTROL_LAYER); });
    // The same interface update once more on its own: its length splits the step above into
    // its USER_CHANGED_PARAM and UPDATE_PARAMS_UI parts.
    runStep("interface update with control layer", StepKind::UpdateUi,
              [&] { return host.update_params_ui(); });

    for (bool dof : {false, true}) {
        session.setDepthOfField(dof);
        for (short depth : {8, 16, 32}) {
            const std::string name = "render " + std::to_string(depth) + "-bit" + (dof ? " with depth of field" : "");
            runStep(name, StepKind::Render, [&] { return renderFrame(host, depth); });
        }
    }

    host.set_param(PARAM_CONTROL_LAYER, host::ParamValue::layer(0));
    runStep("clear control layer", StepKind::ChangeParam,
              [&] { return host.user_changed_param(PARAM_CONTROL_LAYER); });
    runStep("interface update without control layer", StepKind::UpdateUi,
              [&] { return host.update_params_ui(); });

    runStep("unload", StepKind::Unload, [&] {
        result.leaks = host.unload();
        return PF_Err_NONE;
    });
    return result;
}

}  // namespace reliability
