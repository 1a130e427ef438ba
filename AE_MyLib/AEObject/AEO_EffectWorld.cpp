#include "AE_MyLib/AEObject/AEO_EffectWorld.h"

#include <cmath>
#include <cstring>

namespace AEO {

namespace {

const float kWhite8 = 255.0f;
const float kWhite16 = 32768.0f;

// value * white truncated towards zero, clamped to [0, white]; NaN becomes 0.
template <class Channel>
Channel toChannel(float value, float white)
{
    const float scaled = value * white;
    if (!(scaled > 0.0f)) {
        return 0;
    }
    if (scaled >= white) {
        return Channel(white);
    }
    return Channel(scaled);
}

}  // namespace

PF_PixelFloat EffectWorld::FromF32(const void* pixel)
{
    PF_PixelFloat value;
    std::memcpy(&value, pixel, sizeof(value));
    return value;
}

void EffectWorld::setToF32(void* pixel, const PF_PixelFloat& value)
{
    std::memcpy(pixel, &value, sizeof(value));
}

PF_PixelFloat EffectWorld::FromU16(const void* pixel)
{
    PF_Pixel16 p;
    std::memcpy(&p, pixel, sizeof(p));
    const float scale = 1.0f / kWhite16;
    return PF_PixelFloat{p.alpha * scale, p.red * scale, p.green * scale, p.blue * scale};
}

void EffectWorld::setToU16(void* pixel, const PF_PixelFloat& v)
{
    const PF_Pixel16 p = {toChannel<A_u_short>(v.alpha, kWhite16), toChannel<A_u_short>(v.red, kWhite16),
                          toChannel<A_u_short>(v.green, kWhite16), toChannel<A_u_short>(v.blue, kWhite16)};
    std::memcpy(pixel, &p, sizeof(p));
}

PF_PixelFloat EffectWorld::FromU8(const void* pixel)
{
    PF_Pixel p;
    std::memcpy(&p, pixel, sizeof(p));
    return PF_PixelFloat{p.alpha / kWhite8, p.red / kWhite8, p.green / kWhite8, p.blue / kWhite8};
}

void EffectWorld::setToU8(void* pixel, const PF_PixelFloat& v)
{
    const PF_Pixel p = {toChannel<A_u_char>(v.alpha, kWhite8), toChannel<A_u_char>(v.red, kWhite8),
                        toChannel<A_u_char>(v.green, kWhite8), toChannel<A_u_char>(v.blue, kWhite8)};
    std::memcpy(pixel, &p, sizeof(p));
}

EffectWorld::EffectWorld(const InData& in_data)
    : _in_data(&in_data),
      _world_suite(in_data.pica()),
      _format(PF_PixelFormat_INVALID),
      _bytes_per_pixel(0),
      _to_float(&FromU8),
      _from_float(&setToU8)
{
    std::memset(&_world, 0, sizeof(_world));
}

EffectWorld::EffectWorld(const InData& in_data, const PF_EffectWorld& world) : EffectWorld(in_data)
{
    _world = world;
    checkFormat();
}

PF_Err EffectWorld::checkFormat()
{
    const PF_WorldSuite2* suite = usable(_world_suite);
    if (!suite) {
        return _err;
    }
    PF_PixelFormat format = PF_PixelFormat_INVALID;
    _err = suite->PF_GetPixelFormat(&_world, &format);
    if (_err != PF_Err_NONE) {
        return _err;
    }
    _format = format;
    switch (format) {
    case PF_PixelFormat_ARGB128:
        _bytes_per_pixel = sizeof(PF_PixelFloat);
        _to_float = &FromF32;
        _from_float = &setToF32;
        break;
    case PF_PixelFormat_ARGB64:
        _bytes_per_pixel = sizeof(PF_Pixel16);
        _to_float = &FromU16;
        _from_float = &setToU16;
        break;
    default:
        _bytes_per_pixel = sizeof(PF_Pixel);
        _to_float = &FromU8;
        _from_float = &setToU8;
        break;
    }
    return _err;
}

NewEffectWorld::NewEffectWorld(const InData& in_data, A_long width, A_long height, PixelFormat::e format)
    : EffectWorld(in_data), _owns_world(false)
{
    allocate(width, height, format);
}

NewEffectWorld::~NewEffectWorld() { dispose(); }

PF_Err NewEffectWorld::allocate(A_long width, A_long height, PixelFormat::e format)
{
    dispose();
    const PF_WorldSuite2* suite = usable(_world_suite);
    if (!suite) {
        return _err;
    }
    const PF_InData* host = _in_data->in_data();
    if (!host) {
        return _err = PF_Err_BAD_CALLBACK_PARAM;
    }
    _err = suite->PF_NewWorld(host->effect_ref, width, height, true, format, &_world);
    if (_err != PF_Err_NONE) {
        return _err;
    }
    _owns_world = true;
    return checkFormat();
}

void NewEffectWorld::dispose()
{
    if (!_owns_world) {
        return;
    }
    // Released on every path, also after an error, through the same suite.
    if (const PF_WorldSuite2* suite = _world_suite.acquire()) {
        const PF_InData* host = _in_data->in_data();
        suite->PF_DisposeWorld(host ? host->effect_ref : nullptr, &_world);
    }
    std::memset(&_world, 0, sizeof(_world));
    _owns_world = false;
}

}  // namespace AEO
