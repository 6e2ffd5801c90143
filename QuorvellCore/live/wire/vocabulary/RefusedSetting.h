// SPDX-License-Identifier: MIT
// Which option of a session the service would not accept.
#pragma once

namespace quorvell {

/// The numbers are the ones written to the event log.
enum class RefusedSetting { serviceTier = 0, summary = 1, none = 2 };

} // namespace quorvell
