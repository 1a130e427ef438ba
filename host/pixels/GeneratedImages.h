#pragma once
// Synthetic layer sources for tests, demos and scenes without image files.

#include "host/pixels/Image.h"

namespace host {

// Every pixel `colour`.
Image solidImage(int width, int height, RGBA colour);

// Square cells of `cell` pixels alternating between two colours; the top-left cell is `first`.
Image checkerboardImage(int width, int height, int cell, RGBA first, RGBA second);

// Red ramps with u = (x + 1/2) / width left to right, green with v = (y + 1/2) / height top to
// bottom, so every pixel tells where it came from. With `cells` > 0 the image is divided into
// cells × cells cells: blue tells the cells apart ((column + row · cells) / (cells² - 1)) and
// the first pixel column and row of every cell, and the last column and row of the image,
// are drawn in `line`. Opaque.
struct UVGridOptions {
    int cells = 8;
    RGBA line{1.0f, 1.0f, 1.0f, 1.0f};
};
Image uvGridImage(int width, int height, const UVGridOptions& options = {});

enum class GradientDirection { Horizontal, Vertical };

// Straight linear blend from `from` (first column or row) to `to` (last column or row).
Image gradientImage(int width, int height, RGBA from, RGBA to, GradientDirection direction);

}  // namespace host
