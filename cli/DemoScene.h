#pragma once
// The composition rendered when no scene file is given: a generated grid texture wrapped on
// the surface, partly opened, lit by a spot light casting self shadows, seen by a camera.

#include "host/comp/Scene.h"

namespace cli {

// The demo as scene-file text (the same format as examples/*.json).
const char* demoSceneText();

host::Scene demoScene();

}  // namespace cli
