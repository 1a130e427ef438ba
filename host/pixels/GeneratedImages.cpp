#include "host/pixels/GeneratedImages.h"

namespace host {

namespace {

// Written as a·(1 - t) + b·t so both ends are reproduced exactly.
RGBA lerp(const RGBA& a, const RGBA& b, float t) {
    const float s = 1.0f - t;
    return RGBA{a.r * s + b.r * t, a.g * s + b.g * t, a.b * s + b.b * t, a.a * s + b.a * t};
}

// The cell of pixel `p` along an axis of `extent` pixels split into `cells`.
int cellOf(int p, int extent, int cells) {
    return static_cast<int>(static_cast<long long>(p) * cells / extent);
}

bool onGridLine(int p, int extent, int cells) {
    return p == 0 || p == extent - 1 || cellOf(p, extent, cells) != cellOf(p - 1, extent, cells);
}

}  // namespace

Image solidImage(int width, int height, RGBA colour) { return Image(width, height, colour); }

Image checkerboardImage(int width, int height, int cell, RGBA first, RGBA second) {
    Image image(width, height);
    if (cell < 1) cell = 1;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x) image.at(x, y) = ((x / cell + y / cell) % 2 == 0) ? first : second;
    return image;
}

Image uvGridImage(int width, int height, const UVGridOptions& options) {
    Image image(width, height);
    const int cells = options.cells;
    const float cell_ids = cells > 1 ? static_cast<float>(cells * cells - 1) : 1.0f;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            RGBA p{(x + 0.5f) / image.width(), (y + 0.5f) / image.height(), 0.0f, 1.0f};
            if (cells > 0) {
                const int id = cellOf(x, image.width(), cells) + cellOf(y, image.height(), cells) * cells;
                p.b = cells > 1 ? id / cell_ids : 0.0f;
                if (onGridLine(x, image.width(), cells) || onGridLine(y, image.height(), cells)) p = options.line;
            }
            image.at(x, y) = p;
        }
    }
    return image;
}

Image gradientImage(int width, int height, RGBA from, RGBA to, GradientDirection direction) {
    Image image(width, height);
    const bool horizontal = direction == GradientDirection::Horizontal;
    const int steps = (horizontal ? image.width() : image.height()) - 1;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const int along = horizontal ? x : y;
            image.at(x, y) = lerp(from, to, steps > 0 ? static_cast<float>(along) / steps : 0.0f);
        }
    }
    return image;
}

}  // namespace host
