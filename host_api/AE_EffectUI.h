#ifndef AE_EFFECTUI_H
#define AE_EFFECTUI_H

/* Custom effect UI. This module draws no custom UI, so only the opaque record that
   PF_InteractCallbacks::register_ui takes is declared (as an incomplete type). */

#include "A.h"
#include "AE_Effect.h"

#ifdef __cplusplus
extern "C" {
#endif

struct _PF_CustomUIInfo;

#ifdef __cplusplus
}
#endif

#endif /* AE_EFFECTUI_H */
