#include "raytrace/DepthComposite.h"

#include <cmath>

namespace {

enum DepthCompositeMode { kOff = 1, kFog = 2, kFadeOut = 3 };

// 0 for NaN and negatives, 1 for 1 and above.
double clampUnit(double x)
{
    if (!(x > 0.0)) return 0.0;
    return x < 1.0 ? x : 1.0;
}

// Straight fog over a straight colour: the fog weight g lies over the surface's own coverage,
// the result is un-premultiplied again, and the coverage is kept as it was.
void applyFog(const PF_PixelFloat& fog, double g, PF_PixelFloat& colour)
{
    const double a = colour.alpha;
    const double w = (1.0 - g) * a;
    const double covered = w + g;
    double r = fog.red * g + colour.red * w;
    double gr = fog.green * g + colour.green * w;
    double b = fog.blue * g + colour.blue * w;
    if (covered > 0.0) {
        r /= covered;
        gr /= covered;
        b /= covered;
    }
    colour.red = static_cast<float>(r);
    colour.green = static_cast<float>(gr);
    colour.blue = static_cast<float>(b);
}

} // namespace

void depthComposite(const RenderInfoTemplate<Cylinder>::DepthCompositeInfo& info, double t,
                    PF_PixelFloat& colour)
{
    if (info.mode != kFog && info.mode != kFadeOut) return;

    // Fraction of the way from start to end depth; a zero length gives +-infinity, and the hit
    // exactly at the start of a zero-length range (NaN) counts as not yet faded.
    double f = (t - info.start) / info.length;
    if (std::isnan(f)) f = 0.0;

    if (info.mode == kFadeOut) {
        colour.alpha = static_cast<float>(colour.alpha * clampUnit(1.0 - f));
        return;
    }
    applyFog(info.color, clampUnit(f), colour);
}
