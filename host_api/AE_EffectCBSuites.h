#ifndef AE_EFFECTCBSUITES_H
#define AE_EFFECTCBSUITES_H

/* World and sampling suites, acquired through in_data->pica_basicP. */

#include "AE_EffectCB.h"
#include "AE_EffectPixelFormat.h"
#include "SPBasic.h"

#ifdef __cplusplus
extern "C" {
#endif

/* ---- Sampling: x, y are 16.16 positions in the source world's pixel grid --------------- */

#define kPFSampling8Suite         "PF Sampling8 Suite"
#define kPFSampling8SuiteVersion1 1

typedef struct PF_Sampling8Suite1 {
	PF_Err (*nn_sample)(PF_ProgPtr effect_ref, PF_Fixed x, PF_Fixed y, const PF_SampPB *params,
	                    PF_Pixel *dst_pixel);
	PF_Err (*subpixel_sample)(PF_ProgPtr effect_ref, PF_Fixed x, PF_Fixed y,
	                          const PF_SampPB *params, PF_Pixel *dst_pixel);
	PF_Err (*area_sample)(PF_ProgPtr effect_ref, PF_Fixed x, PF_Fixed y, const PF_SampPB *params,
	                      PF_Pixel *dst_pixel);
} PF_Sampling8Suite1;

#define kPFSampling16Suite         "PF Sampling16 Suite"
#define kPFSampling16SuiteVersion1 1

typedef struct PF_Sampling16Suite1 {
	PF_Err (*nn_sample16)(PF_ProgPtr effect_ref, PF_Fixed x, PF_Fixed y, const PF_SampPB *params,
	                      PF_Pixel16 *dst_pixel);
	PF_Err (*subpixel_sample16)(PF_ProgPtr effect_ref, PF_Fixed x, PF_Fixed y,
	                            const PF_SampPB *params, PF_Pixel16 *dst_pixel);
	PF_Err (*area_sample16)(PF_ProgPtr effect_ref, PF_Fixed x, PF_Fixed y, const PF_SampPB *params,
	                        PF_Pixel16 *dst_pixel);
} PF_Sampling16Suite1;

#define kPFSamplingFloatSuite         "PF SamplingFloat Suite"
#define kPFSamplingFloatSuiteVersion1 1

typedef struct PF_SamplingFloatSuite1 {
	PF_Err (*nn_sample_float)(PF_ProgPtr effect_ref, PF_Fixed x, PF_Fixed y,
	                          const PF_SampPB *params, PF_PixelFloat *dst_pixel);
	PF_Err (*subpixel_sample_float)(PF_ProgPtr effect_ref, PF_Fixed x, PF_Fixed y,
	                                const PF_SampPB *params, PF_PixelFloat *dst_pixel);
	PF_Err (*area_sample_float)(PF_ProgPtr effect_ref, PF_Fixed x, PF_Fixed y,
	                            const PF_SampPB *params, PF_PixelFloat *dst_pixel);
} PF_SamplingFloatSuite1;

/* ---- Worlds ------------------------------------------------------------------------------ */

#define kPFWorldSuite         "PF World Suite"
#define kPFWorldSuiteVersion1 1
#define kPFWorldSuiteVersion2 2

typedef struct PF_WorldSuite1 {
	PF_Err (*new_world)(PF_ProgPtr effect_ref, A_long width, A_long height, PF_NewWorldFlags flags,
	                    PF_EffectWorld *world);
	PF_Err (*dispose_world)(PF_ProgPtr effect_ref, PF_EffectWorld *world);
} PF_WorldSuite1;

typedef struct PF_WorldSuite2 {
	PF_Err (*PF_NewWorld)(PF_ProgPtr effect_ref, A_long widthL, A_long heightL,
	                      PF_Boolean clear_pixB, PF_PixelFormat pixel_format,
	                      PF_EffectWorld *worldP);
	PF_Err (*PF_DisposeWorld)(PF_ProgPtr effect_ref, PF_EffectWorld *worldP);
	PF_Err (*PF_GetPixelFormat)(const PF_EffectWorld *worldP, PF_PixelFormat *pixel_formatP);
} PF_WorldSuite2;

#define kPFPixelFormatSuite         "PF Pixel Format Suite"
#define kPFPixelFormatSuiteVersion2 2

typedef struct PF_PixelFormatSuite2 {
	PF_Err (*PF_AddSupportedPixelFormat)(PF_ProgPtr effect_ref, PF_PixelFormat pixel_format);
	PF_Err (*PF_ClearSupportedPixelFormats)(PF_ProgPtr effect_ref);
} PF_PixelFormatSuite2;

#ifdef __cplusplus
}
#endif

#endif /* AE_EFFECTCBSUITES_H */
