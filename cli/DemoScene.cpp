#include "cli/DemoScene.h"

namespace cli {

// A half-opened, slightly pinched grid seen from above and to the right: the gap faces the
// camera, so the key light coming from the upper left throws the front edge's shadow across
// the inner wall; a cool point light from behind and below tints what the key misses.
const char* demoSceneText() {
    return R"json({
  "composition": {"name": "Orbivane Demo", "width": 960, "height": 540, "frame_rate": 25,
                  "duration": 4, "background": [18, 22, 34]},
  "layers": [
    {"name": "Camera", "type": "camera",
     "transform": {"position": [740, -140, -1500], "point_of_interest": [480, 270, 0]}},
    {"name": "Key", "type": "light",
     "light": {"type": "spot", "intensity": 130, "cone_angle": 80, "cone_feather": 50,
               "casts_shadows": true, "shadow_darkness": 85, "color": [255, 236, 210]},
     "transform": {"position": [120, -200, -700], "point_of_interest": [480, 270, 0]}},
    {"name": "Rim", "type": "light",
     "light": {"type": "point", "intensity": 50, "color": [120, 160, 255]},
     "transform": {"position": [900, 500, 300]}},
    {"name": "Fill", "type": "light", "light": {"type": "ambient", "intensity": 30, "color": [170, 190, 255]}},
    {"name": "Grid", "type": "footage", "video": false,
     "source": {"generate": "uv_grid", "width": 1024, "height": 512, "cell": 64}},
    {"name": "Surface", "type": "solid", "source": {"width": 960, "height": 540, "color": [0, 0, 0]},
     "effect": {"parameters": {
       "Texture": "Grid",
       "Position XY": [480, 270],
       "Rotation Z": 20,
       "Radius Scale": 80,
       "Height Scale": 66,
       "Hyperboloid": 0.35,
       "Open Parameter": 0.45,
       "Self Shadow": true,
       "Emit": 10,
       "Ambient": 100,
       "Diffuse": 90,
       "Specular": 50,
       "Roughness": 0.08
     }}}
  ],
  "render": {"time": 0}
})json";
}

host::Scene demoScene() { return host::parse_scene(demoSceneText(), "built-in demo", ""); }

}  // namespace cli
