#ifndef AE_GENERALPLUGOLD_H
#define AE_GENERALPLUGOLD_H

/* Older AEGP suite versions. Each keeps its suite name; only the version number differs. */

#include "AE_GeneralPlug.h"

#ifdef __cplusplus
extern "C" {
#endif

#define kAEGPUtilitySuite "AEGP Utility Suite"
#define kAEGPLayerSuite   "AEGP Layer Suite"
#define kAEGPStreamSuite  "AEGP Stream Suite"
#define kAEGPCompSuite    "AEGP Comp Suite"
#define kAEGPItemSuite    "AEGP Item Suite"
#define kAEGPEffectSuite  "AEGP Effect Suite"

/* ---- Old value types ----------------------------------------------------------------- */

typedef struct {
	A_char nameAC[AEGP_MAX_MARKER_NAME_SIZE];
	A_char urlAC[AEGP_MAX_MARKER_URL_SIZE];
	A_char targetAC[AEGP_MAX_MARKER_TARGET_SIZE];
	A_char chapterAC[AEGP_MAX_MARKER_CHAPTER_SIZE];
} AEGP_MarkerVal;

typedef AEGP_MarkerVal **AEGP_MarkerValH;

typedef union {
	AEGP_FourDVal        four_d;
	AEGP_ThreeDVal       three_d;
	AEGP_TwoDVal         two_d;
	AEGP_OneDVal         one_d;
	AEGP_ColorVal        color;
	AEGP_ArbBlockVal     arbH;
	AEGP_MarkerValH      markerH;
	AEGP_LayerIDVal      layer_id;
	AEGP_MaskIDVal       mask_id;
	AEGP_MaskOutlineValH mask;
	AEGP_TextDocumentH   text_documentH;
} AEGP_StreamVal;

typedef struct {
	AEGP_StreamRefH streamH;
	AEGP_StreamVal  val;
} AEGP_StreamValue;

/* ---- Utility suite ------------------------------------------------------------------- */

#define kAEGPUtilitySuiteVersion4 10
#define kAEGPUtilitySuiteVersion5 11

typedef struct AEGP_UtilitySuite5 {
	SPAPI A_Err (*AEGP_ReportInfo)(AEGP_PluginID aegp_plugin_id, const A_char *info_stringZ);
	SPAPI A_Err (*AEGP_GetDriverPluginInitFuncVersion)(A_short *major_versionPS,
	                                                   A_short *minor_versionPS);
	SPAPI A_Err (*AEGP_GetDriverImplementationVersion)(A_short *major_versionPS,
	                                                   A_short *minor_versionPS);
	SPAPI A_Err (*AEGP_StartQuietErrors)(AEGP_ErrReportState *err_stateP);
	SPAPI A_Err (*AEGP_EndQuietErrors)(A_Boolean report_quieted_errorsB,
	                                   AEGP_ErrReportState *err_stateP);
	SPAPI A_Err (*AEGP_GetLastErrorMessage)(A_long buffer_size, A_char *error_string,
	                                        A_Err *error_num);
	SPAPI A_Err (*AEGP_StartUndoGroup)(const A_char *undo_nameZ);
	SPAPI A_Err (*AEGP_EndUndoGroup)(void);
	SPAPI A_Err (*AEGP_RegisterWithAEGP)(AEGP_GlobalRefcon global_refcon, const A_char *plugin_nameZ,
	                                     AEGP_PluginID *plugin_id);
	SPAPI A_Err (*AEGP_GetMainHWND)(void *main_hwnd);
	SPAPI A_Err (*AEGP_ShowHideAllFloaters)(A_Boolean include_tool_palB);
	SPAPI A_Err (*AEGP_PaintPalGetForeColor)(AEGP_ColorVal *fore_colorP);
	SPAPI A_Err (*AEGP_PaintPalGetBackColor)(AEGP_ColorVal *back_colorP);
	SPAPI A_Err (*AEGP_PaintPalSetForeColor)(const AEGP_ColorVal *fore_colorP);
	SPAPI A_Err (*AEGP_PaintPalSetBackColor)(const AEGP_ColorVal *back_colorP);
	SPAPI A_Err (*AEGP_CharPalGetFillColor)(A_Boolean *is_fill_color_definedPB,
	                                        AEGP_ColorVal *fill_colorP);
	SPAPI A_Err (*AEGP_CharPalGetStrokeColor)(A_Boolean *is_stroke_color_definedPB,
	                                          AEGP_ColorVal *stroke_colorP);
	SPAPI A_Err (*AEGP_CharPalSetFillColor)(const AEGP_ColorVal *fill_colorP);
	SPAPI A_Err (*AEGP_CharPalSetStrokeColor)(const AEGP_ColorVal *stroke_colorP);
	SPAPI A_Err (*AEGP_CharPalIsFillColorUIFrontmost)(A_Boolean *is_fill_color_selectedPB);
	SPAPI A_Err (*AEGP_ConvertFpLongToHSFRatio)(A_FpLong numberF, A_Ratio *ratioPR);
	SPAPI A_Err (*AEGP_ConvertHSFRatioToFpLong)(A_Ratio ratioR, A_FpLong *numberPF);
	SPAPI A_Err (*AEGP_CauseIdleRoutinesToBeCalled)(void);
	SPAPI A_Err (*AEGP_GetSuppressInteractiveUI)(A_Boolean *ui_is_suppressedPB);
	SPAPI A_Err (*AEGP_WriteToOSConsole)(const A_char *textZ);
	SPAPI A_Err (*AEGP_WriteToDebugLog)(const A_char *subsystemZ, const A_char *event_typeZ,
	                                    const A_char *infoZ);
	SPAPI A_Err (*AEGP_IsScriptingAvailable)(A_Boolean *outAvailablePB);
	SPAPI A_Err (*AEGP_ExecuteScript)(AEGP_PluginID inPlugin_id, const A_char *inScriptZ,
	                                  A_Boolean platform_encodingB, AEGP_MemHandle *outResultPH0,
	                                  AEGP_MemHandle *outErrorStringPH0);
	SPAPI A_Err (*AEGP_HostIsActivated)(A_Boolean *is_activatedPB);
	SPAPI A_Err (*AEGP_GetPluginPlatformRef)(AEGP_PluginID plug_id, void **plat_refPPV);
	SPAPI A_Err (*AEGP_UpdateFontList)(void);
} AEGP_UtilitySuite5;

/* ---- Layer suite ----------------------------------------------------------------------- */

#define kAEGPLayerSuiteVersion5 11
#define kAEGPLayerSuiteVersion6 12
#define kAEGPLayerSuiteVersion7 13
#define kAEGPLayerSuiteVersion8 14

typedef struct AEGP_LayerSuite6 {
	SPAPI A_Err (*AEGP_GetCompNumLayers)(AEGP_CompH compH, A_long *num_layersPL);
	SPAPI A_Err (*AEGP_GetCompLayerByIndex)(AEGP_CompH compH, A_long layer_indexL,
	                                        AEGP_LayerH *layerPH);
	SPAPI A_Err (*AEGP_GetActiveLayer)(AEGP_LayerH *layerPH);
	SPAPI A_Err (*AEGP_GetLayerIndex)(AEGP_LayerH layerH, A_long *layer_indexPL);
	SPAPI A_Err (*AEGP_GetLayerSourceItem)(AEGP_LayerH layerH, AEGP_ItemH *source_itemPH);
	SPAPI A_Err (*AEGP_GetLayerSourceItemID)(AEGP_LayerH layerH, A_long *source_item_idPL);
	SPAPI A_Err (*AEGP_GetLayerParentComp)(AEGP_LayerH layerH, AEGP_CompH *compPH);
	SPAPI A_Err (*AEGP_GetLayerName)(AEGP_PluginID pluginID, AEGP_LayerH layerH,
	                                 AEGP_MemHandle *utf_layer_namePH0,
	                                 AEGP_MemHandle *utf_source_namePH0);
	SPAPI A_Err (*AEGP_GetLayerQuality)(AEGP_LayerH layerH, AEGP_LayerQuality *qualityP);
	SPAPI A_Err (*AEGP_SetLayerQuality)(AEGP_LayerH layerH, AEGP_LayerQuality quality);
	SPAPI A_Err (*AEGP_GetLayerFlags)(AEGP_LayerH layerH, AEGP_LayerFlags *layer_flagsP);
	SPAPI A_Err (*AEGP_SetLayerFlag)(AEGP_LayerH layerH, AEGP_LayerFlags single_flag,
	                                 A_Boolean valueB);
	SPAPI A_Err (*AEGP_IsLayerVideoReallyOn)(AEGP_LayerH layerH, A_Boolean *onPB);
	SPAPI A_Err (*AEGP_IsLayerAudioReallyOn)(AEGP_LayerH layerH, A_Boolean *onPB);
	SPAPI A_Err (*AEGP_GetLayerCurrentTime)(AEGP_LayerH layerH, AEGP_LTimeMode time_mode,
	                                        A_Time *curr_timePT);
	SPAPI A_Err (*AEGP_GetLayerInPoint)(AEGP_LayerH layerH, AEGP_LTimeMode time_mode,
	                                    A_Time *in_pointPT);
	SPAPI A_Err (*AEGP_GetLayerDuration)(AEGP_LayerH layerH, AEGP_LTimeMode time_mode,
	                                     A_Time *durationPT);
	SPAPI A_Err (*AEGP_SetLayerInPointAndDuration)(AEGP_LayerH layerH, AEGP_LTimeMode time_mode,
	                                               const A_Time *in_pointPT,
	                                               const A_Time *durationPT);
	SPAPI A_Err (*AEGP_GetLayerOffset)(AEGP_LayerH layerH, A_Time *offsetPT);
	SPAPI A_Err (*AEGP_SetLayerOffset)(AEGP_LayerH layerH, const A_Time *offsetPT);
	SPAPI A_Err (*AEGP_GetLayerStretch)(AEGP_LayerH layerH, A_Ratio *stretchPRt);
	SPAPI A_Err (*AEGP_SetLayerStretch)(AEGP_LayerH layerH, const A_Ratio *stretchPRt);
	SPAPI A_Err (*AEGP_GetLayerTransferMode)(AEGP_LayerH layerH,
	                                         AEGP_LayerTransferMode *transfer_modeP);
	SPAPI A_Err (*AEGP_SetLayerTransferMode)(AEGP_LayerH layerH,
	                                         const AEGP_LayerTransferMode *transfer_modeP);
	SPAPI A_Err (*AEGP_IsAddLayerValid)(AEGP_ItemH item_to_addH, AEGP_CompH into_compH,
	                                    A_Boolean *validPB);
	SPAPI A_Err (*AEGP_AddLayer)(AEGP_ItemH item_to_addH, AEGP_CompH into_compH,
	                             AEGP_LayerH *added_layerPH0);
	SPAPI A_Err (*AEGP_ReorderLayer)(AEGP_LayerH layerH, A_long layer_indexL);
	SPAPI A_Err (*AEGP_GetLayerMaskedBounds)(AEGP_LayerH layerH, AEGP_LTimeMode time_mode,
	                                         const A_Time *timePT, A_FloatRect *boundsPR);
	SPAPI A_Err (*AEGP_GetLayerObjectType)(AEGP_LayerH layerH, AEGP_ObjectType *object_type);
	SPAPI A_Err (*AEGP_IsLayer3D)(AEGP_LayerH layerH, A_Boolean *is_3DPB);
	SPAPI A_Err (*AEGP_IsLayer2D)(AEGP_LayerH layerH, A_Boolean *is_2DPB);
	SPAPI A_Err (*AEGP_IsVideoActive)(AEGP_LayerH layerH, AEGP_LTimeMode time_mode,
	                                  const A_Time *timePT, A_Boolean *is_activePB);
	SPAPI A_Err (*AEGP_IsLayerUsedAsTrackMatte)(AEGP_LayerH layerH, A_Boolean fill_must_be_activeB,
	                                            A_Boolean *is_track_mattePB);
	SPAPI A_Err (*AEGP_DoesLayerHaveTrackMatte)(AEGP_LayerH layerH, A_Boolean *has_track_mattePB);
	SPAPI A_Err (*AEGP_ConvertCompToLayerTime)(AEGP_LayerH layerH, const A_Time *comp_timePT,
	                                           A_Time *layer_timePT);
	SPAPI A_Err (*AEGP_ConvertLayerToCompTime)(AEGP_LayerH layerH, const A_Time *layer_timePT,
	                                           A_Time *comp_timePT);
	SPAPI A_Err (*AEGP_GetLayerDancingRandValue)(AEGP_LayerH layerH, const A_Time *comp_timePT,
	                                             A_long *rand_valuePL);
	SPAPI A_Err (*AEGP_GetLayerID)(AEGP_LayerH layerH, AEGP_LayerIDVal *id_valP);
	SPAPI A_Err (*AEGP_GetLayerToWorldXform)(AEGP_LayerH aegp_layerH, const A_Time *comp_timeP,
	                                         A_Matrix4 *transform);
	SPAPI A_Err (*AEGP_GetLayerToWorldXformFromView)(AEGP_LayerH aegp_layerH,
	                                                 const A_Time *view_timeP,
	                                                 const A_Time *comp_timeP,
	                                                 A_Matrix4 *transform);
	SPAPI A_Err (*AEGP_SetLayerName)(AEGP_LayerH aegp_layerH, const A_UTF16Char *new_nameZ);
	SPAPI A_Err (*AEGP_GetLayerParent)(AEGP_LayerH layerH, AEGP_LayerH *parent_layerPH);
	SPAPI A_Err (*AEGP_SetLayerParent)(AEGP_LayerH layerH, AEGP_LayerH parent_layerH0);
	SPAPI A_Err (*AEGP_DeleteLayer)(AEGP_LayerH layerH);
	SPAPI A_Err (*AEGP_DuplicateLayer)(AEGP_LayerH orig_layerH, AEGP_LayerH *duplicate_layerPH);
	SPAPI A_Err (*AEGP_GetLayerFromLayerID)(AEGP_CompH parent_compH, AEGP_LayerIDVal id,
	                                        AEGP_LayerH *layerPH);
} AEGP_LayerSuite6;

/* ---- Stream suite ---------------------------------------------------------------------- */

#define kAEGPStreamSuiteVersion4 9
#define kAEGPStreamSuiteVersion5 10

typedef struct AEGP_StreamSuite4 {
	SPAPI A_Err (*AEGP_IsStreamLegal)(AEGP_LayerH layerH, AEGP_LayerStream which_stream,
	                                  A_Boolean *is_legalP);
	SPAPI A_Err (*AEGP_CanVaryOverTime)(AEGP_StreamRefH streamH, A_Boolean *can_varyPB);
	SPAPI A_Err (*AEGP_GetValidInterpolations)(AEGP_StreamRefH streamH,
	                                           AEGP_KeyInterpolationMask *valid_interpolationsP);
	SPAPI A_Err (*AEGP_GetNewLayerStream)(AEGP_PluginID aegp_plugin_id, AEGP_LayerH layerH,
	                                      AEGP_LayerStream which_stream, AEGP_StreamRefH *streamPH);
	SPAPI A_Err (*AEGP_GetEffectNumParamStreams)(AEGP_EffectRefH effect_refH, A_long *num_paramsPL);
	SPAPI A_Err (*AEGP_GetNewEffectStreamByIndex)(AEGP_PluginID aegp_plugin_id,
	                                              AEGP_EffectRefH effect_refH,
	                                              PF_ParamIndex param_index,
	                                              AEGP_StreamRefH *streamPH);
	SPAPI A_Err (*AEGP_GetNewMaskStream)(AEGP_PluginID aegp_plugin_id, AEGP_MaskRefH mask_refH,
	                                     AEGP_MaskStream which_stream,
	                                     AEGP_StreamRefH *mask_streamPH);
	SPAPI A_Err (*AEGP_DisposeStream)(AEGP_StreamRefH streamH);
	SPAPI A_Err (*AEGP_GetStreamName)(AEGP_PluginID pluginID, AEGP_StreamRefH streamH,
	                                  A_Boolean force_englishB, AEGP_MemHandle *utf_stream_namePH);
	SPAPI A_Err (*AEGP_GetStreamUnitsText)(AEGP_StreamRefH streamH, A_Boolean force_englishB,
	                                       A_char *unitsZ);
	SPAPI A_Err (*AEGP_GetStreamProperties)(AEGP_StreamRefH streamH, AEGP_StreamFlags *flagsP,
	                                        A_FpLong *minP0, A_FpLong *maxP0);
	SPAPI A_Err (*AEGP_IsStreamTimevarying)(AEGP_StreamRefH streamH, A_Boolean *is_timevaryingPB);
	SPAPI A_Err (*AEGP_GetStreamType)(AEGP_StreamRefH streamH, AEGP_StreamType *stream_typeP);
	SPAPI A_Err (*AEGP_GetNewStreamValue)(AEGP_PluginID aegp_plugin_id, AEGP_StreamRefH streamH,
	                                      AEGP_LTimeMode time_mode, const A_Time *timePT,
	                                      A_Boolean pre_expressionB, AEGP_StreamValue2 *valueP);
	SPAPI A_Err (*AEGP_DisposeStreamValue)(AEGP_StreamValue2 *valueP);
	SPAPI A_Err (*AEGP_SetStreamValue)(AEGP_PluginID aegp_plugin_id, AEGP_StreamRefH streamH,
	                                   AEGP_StreamValue2 *valueP);
	SPAPI A_Err (*AEGP_GetLayerStreamValue)(AEGP_LayerH layerH, AEGP_LayerStream which_stream,
	                                        AEGP_LTimeMode time_mode, const A_Time *timePT,
	                                        A_Boolean pre_expressionB, AEGP_StreamVal2 *stream_valP,
	                                        AEGP_StreamType *stream_typeP0);
	SPAPI A_Err (*AEGP_GetExpressionState)(AEGP_PluginID aegp_plugin_id, AEGP_StreamRefH streamH,
	                                       A_Boolean *enabledPB);
	SPAPI A_Err (*AEGP_SetExpressionState)(AEGP_PluginID aegp_plugin_id, AEGP_StreamRefH streamH,
	                                       A_Boolean enabledB);
	SPAPI A_Err (*AEGP_GetExpression)(AEGP_PluginID aegp_plugin_id, AEGP_StreamRefH streamH,
	                                  AEGP_MemHandle *expressionHZ);
	SPAPI A_Err (*AEGP_SetExpression)(AEGP_PluginID aegp_plugin_id, AEGP_StreamRefH streamH,
	                                  const A_char *expressionP);
	SPAPI A_Err (*AEGP_DuplicateStreamRef)(AEGP_PluginID aegp_plugin_id, AEGP_StreamRefH streamH,
	                                       AEGP_StreamRefH *dup_streamPH);
} AEGP_StreamSuite4;

/* ---- Comp suite ------------------------------------------------------------------------ */

#define kAEGPCompSuiteVersion4  9
#define kAEGPCompSuiteVersion5  11
#define kAEGPCompSuiteVersion11 25

typedef struct AEGP_CompSuite5 {
	SPAPI A_Err (*AEGP_GetCompFromItem)(AEGP_ItemH itemH, AEGP_CompH *compPH);
	SPAPI A_Err (*AEGP_GetItemFromComp)(AEGP_CompH compH, AEGP_ItemH *itemPH);
	SPAPI A_Err (*AEGP_GetCompDownsampleFactor)(AEGP_CompH compH, AEGP_DownsampleFactor *dsfP);
	SPAPI A_Err (*AEGP_SetCompDownsampleFactor)(AEGP_CompH compH, const AEGP_DownsampleFactor *dsfP);
	SPAPI A_Err (*AEGP_GetCompBGColor)(AEGP_CompH compH, AEGP_ColorVal *bg_colorP);
	SPAPI A_Err (*AEGP_SetCompBGColor)(AEGP_CompH compH, const AEGP_ColorVal *bg_colorP);
	SPAPI A_Err (*AEGP_GetCompFlags)(AEGP_CompH compH, AEGP_CompFlags *comp_flagsP);
	SPAPI A_Err (*AEGP_GetCompFramerate)(AEGP_CompH compH, A_FpLong *fpsPF);
	SPAPI A_Err (*AEGP_SetCompFrameRate)(AEGP_CompH compH, const A_FpLong *fpsPF);
	SPAPI A_Err (*AEGP_GetCompShutterAnglePhase)(AEGP_CompH compH, A_Ratio *angle, A_Ratio *phase);
	SPAPI A_Err (*AEGP_GetCompShutterFrameRange)(AEGP_CompH compH, const A_Time *comp_timeP,
	                                             A_Time *start, A_Time *duration);
	SPAPI A_Err (*AEGP_GetCompWorkAreaStart)(AEGP_CompH compH, A_Time *work_area_startPT);
	SPAPI A_Err (*AEGP_GetCompWorkAreaDuration)(AEGP_CompH compH, A_Time *work_area_durationPT);
	SPAPI A_Err (*AEGP_SetCompWorkAreaStartAndDuration)(AEGP_CompH compH, A_Time *work_area_startPT,
	                                                    A_Time *work_area_durationPT);
	SPAPI A_Err (*AEGP_CreateSolidInComp)(const A_char *nameZ, A_long width, A_long height,
	                                      const AEGP_ColorVal *color, AEGP_CompH parent_compH,
	                                      const A_Time *durationPT0, AEGP_LayerH *new_solidPH);
	SPAPI A_Err (*AEGP_CreateCameraInComp)(const A_char *nameZ, A_FloatPoint center_point,
	                                       AEGP_CompH parent_compH, AEGP_LayerH *new_cameraPH);
	SPAPI A_Err (*AEGP_CreateLightInComp)(const A_char *nameZ, A_FloatPoint center_point,
	                                      AEGP_CompH parent_compH, AEGP_LayerH *new_lightPH);
	SPAPI A_Err (*AEGP_CreateComp)(AEGP_ItemH parent_folderH0, const A_char *nameZ, A_long widthL,
	                               A_long heightL, const A_Ratio *pixel_aspect_ratioPRt,
	                               const A_Time *durationPT, const A_Ratio *frameratePRt,
	                               AEGP_CompH *new_compPH);
	SPAPI A_Err (*AEGP_GetNewCollectionFromCompSelection)(AEGP_PluginID plugin_id, AEGP_CompH compH,
	                                                      AEGP_Collection2H *collectionPH);
	SPAPI A_Err (*AEGP_SetSelection)(AEGP_CompH compH, AEGP_Collection2H collectionH);
	SPAPI A_Err (*AEGP_GetCompDisplayStartTime)(AEGP_CompH compH, A_Time *start_timePT);
	SPAPI A_Err (*AEGP_SetCompDisplayStartTime)(AEGP_CompH compH, const A_Time *start_timePT);
	SPAPI A_Err (*AEGP_SetCompDuration)(AEGP_CompH compH, const A_Time *durationPT);
	SPAPI A_Err (*AEGP_CreateNullInComp)(const A_char *nameZ, AEGP_CompH parent_compH,
	                                     const A_Time *durationPT0, AEGP_LayerH *new_null_solidPH);
	SPAPI A_Err (*AEGP_SetCompPixelAspectRatio)(AEGP_CompH compH, const A_Ratio *pix_aspectratioPRt);
	SPAPI A_Err (*AEGP_CreateTextLayerInComp)(AEGP_CompH parent_compH, AEGP_LayerH *new_text_layerPH);
	SPAPI A_Err (*AEGP_SetCompDimensions)(AEGP_CompH compH, A_long widthL, A_long heightL);
	SPAPI A_Err (*AEGP_DuplicateComp)(AEGP_CompH compH, AEGP_CompH *new_compPH);
	SPAPI A_Err (*AEGP_GetCompFrameDuration)(AEGP_CompH compH, A_Time *timeP);
	SPAPI A_Err (*AEGP_GetMostRecentlyUsedComp)(AEGP_CompH *compPH);
} AEGP_CompSuite5;

/* ---- Item suite ------------------------------------------------------------------------ */

#define kAEGPItemSuiteVersion7 11
#define kAEGPItemSuiteVersion8 13

typedef struct AEGP_ItemSuite8 {
	SPAPI A_Err (*AEGP_GetFirstProjItem)(AEGP_ProjectH projectH, AEGP_ItemH *itemPH);
	SPAPI A_Err (*AEGP_GetNextProjItem)(AEGP_ProjectH projectH, AEGP_ItemH itemH,
	                                    AEGP_ItemH *next_itemPH);
	SPAPI A_Err (*AEGP_GetActiveItem)(AEGP_ItemH *itemPH);
	SPAPI A_Err (*AEGP_IsItemSelected)(AEGP_ItemH itemH, A_Boolean *selectedPB);
	SPAPI A_Err (*AEGP_SelectItem)(AEGP_ItemH itemH, A_Boolean selectB, A_Boolean deselect_othersB);
	SPAPI A_Err (*AEGP_GetItemType)(AEGP_ItemH itemH, AEGP_ItemType *item_typeP);
	SPAPI A_Err (*AEGP_GetTypeName)(AEGP_ItemType item_type, A_char *nameZ);
	SPAPI A_Err (*AEGP_GetItemName)(AEGP_PluginID pluginID, AEGP_ItemH itemH,
	                                AEGP_MemHandle *unicode_namePH);
	SPAPI A_Err (*AEGP_SetItemName)(AEGP_ItemH itemH, const A_UTF16Char *nameZ);
	SPAPI A_Err (*AEGP_GetItemID)(AEGP_ItemH itemH, A_long *item_idPL);
	SPAPI A_Err (*AEGP_GetItemFlags)(AEGP_ItemH itemH, AEGP_ItemFlags *item_flagsP);
	SPAPI A_Err (*AEGP_SetItemUseProxy)(AEGP_ItemH itemH, A_Boolean use_proxyB);
	SPAPI A_Err (*AEGP_GetItemParentFolder)(AEGP_ItemH itemH, AEGP_ItemH *parent_folder_itemPH);
	SPAPI A_Err (*AEGP_SetItemParentFolder)(AEGP_ItemH itemH, AEGP_ItemH parent_folder_itemH);
	SPAPI A_Err (*AEGP_GetItemDuration)(AEGP_ItemH itemH, A_Time *durationPT);
	SPAPI A_Err (*AEGP_GetItemCurrentTime)(AEGP_ItemH itemH, A_Time *curr_timePT);
	SPAPI A_Err (*AEGP_GetItemDimensions)(AEGP_ItemH itemH, A_long *widthPL, A_long *heightPL);
	SPAPI A_Err (*AEGP_GetItemPixelAspectRatio)(AEGP_ItemH itemH, A_Ratio *pix_aspect_ratioPRt);
	SPAPI A_Err (*AEGP_DeleteItem)(AEGP_ItemH itemH);
	SPAPI A_Err (*AEGP_CreateNewFolder)(const A_UTF16Char *nameZ, AEGP_ItemH parent_folderH0,
	                                    AEGP_ItemH *new_folderPH);
	SPAPI A_Err (*AEGP_SetItemCurrentTime)(AEGP_ItemH itemH, const A_Time *new_timePT);
	SPAPI A_Err (*AEGP_GetItemCommentLength)(AEGP_ItemH itemH, A_u_long *buf_sizePLu);
	SPAPI A_Err (*AEGP_GetItemComment)(AEGP_ItemH itemH, A_u_long buf_sizeLu, A_char *commentZ);
	SPAPI A_Err (*AEGP_SetItemComment)(AEGP_ItemH itemH, const A_char *commentZ);
	SPAPI A_Err (*AEGP_GetItemLabel)(AEGP_ItemH itemH, AEGP_LabelID *labelP);
	SPAPI A_Err (*AEGP_SetItemLabel)(AEGP_ItemH itemH, AEGP_LabelID label);
	SPAPI A_Err (*AEGP_GetItemMRUView)(AEGP_ItemH itemH, AEGP_ItemViewP *mru_viewP);
} AEGP_ItemSuite8;

/* ---- Effect suite ---------------------------------------------------------------------- */

#define kAEGPEffectSuiteVersion3 3
#define kAEGPEffectSuiteVersion4 4

typedef struct AEGP_EffectSuite3 {
	SPAPI A_Err (*AEGP_GetLayerNumEffects)(AEGP_LayerH layerH, A_long *num_effectsPL);
	SPAPI A_Err (*AEGP_GetLayerEffectByIndex)(AEGP_PluginID aegp_plugin_id, AEGP_LayerH layerH,
	                                          AEGP_EffectIndex layer_effect_indexL,
	                                          AEGP_EffectRefH *effectPH);
	SPAPI A_Err (*AEGP_GetInstalledKeyFromLayerEffect)(AEGP_EffectRefH effect_refH,
	                                                   AEGP_InstalledEffectKey *installed_effect_keyP);
	SPAPI A_Err (*AEGP_GetEffectParamUnionByIndex)(AEGP_PluginID aegp_plugin_id,
	                                               AEGP_EffectRefH effect_refH,
	                                               PF_ParamIndex param_index,
	                                               PF_ParamType *param_typeP, PF_ParamDefUnion *uP0);
	SPAPI A_Err (*AEGP_GetEffectFlags)(AEGP_EffectRefH effect_refH, AEGP_EffectFlags *effect_flagsP);
	SPAPI A_Err (*AEGP_SetEffectFlags)(AEGP_EffectRefH effect_refH,
	                                   AEGP_EffectFlags effect_flags_set_mask,
	                                   AEGP_EffectFlags effect_flags);
	SPAPI A_Err (*AEGP_ReorderEffect)(AEGP_EffectRefH effect_refH, A_long effect_indexL);
	SPAPI A_Err (*AEGP_EffectCallGeneric)(AEGP_PluginID aegp_plugin_id, AEGP_EffectRefH effect_refH,
	                                      const A_Time *timePT, PF_Cmd effect_cmd,
	                                      void *effect_extraPV);
	SPAPI A_Err (*AEGP_DisposeEffect)(AEGP_EffectRefH effect_refH);
	SPAPI A_Err (*AEGP_ApplyEffect)(AEGP_PluginID aegp_plugin_id, AEGP_LayerH layerH,
	                                AEGP_InstalledEffectKey installed_effect_key,
	                                AEGP_EffectRefH *effect_refPH);
	SPAPI A_Err (*AEGP_DeleteLayerEffect)(AEGP_EffectRefH effect_refH);
	SPAPI A_Err (*AEGP_GetNumInstalledEffects)(A_long *num_installed_effectsPL);
	SPAPI A_Err (*AEGP_GetNextInstalledEffect)(AEGP_InstalledEffectKey installed_effect_key,
	                                           AEGP_InstalledEffectKey *next_effectPH);
	SPAPI A_Err (*AEGP_GetEffectName)(AEGP_InstalledEffectKey installed_effect_key, A_char *nameZ);
	SPAPI A_Err (*AEGP_GetEffectMatchName)(AEGP_InstalledEffectKey installed_effect_key,
	                                       A_char *match_nameZ);
	SPAPI A_Err (*AEGP_GetEffectCategory)(AEGP_InstalledEffectKey installed_effect_key,
	                                      A_char *categoryZ);
	SPAPI A_Err (*AEGP_DuplicateEffect)(AEGP_EffectRefH original_effect_refH,
	                                    AEGP_EffectRefH *duplicate_effect_refPH);
} AEGP_EffectSuite3;

#ifdef __cplusplus
}
#endif

#endif /* AE_GENERALPLUGOLD_H */
