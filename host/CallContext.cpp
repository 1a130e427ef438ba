#include "host/CallContext.h"

namespace host {

namespace {
thread_local CallContext* t_current = nullptr;
}

CallContext* CallContext::from(PF_ProgPtr effect_ref) {
    auto* context = reinterpret_cast<CallContext*>(effect_ref);
    return context && context->magic == kMagic ? context : nullptr;
}

CallContext* CallContext::current() { return t_current; }

CurrentCommand::CurrentCommand(CallContext* context) : previous_(t_current) { t_current = context; }

CurrentCommand::~CurrentCommand() { t_current = previous_; }

}  // namespace host
