#include "shell/SequenceData.h"

#include <cstring>

#include "AEConfig.h"
#include "AE_EffectCB.h"

SequenceData::~SequenceData() = default;

SerializedSequenceData SequenceData::serialize(PF_InData* in_data) const
{
    const A_long flat = 0;
    PF_Handle handle = in_data->utils->host_new_handle(sizeof(flat));
    if (!handle) {
        return nullptr;
    }
    void* data = in_data->utils->host_lock_handle(handle);
    if (data) {
        std::memcpy(data, &flat, sizeof(flat));
    }
    in_data->utils->host_unlock_handle(handle);
    return handle;
}
