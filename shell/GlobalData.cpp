#include "shell/GlobalData.h"

#include <new>

#include "AEConfig.h"
#include "AE_EffectCB.h"
#include "AE_MyLib/AEObject/AEGP_SuiteHandler.h"
#include "AE_MyLib/AEObject/AEO_InData.h"
#include "shell/EffectInfo.h"

GlobalData::GlobalData(PF_InData* in_data) : _aegp_setup_err(A_Err_NONE), _plugin_id(0)
{
    AEGP_SuiteHandler suites(in_data->pica_basicP);
    _aegp_setup_err =
        suites.UtilitySuite5()->AEGP_RegisterWithAEGP(nullptr, effect_info::kName, &_plugin_id);
}

GlobalData::~GlobalData() = default;

PF_Handle GlobalData::place(PF_InData* in_data, const GlobalData& data)
{
    const AEO::InData memory(in_data);
    void* block = memory.malloc(sizeof(GlobalData));
    if (!block) {
        throw PF_Err(PF_Err_OUT_OF_MEMORY);
    }
    new (block) GlobalData(data);
    return AEO::InData::handle_of(block);
}

void GlobalData::destroy(PF_InData* in_data, PF_Handle handle)
{
    void* locked = in_data->utils->host_lock_handle(handle);
    if (locked) {
        static_cast<GlobalData*>(AEO::InData::block_in(locked))->~GlobalData();
    }
    in_data->utils->host_unlock_handle(handle);
    in_data->utils->host_dispose_handle(handle);
}

GlobalDataAccess::GlobalDataAccess(PF_InData* in_data) : _in_data(in_data), _data(nullptr)
{
    if (_in_data && _in_data->global_data) {
        void* locked = _in_data->utils->host_lock_handle(_in_data->global_data);
        if (locked) {
            _data = static_cast<const GlobalData*>(AEO::InData::block_in(locked));
        }
    }
}

GlobalDataAccess::~GlobalDataAccess()
{
    if (_in_data && _in_data->global_data) {
        _in_data->utils->host_unlock_handle(_in_data->global_data);
    }
}
