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
// Worlds the module makes and frees itself (PF World Suite and the legacy utils block alike):
// writeable, counted, and their sampling tables forgotten when freed.
PF_Err newModuleWorld(PF_ProgPtr effect_ref, A_long width, A_long height, PF_PixelFormat format, bool clear,
                      PF_EffectWorld* world);
PF_Err disposeModuleWorld(PF_ProgPtr effect_ref, PF_EffectWorld* world);
// Registers the world, sampling, param utils and utility suites.
void registerCoreSuites(SuiteRegistry& registry);

}  // namespace core
}  // namespace host
