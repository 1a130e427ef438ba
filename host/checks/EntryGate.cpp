// The gate every host entry point passes first (HOST_FAULT_POINT): the call log, injected
// faults, and the render-thread rule, all keyed by the entry point's name.

#include "A.h"
#include "host/checks/CallContext.h"
#include "host/checks/FaultInjector.h"
#include "host/session/Host.h"

namespace host {

std::int32_t faultPoint(const char* name) {
    CallContext* command = CallContext::current();
    if (command) command->calls().count(command->cmd, name);
    if (FaultInjector* injector = FaultInjector::current())
        if (std::int32_t err = injector->hit(name)) return err;
    if (!command || !command->host) return 0;
    const A_Err refusal = command->host->render_thread_rule(*command, name);
    if (refusal != A_Err_NONE) command->calls().refuse(command->cmd, name);
    return refusal;
}

}  // namespace host
