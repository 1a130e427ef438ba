#pragma once
// A scene small enough to render in a blink: a checkerboard wrapped on the surface, 10 fps for
// one second (frames 0-9), 64 x 48 pixels.

#include <string>

namespace clitest {

inline std::string smallScene(const std::string& extra_params = "", const std::string& render = "{\"time\": 0}") {
    return R"({
  "composition": {"width": 64, "height": 48, "frame_rate": 10, "duration": 1},
  "layers": [
    {"name": "Checker", "type": "footage", "video": false,
     "source": {"generate": "checkerboard", "width": 64, "height": 32, "cell": 8,
                "color": [255, 200, 0], "color2": [0, 60, 255]}},
    {"name": "Surface", "type": "solid", "source": {"width": 64, "height": 48},
     "effect": {"parameters": {"Texture": "Checker")" +
           extra_params + R"(}}}
  ],
  "render": )" + render + "\n}\n";
}

}  // namespace clitest
