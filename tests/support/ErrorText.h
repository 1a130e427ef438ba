#pragma once
// The message of the `Error` an action throws, or "(no error)": failure tests compare the one
// line a user would see.

#include <exception>
#include <string>

namespace test_support {

template <class Error = std::exception, class Action>
std::string errorOf(Action action) {
    try {
        action();
    } catch (const Error& e) {
        return e.what();
    }
    return "(no error)";
}

}  // namespace test_support
