// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: GPL-2.0-or-later
//
// The errors that the controls and the link raise, as numbers a test compares.
#pragma once

#include "platform/RuntimeError.h"

// The number of the error of type `Error` a call raises, 0 when it raises none.
template <class Error = tessaly::RuntimeError, class Call>
int32_t ErrorNumberOf(Call&& call)
{
    try {
        call();
    } catch (const Error& error) {
        return error.number();
    }
    return 0;
}
