#pragma once

// One effect parameter checked out at the current time, for reading values and layers during a
// render. Taking another index checks the held one back in first, so one object holds at most
// one checkout; code that needs two layers at once uses two objects.

#include "AEConfig.h"
#include "AE_Effect.h"

class ATParameter {
public:
    // Checks out parameter 0 (the input layer) at the current time.
    explicit ATParameter(const PF_InData* in_data);
    ~ATParameter();  // checks the held parameter in
    ATParameter(const ATParameter&) = delete;
    ATParameter& operator=(const ATParameter&) = delete;

    // A copy of parameter index at the current time. On a failed checkout the error is kept
    // (err()) and the copy holds whatever the host left in it.
    PF_ParamDef param(PF_ParamIndex index);
    // The last checkout's error.
    PF_Err err() const { return _err; }

private:
    void checkout(PF_ParamIndex index);
    void checkin();

    PF_Err _err;
    const PF_InData* _in_data;
    PF_ParamDef _def;
    A_long _time;           // current_time the held parameter was taken at
    PF_ParamIndex _index;   // its index
    bool _held;             // a successful checkout awaits its check-in
};
