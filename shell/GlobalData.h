#pragma once

// The effect's global data: one per loaded module, from global set-up to global set-down. It
// lives in host handle memory; the handle is what the host keeps as the effect's global data.

#include "AEConfig.h"
#include "AE_Effect.h"
#include "AE_GeneralPlug.h"

class GlobalData {
public:
    // Registers the effect with the host's AEGP side ("AEGP Utility Suite" 11) under the effect's
    // name. A missing suite throws a PF_Err; a failed registration is kept in aegp_setup_err().
    explicit GlobalData(PF_InData* in_data);
    GlobalData(const GlobalData&) = default;
    GlobalData& operator=(const GlobalData&) = default;
    virtual ~GlobalData();

    A_Err aegp_setup_err() const { return _aegp_setup_err; }
    // The id the AEGP calls that need one use (the control-layer expression among them).
    AEGP_PluginID plugin_id() const { return _plugin_id; }

    // Makes a copy of data in new host handle memory and returns its handle (throws
    // PF_Err_OUT_OF_MEMORY when the host has none).
    static PF_Handle place(PF_InData* in_data, const GlobalData& data);
    // Destroys the global data in handle and frees the handle.
    static void destroy(PF_InData* in_data, PF_Handle handle);

private:
    A_Err _aegp_setup_err;
    AEGP_PluginID _plugin_id;
};

// Read access to the global data for the length of one command.
class GlobalDataAccess {
public:
    explicit GlobalDataAccess(PF_InData* in_data);  // locks in_data->global_data
    ~GlobalDataAccess();                            // unlocks it
    GlobalDataAccess(const GlobalDataAccess&) = delete;
    GlobalDataAccess& operator=(const GlobalDataAccess&) = delete;

    const GlobalData* get() const { return _data; }  // null without global data

private:
    PF_InData* _in_data;
    const GlobalData* _data;
};
