#pragma once

// Pixel worlds: one the host owns (wrapped to learn its format), or one the effect allocates
// through "PF World Suite" 2 and disposes of.

#include "AEConfig.h"
#include "AE_EffectPixelFormat.h"
#include "AE_MyLib/AEObject/AEO_Base.h"
#include "AE_MyLib/AEObject/AEO_InData.h"

namespace AEO {

struct PixelFormat {
    enum e {
        ARGB32 = PF_PixelFormat_ARGB32,   // PF_Pixel, 8 bits per channel
        ARGB64 = PF_PixelFormat_ARGB64,   // PF_Pixel16, 0..32768
        ARGB128 = PF_PixelFormat_ARGB128  // PF_PixelFloat
    };
};

class EffectWorld : public ObjectBase {
public:
    // Reads one pixel as floats (8-bit and 16-bit white become 1.0) / writes one from floats.
    typedef PF_PixelFloat (*ToFloat)(const void* pixel);
    typedef void (*FromFloat)(void* pixel, const PF_PixelFloat& value);

    // Wraps a world the host owns and reads its format.
    EffectWorld(const InData& in_data, const PF_EffectWorld& world);

    // Asks the world suite for the pixel format; sets the bytes per pixel and converters.
    PF_Err checkFormat();

    PF_EffectWorld& world() { return _world; }
    const PF_EffectWorld& world() const { return _world; }
    PF_PixelFormat pixelFormat() const { return _format; }
    A_long bytesPerPixel() const { return _bytes_per_pixel; }  // 0 until the format is known
    A_long width() const { return _world.width; }
    A_long height() const { return _world.height; }

    void* pixelAddress(A_long x, A_long y) const
    {
        return static_cast<char*>(static_cast<void*>(_world.data)) + A_intptr_t(y) * _world.rowbytes +
               A_intptr_t(x) * _bytes_per_pixel;
    }
    PF_PixelFloat getF32(A_long x, A_long y) const { return _to_float(pixelAddress(x, y)); }
    void setF32(A_long x, A_long y, const PF_PixelFloat& value) const { _from_float(pixelAddress(x, y), value); }

    // The converters of each depth.
    static PF_PixelFloat FromF32(const void* pixel);
    static void setToF32(void* pixel, const PF_PixelFloat& value);
    static PF_PixelFloat FromU16(const void* pixel);
    static void setToU16(void* pixel, const PF_PixelFloat& value);
    static PF_PixelFloat FromU8(const void* pixel);
    static void setToU8(void* pixel, const PF_PixelFloat& value);

protected:
    explicit EffectWorld(const InData& in_data);  // no world yet

    const InData* _in_data;
    PF_EffectWorld _world;
    Suite<PF_WorldSuite2> _world_suite;
    PF_PixelFormat _format;
    A_long _bytes_per_pixel;
    ToFloat _to_float;
    FromFloat _from_float;
};

class NewEffectWorld : public EffectWorld {
public:
    // Allocates a cleared world of that size and format; a failure is this object's error.
    NewEffectWorld(const InData& in_data, A_long width, A_long height, PixelFormat::e format);
    ~NewEffectWorld() override;

    // Disposes of any world held, then allocates a new one.
    PF_Err allocate(A_long width, A_long height, PixelFormat::e format);
    // Disposes of the world held, if any.
    void dispose();

private:
    bool _owns_world;
};

}  // namespace AEO
