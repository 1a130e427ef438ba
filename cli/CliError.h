#pragma once
// The one kind of failure orbivane-render reports: a message for the user and the process exit
// status that classifies it.

#include <stdexcept>
#include <string>

namespace cli {

enum ExitCode : int {
    kExitOk = 0,
    kExitBadInput = 2,      // command line, scene file, parameter value, input image
    kExitModuleFailed = 3,  // the effect module could not be found or loaded
    kExitRenderFailed = 4,  // the effect returned an error while rendering
    kExitWriteFailed = 5,   // the picture could not be written
    kExitSigint = 130,      // stopped by SIGINT (128 + its number)
    kExitSigterm = 143,     // stopped by SIGTERM
};

class CliError : public std::runtime_error {
public:
    CliError(ExitCode code, const std::string& message) : std::runtime_error(message), code_(code) {}
    ExitCode code() const { return code_; }

private:
    ExitCode code_;
};

inline CliError badInput(const std::string& message) { return CliError(kExitBadInput, message); }

}  // namespace cli
