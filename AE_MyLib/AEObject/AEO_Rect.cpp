#include "AE_MyLib/AEObject/AEO_Rect.h"

#include <cassert>
#include <cmath>

namespace AEO {

PF_Fixed Float2Fix(double f)
{
    assert(f<=Fix2Float(PF_Fixed_MAXVAL));
    assert(f>=Fix2Float(PF_Fixed_MINVAL));
    return PF_Fixed(f * 65536.0 + (f < 0.0 ? -0.5 : 0.5));
}

FloatRect toFloatRect(const PF_FixedRect& r)
{
    return FloatRect{Fix2Float(r.left), Fix2Float(r.top), Fix2Float(r.right), Fix2Float(r.bottom)};
}

FloatRect toFloatRect(const PF_LRect& r)
{
    return FloatRect{double(r.left), double(r.top), double(r.right), double(r.bottom)};
}

PF_FixedRect toFixedRect(const FloatRect& r)
{
    return PF_FixedRect{Float2Fix(r.left), Float2Fix(r.top), Float2Fix(r.right), Float2Fix(r.bottom)};
}

PF_LRect enclosingLRect(const FloatRect& r)
{
    return PF_LRect{A_long(std::floor(r.left)), A_long(std::floor(r.top)), A_long(std::ceil(r.right)),
                    A_long(std::ceil(r.bottom))};
}

}  // namespace AEO
