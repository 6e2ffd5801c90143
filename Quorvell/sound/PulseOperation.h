// SPDX-License-Identifier: MIT
// Lets go of the answer to a request to the sound server that nobody waits for.
#pragma once

#include <pulse/operation.h>

namespace quorvell {

inline void release(pa_operation* operation)
{
    if (operation)
        pa_operation_unref(operation);
}

} // namespace quorvell
