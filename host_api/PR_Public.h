#ifndef PR_PUBLIC_H
#define PR_PUBLIC_H

/* Artisan interface: only the render-context handle the camera suite names. */

#include "A.h"
#include "SPBasic.h"
#include "AE_EffectSuites.h"

#ifdef __cplusplus
extern "C" {
#endif

typedef struct PR_RenderContext **PR_RenderContextH;

#ifdef __cplusplus
}
#endif

#endif /* PR_PUBLIC_H */
