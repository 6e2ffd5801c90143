#pragma once

#include <string>

namespace quorvell {

/// A new random UUID (version 4) as text; any thread.
std::string freshUUID();

} // namespace quorvell
