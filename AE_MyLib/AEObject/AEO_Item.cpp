#include "AE_MyLib/AEObject/AEO_Item.h"

namespace AEO {

Item::Item(const SPBasicSuite* basic, AEGP_ItemH item)
    : _item(item), _width(0), _height(0), _item_suite(basic)
{
    if (const AEGP_ItemSuite8* suite = usable(_item_suite)) {
        _err = suite->AEGP_GetItemDimensions(_item, &_width, &_height);
    }
}

A_Ratio Item::GetPixelAspectRatio()
{
    A_Ratio ratio = {0, 1};
    if (const AEGP_ItemSuite8* suite = usable(_item_suite)) {
        _err = suite->AEGP_GetItemPixelAspectRatio(_item, &ratio);
    }
    return ratio;
}

}  // namespace AEO
