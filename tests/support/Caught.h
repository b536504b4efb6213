#pragma once

#include <gtest/gtest.h>

#include "values/Error.h"

namespace vlm::test {

/// The error that an action throws, which it must.
template <typename Action>
Error Caught(Action action) {
    try {
        action();
    } catch (const Error& error) {
        return error;
    }
    ADD_FAILURE() << "no error";
    return Error("");
}

template <typename Action>
std::string CaughtText(Action action) {
    return Caught(action).what();
}

}  // namespace vlm::test
