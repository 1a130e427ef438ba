#include "e2e/SceneFiles.h"

#include <type_traits>

#include "host/pixels/PixelWorld.h"

namespace e2e {

std::unique_ptr<host::Session> openScene(const std::string& name, host::HostOptions options)
{
    return std::make_unique<host::Session>(std::string(ORBIVANE_SOURCE_DIR) + "/tests/e2e/scenes/" + name,
                                           ORBIVANE_MODULE_PATH, options);
}

host::RenderResult renderScene(host::Session& session, short bit_depth, int downsample)
{
    return session.render(session.scene().render.time, bit_depth, downsample);
}

PF_PixelFloat pixelAt(const host::RenderResult& result, int x, int y)
{
    PF_PixelFloat out{0, 0, 0, 0};
    const PF_EffectWorld& world = result.output->get();
    host::dispatchPixelType(result.output->format(), [&](auto tag) {
        using Pixel = typename decltype(tag)::type;
        const Pixel& p = host::worldPixel<Pixel>(world, x, y);
        const float white = std::is_same<Pixel, PF_Pixel>::value    ? 255.0f
                            : std::is_same<Pixel, PF_Pixel16>::value ? 32768.0f
                                                                     : 1.0f;
        out = PF_PixelFloat{p.alpha / white, p.red / white, p.green / white, p.blue / white};
    });
    return out;
}

}  // namespace e2e
