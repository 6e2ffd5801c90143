#pragma once

namespace quorvell {

/// Which option of a session the service would not accept. The numbers are the ones written to the event log.
enum class RefusedSetting { serviceTier = 0, summary = 1, none = 2 };

} // namespace quorvell
