#include "cli/DemoScene.h"

namespace cli {

const char* demoSceneText() {
    return R"json({
  "composition": {"name": "Orbivane Demo", "width": 960, "height": 540, "frame_rate": 25,
                  "duration": 4, "background": [18, 22, 34]},
  "layers": [
    {"name": "Camera", "type": "camera",
     "transform": {"position": [760, 120, -1150], "point_of_interest": [480, 270, 0]}},
    {"name": "Key", "type": "light",
     "light": {"type": "spot", "intensity": 120, "cone_angle": 80, "cone_feather": 60,
               "casts_shadows": true, "shadow_darkness": 80, "color": [255, 244, 228]},
     "transform": {"position": [160, -80, -700], "point_of_interest": [480, 270, 0]}},
    {"name": "Fill", "type": "light", "light": {"type": "ambient", "intensity": 35, "color": [170, 190, 255]}},
    {"name": "Grid", "type": "footage", "video": false,
     "source": {"generate": "uv_grid", "width": 1024, "height": 512, "cell": 64}},
    {"name": "Surface", "type": "solid", "source": {"width": 960, "height": 540, "color": [0, 0, 0]},
     "effect": {"parameters": {
       "Texture": "Grid",
       "Position XY": [520, 250],
       "Rotation X": -65,
       "Rotation Z": -180,
       "Radius Scale": 50,
       "Height Scale": 50,
       "Hyperboloid": 0.35,
       "Open Parameter": 0.5,
       "Self Shadow": true,
       "Emit": 20,
       "Ambient": 100,
       "Diffuse": 100,
       "Specular": 80,
       "Roughness": 0.08
     }}}
  ],
  "render": {"time": 0}
})json";
}

host::Scene demoScene() { return host::parse_scene(demoSceneText(), "built-in demo", ""); }

}  // namespace cli
