#include "host/checks/CallContext.h"

#include "host/pixels/PixelWorld.h"
#include "host/pixels/SamplerCache.h"

namespace host {

namespace {
thread_local CallContext* t_current = nullptr;
}

CallContext::CallContext() : samplers_(new SamplerCache) {}

// Out of line: the checkouts' worlds and the sampler cache are complete types only here.
CallContext::~CallContext() = default;

void CallContext::forget_samples(const void* data) {
    if (data) samplers_->invalidate(data);
    else samplers_->clear();
}

CallContext* CallContext::from(PF_ProgPtr effect_ref) {
    auto* context = reinterpret_cast<CallContext*>(effect_ref);
    return context && context->magic == kMagic ? context : nullptr;
}

CallContext* CallContext::current() { return t_current; }

CurrentCommand::CurrentCommand(CallContext* context) : previous_(t_current) { t_current = context; }

CurrentCommand::~CurrentCommand() { t_current = previous_; }

}  // namespace host
