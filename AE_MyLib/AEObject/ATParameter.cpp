#include "AE_MyLib/AEObject/ATParameter.h"

#include <cstring>

ATParameter::ATParameter(const PF_InData* in_data)
    : _err(PF_Err_NONE), _in_data(in_data), _time(0), _index(0), _held(false)
{
    std::memset(&_def, 0, sizeof(_def));
    checkout(0);
}

ATParameter::~ATParameter() { checkin(); }

PF_ParamDef ATParameter::param(PF_ParamIndex index)
{
    if (index != _index || _in_data->current_time != _time) {
        checkin();
        checkout(index);
    }
    return _def;
}

void ATParameter::checkout(PF_ParamIndex index)
{
    std::memset(&_def, 0, sizeof(_def));
    _index = index;
    _time = _in_data->current_time;
    _err = _in_data->inter.checkout_param(_in_data->effect_ref, index, _in_data->current_time,
                                          _in_data->time_step, _in_data->time_scale, &_def);
    _held = (_err == PF_Err_NONE);
}

void ATParameter::checkin()
{
    if (_held) {
        _in_data->inter.checkin_param(_in_data->effect_ref, &_def);
        _held = false;
    }
}
