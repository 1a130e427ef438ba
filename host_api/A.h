#ifndef A_H
#define A_H

/* Basic scalar and geometric types shared by every host interface header. */

#if !defined(A_INTERNAL)
#include <stdint.h>
#endif

#ifdef __cplusplus
extern "C" {
#endif

/* Integer and float types. The fixed-width ones are chosen per compiler; the sizes are
   identical on every platform. */
typedef int32_t  A_long;
typedef uint32_t A_u_long;
typedef char     A_char;
typedef double   A_FpLong;
typedef float    A_FpShort;
typedef A_long   A_Err;
typedef void    *A_Handle;
typedef A_long   A_Fixed;
typedef A_u_long A_UFixed;

#if defined(_MSC_VER)
typedef short            A_short;
typedef unsigned short   A_u_short;
typedef unsigned char    A_u_char;
typedef unsigned char    A_Boolean;
#if defined(_WIN64)
typedef __int64          A_intptr_t;
#else
typedef int32_t          A_intptr_t;
#endif
typedef unsigned __int64 A_u_longlong;
#else
typedef int16_t   A_short;
typedef uint16_t  A_u_short;
typedef uint8_t   A_u_char;
typedef uint8_t   A_Boolean;
typedef intptr_t  A_intptr_t;
typedef uint64_t  A_u_longlong;
#endif

typedef struct {
	A_long   value;
	A_u_long scale;        /* value / scale seconds */
} A_Time;

typedef struct {
	A_long   num;
	A_u_long den;
} A_Ratio;

typedef struct {
	A_FpLong x, y;
} A_FloatPoint;

typedef struct {
	A_FpLong x, y, z;
} A_FloatPoint3;

typedef struct {
	A_FpLong left, top, right, bottom;
} A_FloatRect;

typedef struct {
	A_FpLong mat[3][3];
} A_Matrix3;

/* Indexed mat[row][column]; row vectors, so the translation is row 3. */
typedef struct {
	A_FpLong mat[4][4];
} A_Matrix4;

typedef struct {
	A_short top, left, bottom, right;
} A_LegacyRect;

typedef struct {
	A_long left, top, right, bottom;
} A_LRect;

typedef A_LRect A_Rect;

typedef struct {
	A_long x, y;
} A_LPoint;

typedef struct {
	A_FpLong radius, angle;
} A_FloatPolar;

typedef A_u_longlong A_HandleSize;

typedef struct {
	A_FpLong alpha, red, green, blue;
} A_Color;

#ifdef __cplusplus
#define A_THROW(ERR) throw ((A_long)(ERR))
#endif

enum {
	A_Err_NONE = 0,
	A_Err_GENERIC,
	A_Err_STRUCT,
	A_Err_PARAMETER,
	A_Err_ALLOC,
	A_Err_WRONG_THREAD,
	A_Err_CONST_PROJECT_MODIFICATION,
	A_Err_RESERVED_7,
	A_Err_RESERVED_8,
	A_Err_RESERVED_9,
	A_Err_RESERVED_10,
	A_Err_RESERVED_11,
	A_Err_RESERVED_12,
	A_Err_MISSING_SUITE,
	A_Err_RESERVED_14,
	A_Err_RESERVED_15,
	A_Err_RESERVED_16,
	A_Err_RESERVED_17,
	A_Err_RESERVED_18,
	A_Err_RESERVED_19,
	A_Err_RESERVED_20,
	A_Err_RESERVED_21,
	A_Err_NOT_IN_CACHE_OR_COMPUTE_PENDING,
	A_Err_PROJECT_LOAD_FATAL,
	A_Err_EFFECT_APPLY_FATAL,
	A_Err_LAST
};

typedef struct {
	A_short majorS;
	A_short minorS;
} A_Version;

typedef struct _Up_OpaqueMem **AEGP_MemHandle;

typedef A_u_short A_UTF16Char;

#if defined(_WIN32)
typedef A_long A_LegacyEnumType;
#else
typedef A_char A_LegacyEnumType;
#endif

#ifdef __cplusplus
}
#endif

#endif /* A_H */
