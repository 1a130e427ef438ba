// The host driving a module: command order, skipped renders, value checks, faults, and the
// PiPL resource beside the module.
#include <gtest/gtest.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <memory>

#include "host/comp/Composition.h"
#include "host/session/Host.h"
#include "host/session/Pipl.h"
#include "support/ErrorText.h"
#include "support/TempFolder.h"

namespace {

// An 8x6 composition with a 4x3 blue solid carrying the effect.
struct Scene {
    std::shared_ptr<host::Composition> comp = std::make_shared<host::Composition>("Comp", 8, 6, 30.0, 2.0);
    int effect_layer = [this] {
        host::Layer layer;
        layer.source.width = 4;
        layer.source.height = 3;
        layer.source.color = host::Color{1, 0, 0, 1};
        return comp->add_layer(layer).id;
    }();
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

TEST_F(ModuleSession, CommandsArriveInTheHostsOrderAndAnEmptyRequestSkipsTheRender) {
    host::RenderResult empty = session.render({0.0, 8, 1, PF_LRect{0, 0, 0, 0}});
    EXPECT_EQ(empty.err, PF_Err_NONE);
    EXPECT_FALSE(empty.rendered);
    EXPECT_EQ(session.command_log().back(), "PF_Cmd_SMART_PRE_RENDER");
    EXPECT_TRUE(session.render({0.0, 8, 1, {}}).rendered);
    session.unload();
    const std::vector<std::string> expected{"PF_Cmd_GLOBAL_SETUP",     "PF_Cmd_PARAMS_SETUP",
                                            "PF_Cmd_SMART_PRE_RENDER", "PF_Cmd_SMART_PRE_RENDER",
                                            "PF_Cmd_SMART_RENDER",     "PF_Cmd_GLOBAL_SETDOWN"};
    EXPECT_EQ(session.command_log(), expected);
    EXPECT_EQ(session.leaks(), "");
}

TEST_F(ModuleSession, ValuesAreCheckedAgainstTheDefinition) {
    EXPECT_THROW(session.set_param("Gain", host::ParamValue::number(101)), host::HostError);
    EXPECT_THROW(session.set_param("Gain", host::ParamValue::number(1.5)), host::HostError);
    EXPECT_THROW(session.set_param("Missing", host::ParamValue::number(1)), host::HostError);
    EXPECT_THROW(session.set_param("Source", host::ParamValue::layer(99)), host::HostError);
}

// A PiPL whose flags differ from the code's is warned about; one without the entry point, or of
// another kind, refuses the module.
TEST(ModuleLoading, PiplFlagMismatchWarnsAndWrongKindRefuses) {
    Scene scene;
    // A private copy of the module, so that no other test process reading or removing the
    // shared module's sidecar can race with the sidecars written here.
    const test_support::TempFolder folder;
    const std::string module_path = (folder / std::filesystem::path(HOST_TEST_MODULE_PATH).filename().string()).string();
    std::filesystem::copy_file(HOST_TEST_MODULE_PATH, module_path);
    host::PiplInfo info;
    info.kind = host::fourCC("eFKT");
    info.name = "Test Module";
    info.entry_point = "EntryPointFunc";
    info.global_out_flags = 0;  // the code says DEEP_COLOR_AWARE
    auto load = [&](host::Host& session) {
        const std::vector<std::uint8_t> bytes = host::buildPipl(info);
        std::ofstream(module_path + ".pipl", std::ios::binary).write(reinterpret_cast<const char*>(bytes.data()),
                                                                    std::streamsize(bytes.size()));
        session.load(module_path);
    };
    {
        host::Host session;
        session.set_composition(scene.comp, scene.effect_layer);
        load(session);
        bool warned = false;
        for (const std::string& m : session.messages())
            warned |= m.find("Code flags: 0x02000000 / PiPL flags: 0x00000000") != std::string::npos;
        EXPECT_TRUE(warned);
        EXPECT_EQ(session.effect_name(), "Test Module");
    }
    info.entry_point = "NoSuchEntry";
    const std::string refusal = test_support::errorOf<host::HostError>([&] {
        host::Host session;
        load(session);
    });
    EXPECT_NE(refusal.find("Couldn't find main entry point"), std::string::npos) << refusal;
    info.kind = host::fourCC("AEgx");
    info.entry_point = "EntryPointFunc";
    host::Host other;
    EXPECT_THROW(load(other), host::HostError);
}

}  // namespace
