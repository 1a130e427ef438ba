#include "reliability/Lifetime.h"

#include <functional>
#include <sstream>

#include "host/session/Host.h"
#include "reliability/TestScene.h"
#include "shell/ParamIds.h"

namespace reliability {

namespace {

constexpr double kFrameSeconds = 0.4;  // inside the control layer's rotation keys

class StepRunner {
public:
    StepRunner(Session& session, LifetimeResult& result) : session_(session), result_(result) {}

    // Runs `body`, recording its call range, its error and any HostError it raised.
    bool run(const std::string& name, StepKind kind, const std::function<PF_Err()>& body) {
        StepResult step;
        step.name = name;
        step.kind = kind;
        step.first_call = session_.host().faults().calls() + 1;
        try {
            step.err = body();
        } catch (const host::HostError& e) {
            step.host_error = e.what();
        }
        step.end_call = session_.host().faults().calls() + 1;
        result_.steps.push_back(step);
        return step.host_error.empty();
    }

private:
    Session& session_;
    LifetimeResult& result_;
};

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
    StepRunner steps(session, result);

    result.loaded = steps.run("load", StepKind::Load, [&] {
        host.load(ORBIVANE_MODULE_PATH);
        return PF_Err_NONE;
    });
    if (!result.loaded) {
        result.leaks = host.leaks();
        return result;
    }
    steps.run("sequence set-up", StepKind::UpdateUi, [&] { return host.sequence_setup(); });
    session.chooseLayers();
    steps.run("interface update", StepKind::UpdateUi, [&] { return host.update_params_ui(); });

    host.set_param(PARAM_CONTROL_LAYER, host::ParamValue::layer(session.layers().control));
    steps.run("choose control layer", StepKind::ChangeParam,
              [&] { return host.user_changed_param(PARAM_CONTROL_LAYER); });
    // The same interface update once more on its own: its length splits the step above into
    // its USER_CHANGED_PARAM and UPDATE_PARAMS_UI parts.
    steps.run("interface update with control layer", StepKind::UpdateUi,
              [&] { return host.update_params_ui(); });

    for (bool dof : {false, true}) {
        session.setDepthOfField(dof);
        for (short depth : {8, 16, 32}) {
            const std::string name = "render " + std::to_string(depth) + "-bit" + (dof ? " with depth of field" : "");
            steps.run(name, StepKind::Render, [&] { return renderFrame(host, depth); });
        }
    }

    host.set_param(PARAM_CONTROL_LAYER, host::ParamValue::layer(0));
    steps.run("clear control layer", StepKind::ChangeParam,
              [&] { return host.user_changed_param(PARAM_CONTROL_LAYER); });
    steps.run("interface update without control layer", StepKind::UpdateUi,
              [&] { return host.update_params_ui(); });

    steps.run("unload", StepKind::Unload, [&] {
        result.leaks = host.unload();
        return PF_Err_NONE;
    });
    return result;
}

std::string serialize(const LifetimeResult& result) {
    std::ostringstream out;
    out << "loaded " << (result.loaded ? 1 : 0) << "\n";
    for (const StepResult& step : result.steps) {
        out << "step " << static_cast<int>(step.kind) << " " << step.first_call << " " << step.end_call << " "
            << step.err << " " << step.name << "\n";
    }
    return out.str();
}

LifetimeResult deserializeLifetime(const std::string& text) {
    LifetimeResult result;
    std::istringstream in(text);
    std::string word;
    while (in >> word) {
        if (word == "loaded") {
            int loaded = 0;
            in >> loaded;
            result.loaded = loaded != 0;
        } else if (word == "step") {
            StepResult step;
            int kind = 0;
            in >> kind >> step.first_call >> step.end_call >> step.err;
            step.kind = static_cast<StepKind>(kind);
            std::getline(in >> std::ws, step.name);
            result.steps.push_back(step);
        } else {
            std::string rest;
            std::getline(in, rest);
        }
    }
    return result;
}

}  // namespace reliability
