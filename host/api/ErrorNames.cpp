// Symbolic names of the host's error and command codes, for messages and logs.

#include "host/session/Host.h"

namespace host {

const char* errorName(A_long err) {
    switch (err) {
        case PF_Err_NONE: return "PF_Err_NONE";
        case A_Err_GENERIC: return "A_Err_GENERIC";
        case A_Err_STRUCT: return "A_Err_STRUCT";
        case A_Err_PARAMETER: return "A_Err_PARAMETER";
        case PF_Err_OUT_OF_MEMORY: return "PF_Err_OUT_OF_MEMORY";
        case A_Err_WRONG_THREAD: return "A_Err_WRONG_THREAD";
        case A_Err_CONST_PROJECT_MODIFICATION: return "A_Err_CONST_PROJECT_MODIFICATION";
        case A_Err_MISSING_SUITE: return "A_Err_MISSING_SUITE";
        case PF_Err_INTERNAL_STRUCT_DAMAGED: return "PF_Err_INTERNAL_STRUCT_DAMAGED";
        case PF_Err_INVALID_INDEX: return "PF_Err_INVALID_INDEX";
        case PF_Err_UNRECOGNIZED_PARAM_TYPE: return "PF_Err_UNRECOGNIZED_PARAM_TYPE";
        case PF_Err_INVALID_CALLBACK: return "PF_Err_INVALID_CALLBACK";
        case PF_Err_BAD_CALLBACK_PARAM: return "PF_Err_BAD_CALLBACK_PARAM";
        case PF_Interrupt_CANCEL: return "PF_Interrupt_CANCEL";
        case PF_Err_CANNOT_PARSE_KEYFRAME_TEXT: return "PF_Err_CANNOT_PARSE_KEYFRAME_TEXT";
        case kSPSuiteNotFoundError: return "kSPSuiteNotFoundError";
        default: return "unknown error";
    }
}

const char* commandName(PF_Cmd cmd) {
    static const char* const names[] = {
        "PF_Cmd_ABOUT", "PF_Cmd_GLOBAL_SETUP", "PF_Cmd_UNUSED_0", "PF_Cmd_GLOBAL_SETDOWN",
        "PF_Cmd_PARAMS_SETUP", "PF_Cmd_SEQUENCE_SETUP", "PF_Cmd_SEQUENCE_RESETUP", "PF_Cmd_SEQUENCE_FLATTEN",
        "PF_Cmd_SEQUENCE_SETDOWN", "PF_Cmd_DO_DIALOG", "PF_Cmd_FRAME_SETUP", "PF_Cmd_RENDER",
        "PF_Cmd_FRAME_SETDOWN", "PF_Cmd_USER_CHANGED_PARAM", "PF_Cmd_UPDATE_PARAMS_UI", "PF_Cmd_EVENT",
        "PF_Cmd_GET_EXTERNAL_DEPENDENCIES", "PF_Cmd_COMPLETELY_GENERAL", "PF_Cmd_QUERY_DYNAMIC_FLAGS",
        "PF_Cmd_AUDIO_RENDER", "PF_Cmd_AUDIO_SETUP", "PF_Cmd_AUDIO_SETDOWN", "PF_Cmd_ARBITRARY_CALLBACK",
        "PF_Cmd_SMART_PRE_RENDER", "PF_Cmd_SMART_RENDER", "PF_Cmd_RESERVED1", "PF_Cmd_RESERVED2",
        "PF_Cmd_RESERVED3", "PF_Cmd_GET_FLATTENED_SEQUENCE_DATA", "PF_Cmd_TRANSLATE_PARAMS_TO_PREFS",
        "PF_Cmd_RESERVED4", "PF_Cmd_SMART_RENDER_GPU", "PF_Cmd_GPU_DEVICE_SETUP", "PF_Cmd_GPU_DEVICE_SETDOWN"};
    return cmd >= 0 && cmd < A_long(sizeof names / sizeof names[0]) ? names[cmd] : "unknown command";
}

}  // namespace host
