#ifndef SPTYPES_H
#define SPTYPES_H

#include "SPConfig.h"
#include "PSIntTypes.h"
#include "SPErrorCodes.h"

#ifdef __cplusplus
extern "C" {
#endif

/* Calling-convention marker of the suite tables; empty on every current platform. */
#ifndef SPAPI
#define SPAPI
#endif

typedef int32 SPErr;

#if defined(WIN_ENV)
typedef int32 SPBoolean;
#else
typedef uint8 SPBoolean;
#endif

#define kSPNoError 0

#ifdef __cplusplus
}
#endif

#endif /* SPTYPES_H */
