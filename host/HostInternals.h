#pragma once
// Pieces of the host session shared between its source files; not for other host parts.

#include "AE_Effect.h"
#include "AE_EffectCB.h"
#include "SPBasic.h"

namespace host {

class Host;
class SuiteRegistry;

namespace core {

// The session whose callbacks are running (the callbacks without an effect_ref need it).
Host* activeHost();
void setActiveHost(Host* host);
void clearActiveHost(Host* host);

// The callback tables in every PF_InData.
PF_UtilCallbacks* utilCallbacks();
PF_InteractCallbacks interactCallbacks();
SPBasicSuite* picaBasicSuite();
// Registers the world, sampling, param utils and utility suites.
void registerCoreSuites(SuiteRegistry& registry);

}  // namespace core
}  // namespace host
