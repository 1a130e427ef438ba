#include "AE_MyLib/AEObject/AEO_Base.h"

#include <cassert>

namespace AEO {

ObjectBase::~ObjectBase()
{
    // A cancelled render is the one error that may be left standing.
    assert(_err == PF_Err_NONE || _err == PF_Interrupt_CANCEL);
}

}  // namespace AEO
