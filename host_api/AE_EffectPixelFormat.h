#ifndef AE_EFFECTPIXELFORMAT_H
#define AE_EFFECTPIXELFORMAT_H

/* Pixel formats as four-character codes, packed little-endian (not a multi-character
   literal). */

#include "A.h"

#ifdef __cplusplus
extern "C" {
#endif

#ifndef MAKE_PIXEL_FORMAT_FOURCC
#define MAKE_PIXEL_FORMAT_FOURCC(ch0, ch1, ch2, ch3) \
	((A_u_long)(A_u_char)(ch0) | ((A_u_long)(A_u_char)(ch1) << 8) | \
	 ((A_u_long)(A_u_char)(ch2) << 16) | ((A_u_long)(A_u_char)(ch3) << 24))
#endif

enum {
	PF_PixelFormat_ARGB32         = MAKE_PIXEL_FORMAT_FOURCC('a', 'r', 'g', 'b'),  /* PF_Pixel, 0..255 */
	PF_PixelFormat_ARGB64         = MAKE_PIXEL_FORMAT_FOURCC('a', 'e', '1', '6'),  /* PF_Pixel16, 0..32768 */
	PF_PixelFormat_ARGB128        = MAKE_PIXEL_FORMAT_FOURCC('a', 'e', '3', '2'),  /* PF_PixelFloat, 1.0 = white */
	PF_PixelFormat_GPU_BGRA128    = MAKE_PIXEL_FORMAT_FOURCC('@', 'C', 'D', 'A'),
	PF_PixelFormat_RESERVED       = MAKE_PIXEL_FORMAT_FOURCC('@', 'C', 'D', 'a'),
	PF_PixelFormat_BGRA32         = MAKE_PIXEL_FORMAT_FOURCC('b', 'g', 'r', 'a'),
	PF_PixelFormat_VUYA32         = MAKE_PIXEL_FORMAT_FOURCC('v', 'u', 'y', 'a'),
	PF_PixelFormat_NTSCDV25       = MAKE_PIXEL_FORMAT_FOURCC('d', 'v', 'n', '2'),
	PF_PixelFormat_PALDV25        = MAKE_PIXEL_FORMAT_FOURCC('d', 'v', 'p', '2'),
	PF_PixelFormat_INVALID        = MAKE_PIXEL_FORMAT_FOURCC('b', 'a', 'd', 'f'),
	PF_PixelFormat_FORCE_LONG_INT = 0xFFFFFFFF
};
typedef A_long PF_PixelFormat;

#ifdef __cplusplus
}
#endif

#endif /* AE_EFFECTPIXELFORMAT_H */
