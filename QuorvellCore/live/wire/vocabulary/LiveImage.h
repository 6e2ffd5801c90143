// SPDX-License-Identifier: MIT
// A picture for the backend.
#pragma once

#include "QuorvellCore/text/Bytes.h"

#include <string>

namespace quorvell {

struct LiveImage {
    Bytes jpeg;
    std::string detail = "auto"; ///< How closely the model looks: "low", "high" or "auto".

    bool operator==(const LiveImage&) const = default;
};

} // namespace quorvell
