// The AEGP suites as the effect sees them: registration, layer queries, names, stream values
// in both time modes, expressions, reference counting, strict render threads and faults.
#include "host/api/AegpSuites.h"

#include "host/comp/Composition.h"
#include "host/session/Host.h"
#include "host/comp/ParamStore.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <sstream>
#include <string>
#include <thread>

namespace host {
namespace {

Layer layer(LayerKind kind, const char* name, int width, int height) {
    Layer l;
    l.kind = kind;
    l.name = name;
    l.source.width = width;
    l.source.height = height;
    return l;
}

template <class Suite>
const Suite* acquire(Host& host, const char* name, int version) {
    const void* suite = nullptr;
    EXPECT_EQ(host.pica_basic()->AcquireSuite(name, version, &suite), 0) << name << " " << version;
    return static_cast<const Suite*>(suite);
}

class AegpSuitesTest : public ::testing::Test {
public:
    explicit AegpSuitesTest(HostOptions options = HostOptions()) : host(options), suites(host.aegp()) {
        auto c = std::make_shared<Composition>("Main", 640, 360, 25, 10);
        Layer surface = layer(LayerKind::Solid, "Surface", 640, 360);
        surface.start_time = 1.0;
        surface_id = c->add_layer(surface).id;
        Layer footage = layer(LayerKind::Footage, "", 64, 32);
        footage.source.name = "tex.png";
        footage.is_3d = true;
        footage.transform.position.add_key(0.0, Vec3{10, 20, 30});
        footage.transform.position.add_key(2.0, Vec3{30, 20, 30});
        footage_id = c->add_layer(footage).id;
        Layer light = layer(LayerKind::Light, "Key", 0, 0);
        light.start_time = light.in_point = 1.0;
        light.light.intensity.add_key(0.0, 0.0);
        light.light.intensity.add_key(2.0, 100.0);
        light.light.color = Color{1, 0.5, 0.25, 1};
        light_id = c->add_layer(light).id;
        comp = c;
        host.set_composition(c, surface_id);
        add_params();
        layers = acquire<AEGP_LayerSuite6>(host, kAEGPLayerSuite, kAEGPLayerSuiteVersion6);
        streams = acquire<AEGP_StreamSuite4>(host, kAEGPStreamSuite, kAEGPStreamSuiteVersion4);
        memory = acquire<AEGP_MemorySuite1>(host, kAEGPMemorySuite, kAEGPMemorySuiteVersion1);
        iface = acquire<AEGP_PFInterfaceSuite1>(host, kAEGPPFInterfaceSuite, kAEGPPFInterfaceSuiteVersion1);
        effects = acquire<AEGP_EffectSuite3>(host, kAEGPEffectSuite, kAEGPEffectSuiteVersion3);
        scope = host.render_scope();
    }

    // Every test gives back every reference it takes.
    void TearDown() override {
        scope.reset();
        EXPECT_EQ(reference_leaks(), "");
    }

    // Parameter 1: a float slider "Amount" (0..1000, value 5), parameter 2: a layer param.
    void add_params() {
        std::vector<std::string> warnings;
        host.params().begin_setup();
        PF_ParamDef slider{};
        slider.param_type = PF_Param_FLOAT_SLIDER;
        std::strcpy(slider.PF_DEF_NAME, "Amount");
        slider.u.fs_d.valid_max = slider.u.fs_d.slider_max = 1000;
        slider.u.fs_d.value = slider.u.fs_d.dephault = 5;
        slider.uu.id = 1;
        ASSERT_EQ(host.params().add(-1, slider, warnings), PF_Err_NONE);
        PF_ParamDef layer{};
        layer.param_type = PF_Param_LAYER;
        std::strcpy(layer.PF_DEF_NAME, "Texture");
        layer.uu.id = 2;
        ASSERT_EQ(host.params().add(-1, layer, warnings), PF_Err_NONE);
        host.set_param(2, ParamValue::layer(footage_id));
    }

