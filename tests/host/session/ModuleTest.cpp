#include <gtest/gtest.h>

#include <cstdio>
#include <filesystem>
#include <memory>

#include <unistd.h>

#include "host/comp/Composition.h"
#include "host/session/Host.h"
#include "host/session/Pipl.h"

namespace {

struct Scene {
    std::shared_ptr<host::Composition> comp = std::make_shared<host::Composition>("Comp", 8, 6, 30.0, 2.0);
    int effect_layer = 0;
    int source_layer = 0;
    Scene() {
        host::Layer base;
        base.kind = host::LayerKind::Solid;
        base.source.width = 4;
        base.source.height = 3;
        base.source.color = host::Color{1, 0, 0, 1};  // opaque blue
        effect_layer = comp->add_layer(base).id;
        host::Layer red;
        red.kind = host::LayerKind::Solid;
        red.source.width = 2;
        red.source.height = 2;
        red.source.color = host::Color{1, 1, 0, 0};
        source_layer = comp->add_layer(red).id;
    }
};

class ModuleSession : public ::testing::Test {
protected:
    void SetUp() override {
        std::remove(HOST_TEST_MODULE_PATH ".pipl");
        session.set_composition(scene.comp, scene.effect_layer);
        session.load(HOST_TEST_MODULE_PATH);
    }
    Scene scene;
    host::Host session;
};

TEST_F(ModuleSession, RendersItsParamsAndLayersInAllThreeDepths) {
    session.set_param("Gain", host::ParamValue::number(25));
    session.set_param("Source", host::ParamValue::layer(scene.source_layer));
    const struct {
        short depth;
        double white;
    } depths[] = {{8, 255}, {16, 32768}, {32, 1}};
    for (const auto& d : depths) {
        host::RenderResult result = session.render({0.0, d.depth, 1, {}});
        ASSERT_EQ(result.err, PF_Err_NONE) << d.depth;
        ASSERT_TRUE(result.rendered);
        const PF_EffectWorld& out = result.output->get();
        EXPECT_EQ(out.width, 4);
        EXPECT_EQ(out.height, 3);
        EXPECT_TRUE(out.world_flags & PF_WorldFlag_WRITEABLE);
        double red = 0, green = 0, blue = 0;
        host::dispatchPixelType(result.output->format(), [&](auto tag) {
            using Pixel = typename decltype(tag)::type;
            const Pixel& p = host::worldPixel<Pixel>(out, 3, 2);
            red = p.red, green = p.green, blue = p.blue;
        });
        // 25 % gain truncated to the channel type; green and blue at full white.
        EXPECT_EQ(red, d.depth == 32 ? 0.25 : double(A_long(0.25 * d.white))) << d.depth;
        EXPECT_EQ(green, d.white) << d.depth;
        EXPECT_EQ(blue, d.white) << d.depth;
    }
    EXPECT_EQ(session.counters().live(host::Resource::ParamCheckout), 0);
    EXPECT_EQ(session.unload(), "");
}

TEST_F(ModuleSession, EmptyRequestSkipsTheRender) {
    host::RenderResult result = session.render({0.0, 8, 1, PF_LRect{0, 0, 0, 0}});
    EXPECT_EQ(result.err, PF_Err_NONE);
    EXPECT_FALSE(result.rendered);
    const std::vector<std::string> log = session.command_log();
    EXPECT_EQ(log.back(), "PF_Cmd_SMART_PRE_RENDER");
}

TEST_F(ModuleSession, CommandsArriveInTheHostsOrder) {
    session.render({0.0, 8, 1, {}});
    session.unload();
    const std::vector<std::string> expected{"PF_Cmd_GLOBAL_SETUP", "PF_Cmd_PARAMS_SETUP", "PF_Cmd_SMART_PRE_RENDER",
                                            "PF_Cmd_SMART_RENDER", "PF_Cmd_GLOBAL_SETDOWN"};
    EXPECT_EQ(session.command_log(), expected);
    EXPECT_EQ(session.leaks(), "");
}

TEST_F(ModuleSession, ValuesAreCheckedAgainstTheDefinition) {
    EXPECT_THROW(session.set_param("Gain", host::ParamValue::number(101)), host::HostError);
    EXPECT_THROW(session.set_param("Gain", host::ParamValue::number(1.5)), host::HostError);
    EXPECT_THROW(session.set_param("Missing", host::ParamValue::number(1)), host::HostError);
    EXPECT_THROW(session.set_param("Source", host::ParamValue::layer(99)), host::HostError);
}

TEST_F(ModuleSession, InjectedFailureReachesTheCaller) {
    session.faults().fail_every("checkout_output", PF_Err_OUT_OF_MEMORY);
    host::RenderResult result = session.render({0.0, 8, 1, {}});
    EXPECT_EQ(result.err, PF_Err_OUT_OF_MEMORY);
    EXPECT_FALSE(result.rendered);
    EXPECT_EQ(session.unload(), "");  // nothing leaked on the error path
}

TEST(ModuleLoading, PiplFlagMismatchWarnsAndWrongKindRefuses) {
    Scene scene;
    // A private copy of the module, so that no other test process reading or removing the
    // shared module's sidecar can race with the sidecars written here.
    namespace fs = std::filesystem;
    const fs::path folder = fs::temp_directory_path() / ("orbivane-pipl-" + std::to_string(::getpid()));
    fs::create_directories(folder);
    const std::string module_path = (folder / fs::path(HOST_TEST_MODULE_PATH).filename()).string();
    fs::copy_file(HOST_TEST_MODULE_PATH, module_path, fs::copy_options::overwrite_existing);
    const std::string sidecar = module_path + ".pipl";
    host::PiplInfo info;
    info.kind = host::fourCC("eFKT");
    info.name = "Test Module";
    info.entry_point = "EntryPointFunc";
    info.global_out_flags = 0;  // the code says DEEP_COLOR_AWARE
    auto write = [&](const host::PiplInfo& i) {
        const std::vector<std::uint8_t> bytes = host::buildPipl(i);
        FILE* f = std::fopen(sidecar.c_str(), "wb");
        ASSERT_NE(f, nullptr);
        std::fwrite(bytes.data(), 1, bytes.size(), f);
        std::fclose(f);
    };
    write(info);
    {
        host::Host session;
        session.set_composition(scene.comp, scene.effect_layer);
        session.load(module_path);
        bool warned = false;
        for (const std::string& m : session.messages())
            warned |= m.find("Code flags: 0x02000000 / PiPL flags: 0x00000000") != std::string::npos;
        EXPECT_TRUE(warned);
        EXPECT_EQ(session.effect_name(), "Test Module");
    }
    info.entry_point = "NoSuchEntry";
    write(info);
    {
        host::Host session;
        try {
            session.load(module_path);
            ADD_FAILURE() << "loaded without its entry point";
        } catch (const host::HostError& e) {
            EXPECT_NE(std::string(e.what()).find("Couldn't find main entry point"), std::string::npos) << e.what();
        }
    }
    info.kind = host::fourCC("AEgx");
    info.entry_point = "EntryPointFunc";
    write(info);
    {
        host::Host session;
        EXPECT_THROW(session.load(module_path), host::HostError);
    }
    fs::remove_all(folder);
}

}  // namespace
