#pragma once

// A project item (composition or footage): its size, read once, and its pixel aspect ratio.

#include "AE_MyLib/AEObject/AEO_Base.h"

namespace AEO {

class Item : public ObjectBase {
public:
    // Reads the item's width and height at once ("AEGP Item Suite" 13).
    Item(const SPBasicSuite* basic, AEGP_ItemH item);

    AEGP_ItemH handle() const { return _item; }
    A_long width() const { return _width; }    // pixels; 0 when the size could not be read
    A_long height() const { return _height; }

    // Width / height of one pixel as numerator and denominator; {0, 1} when skipped.
    A_Ratio GetPixelAspectRatio();

private:
    AEGP_ItemH _item;
    A_long _width;
    A_long _height;
    Suite<AEGP_ItemSuite8> _item_suite;
};

}  // namespace AEO
