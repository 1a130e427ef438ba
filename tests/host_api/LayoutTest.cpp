// The records the host and the module share must have the host's exact byte layout (LP64, the
// same on Windows x64): sizes, alignments, field offsets and the position of every function in
// every callback table and suite. Every check runs and prints what it found, so one failure
// shows the whole picture.

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdio>
#include <initializer_list>

#include "AE_Effect.h"
#include "AE_EffectCB.h"
#include "AE_EffectCBSuites.h"
#include "AE_EffectSuites.h"
#include "AE_GeneralPlug.h"
#include "SPBasic.h"
#include "StaticLayoutChecks.h"

namespace {

struct TypeLayout {
    const char* type;
    std::size_t size, expected_size, align, expected_align;
};

struct FieldOffset {
    const char* field;
    std::size_t offset, expected_offset;
};

struct Slot {
    const char* function;
    std::size_t offset;
};

void expectLayout(const TypeLayout& t)
{
    std::printf("  %-28s size %4zu (host %4zu)  align %zu (host %zu)\n", t.type, t.size, t.expected_size,
                t.align, t.expected_align);
    EXPECT_EQ(t.size, t.expected_size) << t.type;
    EXPECT_EQ(t.align, t.expected_align) << t.type;
}

void expectRecord(const TypeLayout& t, std::initializer_list<FieldOffset> fields)
{
    expectLayout(t);
    for (const FieldOffset& f : fields) {
        std::printf("    %-40s @%4zu (host %4zu)\n", f.field, f.offset, f.expected_offset);
        EXPECT_EQ(f.offset, f.expected_offset) << t.type << "::" << f.field;
    }
}

// The tables are arrays of 8-byte function pointers: the Nth function sits at 8 * (N - 1).
// `size` is checked only for a table that holds nothing but the listed functions.
void expectFunctions(const char* table, std::initializer_list<Slot> slots, const std::size_t* size)
{
    std::size_t expected = 0;
    for (const Slot& s : slots) {
        EXPECT_EQ(s.offset, expected) << table << "::" << s.function << " is in slot " << s.offset / 8 + 1
                                      << ", the host calls slot " << expected / 8 + 1;
        expected += 8;
    }
    if (size) {
        EXPECT_EQ(*size, expected) << table << " has functions the host does not know";
    }
}

#define HOSTAPI_TYPE(T, SIZE, ALIGN) TypeLayout{#T, sizeof(T), SIZE, alignof(T), ALIGN}

// One row per record: its size and alignment, then AT(field, offset) for the fields checked.
#define HOSTAPI_RECORD(T, SIZE, ALIGN, ...)                                \
    do {                                                                   \
        using S = T;                                                       \
        expectRecord(HOSTAPI_TYPE(T, SIZE, ALIGN), {__VA_ARGS__});         \
    } while (0)
#define AT(F, OFFSET) FieldOffset{#F, offsetof(S, F), OFFSET}

// One row per suite: FN(member) for every function it has, in the host's order.
#define HOSTAPI_SUITE(T, ...)                                              \
    do {                                                                   \
        using S = T;                                                       \
        const std::size_t size = sizeof(T);                                \
        EXPECT_EQ(alignof(T), 8u) << #T;                                   \
        expectFunctions(#T, {__VA_ARGS__}, &size);                         \
    } while (0)
// The same for the functions at the head of a table that holds other members after them.
#define HOSTAPI_FUNCTIONS(T, ...)                                          \
    do {                                                                   \
        using S = T;                                                       \
        expectFunctions(#T, {__VA_ARGS__}, nullptr);                       \
    } while (0)
#define FN(F) Slot{#F, offsetof(S, F)}

TEST(HostApiLayout, EveryRecordHasTheHostsSizeAlignmentAndFieldOffsets)
{
    // Records without a field worth naming here are held to their size and alignment at
    // compile time by StaticLayoutChecks.h.
    HOSTAPI_RECORD(PF_Point, 8, 4, AT(h, 0), AT(v, 4));
    HOSTAPI_RECORD(PF_Pixel, 4, 1, AT(alpha, 0), AT(red, 1), AT(green, 2), AT(blue, 3));
    HOSTAPI_RECORD(PF_Pixel16, 8, 2, AT(alpha, 0), AT(blue, 6));
    HOSTAPI_RECORD(PF_PixelFloat, 16, 4, AT(alpha, 0), AT(red, 4), AT(blue, 12));
    HOSTAPI_RECORD(PF_CompositeMode, 12, 4, AT(rand_seed, 4), AT(opacity, 8), AT(rgb_only, 9),
        AT(opacitySu, 10));
    HOSTAPI_RECORD(PF_SoundFormatInfo, 16, 8, AT(num_channels, 8), AT(format, 10), AT(sample_size, 12));
    HOSTAPI_RECORD(PF_SoundWorld, 32, 8, AT(num_samples, 16), AT(dataP, 24));
    HOSTAPI_RECORD(PF_LayerDef, 120, 8, AT(world_flags, 16), AT(data, 24), AT(rowbytes, 32), AT(width, 36),
        AT(height, 40), AT(extent_hint, 44), AT(platform_ref, 64), AT(reserved_long1, 72),
        AT(reserved_long4, 80), AT(pix_aspect_ratio, 88), AT(reserved_long2, 96), AT(origin_x, 104),
        AT(origin_y, 108), AT(reserved_long3, 112), AT(dephault, 116));
    HOSTAPI_RECORD(PF_SliderDef, 88, 4, AT(value_str, 4), AT(value_desc, 36), AT(valid_min, 68),
        AT(dephault, 84));
    HOSTAPI_RECORD(PF_FixedSliderDef, 92, 4, AT(valid_min, 68), AT(slider_max, 80), AT(dephault, 84),
        AT(precision, 88), AT(display_flags, 90));
    HOSTAPI_RECORD(PF_FloatSliderDef, 88, 8, AT(phase, 8), AT(value_desc, 16), AT(valid_min, 48),
        AT(dephault, 64), AT(precision, 68), AT(display_flags, 70), AT(fs_flags, 72), AT(curve_tolerance, 76),
        AT(useExponent, 80), AT(exponent, 84));
    HOSTAPI_RECORD(PF_AngleDef, 16, 4, AT(dephault, 4), AT(valid_max, 12));
    HOSTAPI_RECORD(PF_CheckBoxDef, 16, 8, AT(dephault, 4), AT(reserved1, 6), AT(u, 8));
    HOSTAPI_RECORD(PF_ColorDef, 8, 1, AT(dephault, 4));
    HOSTAPI_RECORD(PF_PointDef, 20, 4, AT(y_value, 4), AT(reserved, 8), AT(restrict_bounds, 11),
        AT(x_dephault, 12), AT(y_dephault, 16));
    HOSTAPI_RECORD(PF_Point3DDef, 64, 8, AT(x_dephault, 24), AT(reserved, 48));
    HOSTAPI_RECORD(PF_PopupDef, 16, 8, AT(num_choices, 4), AT(dephault, 6), AT(u, 8));
    HOSTAPI_RECORD(PF_ButtonDef, 16, 8, AT(u, 8));
    HOSTAPI_RECORD(PF_PathDef, 12, 4, AT(dephault, 8));
    HOSTAPI_RECORD(PF_ArbitraryDef, 32, 8, AT(pad, 2), AT(dephault, 8), AT(value, 16), AT(refconPV, 24));
    HOSTAPI_RECORD(PF_ParamDef, 176, 8, AT(uu, 0), AT(ui_flags, 4), AT(ui_width, 8), AT(ui_height, 10),
        AT(param_type, 12), AT(PF_DEF_NAME, 16), AT(flags, 48), AT(unused, 52), AT(u, 56));
    HOSTAPI_RECORD(PF_RenderRequest, 44, 4, AT(field, 16), AT(channel_mask, 20),
        AT(preserve_rgb_of_zero_alpha, 24), AT(unused, 25), AT(reserved, 28));
    HOSTAPI_RECORD(PF_PreRenderInput, 64, 8, AT(bitdepth, 44), AT(gpu_data, 48), AT(what_gpu, 56),
        AT(device_index, 60));
    HOSTAPI_RECORD(PF_PreRenderOutput, 56, 8, AT(max_result_rect, 16), AT(solid, 32), AT(reserved, 33),
        AT(flags, 34), AT(pre_render_data, 40), AT(delete_pre_render_data_func, 48));
    HOSTAPI_RECORD(PF_CheckoutResult, 76, 4, AT(par, 32), AT(solid, 40), AT(reservedB, 41), AT(ref_width, 44),
        AT(ref_height, 48), AT(reserved, 52));
    HOSTAPI_RECORD(PF_PreRenderExtra, 24, 8, AT(output, 8), AT(cb, 16));
    HOSTAPI_RECORD(PF_SmartRenderInput, 72, 8, AT(bitdepth, 44), AT(pre_render_data, 48), AT(gpu_data, 56),
        AT(what_gpu, 64), AT(device_index, 68));
    HOSTAPI_RECORD(PF_SmartRenderExtra, 16, 8, AT(cb, 8));
    HOSTAPI_RECORD(PF_InteractCallbacks, 176, 8, AT(add_param, 16), AT(abort, 24), AT(progress, 32),
        AT(get_audio_data, 64), AT(reserved_str, 72), AT(reserved, 96));
    HOSTAPI_RECORD(PF_OutData, 408, 8, AT(name, 4), AT(global_data, 40), AT(num_params, 48),
        AT(sequence_data, 56), AT(flat_sdata_size, 64), AT(frame_data, 72), AT(width, 80), AT(origin, 88),
        AT(out_flags, 96), AT(return_msg, 100), AT(start_sampL, 356), AT(dur_sampL, 360), AT(dest_snd, 368),
        AT(out_flags2, 400));
    HOSTAPI_RECORD(PF_InData, 408, 8, AT(utils, 176), AT(effect_ref, 184), AT(quality, 192), AT(version, 196),
        AT(serial_num, 200), AT(appl_id, 204), AT(num_params, 208), AT(current_time, 224), AT(time_step, 228),
        AT(total_time, 232), AT(local_time_step, 236), AT(time_scale, 240), AT(field, 244),
        AT(shutter_angle, 248), AT(width, 252), AT(height, 256), AT(extent_hint, 260),
        AT(output_origin_x, 276), AT(downsample_x, 284), AT(downsample_y, 292), AT(pixel_aspect_ratio, 300),
        AT(in_flags, 308), AT(global_data, 312), AT(sequence_data, 320), AT(frame_data, 328),
        AT(start_sampL, 336), AT(total_sampL, 344), AT(src_snd, 352), AT(pica_basicP, 384),
        AT(pre_effect_source_origin_x, 392), AT(pre_effect_source_origin_y, 396), AT(shutter_phase, 400));
    HOSTAPI_RECORD(PF_MaskWorld, 136, 8, AT(offset, 120), AT(what_is_mask, 128));
    HOSTAPI_RECORD(PF_SampPB, 104, 8, AT(y_radius, 4), AT(area, 8), AT(src, 16), AT(samp_behave, 24),
        AT(allow_asynch, 28), AT(motion_blur, 32), AT(comp_mode, 36), AT(mask0, 48), AT(fcm_table, 56),
        AT(fcd_table, 64), AT(reserved, 72));
    HOSTAPI_RECORD(PF_ANSICallbacksBlock, 160, 8, AT(hypot, 64), AT(tan, 112), AT(sprintf, 120),
        AT(strcpy, 128), AT(asin, 136), AT(acos, 144), AT(unused_longA, 152));
    HOSTAPI_RECORD(PF_UtilCallbacks, 552, 8, AT(subpixel_sample, 8), AT(area_sample, 16),
        AT(get_batch_func_is_deprecated, 24), AT(iterate, 88), AT(new_world, 112), AT(dispose_world, 120),
        AT(transform_world, 152), AT(host_new_handle, 160), AT(host_lock_handle, 168),
        AT(host_unlock_handle, 176), AT(host_dispose_handle, 184), AT(get_callback_addr, 192), AT(app, 200),
        AT(ansi, 208), AT(colorCB, 368), AT(get_platform_data, 432), AT(host_get_handle_size, 440),
        AT(iterate_origin_non_clip_src, 448), AT(iterate_generic, 456), AT(host_resize_handle, 464),
        AT(subpixel_sample16, 472), AT(area_sample16, 480), AT(fill16, 488), AT(premultiply_color16, 496),
        AT(iterate16, 504), AT(iterate_origin16, 512), AT(iterate_origin_non_clip_src16, 520),
        AT(get_pixel_data8, 528), AT(get_pixel_data16, 536), AT(reserved, 544));
    HOSTAPI_RECORD(AEGP_LayerTransferMode, 12, 4, AT(flags, 4), AT(track_matte, 8));
    HOSTAPI_RECORD(AEGP_StreamValue2, 40, 8, AT(val, 8));
    HOSTAPI_RECORD(AEGP_StreamValue, 40, 8, AT(val, 8));
    HOSTAPI_RECORD(AEGP_MarkerVal, 1344, 1, AT(urlAC, 64), AT(targetAC, 1088), AT(chapterAC, 1216));
}

TEST(HostApiLayout, SuiteAndCallbackFunctionsAreInTheHostsOrder)
{
    HOSTAPI_SUITE(PF_PreRenderCallbacks, FN(checkout_layer), FN(GuidMixInPtr));
    HOSTAPI_SUITE(PF_SmartRenderCallbacks, FN(checkout_layer_pixels), FN(checkin_layer_pixels),
        FN(checkout_output));
    HOSTAPI_SUITE(PF_ColorCallbacks, FN(RGBtoHLS), FN(HLStoRGB), FN(RGBtoYIQ), FN(YIQtoRGB), FN(Luminance),
        FN(Hue), FN(Lightness), FN(Saturation));
    HOSTAPI_SUITE(SPBasicSuite, FN(AcquireSuite), FN(ReleaseSuite), FN(IsEqual), FN(AllocateBlock),
        FN(FreeBlock), FN(ReallocateBlock), FN(Undefined));
    HOSTAPI_SUITE(PF_Sampling8Suite1, FN(nn_sample), FN(subpixel_sample), FN(area_sample));
    HOSTAPI_SUITE(PF_Sampling16Suite1, FN(nn_sample16), FN(subpixel_sample16), FN(area_sample16));
    HOSTAPI_SUITE(PF_SamplingFloatSuite1, FN(nn_sample_float), FN(subpixel_sample_float),
        FN(area_sample_float));
    HOSTAPI_SUITE(PF_WorldSuite1, FN(new_world), FN(dispose_world));
    HOSTAPI_SUITE(PF_WorldSuite2, FN(PF_NewWorld), FN(PF_DisposeWorld), FN(PF_GetPixelFormat));
    HOSTAPI_SUITE(PF_PixelFormatSuite2, FN(PF_AddSupportedPixelFormat), FN(PF_ClearSupportedPixelFormats));
    HOSTAPI_SUITE(PF_ParamUtilsSuite3, FN(PF_UpdateParamUI), FN(PF_GetCurrentState),
        FN(PF_AreStatesIdentical), FN(PF_IsIdenticalCheckout), FN(PF_FindKeyframeTime),
        FN(PF_GetKeyframeCount), FN(PF_CheckoutKeyframe), FN(PF_CheckinKeyframe), FN(PF_KeyIndexToTime));
    HOSTAPI_SUITE(AEGP_PFInterfaceSuite1, FN(AEGP_GetEffectLayer), FN(AEGP_GetNewEffectForEffect),
        FN(AEGP_ConvertEffectToCompTime), FN(AEGP_GetEffectCamera), FN(AEGP_GetEffectCameraMatrix));
    HOSTAPI_SUITE(AEGP_MemorySuite1, FN(AEGP_NewMemHandle), FN(AEGP_FreeMemHandle), FN(AEGP_LockMemHandle),
        FN(AEGP_UnlockMemHandle), FN(AEGP_GetMemHandleSize), FN(AEGP_ResizeMemHandle),
        FN(AEGP_SetMemReportingOn), FN(AEGP_GetMemStats));
    HOSTAPI_SUITE(AEGP_DynamicStreamSuite4, FN(AEGP_GetNewStreamRefForLayer), FN(AEGP_GetNewStreamRefForMask),
        FN(AEGP_GetStreamDepth), FN(AEGP_GetStreamGroupingType), FN(AEGP_GetNumStreamsInGroup),
        FN(AEGP_GetDynamicStreamFlags), FN(AEGP_SetDynamicStreamFlag), FN(AEGP_GetNewStreamRefByIndex),
        FN(AEGP_GetNewStreamRefByMatchname), FN(AEGP_DeleteStream), FN(AEGP_ReorderStream),
        FN(AEGP_DuplicateStream), FN(AEGP_SetStreamName), FN(AEGP_CanAddStream), FN(AEGP_AddStream),
        FN(AEGP_GetMatchName), FN(AEGP_GetNewParentStreamRef), FN(AEGP_GetStreamIsModified),
        FN(AEGP_GetStreamIndexInParent), FN(AEGP_IsSeparationLeader), FN(AEGP_AreDimensionsSeparated),
        FN(AEGP_SetDimensionsSeparated), FN(AEGP_GetSeparationFollower), FN(AEGP_IsSeparationFollower),
        FN(AEGP_GetSeparationLeader), FN(AEGP_GetSeparationDimension));
    HOSTAPI_SUITE(AEGP_CameraSuite2, FN(AEGP_GetCamera), FN(AEGP_GetCameraType),
        FN(AEGP_GetDefaultCameraDistanceToImagePlane), FN(AEGP_GetCameraFilmSize),
        FN(AEGP_SetCameraFilmSize));
    HOSTAPI_SUITE(AEGP_LightSuite2, FN(AEGP_GetLightType), FN(AEGP_SetLightType));
    HOSTAPI_SUITE(AEGP_UtilitySuite5, FN(AEGP_ReportInfo), FN(AEGP_GetDriverPluginInitFuncVersion),
        FN(AEGP_GetDriverImplementationVersion), FN(AEGP_StartQuietErrors), FN(AEGP_EndQuietErrors),
        FN(AEGP_GetLastErrorMessage), FN(AEGP_StartUndoGroup), FN(AEGP_EndUndoGroup),
        FN(AEGP_RegisterWithAEGP), FN(AEGP_GetMainHWND), FN(AEGP_ShowHideAllFloaters),
        FN(AEGP_PaintPalGetForeColor), FN(AEGP_PaintPalGetBackColor), FN(AEGP_PaintPalSetForeColor),
        FN(AEGP_PaintPalSetBackColor), FN(AEGP_CharPalGetFillColor), FN(AEGP_CharPalGetStrokeColor),
        FN(AEGP_CharPalSetFillColor), FN(AEGP_CharPalSetStrokeColor), FN(AEGP_CharPalIsFillColorUIFrontmost),
        FN(AEGP_ConvertFpLongToHSFRatio), FN(AEGP_ConvertHSFRatioToFpLong),
        FN(AEGP_CauseIdleRoutinesToBeCalled), FN(AEGP_GetSuppressInteractiveUI), FN(AEGP_WriteToOSConsole),
        FN(AEGP_WriteToDebugLog), FN(AEGP_IsScriptingAvailable), FN(AEGP_ExecuteScript),
        FN(AEGP_HostIsActivated), FN(AEGP_GetPluginPlatformRef), FN(AEGP_UpdateFontList));
    HOSTAPI_SUITE(AEGP_LayerSuite6, FN(AEGP_GetCompNumLayers), FN(AEGP_GetCompLayerByIndex),
        FN(AEGP_GetActiveLayer), FN(AEGP_GetLayerIndex), FN(AEGP_GetLayerSourceItem),
        FN(AEGP_GetLayerSourceItemID), FN(AEGP_GetLayerParentComp), FN(AEGP_GetLayerName),
        FN(AEGP_GetLayerQuality), FN(AEGP_SetLayerQuality), FN(AEGP_GetLayerFlags), FN(AEGP_SetLayerFlag),
        FN(AEGP_IsLayerVideoReallyOn), FN(AEGP_IsLayerAudioReallyOn), FN(AEGP_GetLayerCurrentTime),
        FN(AEGP_GetLayerInPoint), FN(AEGP_GetLayerDuration), FN(AEGP_SetLayerInPointAndDuration),
        FN(AEGP_GetLayerOffset), FN(AEGP_SetLayerOffset), FN(AEGP_GetLayerStretch), FN(AEGP_SetLayerStretch),
        FN(AEGP_GetLayerTransferMode), FN(AEGP_SetLayerTransferMode), FN(AEGP_IsAddLayerValid),
        FN(AEGP_AddLayer), FN(AEGP_ReorderLayer), FN(AEGP_GetLayerMaskedBounds), FN(AEGP_GetLayerObjectType),
        FN(AEGP_IsLayer3D), FN(AEGP_IsLayer2D), FN(AEGP_IsVideoActive), FN(AEGP_IsLayerUsedAsTrackMatte),
        FN(AEGP_DoesLayerHaveTrackMatte), FN(AEGP_ConvertCompToLayerTime), FN(AEGP_ConvertLayerToCompTime),
        FN(AEGP_GetLayerDancingRandValue), FN(AEGP_GetLayerID), FN(AEGP_GetLayerToWorldXform),
        FN(AEGP_GetLayerToWorldXformFromView), FN(AEGP_SetLayerName), FN(AEGP_GetLayerParent),
        FN(AEGP_SetLayerParent), FN(AEGP_DeleteLayer), FN(AEGP_DuplicateLayer), FN(AEGP_GetLayerFromLayerID));
    HOSTAPI_SUITE(AEGP_StreamSuite4, FN(AEGP_IsStreamLegal), FN(AEGP_CanVaryOverTime),
        FN(AEGP_GetValidInterpolations), FN(AEGP_GetNewLayerStream), FN(AEGP_GetEffectNumParamStreams),
        FN(AEGP_GetNewEffectStreamByIndex), FN(AEGP_GetNewMaskStream), FN(AEGP_DisposeStream),
        FN(AEGP_GetStreamName), FN(AEGP_GetStreamUnitsText), FN(AEGP_GetStreamProperties),
        FN(AEGP_IsStreamTimevarying), FN(AEGP_GetStreamType), FN(AEGP_GetNewStreamValue),
        FN(AEGP_DisposeStreamValue), FN(AEGP_SetStreamValue), FN(AEGP_GetLayerStreamValue),
        FN(AEGP_GetExpressionState), FN(AEGP_SetExpressionState), FN(AEGP_GetExpression),
        FN(AEGP_SetExpression), FN(AEGP_DuplicateStreamRef));
    HOSTAPI_SUITE(AEGP_CompSuite5, FN(AEGP_GetCompFromItem), FN(AEGP_GetItemFromComp),
        FN(AEGP_GetCompDownsampleFactor), FN(AEGP_SetCompDownsampleFactor), FN(AEGP_GetCompBGColor),
        FN(AEGP_SetCompBGColor), FN(AEGP_GetCompFlags), FN(AEGP_GetCompFramerate), FN(AEGP_SetCompFrameRate),
        FN(AEGP_GetCompShutterAnglePhase), FN(AEGP_GetCompShutterFrameRange), FN(AEGP_GetCompWorkAreaStart),
        FN(AEGP_GetCompWorkAreaDuration), FN(AEGP_SetCompWorkAreaStartAndDuration),
        FN(AEGP_CreateSolidInComp), FN(AEGP_CreateCameraInComp), FN(AEGP_CreateLightInComp),
        FN(AEGP_CreateComp), FN(AEGP_GetNewCollectionFromCompSelection), FN(AEGP_SetSelection),
        FN(AEGP_GetCompDisplayStartTime), FN(AEGP_SetCompDisplayStartTime), FN(AEGP_SetCompDuration),
        FN(AEGP_CreateNullInComp), FN(AEGP_SetCompPixelAspectRatio), FN(AEGP_CreateTextLayerInComp),
        FN(AEGP_SetCompDimensions), FN(AEGP_DuplicateComp), FN(AEGP_GetCompFrameDuration),
        FN(AEGP_GetMostRecentlyUsedComp));
    HOSTAPI_SUITE(AEGP_ItemSuite8, FN(AEGP_GetFirstProjItem), FN(AEGP_GetNextProjItem),
        FN(AEGP_GetActiveItem), FN(AEGP_IsItemSelected), FN(AEGP_SelectItem), FN(AEGP_GetItemType),
        FN(AEGP_GetTypeName), FN(AEGP_GetItemName), FN(AEGP_SetItemName), FN(AEGP_GetItemID),
        FN(AEGP_GetItemFlags), FN(AEGP_SetItemUseProxy), FN(AEGP_GetItemParentFolder),
        FN(AEGP_SetItemParentFolder), FN(AEGP_GetItemDuration), FN(AEGP_GetItemCurrentTime),
        FN(AEGP_GetItemDimensions), FN(AEGP_GetItemPixelAspectRatio), FN(AEGP_DeleteItem),
        FN(AEGP_CreateNewFolder), FN(AEGP_SetItemCurrentTime), FN(AEGP_GetItemCommentLength),
        FN(AEGP_GetItemComment), FN(AEGP_SetItemComment), FN(AEGP_GetItemLabel), FN(AEGP_SetItemLabel),
        FN(AEGP_GetItemMRUView));
    HOSTAPI_SUITE(AEGP_EffectSuite3, FN(AEGP_GetLayerNumEffects), FN(AEGP_GetLayerEffectByIndex),
        FN(AEGP_GetInstalledKeyFromLayerEffect), FN(AEGP_GetEffectParamUnionByIndex), FN(AEGP_GetEffectFlags),
        FN(AEGP_SetEffectFlags), FN(AEGP_ReorderEffect), FN(AEGP_EffectCallGeneric), FN(AEGP_DisposeEffect),
        FN(AEGP_ApplyEffect), FN(AEGP_DeleteLayerEffect), FN(AEGP_GetNumInstalledEffects),
        FN(AEGP_GetNextInstalledEffect), FN(AEGP_GetEffectName), FN(AEGP_GetEffectMatchName),
        FN(AEGP_GetEffectCategory), FN(AEGP_DuplicateEffect));
    HOSTAPI_FUNCTIONS(PF_InteractCallbacks, FN(checkout_param), FN(checkin_param), FN(add_param), FN(abort),
        FN(progress), FN(register_ui), FN(checkout_layer_audio), FN(checkin_layer_audio), FN(get_audio_data));
    HOSTAPI_FUNCTIONS(PF_ANSICallbacksBlock, FN(atan), FN(atan2), FN(ceil), FN(cos), FN(exp), FN(fabs),
        FN(floor), FN(fmod), FN(hypot), FN(log), FN(log10), FN(pow), FN(sin), FN(sqrt), FN(tan), FN(sprintf),
        FN(strcpy), FN(asin), FN(acos));
    HOSTAPI_FUNCTIONS(PF_UtilCallbacks, FN(begin_sampling), FN(subpixel_sample), FN(area_sample),
        FN(get_batch_func_is_deprecated), FN(end_sampling), FN(composite_rect), FN(blend), FN(convolve),
        FN(copy), FN(fill), FN(gaussian_kernel), FN(iterate), FN(premultiply), FN(premultiply_color),
        FN(new_world), FN(dispose_world), FN(iterate_origin), FN(iterate_lut), FN(transfer_rect),
        FN(transform_world), FN(host_new_handle), FN(host_lock_handle), FN(host_unlock_handle),
        FN(host_dispose_handle), FN(get_callback_addr), FN(app));
}

// The same bytes are read through differently named members; both names must alias.
TEST(HostApiLayout, AliasedMembersShareStorage)
{
    PF_Point p{};
    p.h = 11;
    p.v = -7;
    EXPECT_EQ(p.x, 11);
    EXPECT_EQ(p.y, -7);

    PF_ParamDef def{};
    def.uu.id = 0x1234;
    EXPECT_EQ(def.uu.change_flags, 0x1234);

    PF_PixelFloat f{};
    PF_Pixel32& alias = f;  // one struct under two names
    alias.alpha = 0.5f;
    EXPECT_EQ(f.alpha, 0.5f);

    // A world is the same type as a layer definition.
    PF_EffectWorld world{};
    PF_LayerDef* as_layer = &world;
    EXPECT_EQ(static_cast<void*>(as_layer), static_cast<void*>(&world));
}

}  // namespace
