// Values the host and the module must agree on: command codes, flags, error codes, pixel
// formats, version words and the name/version pairs suites are looked up by.

#include <gtest/gtest.h>

#include <cstring>
#include <initializer_list>
#include <string>

#include "AE_Effect.h"
#include "AE_EffectCB.h"
#include "AE_EffectCBSuites.h"
#include "AE_EffectPixelFormat.h"
#include "AE_EffectSuites.h"
#include "AE_GeneralPlug.h"
#include "SPBasic.h"

namespace {

// One row per constant: its name (for the failure message), its value and the host's value.
struct Named {
    const char* name;
    long long value, expected;
};
#define HOSTAPI_VALUE(N, V) Named{#N, static_cast<long long>(N), V}

void expectValues(std::initializer_list<Named> values)
{
    for (const Named& v : values) {
        EXPECT_EQ(v.value, v.expected) << v.name;
    }
}

TEST(HostApiConstants, CommandCodesMatchTheHostsNumbering) {
    expectValues({HOSTAPI_VALUE(PF_Cmd_ABOUT, 0), HOSTAPI_VALUE(PF_Cmd_GLOBAL_SETUP, 1),
                  HOSTAPI_VALUE(PF_Cmd_GLOBAL_SETDOWN, 3), HOSTAPI_VALUE(PF_Cmd_PARAMS_SETUP, 4),
                  HOSTAPI_VALUE(PF_Cmd_SEQUENCE_SETUP, 5), HOSTAPI_VALUE(PF_Cmd_SEQUENCE_SETDOWN, 8),
                  HOSTAPI_VALUE(PF_Cmd_RENDER, 11), HOSTAPI_VALUE(PF_Cmd_USER_CHANGED_PARAM, 13),
                  HOSTAPI_VALUE(PF_Cmd_UPDATE_PARAMS_UI, 14), HOSTAPI_VALUE(PF_Cmd_COMPLETELY_GENERAL, 17),
                  HOSTAPI_VALUE(PF_Cmd_SMART_PRE_RENDER, 23), HOSTAPI_VALUE(PF_Cmd_SMART_RENDER, 24),
                  HOSTAPI_VALUE(PF_Cmd_RESERVED2, 26), HOSTAPI_VALUE(PF_Cmd_GET_FLATTENED_SEQUENCE_DATA, 28),
                  HOSTAPI_VALUE(PF_Cmd_SMART_RENDER_GPU, 31), HOSTAPI_VALUE(PF_Cmd_GPU_DEVICE_SETDOWN, 33),
                  HOSTAPI_VALUE(PF_Cmd_NUM_CMDS, 34)});
}

TEST(HostApiConstants, ErrorCodesStartAtTheFirstEffectError) {
    expectValues({HOSTAPI_VALUE(PF_Err_NONE, 0), HOSTAPI_VALUE(PF_Err_OUT_OF_MEMORY, A_Err_ALLOC),
                  HOSTAPI_VALUE(PF_Err_OUT_OF_MEMORY, 4), HOSTAPI_VALUE(PF_Err_INTERNAL_STRUCT_DAMAGED, 512),
                  HOSTAPI_VALUE(PF_Err_INVALID_INDEX, 513), HOSTAPI_VALUE(PF_Err_UNRECOGNIZED_PARAM_TYPE, 514),
                  HOSTAPI_VALUE(PF_Err_INVALID_CALLBACK, 515), HOSTAPI_VALUE(PF_Err_BAD_CALLBACK_PARAM, 516),
                  HOSTAPI_VALUE(PF_Interrupt_CANCEL, 517), HOSTAPI_VALUE(PF_Err_CANNOT_PARSE_KEYFRAME_TEXT, 518),
                  HOSTAPI_VALUE(A_Err_WRONG_THREAD, 5), HOSTAPI_VALUE(A_Err_MISSING_SUITE, 13),
                  HOSTAPI_VALUE(A_Err_NOT_IN_CACHE_OR_COMPUTE_PENDING, 22), HOSTAPI_VALUE(A_Err_LAST, 25),
                  // 'S!Fd' read as a big-endian four-character constant.
                  HOSTAPI_VALUE(kSPSuiteNotFoundError, ('S' << 24) | ('!' << 16) | ('F' << 8) | 'd'),
                  HOSTAPI_VALUE(kSPNoError, 0)});
}

// The module reports exactly these words at global setup; they must equal its resource
// description, so a single moved bit would make the host refuse the effect.
TEST(HostApiConstants, OutFlagsComposeToTheModulesWords) {
    const A_long out_flags = PF_OutFlag_DEEP_COLOR_AWARE | PF_OutFlag_KEEP_RESOURCE_OPEN;
    const A_long out_flags2 = PF_OutFlag2_SUPPORTS_THREADED_RENDERING |
                              PF_OutFlag2_FLOAT_COLOR_AWARE | PF_OutFlag2_SUPPORTS_SMART_RENDER |
                              PF_OutFlag2_I_USE_3D_LIGHTS | PF_OutFlag2_I_USE_3D_CAMERA;
    expectValues({HOSTAPI_VALUE(out_flags, 0x02000001), HOSTAPI_VALUE(out_flags2, 0x08001406),
                  HOSTAPI_VALUE(PF_OutFlag_SEND_UPDATE_PARAMS_UI, 0x04000000),
                  HOSTAPI_VALUE(PF_OutFlag_FORCE_RERENDER, 0x00400000), HOSTAPI_VALUE(PF_OutFlag_REFRESH_UI, 0x00020000),
                  HOSTAPI_VALUE(PF_OutFlag_DISPLAY_ERROR_MESSAGE, 0x100),
                  HOSTAPI_VALUE(static_cast<A_u_long>(PF_OutFlag_AUDIO_EFFECT_ONLY), 0x80000000u),
                  HOSTAPI_VALUE(PF_OutFlag2_AE13_5_THREADSAFE, 0x00400000),
                  HOSTAPI_VALUE(PF_OutFlag2_SUPPORTS_DIRECTX_RENDERING, 0x20000000)});
}

TEST(HostApiConstants, ParameterAndInterfaceFlags) {
    expectValues({HOSTAPI_VALUE(PF_ParamFlag_CANNOT_TIME_VARY, 2), HOSTAPI_VALUE(PF_ParamFlag_SUPERVISE, 64),
                  HOSTAPI_VALUE(PF_ParamFlag_START_COLLAPSED, PF_ParamFlag_COLLAPSE_TWIRLY),
                  HOSTAPI_VALUE(PF_ParamFlag_LAYER_PARAM_IS_TRACKMATTE, PF_ParamFlag_USE_VALUE_FOR_OLD_PROJECTS),
                  HOSTAPI_VALUE(static_cast<A_u_long>(PF_ParamFlags_ALL), 0xffffffffu),
                  HOSTAPI_VALUE(PF_PUI_DISABLED, 0x20), HOSTAPI_VALUE(PF_PUI_INVISIBLE, 0x200),
                  HOSTAPI_VALUE(PF_ChangeFlag_CHANGED_VALUE, 1), HOSTAPI_VALUE(PF_Param_LAYER, 0),
                  HOSTAPI_VALUE(PF_Param_FIX_SLIDER, 2), HOSTAPI_VALUE(PF_Param_POPUP, 7),
                  HOSTAPI_VALUE(PF_Param_FLOAT_SLIDER, 10), HOSTAPI_VALUE(PF_Param_GROUP_START, 13),
                  HOSTAPI_VALUE(PF_Param_GROUP_END, 14), HOSTAPI_VALUE(PF_Param_POINT_3D, 18),
                  HOSTAPI_VALUE(PF_LayerDefault_MYSELF, -1), HOSTAPI_VALUE(PF_WorldFlag_DEEP, 1),
                  HOSTAPI_VALUE(PF_MAX_CHAN16, 32768)});
}

// Formats are packed with the first character in the lowest byte.
TEST(HostApiConstants, PixelFormatsAreLittleEndianFourCCs) {
    expectValues({HOSTAPI_VALUE(PF_PixelFormat_ARGB32, 0x62677261), HOSTAPI_VALUE(PF_PixelFormat_ARGB64, 0x36316561),
                  HOSTAPI_VALUE(PF_PixelFormat_ARGB128, 0x32336561), HOSTAPI_VALUE(PF_PixelFormat_INVALID, 0x66646162),
                  HOSTAPI_VALUE(PF_PixelFormat_GPU_BGRA128, 0x41444340),
                  HOSTAPI_VALUE(PF_PixelFormat_BGRA32, 0x61726762)});

    const char argb[4] = {'a', 'r', 'g', 'b'};
    A_u_long in_memory = 0;
    std::memcpy(&in_memory, argb, 4);  // x86/arm little-endian: bytes read as the code
    EXPECT_EQ(in_memory, static_cast<A_u_long>(PF_PixelFormat_ARGB32));
}

TEST(HostApiConstants, VersionWordPacksEveryField) {
    EXPECT_EQ(PF_VERSION(1, 1, 6, PF_Stage_RELEASE, 1), 0x8B601u);

    // Major 13 needs the high field: 13 = 0b1101 -> low three bits 5 at bit 19, high bit 1 at
    // bit 26. Subversion 2 at bit 15.
    const A_u_long v = PF_VERSION(13, 2, 0, PF_Stage_DEVELOP, 0);
    EXPECT_EQ(v, 0x04290000u);
    EXPECT_EQ(PF_Version_VERS(v), 13u);
    EXPECT_EQ(PF_Version_SUBVERS(v), 2u);

    const A_u_long w = PF_VERSION(3, 15, 9, PF_Stage_BETA, 511);
    EXPECT_EQ(PF_Version_VERS(w), 3u);
    EXPECT_EQ(PF_Version_SUBVERS(w), 15u);
    EXPECT_EQ(PF_Version_BUGFIX(w), 9u);
    EXPECT_EQ(PF_Version_STAGE(w), static_cast<A_u_long>(PF_Stage_BETA));
    EXPECT_EQ(PF_Version_BUILD(w), 511u);

    // Out-of-range fields are masked, never spill into a neighbour.
    EXPECT_EQ(PF_VERSION(0, 0, 0, 0, 512), 0u);
    EXPECT_EQ(PF_VERSION(0, 16, 0, 0, 0), 0u);

    EXPECT_EQ(PF_AE_PLUG_IN_VERSION, 13);
    EXPECT_EQ(PF_AE_PLUG_IN_SUBVERS, 29);
    EXPECT_EQ(PF_AE130_PLUG_IN_SUBVERS, 7);
}

struct SuiteId {
    std::string name;
    int version;
    const char* expected_name;
    int expected_version;
};

TEST(HostApiConstants, SuitesAreLookedUpByTheHostsNamesAndVersions) {
    const SuiteId suites[] = {
        {kSPBasicSuite, kSPBasicSuiteVersion, "SP Basic Suite", 4},
        {kPFWorldSuite, kPFWorldSuiteVersion2, "PF World Suite", 2},
        {kPFSampling8Suite, kPFSampling8SuiteVersion1, "PF Sampling8 Suite", 1},
        {kPFSampling16Suite, kPFSampling16SuiteVersion1, "PF Sampling16 Suite", 1},
        {kPFSamplingFloatSuite, kPFSamplingFloatSuiteVersion1, "PF SamplingFloat Suite", 1},
        {kPFParamUtilsSuite, kPFParamUtilsSuiteVersion3, "PF Param Utils Suite", 3},
        {kPFPixelFormatSuite, kPFPixelFormatSuiteVersion2, "PF Pixel Format Suite", 2},
        {kAEGPUtilitySuite, kAEGPUtilitySuiteVersion5, "AEGP Utility Suite", 11},
        {kAEGPPFInterfaceSuite, kAEGPPFInterfaceSuiteVersion1, "AEGP PF Interface Suite", 1},
        {kAEGPLayerSuite, kAEGPLayerSuiteVersion6, "AEGP Layer Suite", 12},
        {kAEGPStreamSuite, kAEGPStreamSuiteVersion4, "AEGP Stream Suite", 9},
        {kAEGPDynamicStreamSuite, kAEGPDynamicStreamSuiteVersion4, "AEGP Dynamic Stream Suite", 5},
        {kAEGPCompSuite, kAEGPCompSuiteVersion5, "AEGP Comp Suite", 11},
        {kAEGPItemSuite, kAEGPItemSuiteVersion8, "AEGP Item Suite", 13},
        {kAEGPCameraSuite, kAEGPCameraSuiteVersion2, "AEGP Camera Suite", 2},
        {kAEGPLightSuite, kAEGPLightSuiteVersion2, "AEGP Light Suite", 2},
        {kAEGPEffectSuite, kAEGPEffectSuiteVersion3, "AEGP Effect Suite", 3},
        {kAEGPMemorySuite, kAEGPMemorySuiteVersion1, "AEGP Memory Suite", 1},
    };
    for (const SuiteId& s : suites) {
        EXPECT_EQ(s.name, s.expected_name);
        EXPECT_EQ(s.version, s.expected_version) << s.expected_name;
    }
}

TEST(HostApiConstants, AegpValuesTheModuleTestsFor) {
    expectValues({HOSTAPI_VALUE(AEGP_LayerStream_ZOOM, 11), HOSTAPI_VALUE(AEGP_LayerStream_DEPTH_OF_FIELD, 12),
                  HOSTAPI_VALUE(AEGP_LayerStream_FOCUS_DISTANCE, 13), HOSTAPI_VALUE(AEGP_LayerStream_APERTURE, 14),
                  HOSTAPI_VALUE(AEGP_LayerStream_BLUR_LEVEL, 15), HOSTAPI_VALUE(AEGP_LayerStream_INTENSITY, 16),
                  HOSTAPI_VALUE(AEGP_LayerStream_COLOR, 17), HOSTAPI_VALUE(AEGP_LayerStream_CONE_ANGLE, 18),
                  HOSTAPI_VALUE(AEGP_LayerStream_CONE_FEATHER, 19),
                  HOSTAPI_VALUE(AEGP_LayerStream_SHADOW_DARKNESS, 20),
                  HOSTAPI_VALUE(AEGP_LayerStream_SHADOW_DIFFUSION, 21),
                  HOSTAPI_VALUE(AEGP_LayerStream_CASTS_SHADOWS, 28),
                  HOSTAPI_VALUE(AEGP_LayerStream_ROTATE_Z, AEGP_LayerStream_ROTATION),
                  HOSTAPI_VALUE(AEGP_LayerStream_SHADOW_COLOR, 59), HOSTAPI_VALUE(AEGP_LayerStream_END, 60),
                  HOSTAPI_VALUE(AEGP_MaskStream_END, 404), HOSTAPI_VALUE(AEGP_ObjectType_LIGHT, 1),
                  HOSTAPI_VALUE(AEGP_ObjectType_CAMERA, 2), HOSTAPI_VALUE(AEGP_LayerFlag_VIDEO_ACTIVE, 1),
                  HOSTAPI_VALUE(AEGP_LayerFlag_LAYER_IS_3D, 0x800), HOSTAPI_VALUE(AEGP_LTimeMode_CompTime, 1),
                  HOSTAPI_VALUE(AEGP_CameraType_PERSPECTIVE, 0), HOSTAPI_VALUE(AEGP_LightType_AMBIENT, 3),
                  HOSTAPI_VALUE(AEGP_DynStreamFlag_HIDDEN, 2), HOSTAPI_VALUE(AEGP_StreamType_OneD, 5),
                  HOSTAPI_VALUE(AEGP_StreamType_LAYER_ID, 9), HOSTAPI_VALUE(AEGP_Label_16, 16),
                  HOSTAPI_VALUE(AEGP_Label_NUMTYPES, 17)});
}

// The PICA boolean is the one type whose width follows the platform: int32 on Windows.
#ifdef WIN_ENV
constexpr std::size_t kSpBooleanSize = 4;
#else
constexpr std::size_t kSpBooleanSize = 1;
#endif

TEST(HostApiConstants, StorageTypesHaveTheHostsWidth) {
    // Enumerated values are stored in these typedefs, never in the enum's own width.
    expectValues({HOSTAPI_VALUE(sizeof(PF_Boolean), 1), HOSTAPI_VALUE(sizeof(PF_Precision), 2),
                  HOSTAPI_VALUE(sizeof(PF_ValueDisplayFlags), 2), HOSTAPI_VALUE(sizeof(PF_RenderOutputFlags), 2),
                  HOSTAPI_VALUE(sizeof(AEGP_LTimeMode), 2), HOSTAPI_VALUE(sizeof(AEGP_ItemType), 2),
                  HOSTAPI_VALUE(sizeof(AEGP_LabelID), 1), HOSTAPI_VALUE(sizeof(PF_PixelFormat), 4),
                  HOSTAPI_VALUE(sizeof(A_Boolean), 1), HOSTAPI_VALUE(sizeof(SPBoolean), kSpBooleanSize),
                  HOSTAPI_VALUE(sizeof(A_HandleSize), 8), HOSTAPI_VALUE(sizeof(PF_Handle), sizeof(void*)),
                  HOSTAPI_VALUE(sizeof(AEGP_FourDVal), 32)});
}

}  // namespace
