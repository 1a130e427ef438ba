#ifndef AE_MACROS_H
#define AE_MACROS_H

/* Error chaining, struct clearing and 16.16 fixed-point helpers. */

#include "A.h"
#include <string.h>

/* Evaluate FUNC only while the local `err` is still zero. */
#ifndef ERR
#define ERR(FUNC) do { if (!err) { err = (FUNC); } } while (0)
#endif

/* Always evaluate FUNC into the local `err2`; keep the first error in `err`. */
#ifndef ERR2
#define ERR2(FUNC) do { if (((err2 = (FUNC)) != A_Err_NONE) && !err) { err = err2; } } while (0)
#endif

/* Takes an lvalue, not a pointer; the expansion carries its own semicolon. */
#ifndef AEFX_CLR_STRUCT
#define AEFX_CLR_STRUCT(STRUCT) memset(&(STRUCT), 0, sizeof(STRUCT));
#endif

#ifndef DH
#define DH(h) (*(h))
#endif

#define FIX2INT(X)        ((A_long)(X) >> 16)              /* towards minus infinity */
#define INT2FIX(X)        ((A_long)(X) << 16)
#define FIX2INT_ROUND(X)  (FIX2INT((X) + 32768))           /* half up */
#define FIX_2_FLOAT(X)    ((A_FpLong)(X) / 65536.0)
#define FLOAT2FIX(F)      ((PF_Fixed)((F) * 65536 + (((F) < 0) ? -0.5 : 0.5)))  /* half away from zero */

#ifndef ABS
#define ABS(N) ((N) < 0 ? -(N) : (N))
#endif

#ifndef MIN
#define MIN(A, B) ((A) < (B) ? (A) : (B))
#endif

#ifndef MAX
#define MAX(A, B) ((A) > (B) ? (A) : (B))
#endif

#define A_Fixed_ONE  ((A_Fixed)0x00010000L)
#define A_Fixed_HALF ((A_Fixed)0x00008000L)

#define PF_RECT_2_FIXEDRECT(R, FR) \
	do { \
		(FR).left   = INT2FIX((R).left); \
		(FR).top    = INT2FIX((R).top); \
		(FR).right  = INT2FIX((R).right); \
		(FR).bottom = INT2FIX((R).bottom); \
	} while (0)

#define PF_FIXEDRECT_2_RECT(FR, R) \
	do { \
		(R).left   = (A_short)FIX2INT_ROUND((FR).left); \
		(R).top    = (A_short)FIX2INT_ROUND((FR).top); \
		(R).right  = (A_short)FIX2INT_ROUND((FR).right); \
		(R).bottom = (A_short)FIX2INT_ROUND((FR).bottom); \
	} while (0)

#define CONVERT8TO16(A) ((((long)(A) * PF_MAX_CHAN16) + PF_HALF_CHAN8) / PF_MAX_CHAN8)

#define RATIO2FLOAT(R) ((A_FpLong)(R).num / (A_FpLong)(R).den)

#endif /* AE_MACROS_H */
