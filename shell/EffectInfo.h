#pragma once

// What the effect tells the host about itself: identity, version and behaviour flags. The
// resource description written beside the module is generated from these same values, so the
// flags reported at global set-up and those in the resource cannot disagree.

#include "AEConfig.h"
#include "AE_Effect.h"

namespace effect_info {

constexpr const char* kName = "Orbivane";
constexpr const char* kMatchName = "ORBV Orbivane";
constexpr const char* kCategory = "Orbivane";
constexpr const char* kEntryPoint = "EntryPointFunc";
constexpr const char* kDescription =
    "Wraps a texture layer onto a cylinder or hyperboloid in 3D and ray-traces it.";

constexpr int kMajorVersion = 1;
constexpr int kMinorVersion = 1;
constexpr int kBugVersion = 6;
constexpr int kStage = PF_Stage_RELEASE;
constexpr int kBuild = 1;

constexpr A_u_long kVersion = PF_VERSION(kMajorVersion, kMinorVersion, kBugVersion, kStage, kBuild);

// 16-bit worlds accepted; the resource file stays open.
constexpr PF_OutFlags kOutFlags = PF_OutFlag_DEEP_COLOR_AWARE | PF_OutFlag_KEEP_RESOURCE_OPEN;
// Frames may render on several threads at once, in float, through smart rendering, and depend
// on the composition's camera and lights.
constexpr PF_OutFlags2 kOutFlags2 = PF_OutFlag2_SUPPORTS_THREADED_RENDERING |
                                    PF_OutFlag2_FLOAT_COLOR_AWARE | PF_OutFlag2_SUPPORTS_SMART_RENDER |
                                    PF_OutFlag2_I_USE_3D_LIGHTS | PF_OutFlag2_I_USE_3D_CAMERA;

// The host API the effect is written against (13.29).
constexpr int kSpecVersionMajor = 13;
constexpr int kSpecVersionMinor = 29;

static_assert(kVersion == 0x8B601, "version word of 1.1.6 release, build 1");
static_assert(kOutFlags == 0x02000001, "global out-flags");
static_assert(kOutFlags2 == 0x08001406, "global out-flags 2");

}  // namespace effect_info
