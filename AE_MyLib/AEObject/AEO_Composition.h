#pragma once

// A composition: its project item, its layers and its default camera distance.

#include "AE_MyLib/AEObject/AEO_Base.h"

namespace AEO {

class Composition : public ObjectBase {
public:
    Composition(const SPBasicSuite* basic, AEGP_CompH comp);

    AEGP_CompH handle() const { return _comp; }

    AEGP_ItemH GetItem();                    // the composition's project item
    A_long GetNumLayers();
    AEGP_LayerH GetLayerByIndex(A_long index);  // 0 is the topmost layer
    // Focal distance in pixels of the camera the host uses when the composition has none.
    A_FpLong GetDefaultCameraDistanceToImagePlane();

private:
    AEGP_CompH _comp;
    Suite<AEGP_CompSuite5> _comp_suite;
    Suite<AEGP_LayerSuite6> _layer_suite;
    Suite<AEGP_CameraSuite2> _camera_suite;
};

}  // namespace AEO
