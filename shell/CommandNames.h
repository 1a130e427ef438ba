#pragma once

// Names of the host commands, indexed by PF_Cmd code, for diagnostic printing only.
// The list ends as the effect API of its day did (RESERVED1, RESERVED2, NUM_CMDS).
extern const char* const cmd_str[];
extern const int cmd_str_count;
