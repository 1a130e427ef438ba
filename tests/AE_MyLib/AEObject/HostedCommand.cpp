#include "AE_MyLib/AEObject/HostedCommand.h"

#include <algorithm>
#include <stdexcept>

#include "host/comp/Composition.h"

namespace hosted {

namespace {

HostedCommand* g_current = nullptr;

std::string suiteName(const char* name, int32 version) { return std::string(name) + " " + std::to_string(version); }

SPErr acquireSuite(const char* name, int32 version, const void** suite)
{
    HostedCommand& command = *g_current;
    const SPErr err = command.host().pica_basic()->AcquireSuite(name, version, suite);
    command.suite_calls.push_back((err ? "refuse " : "acquire ") + suiteName(name, version));
    return err;
}

SPErr releaseSuite(const char* name, int32 version)
{
    g_current->suite_calls.push_back("release " + suiteName(name, version));
    return g_current->host().pica_basic()->ReleaseSuite(name, version);
}

}  // namespace

HostedCommand::HostedCommand(bool load_module)
{
    if (g_current) {
        throw std::logic_error("one HostedCommand at a time");
    }
    host_.reset(new host::Host);
    auto comp = std::make_shared<host::Composition>("Comp", 64, 48, 30.0, 2.0);
    host::Layer footage;
    footage.kind = host::LayerKind::Footage;
    footage.source.name = "Footage \u00E9t\u00E9";
    footage.source.pattern = host::GeneratedPattern::Solid;
    footage.source.width = 64;
    footage.source.height = 48;
    effect_layer_id_ = comp->add_layer(footage).id;
    host::Layer light;
    light.kind = host::LayerKind::Light;
    light.name = "Key";
    light_layer_id_ = comp->add_layer(light).id;
    host_->set_composition(comp, effect_layer_id_);
    if (load_module) {
        host_->load(ORBIVANE_MODULE_PATH);
    }
    scope_ = host_->render_scope();
    in_data_ = *scope_->in_data();
    basic_ = *host_->pica_basic();
    basic_.AcquireSuite = &acquireSuite;
    basic_.ReleaseSuite = &releaseSuite;
    in_data_.pica_basicP = &basic_;
    g_current = this;
    host_->faults().reset();
    host_->faults().set_recording(true);
}

HostedCommand::~HostedCommand()
{
    scope_.reset();
    host_.reset();
    g_current = nullptr;
}

std::vector<std::string> HostedCommand::calls() const
{
    std::vector<std::string> named;
    std::size_t next_suite_call = 0;
    for (const std::string& call : host_->faults().recorded_calls()) {
        const bool suite_call = call == "AcquireSuite" || call == "ReleaseSuite";
        named.push_back(suite_call && next_suite_call < suite_calls.size() ? suite_calls[next_suite_call++] : call);
    }
    return named;
}

long HostedCommand::count(const std::string& call) const
{
    const std::vector<std::string> all = calls();
    return long(std::count(all.begin(), all.end(), call));
}

void HostedCommand::remove_suite(const char* name, int version) { host_->registry().add(name, version, nullptr); }

}  // namespace hosted
