#ifndef AE_EFFECT_H
#define AE_EFFECT_H

/* The effect plug-in API: commands, flags, parameter records, worlds, in-data and out-data. */

#include "A.h"

#ifdef __cplusplus
extern "C" {
#endif

/* ---- Version words ------------------------------------------------------------------- */

#define PF_Vers_BUILD_BITS        0x1ffL
#define PF_Vers_BUILD_SHIFT       0
#define PF_Vers_STAGE_BITS        0x3L
#define PF_Vers_STAGE_SHIFT       9
#define PF_Vers_BUGFIX_BITS       0xfL
#define PF_Vers_BUGFIX_SHIFT      11
#define PF_Vers_SUBVERS_BITS      0xfL
#define PF_Vers_SUBVERS_SHIFT     15
#define PF_Vers_VERS_BITS         0x7L    /* low 3 bits of the major version */
#define PF_Vers_VERS_SHIFT        19
#define PF_Vers_VERS_HIGH_BITS    0xfL    /* major version bits 3-6 */
#define PF_Vers_VERS_HIGH_SHIFT   26
#define PF_Vers_VERS_LOW_SHIFT    3

#define PF_Vers_VERS_HIGH(vers) ((vers) >> PF_Vers_VERS_LOW_SHIFT)

#define PF_VERSION(vers, subvers, bugvers, stage, build) \
	(A_u_long)( \
		((((A_u_long)PF_Vers_VERS_HIGH(vers)) & PF_Vers_VERS_HIGH_BITS) << PF_Vers_VERS_HIGH_SHIFT) | \
		((((A_u_long)(vers)) & PF_Vers_VERS_BITS) << PF_Vers_VERS_SHIFT) | \
		((((A_u_long)(subvers)) & PF_Vers_SUBVERS_BITS) << PF_Vers_SUBVERS_SHIFT) | \
		((((A_u_long)(bugvers)) & PF_Vers_BUGFIX_BITS) << PF_Vers_BUGFIX_SHIFT) | \
		((((A_u_long)(stage)) & PF_Vers_STAGE_BITS) << PF_Vers_STAGE_SHIFT) | \
		((((A_u_long)(build)) & PF_Vers_BUILD_BITS) << PF_Vers_BUILD_SHIFT))

#define PF_Version_VERS(vers) \
	((((vers) >> PF_Vers_VERS_SHIFT) & PF_Vers_VERS_BITS) + \
	 ((((vers) >> PF_Vers_VERS_HIGH_SHIFT) & PF_Vers_VERS_HIGH_BITS) << PF_Vers_VERS_LOW_SHIFT))
#define PF_Version_SUBVERS(vers) (((vers) >> PF_Vers_SUBVERS_SHIFT) & PF_Vers_SUBVERS_BITS)
#define PF_Version_BUGFIX(vers)  (((vers) >> PF_Vers_BUGFIX_SHIFT) & PF_Vers_BUGFIX_BITS)
#define PF_Version_STAGE(vers)   (((vers) >> PF_Vers_STAGE_SHIFT) & PF_Vers_STAGE_BITS)
#define PF_Version_BUILD(vers)   (((vers) >> PF_Vers_BUILD_SHIFT) & PF_Vers_BUILD_BITS)

enum {
	PF_Stage_DEVELOP,
	PF_Stage_ALPHA,
	PF_Stage_BETA,
	PF_Stage_RELEASE
};
typedef A_long PF_Stage;

/* Host API versions, reported in PF_InData::version as major / minor. */
#define PF_AE235_PLUG_IN_VERSION  13
#define PF_AE235_PLUG_IN_SUBVERS  29
#define PF_AE234_PLUG_IN_VERSION  13
#define PF_AE234_PLUG_IN_SUBVERS  28
#define PF_AE220_PLUG_IN_VERSION  13
#define PF_AE220_PLUG_IN_SUBVERS  27
#define PF_AE184_PLUG_IN_VERSION  13
#define PF_AE184_PLUG_IN_SUBVERS  26
#define PF_AE182_PLUG_IN_VERSION  13
#define PF_AE182_PLUG_IN_SUBVERS  25
#define PF_AE180_PLUG_IN_VERSION  13
#define PF_AE180_PLUG_IN_SUBVERS  24
#define PF_AE177_PLUG_IN_VERSION  13
#define PF_AE177_PLUG_IN_SUBVERS  23
#define PF_AE176_PLUG_IN_VERSION  13
#define PF_AE176_PLUG_IN_SUBVERS  22
#define PF_AE175_PLUG_IN_VERSION  13
#define PF_AE175_PLUG_IN_SUBVERS  21
#define PF_AE171_PLUG_IN_VERSION  13
#define PF_AE171_PLUG_IN_SUBVERS  20
#define PF_AE170_PLUG_IN_VERSION  13
#define PF_AE170_PLUG_IN_SUBVERS  18
#define PF_AE161_PLUG_IN_VERSION  13
#define PF_AE161_PLUG_IN_SUBVERS  17
#define PF_AE160_PLUG_IN_VERSION  13
#define PF_AE160_PLUG_IN_SUBVERS  16
#define PF_AE151_PLUG_IN_VERSION  13
#define PF_AE151_PLUG_IN_SUBVERS  15
#define PF_AE150_PLUG_IN_VERSION  13
#define PF_AE150_PLUG_IN_SUBVERS  15
#define PF_AE142_PLUG_IN_VERSION  13
#define PF_AE142_PLUG_IN_SUBVERS  14
#define PF_AE140_PLUG_IN_VERSION  13
#define PF_AE140_PLUG_IN_SUBVERS  13
#define PF_AE138_PLUG_IN_VERSION  13
#define PF_AE138_PLUG_IN_SUBVERS  11
#define PF_AE136_PLUG_IN_VERSION  13
#define PF_AE136_PLUG_IN_SUBVERS  10
#define PF_AE135_PLUG_IN_VERSION  13
#define PF_AE135_PLUG_IN_SUBVERS  9
#define PF_AE130_PLUG_IN_VERSION  13
#define PF_AE130_PLUG_IN_SUBVERS  7
#define PF_AE122_PLUG_IN_VERSION  13
#define PF_AE122_PLUG_IN_SUBVERS  6
#define PF_AE121_PLUG_IN_VERSION  13
#define PF_AE121_PLUG_IN_SUBVERS  5
#define PF_AE120_PLUG_IN_VERSION  13
#define PF_AE120_PLUG_IN_SUBVERS  4
#define PF_AE1101_PLUG_IN_VERSION 13
#define PF_AE1101_PLUG_IN_SUBVERS 3
#define PF_AE110_PLUG_IN_VERSION  13
#define PF_AE110_PLUG_IN_SUBVERS  2
#define PF_AE105_PLUG_IN_VERSION  13
#define PF_AE105_PLUG_IN_SUBVERS  1
#define PF_AE100_PLUG_IN_VERSION  13
#define PF_AE100_PLUG_IN_SUBVERS  0
#define PF_AE90_PLUG_IN_VERSION   12
#define PF_AE90_PLUG_IN_SUBVERS   14
#define PF_AE80_PLUG_IN_VERSION   12
#define PF_AE80_PLUG_IN_SUBVERS   13
#define PF_AE70_PLUG_IN_VERSION   12
#define PF_AE70_PLUG_IN_SUBVERS   12
#define PF_AE65_PLUG_IN_VERSION   12
#define PF_AE65_PLUG_IN_SUBVERS   11
#define PF_AE41_PLUG_IN_VERSION   12
#define PF_AE41_PLUG_IN_SUBVERS   2
#define PF_AE40_PLUG_IN_VERSION   12
#define PF_AE40_PLUG_IN_SUBVERS   1
#define PF_AE31_PLUG_IN_VERSION   11
#define PF_AE31_PLUG_IN_SUBVERS   6
#define PF_AE31_PLUG_IN_SUBVERS_STRICTIFY 8

#define PF_AE_PLUG_IN_VERSION PF_AE235_PLUG_IN_VERSION
#define PF_AE_PLUG_IN_SUBVERS PF_AE235_PLUG_IN_SUBVERS

/* String buffers are declared [LEN + 1]. */
#define PF_MAX_EFFECT_NAME_LEN           31
#define PF_MAX_EFFECT_CATEGORY_NAME_LEN  31
#define PF_MAX_EFFECT_PARAM_NAME_LEN     31
#define PF_MAX_PARAM_DESCRIPTION_LEN     31
#define PF_MAX_PARAM_VALUE_LEN           31
#define PF_MAX_EFFECT_MSG_LEN            255
#define PF_AE65_AND_EARLIER_MAX_NUM_EFFECT_PARAMS 127
#define PF_MAX_WORLD_WIDTH               30000
#define PF_MAX_WORLD_HEIGHT              30000
#define PF_FIRST_ERR                     512

/* ---- Enumerations -------------------------------------------------------------------- */

enum {
	PF_Quality_DRAWING_AUDIO = -1,
	PF_Quality_LO = 0,
	PF_Quality_HI
};
typedef A_long PF_Quality;

/* Alpha interpretation for sampling and transfer callbacks. */
enum {
	PF_MF_Alpha_PREMUL   = 0,
	PF_MF_Alpha_STRAIGHT = (1L << 0)
};
typedef A_long PF_ModeFlags;

#define PF_ALPHA_PREMUL(F)   (!((F) & PF_MF_Alpha_STRAIGHT))
#define PF_ALPHA_STRAIGHT(F) (((F) & PF_MF_Alpha_STRAIGHT) != 0)

enum {
	PF_Field_FRAME = 0,
	PF_Field_UPPER,
	PF_Field_LOWER
};
typedef A_long PF_Field;

enum {
	PF_Param_RESERVED = -1,
	PF_Param_LAYER = 0,
	PF_Param_SLIDER,
	PF_Param_FIX_SLIDER,
	PF_Param_ANGLE,
	PF_Param_CHECKBOX,
	PF_Param_COLOR,
	PF_Param_POINT,
	PF_Param_POPUP,
	PF_Param_CUSTOM,
	PF_Param_NO_DATA,
	PF_Param_FLOAT_SLIDER,
	PF_Param_ARBITRARY_DATA,
	PF_Param_PATH,
	PF_Param_GROUP_START,
	PF_Param_GROUP_END,
	PF_Param_BUTTON,
	PF_Param_RESERVED2,
	PF_Param_RESERVED3,
	PF_Param_POINT_3D
};
typedef A_long PF_ParamType;

/* Decimal places shown by sliders. */
enum {
	PF_Precision_INTEGER,
	PF_Precision_TENTHS,
	PF_Precision_HUNDREDTHS,
	PF_Precision_THOUSANDTHS,
	PF_Precision_TEN_THOUSANDTHS
};
typedef A_short PF_Precision;

enum {
	PF_ParamFlag_NONE                             = 0,
	PF_ParamFlag_RESERVED1                        = 1L << 0,
	PF_ParamFlag_CANNOT_TIME_VARY                 = 1L << 1,
	PF_ParamFlag_CANNOT_INTERP                    = 1L << 2,
	PF_ParamFlag_RESERVED2                        = 1L << 3,
	PF_ParamFlag_RESERVED3                        = 1L << 4,
	PF_ParamFlag_COLLAPSE_TWIRLY                  = 1L << 5,
	PF_ParamFlag_SUPERVISE                        = 1L << 6,
	PF_ParamFlag_START_COLLAPSED                  = PF_ParamFlag_COLLAPSE_TWIRLY,
	PF_ParamFlag_USE_VALUE_FOR_OLD_PROJECTS       = 1L << 7,
	PF_ParamFlag_LAYER_PARAM_IS_TRACKMATTE        = 1L << 7,
	PF_ParamFlag_EXCLUDE_FROM_HAVE_INPUTS_CHANGED = 1L << 8,
	PF_ParamFlag_SKIP_REVEAL_WHEN_UNHIDDEN        = 1L << 9,
	PF_ParamFlag_unused1                          = 1L << 10,
	PF_ParamFlag_RESERVED4                        = 1L << 11,
	PF_ParamFlags_ALL                             = 0xffffffffUL
};
typedef A_long PF_ParamFlags;

enum {
	PF_Err_NONE = 0,
	PF_Err_OUT_OF_MEMORY = 4,
	PF_Err_INTERNAL_STRUCT_DAMAGED = PF_FIRST_ERR,
	PF_Err_INVALID_INDEX,
	PF_Err_UNRECOGNIZED_PARAM_TYPE,
	PF_Err_INVALID_CALLBACK,
	PF_Err_BAD_CALLBACK_PARAM,
	PF_Interrupt_CANCEL,
	PF_Err_CANNOT_PARSE_KEYFRAME_TEXT
};
typedef A_long PF_Err;

enum {
	PF_WorldFlag_DEEP      = 1L << 0,
	PF_WorldFlag_WRITEABLE = 1L << 1,
	PF_WorldFlag_RESERVED0 = 1L << 24,
	PF_WorldFlag_RESERVED1 = 1L << 25,
	PF_WorldFlag_RESERVED2 = 1L << 26,
	PF_WorldFlag_RESERVED3 = 1L << 27,
	PF_WorldFlag_RESERVED4 = 1L << 28,
	PF_WorldFlag_RESERVED5 = 1L << 29,
	PF_WorldFlag_RESERVED6 = 1L << 30,
	PF_WorldFlag_RESERVED  = 0x80000000UL
};
typedef A_long PF_WorldFlags;

#define PF_WORLD_IS_DEEP(W) (((W)->world_flags & PF_WorldFlag_DEEP) != 0)

/* Channel ranges: 16-bit channels run 0..32768; float channels are unclamped, 1.0 = white. */
#define PF_MAX_CHAN8   255
#define PF_HALF_CHAN8  128
#define PF_MAX_CHAN16  32768
#define PF_HALF_CHAN16 16384

enum {
	PF_OutFlag_NONE                             = 0,
	PF_OutFlag_KEEP_RESOURCE_OPEN               = 1L << 0,
	PF_OutFlag_WIDE_TIME_INPUT                  = 1L << 1,
	PF_OutFlag_NON_PARAM_VARY                   = 1L << 2,
	PF_OutFlag_RESERVED6                        = 1L << 3,
	PF_OutFlag_SEQUENCE_DATA_NEEDS_FLATTENING   = 1L << 4,
	PF_OutFlag_I_DO_DIALOG                      = 1L << 5,
	PF_OutFlag_USE_OUTPUT_EXTENT                = 1L << 6,
	PF_OutFlag_SEND_DO_DIALOG                   = 1L << 7,
	PF_OutFlag_DISPLAY_ERROR_MESSAGE            = 1L << 8,
	PF_OutFlag_I_EXPAND_BUFFER                  = 1L << 9,
	PF_OutFlag_PIX_INDEPENDENT                  = 1L << 10,
	PF_OutFlag_I_WRITE_INPUT_BUFFER             = 1L << 11,
	PF_OutFlag_I_SHRINK_BUFFER                  = 1L << 12,
	PF_OutFlag_WORKS_IN_PLACE                   = 1L << 13,
	PF_OutFlag_RESERVED8                        = 1L << 14,
	PF_OutFlag_CUSTOM_UI                        = 1L << 15,
	PF_OutFlag_RESERVED7                        = 1L << 16,
	PF_OutFlag_REFRESH_UI                       = 1L << 17,
	PF_OutFlag_NOP_RENDER                       = 1L << 18,
	PF_OutFlag_I_USE_SHUTTER_ANGLE              = 1L << 19,
	PF_OutFlag_I_USE_AUDIO                      = 1L << 20,
	PF_OutFlag_I_AM_OBSOLETE                    = 1L << 21,
	PF_OutFlag_FORCE_RERENDER                   = 1L << 22,
	PF_OutFlag_PiPL_OVERRIDES_OUTDATA_OUTFLAGS  = 1L << 23,
	PF_OutFlag_I_HAVE_EXTERNAL_DEPENDENCIES     = 1L << 24,
	PF_OutFlag_DEEP_COLOR_AWARE                 = 1L << 25,
	PF_OutFlag_SEND_UPDATE_PARAMS_UI            = 1L << 26,
	PF_OutFlag_AUDIO_FLOAT_ONLY                 = 1L << 27,
	PF_OutFlag_AUDIO_IIR                        = 1L << 28,
	PF_OutFlag_I_SYNTHESIZE_AUDIO               = 1L << 29,
	PF_OutFlag_AUDIO_EFFECT_TOO                 = 1L << 30,
	PF_OutFlag_AUDIO_EFFECT_ONLY                = 0x80000000UL
};
typedef A_long PF_OutFlags;

/* Bit 9 (0x200) is unnamed. */
enum {
	PF_OutFlag2_NONE                                        = 0,
	PF_OutFlag2_SUPPORTS_QUERY_DYNAMIC_FLAGS                = 1L << 0,
	PF_OutFlag2_I_USE_3D_CAMERA                             = 1L << 1,
	PF_OutFlag2_I_USE_3D_LIGHTS                             = 1L << 2,
	PF_OutFlag2_PARAM_GROUP_START_COLLAPSED_FLAG            = 1L << 3,
	PF_OutFlag2_I_AM_THREADSAFE                             = 1L << 4,
	PF_OutFlag2_CAN_COMBINE_WITH_DESTINATION                = 1L << 5,
	PF_OutFlag2_DOESNT_NEED_EMPTY_PIXELS                    = 1L << 6,
	PF_OutFlag2_REVEALS_ZERO_ALPHA                          = 1L << 7,
	PF_OutFlag2_PRESERVES_FULLY_OPAQUE_PIXELS               = 1L << 8,
	PF_OutFlag2_SUPPORTS_SMART_RENDER                       = 1L << 10,
	PF_OutFlag2_RESERVED9                                   = 1L << 11,
	PF_OutFlag2_FLOAT_COLOR_AWARE                           = 1L << 12,
	PF_OutFlag2_I_USE_COLORSPACE_ENUMERATION                = 1L << 13,
	PF_OutFlag2_I_AM_DEPRECATED                             = 1L << 14,
	PF_OutFlag2_PPRO_DO_NOT_CLONE_SEQUENCE_DATA_FOR_RENDER  = 1L << 15,
	PF_OutFlag2_RESERVED10                                  = 1L << 16,
	PF_OutFlag2_AUTOMATIC_WIDE_TIME_INPUT                   = 1L << 17,
	PF_OutFlag2_I_USE_TIMECODE                              = 1L << 18,
	PF_OutFlag2_DEPENDS_ON_UNREFERENCED_MASKS               = 1L << 19,
	PF_OutFlag2_OUTPUT_IS_WATERMARKED                       = 1L << 20,
	PF_OutFlag2_I_MIX_GUID_DEPENDENCIES                     = 1L << 21,
	PF_OutFlag2_AE13_5_THREADSAFE                           = 1L << 22,
	PF_OutFlag2_SUPPORTS_GET_FLATTENED_SEQUENCE_DATA        = 1L << 23,
	PF_OutFlag2_CUSTOM_UI_ASYNC_MANAGER                     = 1L << 24,
	PF_OutFlag2_SUPPORTS_GPU_RENDER_F32                     = 1L << 25,
	PF_OutFlag2_RESERVED12                                  = 1L << 26,
	PF_OutFlag2_SUPPORTS_THREADED_RENDERING                 = 1L << 27,
	PF_OutFlag2_MUTABLE_RENDER_SEQUENCE_DATA_SLOWER         = 1L << 28,
	PF_OutFlag2_SUPPORTS_DIRECTX_RENDERING                  = 1L << 29
};
typedef A_long PF_OutFlags2;

enum {
	PF_InFlag_NONE                   = 0,
	PF_InFlag_PROJECT_IS_RENDER_ONLY = 1L << 0
};
typedef A_long PF_InFlags;

enum {
	PF_Cmd_ABOUT = 0,
	PF_Cmd_GLOBAL_SETUP,
	PF_Cmd_UNUSED_0,
	PF_Cmd_GLOBAL_SETDOWN,
	PF_Cmd_PARAMS_SETUP,
	PF_Cmd_SEQUENCE_SETUP,
	PF_Cmd_SEQUENCE_RESETUP,
	PF_Cmd_SEQUENCE_FLATTEN,
	PF_Cmd_SEQUENCE_SETDOWN,
	PF_Cmd_DO_DIALOG,
	PF_Cmd_FRAME_SETUP,
	PF_Cmd_RENDER,
	PF_Cmd_FRAME_SETDOWN,
	PF_Cmd_USER_CHANGED_PARAM,
	PF_Cmd_UPDATE_PARAMS_UI,
	PF_Cmd_EVENT,
	PF_Cmd_GET_EXTERNAL_DEPENDENCIES,
	PF_Cmd_COMPLETELY_GENERAL,
	PF_Cmd_QUERY_DYNAMIC_FLAGS,
	PF_Cmd_AUDIO_RENDER,
	PF_Cmd_AUDIO_SETUP,
	PF_Cmd_AUDIO_SETDOWN,
	PF_Cmd_ARBITRARY_CALLBACK,
	PF_Cmd_SMART_PRE_RENDER,
	PF_Cmd_SMART_RENDER,
	PF_Cmd_RESERVED1,
	PF_Cmd_RESERVED2,
	PF_Cmd_RESERVED3,
	PF_Cmd_GET_FLATTENED_SEQUENCE_DATA,
	PF_Cmd_TRANSLATE_PARAMS_TO_PREFS,
	PF_Cmd_RESERVED4,
	PF_Cmd_SMART_RENDER_GPU,
	PF_Cmd_GPU_DEVICE_SETUP,
	PF_Cmd_GPU_DEVICE_SETDOWN,
	PF_Cmd_NUM_CMDS
};
typedef A_long PF_Cmd;

/* ---- Simple and pixel types ---------------------------------------------------------- */

typedef struct _PF_LayerAudio *PF_LayerAudio;
typedef void *PF_SndSamplePtr;

struct PF_ProgressInfo;
typedef struct PF_ProgressInfo *PF_ProgPtr;

typedef A_long PF_ParamValue;

typedef struct {
	A_short major;
	A_short minor;
} PF_SpecVersion;

typedef A_long   PF_ParamIndex;
typedef A_u_long PF_UFixed;

/* Linux has no Mac system types, so it takes the Windows branch: signed 16.16 in an A_long,
   a one-byte boolean, and a handle that is a pointer to a pointer. Portable code must not
   rely on the sign of PF_Boolean or on the pointee type of PF_Handle. */
typedef A_long  PF_Fixed;
typedef A_char  PF_Boolean;
typedef void  **PF_Handle;

typedef struct {
	A_short v, h;
} PF_LegacyPoint;

typedef struct {
	A_short top, left, bottom, right;
} PF_LegacyRect;

/* Horizontal first, then vertical; both spellings of each coordinate are accepted. */
typedef struct {
	union {
		A_long x;
		A_long h;
	};
	union {
		A_long y;
		A_long v;
	};
} PF_Point;

typedef struct {
	A_long left, top, right, bottom;
} PF_LRect;

typedef PF_LRect PF_Rect;
typedef PF_Rect  PF_UnionableRect;

typedef struct {
	A_long   num;
	A_u_long den;
} PF_RationalScale;

#define PF_Fixed_MINVAL ((PF_Fixed)0x80000000)
#define PF_Fixed_MAXVAL ((PF_Fixed)0x7fffffff)

typedef struct {
	PF_Fixed x, y;
} PF_FixedPoint;

typedef struct {
	PF_Fixed left, top, right, bottom;
} PF_FixedRect;

typedef struct {
	PF_Fixed mat[3][3];
} PF_Matrix;

typedef A_long          PF_TransferMode;
typedef PF_TransferMode PF_XferMode;

/* 8-bit ARGB, in this memory order. */
typedef struct {
	A_u_char alpha, red, green, blue;
} PF_Pixel;

typedef PF_Pixel PF_Pixel8;
typedef PF_Pixel PF_UnionablePixel;

/* 16-bit channels, 0..32768. */
typedef struct {
#ifdef PF_PIXEL16_RENAME_COMPONENTS
	A_u_short alphaSu, redSu, greenSu, blueSu;
#else
	A_u_short alpha, red, green, blue;
#endif
} PF_Pixel16;

typedef A_FpShort PF_FpShort;
typedef A_FpLong  PF_FpLong;

/* 32-bit float channels, 1.0 = white, unclamped. */
typedef struct {
	PF_FpShort alpha, red, green, blue;
} PF_PixelFloat, PF_Pixel32;

typedef struct {
	PF_FpLong mat[3][3];
} PF_FloatMatrix;

typedef struct {
	PF_TransferMode xfer;
	A_long          rand_seed;
	A_u_char        opacity;
	PF_Boolean      rgb_only;
	A_u_short       opacitySu;
} PF_CompositeMode;

typedef A_u_long PF_PixLong;

typedef struct _PF_PixelOpaque *PF_PixelOpaquePtr;

#ifdef PF_DEEP_COLOR_AWARE
typedef PF_PixelOpaquePtr PF_PixelPtr;
#else
typedef PF_Pixel *PF_PixelPtr;
#endif

#define PF_HUE_UNDEFINED 0x80000000

typedef PF_Fixed PF_RGB_Pixel[3];
typedef PF_Fixed PF_YIQ_Pixel[3];
typedef PF_Fixed PF_HLS_Pixel[3];

/* ---- Worlds and layer parameters ------------------------------------------------------ */

/* A pixel buffer handed to the effect, and the value of a layer parameter. Pixel (x, y) of an
   8-bit world is at (PF_Pixel *)((char *)data + y * rowbytes) + x. */
typedef struct PF_LayerDef {
	void             *reserved0;
	void             *reserved1;
	PF_WorldFlags     world_flags;
	PF_PixelPtr       data;             /* top-left pixel; NULL for a layer parameter set to None */
	A_long            rowbytes;         /* bytes from one row to the next */
	A_long            width;            /* pixels */
	A_long            height;           /* pixels */
	PF_UnionableRect  extent_hint;
	void             *platform_ref;
	A_long            reserved_long1;
	void             *reserved_long4;
	PF_RationalScale  pix_aspect_ratio;
	void             *reserved_long2;
	A_long            origin_x;         /* buffer origin in layer coordinates */
	A_long            origin_y;
	A_long            reserved_long3;
	A_long            dephault;         /* a PF_LayerDefault_... value */
} PF_LayerDef;

typedef PF_LayerDef PF_EffectWorld;
#ifdef PF_USE_OLD_WORLD
typedef PF_EffectWorld PF_World;
#endif

enum {
	PF_LayerDefault_MYSELF = -1,
	PF_LayerDefault_NONE   = 0
};

/* ---- Sound (embedded in the in-data and out-data) ------------------------------------- */

enum {
	PF_UNSIGNED_PCM = 0,
	PF_SIGNED_PCM   = 1,
	PF_SIGNED_FLOAT = 2
};
typedef A_short PF_SoundFormat;

enum {
	PF_SSS_1 = 1,
	PF_SSS_2 = 2,
	PF_SSS_4 = 4
};
typedef A_short PF_SoundSampleSize;

enum {
	PF_Channels_MONO   = 1,
	PF_Channels_STEREO = 2
};
typedef A_short PF_SoundChannels;

typedef struct {
	PF_FpLong          rateF;
	PF_SoundChannels   num_channels;
	PF_SoundFormat     format;
	PF_SoundSampleSize sample_size;
} PF_SoundFormatInfo;

typedef struct {
	PF_SoundFormatInfo fi;
	A_long             num_samples;
	void              *dataP;
} PF_SoundWorld;

/* ---- Parameter descriptions ----------------------------------------------------------- */

/* Spellings of the name fields; code writes def.PF_DEF_NAME, def.u.bd.u.PF_DEF_NAMEPTR and
   def.u.pd.u.PF_DEF_NAMESPTR. */
#define PF_DEF_NAME     name_do_not_use_directly
#define PF_DEF_NAMEPTR  nameptr
#define PF_DEF_NAMESPTR namesptr

enum {
	PF_ValueDisplayFlag_NONE      = 0,
	PF_ValueDisplayFlag_PERCENT   = 1 << 0,
	PF_ValueDisplayFlag_PIXEL     = 1 << 1,
	PF_ValueDisplayFlag_RESERVED1 = 1 << 2,
	PF_ValueDisplayFlag_REVERSE   = 1 << 3
};
typedef A_short PF_ValueDisplayFlags;

#define PF_VALUEFLAG_IS_PERCENT(A)  (((A) & PF_ValueDisplayFlag_PERCENT) != 0)
#define PF_VALUEFLAG_IS_PIXEL(A)    (((A) & PF_ValueDisplayFlag_PIXEL) != 0)
#define PF_VALUEFLAG_IS_REVERSED(A) (((A) & PF_ValueDisplayFlag_REVERSE) != 0)

/* Integer slider. */
typedef struct {
	PF_ParamValue value;
	A_char        value_str[PF_MAX_PARAM_VALUE_LEN + 1];         /* unused; clear it */
	A_char        value_desc[PF_MAX_PARAM_DESCRIPTION_LEN + 1];  /* unused; clear it */
	PF_ParamValue valid_min, valid_max;
	PF_ParamValue slider_min, slider_max;
	PF_ParamValue dephault;
} PF_SliderDef;

/* 16.16 slider. */
typedef struct {
	PF_Fixed             value;
	A_char               value_str[PF_MAX_PARAM_VALUE_LEN + 1];
	A_char               value_desc[PF_MAX_PARAM_DESCRIPTION_LEN + 1];
	PF_Fixed             valid_min, valid_max;
	PF_Fixed             slider_min, slider_max;
	PF_Fixed             dephault;
	PF_Precision         precision;
	PF_ValueDisplayFlags display_flags;
} PF_FixedSliderDef;

enum {
	PF_FSliderFlag_NONE       = 0,
	PF_FSliderFlag_WANT_PHASE = 1L << 0
};
typedef A_u_long PF_FSliderFlags;

/* Floating-point slider: the value is a double, the ranges are floats. */
typedef struct {
	PF_FpLong            value;
	PF_FpLong            phase;
	A_char               value_desc[PF_MAX_PARAM_DESCRIPTION_LEN + 1];
	PF_FpShort           valid_min, valid_max;
	PF_FpShort           slider_min, slider_max;
	PF_FpShort           dephault;
	PF_Precision         precision;
	PF_ValueDisplayFlags display_flags;
	PF_FSliderFlags      fs_flags;
	PF_FpShort           curve_tolerance;
	PF_Boolean           useExponent;
	PF_FpShort           exponent;
} PF_FloatSliderDef;

/* Degrees in 16.16, unlimited. */
typedef struct {
	PF_Fixed value;
	PF_Fixed dephault;
	PF_Fixed valid_min, valid_max;
} PF_AngleDef;

typedef struct {
	PF_ParamValue value;
	PF_Boolean    dephault;
	A_char        reserved;
	A_short       reserved1;
	union {
		const A_char *PF_DEF_NAMEPTR;   /* label beside the box; the host copies it */
	} u;
} PF_CheckBoxDef;

typedef struct {
	PF_UnionablePixel value;
	PF_UnionablePixel dephault;
} PF_ColorDef;

typedef struct {
	PF_Fixed   x_value;        /* 16.16 layer pixels at the current downsampling */
	PF_Fixed   y_value;
	A_char     reserved[3];
	PF_Boolean restrict_bounds;
	PF_Fixed   x_dephault;     /* 16.16 percent of the layer width */
	PF_Fixed   y_dephault;     /* 16.16 percent of the layer height */
} PF_PointDef;

typedef struct {
	PF_FpLong x_value, y_value, z_value;
	PF_FpLong x_dephault, y_dephault, z_dephault;
	char      reserved[16];
} PF_Point3DDef;

typedef struct {
	PF_ParamValue value;        /* 1-based choice */
	A_short       num_choices;
	A_short       dephault;     /* 1-based */
	union {
		const A_char *PF_DEF_NAMESPTR;  /* choices separated by '|' */
	} u;
} PF_PopupDef;

typedef struct {
	PF_ParamValue value;
	union {
		const A_char *PF_DEF_NAMESPTR;  /* button label */
	} u;
} PF_ButtonDef;

enum {
	PF_PathID_NONE = 0
};
typedef A_u_long PF_PathID;

typedef struct PF_PathDef {
	PF_PathID path_id;
	A_long    reserved0;
	A_long    dephault;
} PF_PathDef;

typedef PF_Handle PF_ArbitraryH;

typedef struct {
	A_short       id;
	A_short       pad;
	PF_ArbitraryH dephault;
	PF_ArbitraryH value;
	void         *refconPV;
} PF_ArbitraryDef;

/* The extra of PF_Cmd_USER_CHANGED_PARAM. */
typedef struct {
	PF_ParamIndex param_index;
} PF_UserChangedParamExtra;

typedef union {
	PF_LayerDef       ld;
	PF_SliderDef      sd;
	PF_FixedSliderDef fd;
	PF_AngleDef       ad;
	PF_CheckBoxDef    bd;
	PF_ColorDef       cd;
	PF_PointDef       td;
	PF_PopupDef       pd;
	PF_FloatSliderDef fs_d;
	PF_ArbitraryDef   arb_d;
	PF_PathDef        path_d;
	PF_ButtonDef      button_d;
	PF_Point3DDef     point3d_d;
} PF_ParamDefUnion;

enum {
	PF_PUI_NONE               = 0,
	PF_PUI_TOPIC              = 1L << 0,
	PF_PUI_CONTROL            = 1L << 1,
	PF_PUI_STD_CONTROL_ONLY   = 1L << 2,
	PF_PUI_NO_ECW_UI          = 1L << 3,
	PF_PUI_ECW_SEPARATOR      = 1L << 4,
	PF_PUI_DISABLED           = 1L << 5,
	PF_PUI_DONT_ERASE_TOPIC   = 1L << 6,
	PF_PUI_DONT_ERASE_CONTROL = 1L << 7,
	PF_PUI_RADIO_BUTTON       = 1L << 8,
	PF_PUI_INVISIBLE          = 1L << 9,
	PF_PUI_RESERVED           = 1L << 10
};
typedef A_long PF_ParamUIFlags;

enum {
	PF_ChangeFlag_NONE            = 0,
	PF_ChangeFlag_CHANGED_VALUE   = 1L << 0,
	PF_ChangeFlag_RESERVED        = 1L << 1,
	PF_ChangeFlag_SET_TO_VARY     = 1L << 2,
	PF_ChangeFlag_SET_TO_CONSTANT = 1L << 3
};
typedef A_long PF_ChangeFlags;

typedef struct {
	union {
		A_long         id;              /* persistent disk id given at add_param */
		PF_ChangeFlags change_flags;    /* during USER_CHANGED_PARAM / UPDATE_PARAMS_UI */
	} uu;
	PF_ParamUIFlags  ui_flags;
	A_short          ui_width;
	A_short          ui_height;
	PF_ParamType     param_type;
	A_char           PF_DEF_NAME[PF_MAX_EFFECT_PARAM_NAME_LEN + 1];
	PF_ParamFlags    flags;
	A_long           unused;
	PF_ParamDefUnion u;
} PF_ParamDef, *PF_ParamDefPtr, **PF_ParamDefH;

typedef PF_ParamDef **PF_ParamList;

#define PF_ParamDef_IS_PUI_FLAG_SET(defP, flag)   (((defP)->ui_flags & (flag)) != 0)
#define PF_ParamDef_IS_PARAM_FLAG_SET(defP, flag) (((defP)->flags & (flag)) != 0)

/* ---- Smart render ---------------------------------------------------------------------- */

enum {
	PF_ChannelMask_ALPHA = 0x1,
	PF_ChannelMask_RED   = 0x2,
	PF_ChannelMask_GREEN = 0x4,
	PF_ChannelMask_BLUE  = 0x8,
	PF_ChannelMask_ARGB  = 0xf
};
typedef A_long PF_ChannelMask;

enum {
	PF_GPU_Framework_NONE = 0,
	PF_GPU_Framework_OPENCL,
	PF_GPU_Framework_METAL,
	PF_GPU_Framework_CUDA,
	PF_GPU_Framework_DIRECTX
};
typedef A_long PF_GPU_Framework;

typedef struct {
	PF_LRect       rect;           /* layer coordinates at the current downsampling */
	PF_Field       field;
	PF_ChannelMask channel_mask;
	PF_Boolean     preserve_rgb_of_zero_alpha;
	char           unused[3];
	A_long         reserved[4];
} PF_RenderRequest;

typedef struct {
	PF_RenderRequest output_request;
	short            bitdepth;     /* 8, 16 or 32 bits per channel */
	const void      *gpu_data;
	PF_GPU_Framework what_gpu;
	A_u_long         device_index;
} PF_PreRenderInput;

typedef void (*PF_DeletePreRenderDataFunc)(void *pre_render_data);

enum {
	PF_RenderOutputFlag_RETURNS_EXTRA_PIXELS = 0x1,
	PF_RenderOutputFlag_GPU_RENDER_POSSIBLE  = 0x2,
	PF_RenderOutputFlag_RESERVED1            = 0x4
};
typedef short PF_RenderOutputFlags;

typedef struct {
	PF_LRect                   result_rect;
	PF_LRect                   max_result_rect;
	PF_Boolean                 solid;
	PF_Boolean                 reserved;
	PF_RenderOutputFlags       flags;
	void                      *pre_render_data;
	PF_DeletePreRenderDataFunc delete_pre_render_data_func;
} PF_PreRenderOutput;

typedef struct {
	PF_LRect         result_rect;
	PF_LRect         max_result_rect;
	PF_RationalScale par;
	PF_Boolean       solid;
	PF_Boolean       reservedB[3];
	A_long           ref_width;    /* full-resolution layer size */
	A_long           ref_height;
	A_long           reserved[6];
} PF_CheckoutResult;

typedef struct {
	PF_Err (*checkout_layer)(PF_ProgPtr effect_ref, PF_ParamIndex index, A_long checkout_idL,
	                         const PF_RenderRequest *req, A_long what_time, A_long time_step,
	                         A_u_long time_scale, PF_CheckoutResult *checkout_result);
	PF_Err (*GuidMixInPtr)(PF_ProgPtr effect_ref, A_u_long buf_sizeLu, const void *buf);
} PF_PreRenderCallbacks;

typedef struct {
	PF_PreRenderInput     *input;
	PF_PreRenderOutput    *output;
	PF_PreRenderCallbacks *cb;
} PF_PreRenderExtra;

typedef struct {
	PF_RenderRequest output_request;
	short            bitdepth;
	void            *pre_render_data;
	const void      *gpu_data;
	PF_GPU_Framework what_gpu;
	A_u_long         device_index;
} PF_SmartRenderInput;

typedef struct {
	PF_Err (*checkout_layer_pixels)(PF_ProgPtr effect_ref, A_long checkout_idL, PF_EffectWorld **pixels);
	PF_Err (*checkin_layer_pixels)(PF_ProgPtr effect_ref, A_long checkout_idL);
	PF_Err (*checkout_output)(PF_ProgPtr effect_ref, PF_EffectWorld **output);
} PF_SmartRenderCallbacks;

typedef struct {
	PF_SmartRenderInput     *input;
	PF_SmartRenderCallbacks *cb;
} PF_SmartRenderExtra;

typedef struct _PF_CustomUIInfo PF_CustomUIInfo;

/* ---- Interaction callbacks ------------------------------------------------------------ */

typedef struct {
	PF_Err (*checkout_param)(PF_ProgPtr effect_ref, PF_ParamIndex index, A_long what_time,
	                         A_long time_step, A_u_long time_scale, PF_ParamDef *param);
	PF_Err (*checkin_param)(PF_ProgPtr effect_ref, PF_ParamDef *param);
	PF_Err (*add_param)(PF_ProgPtr effect_ref, PF_ParamIndex index, PF_ParamDefPtr def);
	PF_Err (*abort)(PF_ProgPtr effect_ref);
	PF_Err (*progress)(PF_ProgPtr effect_ref, A_long current, A_long total);
	PF_Err (*register_ui)(PF_ProgPtr effect_ref, PF_CustomUIInfo *cust_info);
	PF_Err (*checkout_layer_audio)(PF_ProgPtr effect_ref, PF_ParamIndex index, A_long start_time,
	                               A_long duration, A_u_long time_scale, PF_UFixed rate,
	                               A_long bytes_per_sample, A_long num_channels, A_long fmt_signed,
	                               PF_LayerAudio *audio);
	PF_Err (*checkin_layer_audio)(PF_ProgPtr effect_ref, PF_LayerAudio audio);
	PF_Err (*get_audio_data)(PF_ProgPtr effect_ref, PF_LayerAudio audio, PF_SndSamplePtr *data0,
	                         A_long *num_samples0, PF_UFixed *rate0, A_long *bytes_per_sample0,
	                         A_long *num_channels0, A_long *fmt_signed0);
	void *reserved_str[3];
	void *reserved[10];
} PF_InteractCallbacks;

#define PF_CHECKOUT_PARAM(IN_DATA, INDEX, TIME, STEP, SCALE, PARAM) \
	((IN_DATA)->inter.checkout_param((IN_DATA)->effect_ref, (INDEX), (TIME), (STEP), (SCALE), (PARAM)))
#define PF_CHECKIN_PARAM(IN_DATA, PARAM) \
	((IN_DATA)->inter.checkin_param((IN_DATA)->effect_ref, (PARAM)))
#define PF_ADD_PARAM(IN_DATA, INDEX, DEF) \
	((IN_DATA)->inter.add_param((IN_DATA)->effect_ref, (INDEX), (DEF)))
#define PF_ABORT(IN_DATA) \
	((IN_DATA)->inter.abort((IN_DATA)->effect_ref))
#define PF_PROGRESS(IN_DATA, CURRENT, TOTAL) \
	((IN_DATA)->inter.progress((IN_DATA)->effect_ref, (CURRENT), (TOTAL)))
#define PF_REGISTER_UI(IN_DATA, CUST_INFO) \
	((IN_DATA)->inter.register_ui((IN_DATA)->effect_ref, (CUST_INFO)))
#define PF_CHECKOUT_LAYER_AUDIO(IN_DATA, INDEX, START_TIME, DURATION, SCALE, RATE, BYTES_PER_SAMPLE, NUM_CHANNELS, FMT_SIGNED, AUDIO) \
	((IN_DATA)->inter.checkout_layer_audio((IN_DATA)->effect_ref, (INDEX), (START_TIME), (DURATION), \
	                                       (SCALE), (RATE), (BYTES_PER_SAMPLE), (NUM_CHANNELS), \
	                                       (FMT_SIGNED), (AUDIO)))
#define PF_CHECKIN_LAYER_AUDIO(IN_DATA, AUDIO) \
	((IN_DATA)->inter.checkin_layer_audio((IN_DATA)->effect_ref, (AUDIO)))
#define PF_GET_AUDIO_DATA(IN_DATA, AUDIO, DATA0, NUM_SAMPLES0, RATE0, BYTES_PER_SAMPLE0, NUM_CHANNELS0, FMT_SIGNED0) \
	((IN_DATA)->inter.get_audio_data((IN_DATA)->effect_ref, (AUDIO), (DATA0), (NUM_SAMPLES0), (RATE0), \
	                                 (BYTES_PER_SAMPLE0), (NUM_CHANNELS0), (FMT_SIGNED0)))

/* ---- Out-data and in-data -------------------------------------------------------------- */

typedef struct {
	A_u_long      my_version;      /* PF_VERSION(...) */
	A_char        name[PF_MAX_EFFECT_NAME_LEN + 1];
	PF_Handle     global_data;
	A_long        num_params;      /* including the input layer */
	PF_Handle     sequence_data;
	A_long        flat_sdata_size;
	PF_Handle     frame_data;
	A_long        width;
	A_long        height;
	PF_Point      origin;
	PF_OutFlags   out_flags;
	A_char        return_msg[PF_MAX_EFFECT_MSG_LEN + 1];
	A_long        start_sampL;
	A_long        dur_sampL;
	PF_SoundWorld dest_snd;
	PF_OutFlags2  out_flags2;
} PF_OutData;

typedef A_long A_AppID;

typedef struct {
	PF_InteractCallbacks      inter;
	struct _PF_UtilCallbacks *utils;
	PF_ProgPtr                effect_ref;
	PF_Quality                quality;
	PF_SpecVersion            version;
	A_long                    serial_num;
	A_AppID                   appl_id;           /* four-character host code */
	A_long                    num_params;
	A_long                    reserved;
	A_long                    what_cpu;
	A_long                    what_fpu;
	A_long                    current_time;      /* in time_scale units */
	A_long                    time_step;
	A_long                    total_time;
	A_long                    local_time_step;
	A_u_long                  time_scale;        /* units per second */
	PF_Field                  field;
	PF_Fixed                  shutter_angle;
	A_long                    width;             /* full-resolution input size */
	A_long                    height;
	PF_Rect                   extent_hint;
	A_long                    output_origin_x;
	A_long                    output_origin_y;
	PF_RationalScale          downsample_x;
	PF_RationalScale          downsample_y;
	PF_RationalScale          pixel_aspect_ratio;
	PF_InFlags                in_flags;
	PF_Handle                 global_data;
	PF_Handle                 sequence_data;
	PF_Handle                 frame_data;
	A_long                    start_sampL;
	A_long                    dur_sampL;
	A_long                    total_sampL;
	PF_SoundWorld             src_snd;
	struct SPBasicSuite      *pica_basicP;
	A_long                    pre_effect_source_origin_x;
	A_long                    pre_effect_source_origin_y;
	PF_Fixed                  shutter_phase;
} PF_InData;

typedef PF_Err (*PF_FilterProc)(PF_Cmd cmd, PF_InData *in_data, PF_OutData *out_data,
                                PF_ParamList params, PF_LayerDef *output, void *extra);

#ifdef __cplusplus
}
#endif

#endif /* AE_EFFECT_H */
