// SPDX-License-Identifier: MIT
// The services of the user's own that the one on this computer makes use of: a model, a recogniser, a voice.
#pragma once

#include "LocalModel/ModelAccess.h"
#include "Wyoming/WyomingAddress.h"

#include <optional>
#include <string>

namespace quorvell {

struct UserSettings;

/// Each of them, or nothing and, where that is not what the settings want, a sentence about what is wrong.
struct OwnServices {
    std::optional<ModelAccess> model{};
    std::string modelProblem{};
    std::optional<WyomingAddress> recogniser{};
    std::string recogniserProblem{};
    std::optional<WyomingAddress> voice{};
    std::string voiceProblem{};

    /// "nothing you say leaves it.", or what does and where it goes.
    std::string whereWordsGo() const;

    static OwnServices of(const UserSettings& settings);

    bool operator==(const OwnServices&) const = default;
};

} // namespace quorvell
