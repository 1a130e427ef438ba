#pragma once
// The host's own error: a failure of the host itself or of the module's use of it (a bad module,
// a bad value, ...).

#include <stdexcept>

namespace host {

class HostError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

}  // namespace host
