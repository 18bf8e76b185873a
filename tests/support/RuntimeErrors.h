// The run-time errors that the controls raise, as numbers a test compares.
#pragma once

#include "platform/RuntimeError.h"

// The number of the error a call raises, 0 when it raises none.
template <class Call>
int32_t ErrorNumberOf(Call&& call)
{
    try {
        call();
    } catch (const tessaly::RuntimeError& error) {
        return error.number();
    }
    return 0;
}
