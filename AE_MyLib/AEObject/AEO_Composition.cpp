#include "AE_MyLib/AEObject/AEO_Composition.h"

namespace AEO {

Composition::Composition(const SPBasicSuite* basic, AEGP_CompH comp)
    : _comp(comp), _comp_suite(basic), _layer_suite(basic), _camera_suite(basic)
{
}

AEGP_ItemH Composition::GetItem()
{
    AEGP_ItemH item = nullptr;
    if (const AEGP_CompSuite5* suite = usable(_comp_suite)) {
        _err = suite->AEGP_GetItemFromComp(_comp, &item);
    }
    return item;
}

A_long Composition::GetNumLayers()
{
    A_long count = 0;
    if (const AEGP_LayerSuite6* suite = usable(_layer_suite)) {
        _err = suite->AEGP_GetCompNumLayers(_comp, &count);
    }
    return count;
}

AEGP_LayerH Composition::GetLayerByIndex(A_long index)
{
    AEGP_LayerH layer = nullptr;
    if (const AEGP_LayerSuite6* suite = usable(_layer_suite)) {
        _err = suite->AEGP_GetCompLayerByIndex(_comp, index, &layer);
    }
    return layer;
}

A_FpLong Composition::GetDefaultCameraDistanceToImagePlane()
{
    A_FpLong distance = 0.0;
    if (const AEGP_CameraSuite2* suite = usable(_camera_suite)) {
        _err = suite->AEGP_GetDefaultCameraDistanceToImagePlane(_comp, &distance);
    }
    return distance;
}

}  // namespace AEO
