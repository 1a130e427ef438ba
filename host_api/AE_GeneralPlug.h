#ifndef AE_GENERALPLUG_H
#define AE_GENERALPLUG_H

/* AEGP types and the current AEGP suites. The older suite versions the module uses follow in
   AE_GeneralPlugOld.h, included at the end. Every suite function returns an A_Err and must be
   called on the thread the host called the effect on. */

#include "A.h"
#include "AE_Effect.h"
#include "AE_EffectCB.h"
#include "SPBasic.h"
#include "PR_Public.h"
#include "AE_EffectSuites.h"

#ifdef __cplusplus
extern "C" {
#endif

/* ---- Opaque handles and simple types --------------------------------------------------- */

typedef struct _AEGP_Project      **AEGP_ProjectH;
typedef struct _AEGP_Item         **AEGP_ItemH;
typedef struct _AEGP_Comp         **AEGP_CompH;
typedef struct _AEGP_Footage      **AEGP_FootageH;
typedef struct _AEGP_Layer        **AEGP_LayerH;
typedef struct _AEGP_Effect       **AEGP_EffectRefH;
typedef struct _AEGP_Mask         **AEGP_MaskRefH;
typedef struct _AEGPp_Stream      **AEGP_StreamRefH;
typedef struct _AEGP_Collection2  **AEGP_Collection2H;
typedef struct _AEGP_MaskOutline  **AEGP_MaskOutlineValH;
typedef struct _AEGP_TextDocument **AEGP_TextDocumentH;
typedef struct _AEGP_ItemView      *AEGP_ItemViewP;
typedef struct _AEGP_MarkerVal     *AEGP_MarkerValP;
typedef const struct _AEGP_MarkerVal *AEGP_ConstMarkerValP;
typedef struct _AEGP_GlobalRefcon  *AEGP_GlobalRefcon;

typedef A_long   AEGP_PluginID;
typedef A_u_long AEGP_MemSize;

typedef A_long AEGP_LayerIDVal;
#define AEGP_LayerIDVal_NONE 0

typedef A_long AEGP_MaskIDVal;
#define AEGP_MaskIDVal_NONE 0

typedef A_long AEGP_EffectIndex;

typedef A_long AEGP_InstalledEffectKey;
#define AEGP_InstalledEffectKey_NONE 0

typedef A_FpLong AEGP_OneDVal;
typedef A_FpLong AEGP_FourDVal[4];
typedef A_Handle AEGP_ArbBlockVal;

#define AEGP_MAX_PATH_SIZE                  260
#define AEGP_MAX_ABOUT_STRING_SIZE          256
#define AEGP_MAX_RQITEM_COMMENT_SIZE        256
#define AEGP_MAX_TYPE_NAME_SIZE             32
#define AEGP_MAX_ITEM_NAME_SIZE             32
#define AEGP_MAX_LAYER_NAME_SIZE            32
#define AEGP_MAX_MASK_NAME_SIZE             32
#define AEGP_MAX_EFFECT_NAME_SIZE           48
#define AEGP_MAX_EFFECT_MATCH_NAME_SIZE     48
#define AEGP_MAX_EFFECT_CATEGORY_NAME_SIZE  32
#define AEGP_MAX_STREAM_NAME_SIZE           32
#define AEGP_MAX_STREAM_UNITS_SIZE          32
#define AEGP_MAX_STREAM_MATCH_NAME_SIZE     40
#define AEGP_MAX_PROJ_NAME_SIZE             48
#define AEGP_MAX_PLUGIN_NAME_SIZE           32
#define AEGP_MAX_MARKER_NAME_SIZE           64
#define AEGP_MAX_MARKER_URL_SIZE            1024
#define AEGP_MAX_MARKER_TARGET_SIZE         128
#define AEGP_MAX_MARKER_CHAPTER_SIZE        128

#define AEGP_LayerIndex_UNKNOWN  (-2)
#define AEGP_LayerIndex_MERGED   (-1)
#define AEGP_LayerID_UNKNOWN     (-1)

/* ---- Enumerations --------------------------------------------------------------------- */

enum {
	AEGP_CameraType_NONE = -1,
	AEGP_CameraType_PERSPECTIVE,
	AEGP_CameraType_ORTHOGRAPHIC,
	AEGP_CameraType_NUM_TYPES
};
typedef A_u_long AEGP_CameraType;

enum {
	AEGP_FilmSizeUnits_NONE = 0,
	AEGP_FilmSizeUnits_HORIZONTAL,
	AEGP_FilmSizeUnits_VERTICAL,
	AEGP_FilmSizeUnits_DIAGONAL
};
typedef A_long AEGP_FilmSizeUnits;

enum {
	AEGP_LightType_NONE = -1,
	AEGP_LightType_PARALLEL,
	AEGP_LightType_SPOT,
	AEGP_LightType_POINT,
	AEGP_LightType_AMBIENT,
	AEGP_LightType_ENVIRONMENT,
	AEGP_LightType_NUM_TYPES
};
typedef A_u_long AEGP_LightType;

enum {
	AEGP_LightFalloff_NONE = 0,
	AEGP_LightFalloff_SMOOTH,
	AEGP_LightFalloff_INVERSE_SQUARE_CLAMPED
};
typedef A_u_long AEGP_LightFalloffType;

enum {
	AEGP_ItemType_NONE,
	AEGP_ItemType_FOLDER,
	AEGP_ItemType_COMP,
	AEGP_ItemType_SOLID_defunct,
	AEGP_ItemType_FOOTAGE,
	AEGP_ItemType_NUM_TYPES1
};
typedef A_short AEGP_ItemType;

enum {
	AEGP_ItemFlag_MISSING          = 0x1,
	AEGP_ItemFlag_HAS_PROXY        = 0x2,
	AEGP_ItemFlag_USING_PROXY      = 0x4,
	AEGP_ItemFlag_MISSING_PROXY    = 0x8,
	AEGP_ItemFlag_HAS_VIDEO        = 0x10,
	AEGP_ItemFlag_HAS_AUDIO        = 0x20,
	AEGP_ItemFlag_STILL            = 0x40,
	AEGP_ItemFlag_HAS_ACTIVE_AUDIO = 0x80
};
typedef A_long AEGP_ItemFlags;

enum {
	AEGP_Label_NONE = -1,
	AEGP_Label_NO_LABEL = 0,
	AEGP_Label_1,
	AEGP_Label_2,
	AEGP_Label_3,
	AEGP_Label_4,
	AEGP_Label_5,
	AEGP_Label_6,
	AEGP_Label_7,
	AEGP_Label_8,
	AEGP_Label_9,
	AEGP_Label_10,
	AEGP_Label_11,
	AEGP_Label_12,
	AEGP_Label_13,
	AEGP_Label_14,
	AEGP_Label_15,
	AEGP_Label_16,
	AEGP_Label_NUMTYPES
};
typedef A_char AEGP_LabelID;

enum {
	AEGP_CompFlag_SHOW_ALL_SHY        = 0x1,
	AEGP_CompFlag_RESERVED_1          = 0x2,
	AEGP_CompFlag_RESERVED_2          = 0x4,
	AEGP_CompFlag_ENABLE_MOTION_BLUR  = 0x8,
	AEGP_CompFlag_ENABLE_TIME_FILTER  = 0x10,
	AEGP_CompFlag_GRID_TO_FRAMES      = 0x20,
	AEGP_CompFlag_GRID_TO_FIELDS      = 0x40,
	AEGP_CompFlag_USE_LOCAL_DSF       = 0x80,
	AEGP_CompFlag_DRAFT_3D            = 0x100,
	AEGP_CompFlag_SHOW_GRAPH          = 0x200,
	AEGP_CompFlag_RESERVED_3          = 0x400
};
typedef A_long AEGP_CompFlags;

enum {
	AEGP_MemFlag_NONE  = 0,
	AEGP_MemFlag_CLEAR = 1 << 0,   /* zero-fill */
	AEGP_MemFlag_QUIET = 1 << 1    /* no error dialog on failure */
};
typedef A_long AEGP_MemFlag;

enum {
	AEGP_TransferFlag_PRESERVE_ALPHA     = 0x1,
	AEGP_TransferFlag_RANDOMIZE_DISSOLVE = 0x2
};
typedef A_long AEGP_TransferFlags;

enum {
	AEGP_TrackMatte_NO_TRACK_MATTE,
	AEGP_TrackMatte_ALPHA,
	AEGP_TrackMatte_NOT_ALPHA,
	AEGP_TrackMatte_LUMA,
	AEGP_TrackMatte_NOT_LUMA
};
typedef A_long AEGP_TrackMatte;

enum {
	AEGP_LayerQual_NONE = -1,
	AEGP_LayerQual_WIREFRAME,
	AEGP_LayerQual_DRAFT,
	AEGP_LayerQual_BEST
};
typedef A_short AEGP_LayerQuality;

enum {
	AEGP_LayerFlag_NONE                        = 0x00000000,
	AEGP_LayerFlag_VIDEO_ACTIVE                = 0x00000001,
	AEGP_LayerFlag_AUDIO_ACTIVE                = 0x00000002,
	AEGP_LayerFlag_EFFECTS_ACTIVE              = 0x00000004,
	AEGP_LayerFlag_MOTION_BLUR                 = 0x00000008,
	AEGP_LayerFlag_FRAME_BLENDING              = 0x00000010,
	AEGP_LayerFlag_LOCKED                      = 0x00000020,
	AEGP_LayerFlag_SHY                         = 0x00000040,
	AEGP_LayerFlag_COLLAPSE                    = 0x00000080,
	AEGP_LayerFlag_AUTO_ORIENT_ROTATION        = 0x00000100,
	AEGP_LayerFlag_ADJUSTMENT_LAYER            = 0x00000200,
	AEGP_LayerFlag_TIME_REMAPPING              = 0x00000400,
	AEGP_LayerFlag_LAYER_IS_3D                 = 0x00000800,
	AEGP_LayerFlag_LOOK_AT_CAMERA              = 0x00001000,
	AEGP_LayerFlag_LOOK_AT_POI                 = 0x00002000,
	AEGP_LayerFlag_SOLO                        = 0x00004000,
	AEGP_LayerFlag_MARKERS_LOCKED              = 0x00008000,
	AEGP_LayerFlag_NULL_LAYER                  = 0x00010000,
	AEGP_LayerFlag_HIDE_LOCKED_MASKS           = 0x00020000,
	AEGP_LayerFlag_GUIDE_LAYER                 = 0x00040000,
	AEGP_LayerFlag_ADVANCED_FRAME_BLENDING     = 0x00080000,
	AEGP_LayerFlag_SUBLAYERS_RENDER_SEPARATELY = 0x00100000,
	AEGP_LayerFlag_ENVIRONMENT_LAYER           = 0x00200000
};
typedef A_long AEGP_LayerFlags;

enum {
	AEGP_ObjectType_NONE = -1,
	AEGP_ObjectType_AV,
	AEGP_ObjectType_LIGHT,
	AEGP_ObjectType_CAMERA,
	AEGP_ObjectType_TEXT,
	AEGP_ObjectType_VECTOR,
	AEGP_ObjectType_3D_MODEL,
	AEGP_ObjectType_RESERVED1,
	AEGP_ObjectType_RESERVED2,
	AEGP_ObjectType_RESERVED3,
	AEGP_ObjectType_NUM_TYPES
};
typedef A_long AEGP_ObjectType;

enum {
	AEGP_LTimeMode_LayerTime = 0,
	AEGP_LTimeMode_CompTime  = 1
};
typedef A_short AEGP_LTimeMode;

enum {
	AEGP_LayerStream_NONE = -1,
	AEGP_LayerStream_ANCHORPOINT = 0,
	AEGP_LayerStream_POSITION,
	AEGP_LayerStream_SCALE,
	AEGP_LayerStream_ROTATION,
	AEGP_LayerStream_ROTATE_Z = AEGP_LayerStream_ROTATION,
	AEGP_LayerStream_OPACITY,
	AEGP_LayerStream_AUDIO,
	AEGP_LayerStream_MARKER,
	AEGP_LayerStream_TIME_REMAP,
	AEGP_LayerStream_ROTATE_X,
	AEGP_LayerStream_ROTATE_Y,
	AEGP_LayerStream_ORIENTATION,
	AEGP_LayerStream_ZOOM,
	AEGP_LayerStream_DEPTH_OF_FIELD,
	AEGP_LayerStream_FOCUS_DISTANCE,
	AEGP_LayerStream_APERTURE,
	AEGP_LayerStream_BLUR_LEVEL,
	AEGP_LayerStream_INTENSITY,
	AEGP_LayerStream_COLOR,
	AEGP_LayerStream_CONE_ANGLE,
	AEGP_LayerStream_CONE_FEATHER,
	AEGP_LayerStream_SHADOW_DARKNESS,
	AEGP_LayerStream_SHADOW_DIFFUSION,
	AEGP_LayerStream_ACCEPTS_SHADOWS,
	AEGP_LayerStream_ACCEPTS_LIGHTS,
	AEGP_LayerStream_AMBIENT_COEFF,
	AEGP_LayerStream_DIFFUSE_COEFF,
	AEGP_LayerStream_SPECULAR_INTENSITY,
	AEGP_LayerStream_SPECULAR_SHININESS,
	AEGP_LayerStream_CASTS_SHADOWS,
	AEGP_LayerStream_LIGHT_TRANSMISSION,
	AEGP_LayerStream_METAL,
	AEGP_LayerStream_SOURCE_TEXT,
	AEGP_LayerStream_IRIS_SHAPE,
	AEGP_LayerStream_IRIS_ROTATION,
	AEGP_LayerStream_IRIS_ROUNDNESS,
	AEGP_LayerStream_IRIS_ASPECT_RATIO,
	AEGP_LayerStream_IRIS_DIFFRACTION_FRINGE,
	AEGP_LayerStream_IRIS_HIGHLIGHT_GAIN,
	AEGP_LayerStream_IRIS_HIGHLIGHT_THRESHOLD,
	AEGP_LayerStream_IRIS_HIGHLIGHT_SATURATION,
	AEGP_LayerStream_LIGHT_FALLOFF_TYPE,
	AEGP_LayerStream_LIGHT_FALLOFF_START,
	AEGP_LayerStream_LIGHT_FALLOFF_DISTANCE,
	AEGP_LayerStream_REFLECTION_INTENSITY,
	AEGP_LayerStream_REFLECTION_SHARPNESS,
	AEGP_LayerStream_REFLECTION_ROLLOFF,
	AEGP_LayerStream_TRANSPARENCY_COEFF,
	AEGP_LayerStream_TRANSPARENCY_ROLLOFF,
	AEGP_LayerStream_INDEX_OF_REFRACTION,
	AEGP_LayerStream_EXTRUSION_BEVEL_STYLE,
	AEGP_LayerStream_EXTRUSION_BEVEL_DIRECTION,
	AEGP_LayerStream_EXTRUSION_BEVEL_DEPTH,
	AEGP_LayerStream_EXTRUSION_HOLE_BEVEL_DEPTH,
	AEGP_LayerStream_EXTRUSION_DEPTH,
	AEGP_LayerStream_PLANE_CURVATURE,
	AEGP_LayerStream_PLANE_SUBDIVISION,
	AEGP_LayerStream_LIGHT_BACKGROUND_VISIBLE,
	AEGP_LayerStream_LIGHT_BACKGROUND_OPACITY,
	AEGP_LayerStream_LIGHT_BACKGROUND_BLUR,
	AEGP_LayerStream_SHADOW_COLOR,
	AEGP_LayerStream_NUMTYPES,
	AEGP_LayerStream_BEGIN = AEGP_LayerStream_ANCHORPOINT,
	AEGP_LayerStream_END = AEGP_LayerStream_NUMTYPES
};
typedef A_long AEGP_LayerStream;

enum {
	AEGP_MaskStream_OUTLINE = 400,
	AEGP_MaskStream_OPACITY,
	AEGP_MaskStream_FEATHER,
	AEGP_MaskStream_EXPANSION,
	AEGP_MaskStream_BEGIN = AEGP_MaskStream_OUTLINE,
	AEGP_MaskStream_END = AEGP_MaskStream_EXPANSION + 1
};
typedef A_long AEGP_MaskStream;

enum {
	AEGP_StreamFlag_NONE       = 0,
	AEGP_StreamFlag_HAS_MIN    = 1 << 0,
	AEGP_StreamFlag_HAS_MAX    = 1 << 1,
	AEGP_StreamFlag_IS_SPATIAL = 1 << 2
};
typedef A_long AEGP_StreamFlags;

enum {
	AEGP_KeyInterpMask_NONE   = 0,
	AEGP_KeyInterpMask_LINEAR = 1 << 0,
	AEGP_KeyInterpMask_BEZIER = 1 << 1,
	AEGP_KeyInterpMask_HOLD   = 1 << 2,
	AEGP_KeyInterpMask_CUSTOM = 1 << 3,
	AEGP_KeyInterpMask_ANY    = 0xFFFF
};
typedef A_long AEGP_KeyInterpolationMask;

enum {
	AEGP_StreamType_NO_DATA,
	AEGP_StreamType_ThreeD_SPATIAL,
	AEGP_StreamType_ThreeD,
	AEGP_StreamType_TwoD_SPATIAL,
	AEGP_StreamType_TwoD,
	AEGP_StreamType_OneD,
	AEGP_StreamType_COLOR,
	AEGP_StreamType_ARB,
	AEGP_StreamType_MARKER,
	AEGP_StreamType_LAYER_ID,
	AEGP_StreamType_MASK_ID,
	AEGP_StreamType_MASK,
	AEGP_StreamType_TEXT_DOCUMENT
};
typedef A_long AEGP_StreamType;

enum {
	AEGP_StreamGroupingType_NONE = -1,
	AEGP_StreamGroupingType_LEAF,
	AEGP_StreamGroupingType_NAMED_GROUP,
	AEGP_StreamGroupingType_INDEXED_GROUP
};
typedef A_long AEGP_StreamGroupingType;

enum {
	AEGP_DynStreamFlag_ACTIVE_EYEBALL            = 1L << 0,
	AEGP_DynStreamFlag_HIDDEN                    = 1L << 1,
	AEGP_DynStreamFlag_DISABLED                  = 1L << 4,
	AEGP_DynStreamFlag_ELIDED                    = 1L << 5,
	AEGP_DynStreamFlag_SHOWN_WHEN_EMPTY          = 1L << 10,
	AEGP_DynStreamFlag_SKIP_REVEAL_WHEN_UNHIDDEN = 1L << 16
};
typedef A_u_long AEGP_DynStreamFlags;

enum {
	AEGP_EffectFlags_NONE       = 0,
	AEGP_EffectFlags_ACTIVE     = 1L << 0,
	AEGP_EffectFlags_AUDIO_ONLY = 1L << 1,
	AEGP_EffectFlags_AUDIO_TOO  = 1L << 2,
	AEGP_EffectFlags_MISSING    = 1L << 3
};
typedef A_long AEGP_EffectFlags;

/* ---- Value structs ------------------------------------------------------------------- */

/* Channels in 0..1, alpha first. */
typedef struct {
	A_FpLong alphaF, redF, greenF, blueF;
} AEGP_ColorVal;

typedef struct {
	A_short xS, yS;
} AEGP_DownsampleFactor;

typedef struct {
	PF_TransferMode    mode;
	AEGP_TransferFlags flags;
	AEGP_TrackMatte    track_matte;
} AEGP_LayerTransferMode;

typedef struct {
	A_long reservedAL[12];
} AEGP_ErrReportState;

typedef struct {
	A_FpLong x, y;
} AEGP_TwoDVal;

typedef struct {
	A_FpLong x, y, z;
} AEGP_ThreeDVal;

typedef struct {
	A_FpLong speedF;
	A_FpLong influenceF;
} AEGP_KeyframeEase;

typedef union {
	AEGP_FourDVal        four_d;
	AEGP_ThreeDVal       three_d;
	AEGP_TwoDVal         two_d;
	AEGP_OneDVal         one_d;
	AEGP_ColorVal        color;
	AEGP_ArbBlockVal     arbH;
	AEGP_MarkerValP      markerP;
	AEGP_LayerIDVal      layer_id;
	AEGP_MaskIDVal       mask_id;
	AEGP_MaskOutlineValH mask;
	AEGP_TextDocumentH   text_documentH;
} AEGP_StreamVal2;

/* From AEGP_GetNewStreamValue: release with AEGP_DisposeStreamValue. */
typedef struct {
	AEGP_StreamRefH streamH;
	AEGP_StreamVal2 val;
} AEGP_StreamValue2;

/* ---- Suites -------------------------------------------------------------------------- */

#define kAEGPPFInterfaceSuite         "AEGP PF Interface Suite"
#define kAEGPPFInterfaceSuiteVersion1 1

typedef struct AEGP_PFInterfaceSuite1 {
	SPAPI A_Err (*AEGP_GetEffectLayer)(PF_ProgPtr effect_pp_ref, AEGP_LayerH *layerPH);
	SPAPI A_Err (*AEGP_GetNewEffectForEffect)(AEGP_PluginID aegp_plugin_id, PF_ProgPtr effect_pp_ref,
	                                          AEGP_EffectRefH *effect_refPH);
	SPAPI A_Err (*AEGP_ConvertEffectToCompTime)(PF_ProgPtr effect_pp_ref, A_long what_timeL,
	                                            A_u_long time_scaleLu, A_Time *comp_timePT);
	SPAPI A_Err (*AEGP_GetEffectCamera)(PF_ProgPtr effect_pp_ref, const A_Time *comp_timePT,
	                                    AEGP_LayerH *camera_layerPH);
	SPAPI A_Err (*AEGP_GetEffectCameraMatrix)(PF_ProgPtr effect_pp_ref, const A_Time *comp_timePT,
	                                          A_Matrix4 *camera_matrixP,
	                                          A_FpLong *dist_to_image_planePF,
	                                          A_short *image_plane_widthPL,
	                                          A_short *image_plane_heightPL);
} AEGP_PFInterfaceSuite1;

#define kAEGPMemorySuite         "AEGP Memory Suite"
#define kAEGPMemorySuiteVersion1 1

typedef struct AEGP_MemorySuite1 {
	SPAPI A_Err (*AEGP_NewMemHandle)(AEGP_PluginID plugin_id, const A_char *whatZ, AEGP_MemSize size,
	                                 AEGP_MemFlag flags, AEGP_MemHandle *memPH);
	SPAPI A_Err (*AEGP_FreeMemHandle)(AEGP_MemHandle memH);
	SPAPI A_Err (*AEGP_LockMemHandle)(AEGP_MemHandle memH, void **ptr_to_ptr);
	SPAPI A_Err (*AEGP_UnlockMemHandle)(AEGP_MemHandle memH);
	SPAPI A_Err (*AEGP_GetMemHandleSize)(AEGP_MemHandle memH, AEGP_MemSize *sizeP);
	SPAPI A_Err (*AEGP_ResizeMemHandle)(const A_char *whatZ, AEGP_MemSize new_size,
	                                    AEGP_MemHandle memH);
	SPAPI A_Err (*AEGP_SetMemReportingOn)(A_Boolean turn_OnB);
	SPAPI A_Err (*AEGP_GetMemStats)(AEGP_PluginID plugin_id, A_long *countPL, A_long *sizePL);
} AEGP_MemorySuite1;

#define kAEGPDynamicStreamSuite         "AEGP Dynamic Stream Suite"
#define kAEGPDynamicStreamSuiteVersion4 5

typedef struct AEGP_DynamicStreamSuite4 {
	SPAPI A_Err (*AEGP_GetNewStreamRefForLayer)(AEGP_PluginID aegp_plugin_id, AEGP_LayerH layerH,
	                                            AEGP_StreamRefH *streamPH);
	SPAPI A_Err (*AEGP_GetNewStreamRefForMask)(AEGP_PluginID aegp_plugin_id, AEGP_MaskRefH maskH,
	                                           AEGP_StreamRefH *streamPH);
	SPAPI A_Err (*AEGP_GetStreamDepth)(AEGP_StreamRefH streamH, A_long *depthPL);
	SPAPI A_Err (*AEGP_GetStreamGroupingType)(AEGP_StreamRefH streamH,
	                                          AEGP_StreamGroupingType *group_typeP);
	SPAPI A_Err (*AEGP_GetNumStreamsInGroup)(AEGP_StreamRefH streamH, A_long *num_streamsPL);
	SPAPI A_Err (*AEGP_GetDynamicStreamFlags)(AEGP_StreamRefH streamH,
	                                          AEGP_DynStreamFlags *stream_flagsP);
	SPAPI A_Err (*AEGP_SetDynamicStreamFlag)(AEGP_StreamRefH streamH, AEGP_DynStreamFlags one_flag,
	                                         A_Boolean undoableB, A_Boolean setB);
	SPAPI A_Err (*AEGP_GetNewStreamRefByIndex)(AEGP_PluginID aegp_plugin_id,
	                                           AEGP_StreamRefH parent_groupH, A_long indexL,
	                                           AEGP_StreamRefH *streamPH);
	SPAPI A_Err (*AEGP_GetNewStreamRefByMatchname)(AEGP_PluginID aegp_plugin_id,
	                                               AEGP_StreamRefH parent_groupH,
	                                               const A_char *utf8_match_nameZ,
	                                               AEGP_StreamRefH *streamPH);
	SPAPI A_Err (*AEGP_DeleteStream)(AEGP_StreamRefH streamH);
	SPAPI A_Err (*AEGP_ReorderStream)(AEGP_StreamRefH streamH, A_long new_indexL);
	SPAPI A_Err (*AEGP_DuplicateStream)(AEGP_PluginID aegp_plugin_id, AEGP_StreamRefH streamH,
	                                    A_long *new_indexPL0);
	SPAPI A_Err (*AEGP_SetStreamName)(AEGP_StreamRefH streamH, const A_UTF16Char *nameZ);
	SPAPI A_Err (*AEGP_CanAddStream)(AEGP_StreamRefH group_streamH, const A_char *utf8_match_nameZ,
	                                 A_Boolean *can_addPB);
	SPAPI A_Err (*AEGP_AddStream)(AEGP_PluginID aegp_plugin_id, AEGP_StreamRefH indexed_group_streamH,
	                              const A_char *utf8_match_nameZ, AEGP_StreamRefH *streamPH0);
	SPAPI A_Err (*AEGP_GetMatchName)(AEGP_StreamRefH streamH, A_char *utf8_match_nameZ);
	SPAPI A_Err (*AEGP_GetNewParentStreamRef)(AEGP_PluginID aegp_plugin_id, AEGP_StreamRefH streamH,
	                                          AEGP_StreamRefH *parent_streamPH);
	SPAPI A_Err (*AEGP_GetStreamIsModified)(AEGP_StreamRefH streamH, A_Boolean *modifiedPB);
	SPAPI A_Err (*AEGP_GetStreamIndexInParent)(AEGP_StreamRefH streamH, A_long *indexPL);
	SPAPI A_Err (*AEGP_IsSeparationLeader)(AEGP_StreamRefH streamH, A_Boolean *leaderPB);
	SPAPI A_Err (*AEGP_AreDimensionsSeparated)(AEGP_StreamRefH leader_streamH, A_Boolean *separatedPB);
	SPAPI A_Err (*AEGP_SetDimensionsSeparated)(AEGP_StreamRefH leader_streamH, A_Boolean separatedB);
	SPAPI A_Err (*AEGP_GetSeparationFollower)(AEGP_StreamRefH leader_streamH, A_short dimS,
	                                          AEGP_StreamRefH *follower_streamPH);
	SPAPI A_Err (*AEGP_IsSeparationFollower)(AEGP_StreamRefH streamH, A_Boolean *followerPB);
	SPAPI A_Err (*AEGP_GetSeparationLeader)(AEGP_StreamRefH follower_streamH,
	                                        AEGP_StreamRefH *leader_streamPH);
	SPAPI A_Err (*AEGP_GetSeparationDimension)(AEGP_StreamRefH follower_streamH, A_short *dimPS);
} AEGP_DynamicStreamSuite4;

#define kAEGPCameraSuite         "AEGP Camera Suite"
#define kAEGPCameraSuiteVersion2 2

typedef struct AEGP_CameraSuite2 {
	SPAPI A_Err (*AEGP_GetCamera)(PR_RenderContextH render_contextH, const A_Time *comp_timeP,
	                              AEGP_LayerH *camera_layerPH);
	SPAPI A_Err (*AEGP_GetCameraType)(AEGP_LayerH camera_layerH, AEGP_CameraType *camera_typeP);
	SPAPI A_Err (*AEGP_GetDefaultCameraDistanceToImagePlane)(AEGP_CompH compH,
	                                                         A_FpLong *dist_to_planePF);
	SPAPI A_Err (*AEGP_GetCameraFilmSize)(AEGP_LayerH camera_layerH,
	                                      AEGP_FilmSizeUnits *film_size_unitsP,
	                                      A_FpLong *film_sizePF0);
	SPAPI A_Err (*AEGP_SetCameraFilmSize)(AEGP_LayerH camera_layerH,
	                                      AEGP_FilmSizeUnits film_size_units,
	                                      A_FpLong *film_sizePF0);
} AEGP_CameraSuite2;

#define kAEGPLightSuite         "AEGP Light Suite"
#define kAEGPLightSuiteVersion2 2
#define kAEGPLightSuiteVersion3 3

typedef struct AEGP_LightSuite2 {
	SPAPI A_Err (*AEGP_GetLightType)(AEGP_LayerH light_layerH, AEGP_LightType *light_typeP);
	SPAPI A_Err (*AEGP_SetLightType)(AEGP_LayerH light_layerH, AEGP_LightType light_type);
} AEGP_LightSuite2;

/* Names of the suites whose older versions live in AE_GeneralPlugOld.h, and the current
   version numbers of those suites. */
#define kAEGPUtilitySuite "AEGP Utility Suite"
#define kAEGPLayerSuite   "AEGP Layer Suite"
#define kAEGPStreamSuite  "AEGP Stream Suite"
#define kAEGPCompSuite    "AEGP Comp Suite"
#define kAEGPItemSuite    "AEGP Item Suite"
#define kAEGPEffectSuite  "AEGP Effect Suite"

#define kAEGPUtilitySuiteVersion6 13
#define kAEGPLayerSuiteVersion9   15
#define kAEGPStreamSuiteVersion6  11
#define kAEGPCompSuiteVersion12   26
#define kAEGPItemSuiteVersion9    14
#define kAEGPEffectSuiteVersion5  5

#ifdef __cplusplus
}
#endif

#include "AE_GeneralPlugOld.h"

#endif /* AE_GENERALPLUG_H */
