#pragma once

// Conversions between 16.16 fixed-point numbers and doubles, and rectangles in either form.

#include "AEConfig.h"
#include "AE_Effect.h"

namespace AEO {

inline double Fix2Float(PF_Fixed f) { return double(f) / 65536.0; }

// f * 65536 rounded half away from zero. f must lie within the range of a 16.16 number.
PF_Fixed Float2Fix(double f);

// A rectangle in pixels with fractional edges; right and bottom are exclusive.
struct FloatRect {
    double left;
    double top;
    double right;
    double bottom;

    double width() const { return right - left; }
    double height() const { return bottom - top; }
    bool empty() const { return left >= right || top >= bottom; }
};

FloatRect toFloatRect(const PF_FixedRect& r);
FloatRect toFloatRect(const PF_LRect& r);
PF_FixedRect toFixedRect(const FloatRect& r);
// The smallest whole-pixel rectangle that holds r.
PF_LRect enclosingLRect(const FloatRect& r);

}  // namespace AEO
