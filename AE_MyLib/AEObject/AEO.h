#pragma once

// The whole host object layer.

#include "AE_MyLib/AEObject/AEGP_SuiteHandler.h"
#include "AE_MyLib/AEObject/AEO_Base.h"
#include "AE_MyLib/AEObject/AEO_Composition.h"
#include "AE_MyLib/AEObject/AEO_Effect.h"
#include "AE_MyLib/AEObject/AEO_EffectWorld.h"
#include "AE_MyLib/AEObject/AEO_InData.h"
#include "AE_MyLib/AEObject/AEO_Interface.h"
#include "AE_MyLib/AEObject/AEO_Item.h"
#include "AE_MyLib/AEObject/AEO_Layer.h"
#include "AE_MyLib/AEObject/AEO_Rect.h"
#include "AE_MyLib/AEObject/AEO_String.h"
#include "AE_MyLib/AEObject/AEO_Vector.h"
#include "AE_MyLib/AEObject/ATParameter.h"
