// SPDX-License-Identifier: MIT
// The lists in which tools are declared, in this order.
#pragma once

#include <cstdint>

namespace quorvell {

enum class ToolGroup : std::uint8_t {
    screen, ///< With its tasks and modes.
    notebook, ///< With reminders and the calendar.
    update,
    connectedApps,
    lookUp,
};

} // namespace quorvell
