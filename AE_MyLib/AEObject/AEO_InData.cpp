#include "AE_MyLib/AEObject/AEO_InData.h"

#include <cstring>

#include "AEConfig.h"
#include "AE_EffectCB.h"

namespace AEO {

static_assert(sizeof(PF_Handle) <= InData::kHandleHeaderBytes, "the handle must fit in the header");

namespace {

const SPBasicSuite* basicOf(const PF_InData* in_data)
{
    return in_data ? in_data->pica_basicP : nullptr;
}

}  // namespace

InData::InData(PF_InData* in_data)
    : _in_data(in_data),
      _sampling8(basicOf(in_data)),
      _sampling16(basicOf(in_data)),
      _sampling_float(basicOf(in_data))
{
    _sampling8.acquire();
    _sampling16.acquire();
    _sampling_float.acquire();
}

void* InData::malloc(A_u_longlong size) const
{
    if (!_in_data || !_in_data->utils) {
        return nullptr;
    }
    PF_Handle handle = _in_data->utils->host_new_handle(size + kHandleHeaderBytes);
    if (!handle) {
        return nullptr;
    }
    void* data = _in_data->utils->host_lock_handle(handle);
    if (!data) {
        _in_data->utils->host_dispose_handle(handle);
        return nullptr;
    }
    std::memcpy(data, &handle, sizeof(handle));
    return block_in(data);
}

void InData::free(void* p) const
{
    if (!p || !_in_data || !_in_data->utils) {
        return;
    }
    PF_Handle handle = handle_of(p);
    _in_data->utils->host_unlock_handle(handle);
    _in_data->utils->host_dispose_handle(handle);
}

PF_Handle InData::handle_of(const void* p)
{
    PF_Handle handle;
    std::memcpy(&handle, static_cast<const char*>(p) - kHandleHeaderBytes, sizeof(handle));
    return handle;
}

void* InData::block_in(void* locked_handle_data)
{
    return static_cast<char*>(locked_handle_data) + kHandleHeaderBytes;
}

void InData::aligned_free(void* p) const
{
    if (!p || !_in_data) {
        return;
    }
    void* raw = static_cast<void**>(p)[-1];
    if (raw) {
        free(raw);
    }
}

}  // namespace AEO