    AEGP_LayerH handle(int id) { return suites.layer_handle(id); }

    // The leak report without the suites, which the fixture holds until the host goes.
    std::string reference_leaks() const {
        std::istringstream all(host.leaks());
        std::string kept;
        for (std::string line; std::getline(all, line);)
            if (line.find("suite (") == std::string::npos) kept += line + "\n";
        return kept;
    }

    // One number of a stream at `seconds`, through a value given back at once.
    double value_at(AEGP_StreamRefH s, AEGP_LTimeMode mode, double seconds, bool pre = false) {
        A_Time time{static_cast<A_long>(std::lround(seconds * 100)), 100};
        AEGP_StreamValue2 v{};
        EXPECT_EQ(streams->AEGP_GetNewStreamValue(0, s, mode, &time, pre, &v), A_Err_NONE);
        EXPECT_EQ(streams->AEGP_DisposeStreamValue(&v), A_Err_NONE);
        return v.val.one_d;
    }

    AEGP_EffectRefH new_effect() {
        AEGP_EffectRefH e = nullptr;
        EXPECT_EQ(iface->AEGP_GetNewEffectForEffect(0, scope->effect_ref(), &e), A_Err_NONE);
        return e;
    }

    Host host;
    AegpSuites& suites;
    std::shared_ptr<Composition> comp;
    int surface_id = 0, footage_id = 0, light_id = 0;
    const AEGP_LayerSuite6* layers = nullptr;
    const AEGP_StreamSuite4* streams = nullptr;
    const AEGP_MemorySuite1* memory = nullptr;
    const AEGP_PFInterfaceSuite1* iface = nullptr;
    const AEGP_EffectSuite3* effects = nullptr;
    std::unique_ptr<RenderScope> scope;
};

TEST_F(AegpSuitesTest, LayerQueriesAnswerFromTheComposition) {
    AEGP_LayerH effect_layer = nullptr;
    ASSERT_EQ(iface->AEGP_GetEffectLayer(scope->effect_ref(), &effect_layer), A_Err_NONE);
    EXPECT_EQ(suites.layer_id(effect_layer), surface_id);
    AEGP_CompH c = nullptr;
    ASSERT_EQ(layers->AEGP_GetLayerParentComp(effect_layer, &c), A_Err_NONE);
    A_long n = 0;
    ASSERT_EQ(layers->AEGP_GetCompNumLayers(c, &n), A_Err_NONE);
    EXPECT_EQ(n, 3);
    AEGP_LayerH third = nullptr;
    ASSERT_EQ(layers->AEGP_GetCompLayerByIndex(c, 2, &third), A_Err_NONE);
    AEGP_ObjectType type = -5;
    ASSERT_EQ(layers->AEGP_GetLayerObjectType(third, &type), A_Err_NONE);
    EXPECT_EQ(type, AEGP_ObjectType_LIGHT);
    AEGP_LayerIDVal id = 0;
    ASSERT_EQ(layers->AEGP_GetLayerID(third, &id), A_Err_NONE);
    AEGP_LayerH again = nullptr;
    ASSERT_EQ(layers->AEGP_GetLayerFromLayerID(c, id, &again), A_Err_NONE);
    EXPECT_EQ(again, third);
    AEGP_LayerFlags flags = 0;
    ASSERT_EQ(layers->AEGP_GetLayerFlags(handle(footage_id), &flags), A_Err_NONE);
    EXPECT_EQ(flags & (AEGP_LayerFlag_VIDEO_ACTIVE | AEGP_LayerFlag_LAYER_IS_3D),
              AEGP_LayerFlag_VIDEO_ACTIVE | AEGP_LayerFlag_LAYER_IS_3D);
    EXPECT_EQ(layers->AEGP_GetCompLayerByIndex(c, 3, &again), A_Err_PARAMETER);
    int bogus = 0;
    EXPECT_EQ(layers->AEGP_GetLayerFlags(reinterpret_cast<AEGP_LayerH>(&bogus), &flags), A_Err_PARAMETER);
}

TEST_F(AegpSuitesTest, LayerStreamValuesHonourTheTimeMode) {
    AEGP_StreamRefH s = nullptr;
    ASSERT_EQ(streams->AEGP_GetNewLayerStream(0, handle(light_id), AEGP_LayerStream_INTENSITY, &s), A_Err_NONE);
    // Keys at comp 0 s (0) and 2 s (100); the layer's time 0 is comp time 1.
    EXPECT_DOUBLE_EQ(value_at(s, AEGP_LTimeMode_CompTime, 1.0), 50.0);
    EXPECT_DOUBLE_EQ(value_at(s, AEGP_LTimeMode_LayerTime, 0.0), 50.0);
    EXPECT_DOUBLE_EQ(value_at(s, AEGP_LTimeMode_LayerTime, 0.5), 75.0);
    EXPECT_EQ(streams->AEGP_DisposeStream(s), A_Err_NONE);

    AEGP_StreamVal2 color{};
    AEGP_StreamType type = AEGP_StreamType_NO_DATA;
    A_Time zero{0, 1};
    ASSERT_EQ(streams->AEGP_GetLayerStreamValue(handle(light_id), AEGP_LayerStream_COLOR,
                                                AEGP_LTimeMode_CompTime, &zero, false, &color, &type),
              A_Err_NONE);
    EXPECT_EQ(type, AEGP_StreamType_COLOR);
    EXPECT_DOUBLE_EQ(color.color.redF, 0.5);
    // Camera streams are not legal on a light.
    EXPECT_EQ(streams->AEGP_GetNewLayerStream(0, handle(light_id), AEGP_LayerStream_ZOOM, &s), A_Err_PARAMETER);
}

// Effect streams give the parameter's value (a layer parameter's is the layer id); an
// expression is stored verbatim and applied unless asked for the pre-expression value or
// unsupported.
TEST_F(AegpSuitesTest, EffectStreamsGiveValuesWithTheirExpressionApplied) {
    AEGP_EffectRefH e = new_effect();
    AEGP_StreamRefH layer_stream = nullptr, out_of_range = nullptr, s = nullptr;
    ASSERT_EQ(streams->AEGP_GetNewEffectStreamByIndex(0, e, 2, &layer_stream), A_Err_NONE);
    A_Time zero{0, 1};
    AEGP_StreamValue2 v{};
    ASSERT_EQ(streams->AEGP_GetNewStreamValue(0, layer_stream, AEGP_LTimeMode_CompTime, &zero, false, &v), A_Err_NONE);
    EXPECT_EQ(v.val.layer_id, footage_id);
    EXPECT_EQ(v.streamH, layer_stream);
    streams->AEGP_DisposeStreamValue(&v);
    streams->AEGP_DisposeStream(layer_stream);
    EXPECT_EQ(streams->AEGP_GetNewEffectStreamByIndex(0, e, 3, &out_of_range), A_Err_PARAMETER);

    ASSERT_EQ(streams->AEGP_GetNewEffectStreamByIndex(0, e, 1, &s), A_Err_NONE);
    const char* text = "try{length(thisComp.layer(\"tex.png\").toWorld([1,1,1]));}catch(e){value;}\n";
    ASSERT_EQ(streams->AEGP_SetExpression(0, s, text), A_Err_NONE);
    ASSERT_NE(suites.effect_expression(1), nullptr);
    EXPECT_EQ(*suites.effect_expression(1), text);
    // Footage at (10,20,30) at 0 s, (20,20,30) at 1 s, with a zero anchor: (1,1,1) lands on
    // (11,21,31), then (21,21,31).
    EXPECT_NEAR(value_at(s, AEGP_LTimeMode_CompTime, 0), std::sqrt(11.0 * 11 + 21.0 * 21 + 31.0 * 31), 1e-9);
    EXPECT_NEAR(value_at(s, AEGP_LTimeMode_CompTime, 1), std::sqrt(21.0 * 21 + 21.0 * 21 + 31.0 * 31), 1e-9);
    EXPECT_DOUBLE_EQ(value_at(s, AEGP_LTimeMode_CompTime, 0, true), 5.0);
    AEGP_MemHandle got = nullptr;
    ASSERT_EQ(streams->AEGP_GetExpression(0, s, &got), A_Err_NONE);
    void* p = nullptr;
    memory->AEGP_LockMemHandle(got, &p);
    EXPECT_STREQ(static_cast<const char*>(p), text);
    memory->AEGP_UnlockMemHandle(got);
    memory->AEGP_FreeMemHandle(got);
    // Renaming the layer breaks the lookup: the catch branch gives the slider's own value.
    comp->find_by_id(footage_id)->name = "Other";
    EXPECT_DOUBLE_EQ(value_at(s, AEGP_LTimeMode_CompTime, 0), 5.0);
    // Text the host cannot evaluate keeps the value and is reported.
    ASSERT_EQ(streams->AEGP_SetExpression(0, s, "wiggle(1, 2)"), A_Err_NONE);
    EXPECT_DOUBLE_EQ(value_at(s, AEGP_LTimeMode_CompTime, 0), 5.0);
    EXPECT_NE(host.messages().back().find("wiggle(1, 2)"), std::string::npos) << host.messages().back();
    ASSERT_EQ(streams->AEGP_SetExpression(0, s, ""), A_Err_NONE);
    EXPECT_EQ(suites.effect_expression(1), nullptr);
    streams->AEGP_DisposeStream(s);
    effects->AEGP_DisposeEffect(e);
}

TEST_F(AegpSuitesTest, HiddenFlagIsSettableButDisabledIsNot) {
    auto dyn = acquire<AEGP_DynamicStreamSuite4>(host, kAEGPDynamicStreamSuite, kAEGPDynamicStreamSuiteVersion4);
    AEGP_EffectRefH e = new_effect();
    AEGP_StreamRefH s = nullptr;
    ASSERT_EQ(streams->AEGP_GetNewEffectStreamByIndex(0, e, 1, &s), A_Err_NONE);
    EXPECT_EQ(dyn->AEGP_SetDynamicStreamFlag(s, AEGP_DynStreamFlag_HIDDEN, false, true), A_Err_NONE);
    EXPECT_EQ(suites.effect_stream_flags(1), static_cast<AEGP_DynStreamFlags>(AEGP_DynStreamFlag_HIDDEN));
    EXPECT_NE(dyn->AEGP_SetDynamicStreamFlag(s, AEGP_DynStreamFlag_DISABLED, false, true), A_Err_NONE);
    EXPECT_EQ(dyn->AEGP_SetDynamicStreamFlag(s, AEGP_DynStreamFlag_HIDDEN, false, false), A_Err_NONE);
    AEGP_DynStreamFlags flags = 99;
    ASSERT_EQ(dyn->AEGP_GetDynamicStreamFlags(s, &flags), A_Err_NONE);
    EXPECT_EQ(flags, 0u);
    streams->AEGP_DisposeStream(s);
    effects->AEGP_DisposeEffect(e);
}

TEST_F(AegpSuitesTest, EveryKindOfReferenceLeftUndisposedIsReported) {
    AEGP_EffectRefH e = new_effect();
    AEGP_StreamRefH s = nullptr;
    ASSERT_EQ(streams->AEGP_GetNewEffectStreamByIndex(0, e, 1, &s), A_Err_NONE);
    AEGP_StreamValue2 v{};
    A_Time zero{0, 1};
    ASSERT_EQ(streams->AEGP_GetNewStreamValue(0, s, AEGP_LTimeMode_CompTime, &zero, true, &v), A_Err_NONE);
    AEGP_MemHandle name = nullptr;
    ASSERT_EQ(layers->AEGP_GetLayerName(0, handle(light_id), &name, nullptr), A_Err_NONE);
    for (Resource kind : {Resource::AegpEffect, Resource::AegpStream, Resource::AegpStreamValue,
                          Resource::AegpMemHandle}) {
        EXPECT_EQ(host.counters().live(kind), 1) << resourceName(kind);
    }
    EXPECT_NE(reference_leaks(), "");
    streams->AEGP_DisposeStreamValue(&v);
    streams->AEGP_DisposeStream(s);
    effects->AEGP_DisposeEffect(e);
    memory->AEGP_FreeMemHandle(name);
    // Giving back twice is refused.
    EXPECT_EQ(effects->AEGP_DisposeEffect(e), A_Err_PARAMETER);
    EXPECT_EQ(memory->AEGP_FreeMemHandle(name), A_Err_PARAMETER);
}

TEST_F(AegpSuitesTest, TimesAndCamerasSeenFromTheEffect) {
    A_Time t{};
    ASSERT_EQ(layers->AEGP_GetLayerInPoint(handle(light_id), AEGP_LTimeMode_CompTime, &t), A_Err_NONE);
    EXPECT_DOUBLE_EQ(static_cast<double>(t.value) / t.scale, 1.0);
    ASSERT_EQ(layers->AEGP_GetLayerInPoint(handle(light_id), AEGP_LTimeMode_LayerTime, &t), A_Err_NONE);
    EXPECT_DOUBLE_EQ(static_cast<double>(t.value) / t.scale, 0.0);  // starts at its own time 0
    ASSERT_EQ(layers->AEGP_GetLayerDuration(handle(light_id), AEGP_LTimeMode_CompTime, &t), A_Err_NONE);
    EXPECT_DOUBLE_EQ(static_cast<double>(t.value) / t.scale, 9.0);
    ASSERT_EQ(iface->AEGP_ConvertEffectToCompTime(scope->effect_ref(), 50, 100, &t), A_Err_NONE);
    EXPECT_EQ(t.scale, 100u);
    EXPECT_EQ(t.value, 150);  // the effect layer starts at comp time 1 s
    AEGP_LayerH cam = reinterpret_cast<AEGP_LayerH>(1);
    ASSERT_EQ(iface->AEGP_GetEffectCamera(scope->effect_ref(), &t, &cam), A_Err_NONE);
    EXPECT_EQ(cam, nullptr);
    Layer camera;
    camera.kind = LayerKind::Camera;
    camera.camera.zoom = Animated<double>(800);
    int cam_id = comp->add_layer(camera).id;
    ASSERT_EQ(iface->AEGP_GetEffectCamera(scope->effect_ref(), &t, &cam), A_Err_NONE);
    EXPECT_EQ(suites.layer_id(cam), cam_id);
    AEGP_StreamVal2 zoom{};
    ASSERT_EQ(streams->AEGP_GetLayerStreamValue(cam, AEGP_LayerStream_ZOOM, AEGP_LTimeMode_CompTime, &t, false,
                                                &zoom, nullptr), A_Err_NONE);
    EXPECT_DOUBLE_EQ(zoom.one_d, 800);
    auto cams = acquire<AEGP_CameraSuite2>(host, kAEGPCameraSuite, kAEGPCameraSuiteVersion2);
    A_FpLong d = 0;
    ASSERT_EQ(cams->AEGP_GetDefaultCameraDistanceToImagePlane(suites.comp_handle(), &d), A_Err_NONE);
    EXPECT_NEAR(d, 640 * 50.0 / 36.0, 1e-9);
    AEGP_CameraType type = 7;
    ASSERT_EQ(cams->AEGP_GetCameraType(handle(light_id), &type), A_Err_NONE);
    EXPECT_EQ(type, static_cast<AEGP_CameraType>(AEGP_CameraType_NONE));
    EXPECT_EQ(iface->AEGP_GetEffectLayer(nullptr, &cam), A_Err_PARAMETER);
}

TEST_F(AegpSuitesTest, FaultPointsAndUnimplementedMembers) {
    host.faults().fail_every("AEGP_GetLayerFlags", A_Err_ALLOC);
    AEGP_LayerFlags flags = 0;
    EXPECT_EQ(layers->AEGP_GetLayerFlags(handle(light_id), &flags), A_Err_ALLOC);
    AEGP_LayerH active = nullptr;
    EXPECT_EQ(layers->AEGP_GetActiveLayer(&active), A_Err_GENERIC);
    EXPECT_NE(host.messages().back().find("AEGP_GetActiveLayer"), std::string::npos) << host.messages().back();
}

TEST_F(AegpSuitesTest, ToWorldMatrixIsRowVectorWithNonSquareSourcePixelsCorrected) {
    A_Time zero{0, 1};
    A_Matrix4 m{};
    ASSERT_EQ(layers->AEGP_GetLayerToWorldXform(handle(footage_id), &zero, &m), A_Err_NONE);
    EXPECT_DOUBLE_EQ(m.mat[3][0], 10);  // translation in the bottom row
    EXPECT_DOUBLE_EQ(m.mat[3][2], 30);
    EXPECT_DOUBLE_EQ(m.mat[0][0], 1);
    // Source pixels twice as wide as the composition's stretch the layer's x axis.
    comp->find_by_id(footage_id)->source.par_num = 2;
    ASSERT_EQ(layers->AEGP_GetLayerToWorldXform(handle(footage_id), &zero, &m), A_Err_NONE);
    EXPECT_DOUBLE_EQ(m.mat[0][0], 2);
    EXPECT_DOUBLE_EQ(m.mat[1][1], 1);
    EXPECT_DOUBLE_EQ(m.mat[3][0], 10);
    A_Time bad{0, 0};
    EXPECT_EQ(layers->AEGP_GetLayerToWorldXform(handle(footage_id), &bad, &m), A_Err_PARAMETER);
}

class StrictRenderThread : public AegpSuitesTest {
protected:
    static HostOptions strict() {
        HostOptions o;
        o.strict_render_thread = true;
        return o;
    }
    StrictRenderThread() : AegpSuitesTest(strict()) {}
    A_Err new_stream() {
        AEGP_StreamRefH s = nullptr;
        const A_Err err = streams->AEGP_GetNewLayerStream(0, handle(light_id), AEGP_LayerStream_INTENSITY, &s);
        if (s) streams->AEGP_DisposeStream(s);
        return err;
    }
};

// Calls that change the project fail on the thread running the smart render, and only there
// and only while it runs; reading values without new references stays allowed.
TEST_F(StrictRenderThread, ProjectCallsFailOnTheRenderingThreadOnly) {
    EXPECT_EQ(new_stream(), A_Err_WRONG_THREAD);
    AEGP_EffectRefH e = new_effect();
    EXPECT_EQ(effects->AEGP_DisposeEffect(e), A_Err_WRONG_THREAD);
    AEGP_StreamVal2 v{};
    A_Time zero{0, 1};
    EXPECT_EQ(streams->AEGP_GetLayerStreamValue(handle(light_id), AEGP_LayerStream_INTENSITY,
                                                AEGP_LTimeMode_CompTime, &zero, false, &v, nullptr),
              A_Err_NONE);
    A_Err from_other_thread = A_Err_GENERIC;
    std::thread([&] { from_other_thread = new_stream(); }).join();
    EXPECT_EQ(from_other_thread, A_Err_NONE);
    scope.reset();
    EXPECT_EQ(new_stream(), A_Err_NONE);
    EXPECT_EQ(effects->AEGP_DisposeEffect(e), A_Err_NONE);
}

}  // namespace
}  // namespace host
