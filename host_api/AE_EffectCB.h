#ifndef AE_EFFECTCB_H
#define AE_EFFECTCB_H

/* The utility callbacks reached through in_data->utils, and the macros that call them. */

#include "AE_Effect.h"

#ifdef __cplusplus
extern "C" {
#endif

#define PF_PI              3.14159265358979323846
#define PF_2PI             6.28318530717958647692
#define PF_HALF_PI         1.57079632679489661923
#define PF_E               2.7182818284590452354
#define PF_SQRT2           1.41421356237309504880
#define PF_RAD_PER_DEGREE  0.01745329251994329576

/* For iterate_generic: one call per worker thread. */
#define PF_Iterations_ONCE_PER_PROCESSOR   (-1L)
#define PF_Iteratations_ONCE_PER_PROCESSOR PF_Iterations_ONCE_PER_PROCESSOR

typedef A_u_long PF_KernelFlags;

/* Outside the source counts as transparent black. */
enum {
	PF_SampleEdgeBehav_ZERO = 0
};
typedef A_u_long PF_SampleEdgeBehav;

enum {
	PF_Xfer_NONE = -1,
	PF_Xfer_COPY = 0
};

enum {
	PF_MaskFlag_NONE      = 0,
	PF_MaskFlag_INVERTED  = 1L << 0,
	PF_MaskFlag_LUMINANCE = 1L << 1
};
typedef A_long PF_MaskFlags;

typedef struct {
	PF_EffectWorld mask;
	PF_Point       offset;
	PF_MaskFlags   what_is_mask;
} PF_MaskWorld;

typedef A_long PF_CallbackID;
typedef struct PF_YouMustCastThisToActualFunctionType *PF_CallbackFunc;
typedef A_long PF_PlatDataID;

enum {
	PF_NewWorldFlag_NONE         = 0,
	PF_NewWorldFlag_CLEAR_PIXELS = 1L << 0,
	PF_NewWorldFlag_DEEP_PIXELS  = 1L << 1,
	PF_NewWorldFlag_RESERVED0    = 1L << 2,
	PF_NewWorldFlag_RESERVED1    = 1L << 3
};
typedef A_long PF_NewWorldFlags;

typedef PF_Err (*PF_IteratePixel8Func)(void *refconP, A_long xL, A_long yL, PF_Pixel *inP, PF_Pixel *outP);
typedef PF_Err (*PF_IteratePixel16Func)(void *refconP, A_long xL, A_long yL, PF_Pixel16 *inP, PF_Pixel16 *outP);
typedef PF_Err (*PF_IteratePixelFloatFunc)(void *refconP, A_long xL, A_long yL, PF_PixelFloat *inP, PF_PixelFloat *outP);

/* Sampling parameter block; radii and area are 16.16. */
typedef struct {
	PF_Fixed           x_radius;
	PF_Fixed           y_radius;
	PF_Fixed           area;
	PF_EffectWorld    *src;
	PF_SampleEdgeBehav samp_behave;
	A_long             allow_asynch;
	A_long             motion_blur;
	PF_CompositeMode   comp_mode;
	PF_PixelPtr        mask0;
	A_u_char          *fcm_table;
	A_u_char          *fcd_table;
	A_long             reserved[8];
} PF_SampPB;

/* Host-provided C library functions. */
typedef struct {
	A_FpLong (*atan)(A_FpLong);
	A_FpLong (*atan2)(A_FpLong y, A_FpLong x);
	A_FpLong (*ceil)(A_FpLong);
	A_FpLong (*cos)(A_FpLong);
	A_FpLong (*exp)(A_FpLong);
	A_FpLong (*fabs)(A_FpLong);
	A_FpLong (*floor)(A_FpLong);
	A_FpLong (*fmod)(A_FpLong x, A_FpLong y);
	A_FpLong (*hypot)(A_FpLong x, A_FpLong y);
	A_FpLong (*log)(A_FpLong);
	A_FpLong (*log10)(A_FpLong);
	A_FpLong (*pow)(A_FpLong x, A_FpLong y);
	A_FpLong (*sin)(A_FpLong);
	A_FpLong (*sqrt)(A_FpLong);
	A_FpLong (*tan)(A_FpLong);
	int (*sprintf)(A_char *, const A_char *, ...);
	A_char *(*strcpy)(A_char *, const A_char *);
	A_FpLong (*asin)(A_FpLong);
	A_FpLong (*acos)(A_FpLong);
	A_long unused_longA[1];
} PF_ANSICallbacksBlock;

typedef struct {
	PF_Err (*RGBtoHLS)(PF_ProgPtr effect_ref, PF_Pixel *rgb, PF_Fixed *hls);
	PF_Err (*HLStoRGB)(PF_ProgPtr effect_ref, PF_Fixed *hls, PF_Pixel *rgb);
	PF_Err (*RGBtoYIQ)(PF_ProgPtr effect_ref, PF_Pixel *rgb, PF_Fixed *yiq);
	PF_Err (*YIQtoRGB)(PF_ProgPtr effect_ref, PF_Fixed *yiq, PF_Pixel *rgb);
	PF_Err (*Luminance)(PF_ProgPtr effect_ref, PF_Pixel *rgb, A_long *lum100);
	PF_Err (*Hue)(PF_ProgPtr effect_ref, PF_Pixel *rgb, A_long *hue);
	PF_Err (*Lightness)(PF_ProgPtr effect_ref, PF_Pixel *rgb, A_long *lightness);
	PF_Err (*Saturation)(PF_ProgPtr effect_ref, PF_Pixel *rgb, A_long *saturation);
} PF_ColorCallbacks;

typedef struct _PF_UtilCallbacks {
	PF_Err (*begin_sampling)(PF_ProgPtr effect_ref, PF_Quality qual, PF_ModeFlags mf, PF_SampPB *params);
	PF_Err (*subpixel_sample)(PF_ProgPtr effect_ref, PF_Fixed x, PF_Fixed y, const PF_SampPB *params,
	                          PF_Pixel *dst_pixel);
	PF_Err (*area_sample)(PF_ProgPtr effect_ref, PF_Fixed x, PF_Fixed y, const PF_SampPB *params,
	                      PF_Pixel *dst_pixel);
	void *get_batch_func_is_deprecated;
	PF_Err (*end_sampling)(PF_ProgPtr effect_ref, PF_Quality qual, PF_ModeFlags mf, PF_SampPB *params);
	PF_Err (*composite_rect)(PF_ProgPtr effect_ref, PF_Rect *src_rect, A_long src_opacity,
	                         PF_EffectWorld *source_wld, A_long dest_x, A_long dest_y,
	                         PF_Field field_rdr, PF_XferMode xfer_mode, PF_EffectWorld *dest_wld);
	PF_Err (*blend)(PF_ProgPtr effect_ref, const PF_EffectWorld *src1, const PF_EffectWorld *src2,
	                PF_Fixed ratio, PF_EffectWorld *dst);
	PF_Err (*convolve)(PF_ProgPtr effect_ref, PF_EffectWorld *src, const PF_Rect *area,
	                   PF_KernelFlags flags, A_long kernel_size, void *a_kernel, void *r_kernel,
	                   void *g_kernel, void *b_kernel, PF_EffectWorld *dst);
	PF_Err (*copy)(PF_ProgPtr effect_ref, PF_EffectWorld *src, PF_EffectWorld *dst, PF_Rect *src_r,
	               PF_Rect *dst_r);
	PF_Err (*fill)(PF_ProgPtr effect_ref, const PF_Pixel *color, const PF_Rect *dst_rect,
	               PF_EffectWorld *world);
	PF_Err (*gaussian_kernel)(PF_ProgPtr effect_ref, A_FpLong kRadius, PF_KernelFlags flags,
	                          A_FpLong multiplier, A_long *diameter, void *kernel);
	PF_Err (*iterate)(PF_InData *in_data, A_long progress_base, A_long progress_final,
	                  PF_EffectWorld *src, const PF_Rect *area, void *refcon,
	                  PF_IteratePixel8Func pix_fn, PF_EffectWorld *dst);
	PF_Err (*premultiply)(PF_ProgPtr effect_ref, A_long forward, PF_EffectWorld *dst);
	PF_Err (*premultiply_color)(PF_ProgPtr effect_ref, PF_EffectWorld *src, const PF_Pixel *color,
	                            A_long forward, PF_EffectWorld *dst);
	PF_Err (*new_world)(PF_ProgPtr effect_ref, A_long width, A_long height, PF_NewWorldFlags flags,
	                    PF_EffectWorld *world);
	PF_Err (*dispose_world)(PF_ProgPtr effect_ref, PF_EffectWorld *world);
	PF_Err (*iterate_origin)(PF_InData *in_data, A_long progress_base, A_long progress_final,
	                         PF_EffectWorld *src, const PF_Rect *area, const PF_Point *origin,
	                         void *refcon, PF_IteratePixel8Func pix_fn, PF_EffectWorld *dst);
	PF_Err (*iterate_lut)(PF_InData *in_data, A_long progress_base, A_long progress_final,
	                      PF_EffectWorld *src, const PF_Rect *area, A_u_char *a_lut0,
	                      A_u_char *r_lut0, A_u_char *g_lut0, A_u_char *b_lut0, PF_EffectWorld *dst);
	PF_Err (*transfer_rect)(PF_ProgPtr effect_ref, PF_Quality quality, PF_ModeFlags m_flags,
	                        PF_Field field, const PF_Rect *src_rec, const PF_EffectWorld *src_world,
	                        const PF_CompositeMode *comp_mode, const PF_MaskWorld *mask_world0,
	                        A_long dest_x, A_long dest_y, PF_EffectWorld *dst_world);
	PF_Err (*transform_world)(PF_ProgPtr effect_ref, PF_Quality quality, PF_ModeFlags m_flags,
	                          PF_Field field, const PF_EffectWorld *src_world,
	                          const PF_CompositeMode *comp_mode, const PF_MaskWorld *mask_world0,
	                          const PF_FloatMatrix *matrices, A_long num_matrices,
	                          PF_Boolean src2dst_matrix, const PF_Rect *dest_rect,
	                          PF_EffectWorld *dst_world);
	PF_Handle (*host_new_handle)(A_u_longlong size);
	void *(*host_lock_handle)(PF_Handle pf_handle);
	void (*host_unlock_handle)(PF_Handle pf_handle);
	void (*host_dispose_handle)(PF_Handle pf_handle);
	PF_Err (*get_callback_addr)(PF_ProgPtr effect_ref, PF_Quality quality, PF_ModeFlags mode_flags,
	                            PF_CallbackID which_callback, PF_CallbackFunc *fn_ptr);
	PF_Err (*app)(PF_ProgPtr, A_long, ...);
	PF_ANSICallbacksBlock ansi;
	PF_ColorCallbacks colorCB;
	PF_Err (*get_platform_data)(PF_ProgPtr effect_ref, PF_PlatDataID which, void *data);
	A_u_longlong (*host_get_handle_size)(PF_Handle pf_handle);
	PF_Err (*iterate_origin_non_clip_src)(PF_InData *in_data, A_long progress_base,
	                                      A_long progress_final, PF_EffectWorld *src,
	                                      const PF_Rect *area, const PF_Point *origin, void *refcon,
	                                      PF_IteratePixel8Func pix_fn, PF_EffectWorld *dst);
	PF_Err (*iterate_generic)(A_long iterationsL, void *refconPV,
	                          PF_Err (*fn_func)(void *refconPV, A_long thread_indexL, A_long i,
	                                            A_long iterationsL));
	PF_Err (*host_resize_handle)(A_u_longlong new_sizeL, PF_Handle *handlePH);
	PF_Err (*subpixel_sample16)(PF_ProgPtr effect_ref, PF_Fixed x, PF_Fixed y,
	                            const PF_SampPB *params, PF_Pixel16 *dst_pixel);
	PF_Err (*area_sample16)(PF_ProgPtr effect_ref, PF_Fixed x, PF_Fixed y, const PF_SampPB *params,
	                        PF_Pixel16 *dst_pixel);
	PF_Err (*fill16)(PF_ProgPtr effect_ref, const PF_Pixel16 *color, const PF_Rect *dst_rect,
	                 PF_EffectWorld *world);
	PF_Err (*premultiply_color16)(PF_ProgPtr effect_ref, PF_EffectWorld *src,
	                              const PF_Pixel16 *color, A_long forward, PF_EffectWorld *dst);
	PF_Err (*iterate16)(PF_InData *in_data, A_long progress_base, A_long progress_final,
	                    PF_EffectWorld *src, const PF_Rect *area, void *refcon,
	                    PF_IteratePixel16Func pix_fn, PF_EffectWorld *dst);
	PF_Err (*iterate_origin16)(PF_InData *in_data, A_long progress_base, A_long progress_final,
	                           PF_EffectWorld *src, const PF_Rect *area, const PF_Point *origin,
	                           void *refcon, PF_IteratePixel16Func pix_fn, PF_EffectWorld *dst);
	PF_Err (*iterate_origin_non_clip_src16)(PF_InData *in_data, A_long progress_base,
	                                        A_long progress_final, PF_EffectWorld *src,
	                                        const PF_Rect *area, const PF_Point *origin,
	                                        void *refcon, PF_IteratePixel16Func pix_fn,
	                                        PF_EffectWorld *dst);
	PF_Err (*get_pixel_data8)(PF_EffectWorld *worldP, PF_PixelPtr pixelsP0, PF_Pixel8 **pixPP);
	PF_Err (*get_pixel_data16)(PF_EffectWorld *worldP, PF_PixelPtr pixelsP0, PF_Pixel16 **pixPP);
	A_long reserved[1];
} PF_UtilCallbacks;

/* These assume a PF_InData *in_data in scope. */
#define PF_NEW_HANDLE(SIZE)          (in_data->utils->host_new_handle((SIZE)))
#define PF_DISPOSE_HANDLE(H)         (in_data->utils->host_dispose_handle((PF_Handle)(H)))
#define PF_LOCK_HANDLE(H)            (in_data->utils->host_lock_handle((PF_Handle)(H)))
#define PF_UNLOCK_HANDLE(H)          (in_data->utils->host_unlock_handle((PF_Handle)(H)))
#define PF_GET_HANDLE_SIZE(H)        (in_data->utils->host_get_handle_size((PF_Handle)(H)))
#define PF_RESIZE_HANDLE(NEW_SIZE, HANDLE_P) \
	(in_data->utils->host_resize_handle((NEW_SIZE), (PF_Handle *)(HANDLE_P)))

#define PF_SPRINTF                   (*in_data->utils->ansi.sprintf)
#define PF_STRCPY(DST, SRC)          (in_data->utils->ansi.strcpy((DST), (SRC)))

#define PF_ACOS(X)                   (in_data->utils->ansi.acos((X)))
#define PF_ASIN(X)                   (in_data->utils->ansi.asin((X)))
#define PF_ATAN(X)                   (in_data->utils->ansi.atan((X)))
#define PF_ATAN2(Y, X)               (in_data->utils->ansi.atan2((Y), (X)))
#define PF_CEIL(X)                   (in_data->utils->ansi.ceil((X)))
#define PF_COS(X)                    (in_data->utils->ansi.cos((X)))
#define PF_EXP(X)                    (in_data->utils->ansi.exp((X)))
#define PF_FABS(X)                   (in_data->utils->ansi.fabs((X)))
#define PF_FLOOR(X)                  (in_data->utils->ansi.floor((X)))
#define PF_FMOD(X, Y)                (in_data->utils->ansi.fmod((X), (Y)))
#define PF_HYPOT(X, Y)               (in_data->utils->ansi.hypot((X), (Y)))
#define PF_LOG(X)                    (in_data->utils->ansi.log((X)))
#define PF_LOG10(X)                  (in_data->utils->ansi.log10((X)))
#define PF_POW(X, Y)                 (in_data->utils->ansi.pow((X), (Y)))
#define PF_SIN(X)                    (in_data->utils->ansi.sin((X)))
#define PF_SQRT(X)                   (in_data->utils->ansi.sqrt((X)))
#define PF_TAN(X)                    (in_data->utils->ansi.tan((X)))

#define PF_SUBPIXEL_SAMPLE(X, Y, PARAMS, DST_PXL) \
	(in_data->utils->subpixel_sample(in_data->effect_ref, (X), (Y), (PARAMS), (DST_PXL)))
#define PF_AREA_SAMPLE(X, Y, PARAMS, DST_PXL) \
	(in_data->utils->area_sample(in_data->effect_ref, (X), (Y), (PARAMS), (DST_PXL)))

#define PF_NEW_WORLD(WIDTH, HEIGHT, FLAGS, WORLD) \
	(in_data->utils->new_world(in_data->effect_ref, (WIDTH), (HEIGHT), (FLAGS), (WORLD)))
#define PF_DISPOSE_WORLD(WORLD) \
	(in_data->utils->dispose_world(in_data->effect_ref, (WORLD)))

/* The iterate macros pass in_data itself, not effect_ref. */
#define PF_ITERATE(BASE, FINAL, SRC, RECT, REFCON, FN, DST) \
	(in_data->utils->iterate(in_data, (BASE), (FINAL), (SRC), (RECT), (REFCON), (FN), (DST)))
#define PF_ITERATE16(BASE, FINAL, SRC, RECT, REFCON, FN, DST) \
	(in_data->utils->iterate16(in_data, (BASE), (FINAL), (SRC), (RECT), (REFCON), (FN), (DST)))

#define PF_GET_PIXEL_DATA8(W, P0, PP)  (in_data->utils->get_pixel_data8((W), (P0), (PP)))
#define PF_GET_PIXEL_DATA16(W, P0, PP) (in_data->utils->get_pixel_data16((W), (P0), (PP)))

#define PF_RGB_TO_HLS(RGB, HLS)      (in_data->utils->colorCB.RGBtoHLS(in_data->effect_ref, (RGB), (HLS)))
#define PF_HLS_TO_RGB(HLS, RGB)      (in_data->utils->colorCB.HLStoRGB(in_data->effect_ref, (HLS), (RGB)))
#define PF_RGB_TO_YIQ(RGB, YIQ)      (in_data->utils->colorCB.RGBtoYIQ(in_data->effect_ref, (RGB), (YIQ)))
#define PF_YIQ_TO_RGB(YIQ, RGB)      (in_data->utils->colorCB.YIQtoRGB(in_data->effect_ref, (YIQ), (RGB)))
#define PF_LUMINANCE(RGB, LUM100)    (in_data->utils->colorCB.Luminance(in_data->effect_ref, (RGB), (LUM100)))
#define PF_HUE(RGB, HUE)             (in_data->utils->colorCB.Hue(in_data->effect_ref, (RGB), (HUE)))
#define PF_LIGHTNESS(RGB, LIGHTNESS) (in_data->utils->colorCB.Lightness(in_data->effect_ref, (RGB), (LIGHTNESS)))
#define PF_SATURATION(RGB, SATURATION) \
	(in_data->utils->colorCB.Saturation(in_data->effect_ref, (RGB), (SATURATION)))

#ifdef __cplusplus
}
#endif

#endif /* AE_EFFECTCB_H */
