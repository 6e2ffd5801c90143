// SPDX-License-Identifier: MIT
// A question that was put aside for another request, with what its answer needs.
#pragma once

#include "Understanding/dialogue/memory/FoundThing.h"
#include "Understanding/dialogue/memory/PendingQuestion.h"
#include "Understanding/dialogue/memory/ThingBatch.h"
#include "Understanding/dialogue/memory/Wish.h"
#include "Understanding/time/SpokenDays.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quorvell {

struct AsideQuestion {
    static constexpr std::size_t most = 3; ///< At a time; nobody keeps more in mind.

    PendingQuestion pending{};
    std::string words{}; ///< Of the request that it belongs to.
    std::string_view topic{};
    std::string request{};
    std::vector<FoundThing> found{};
    FoundThing reminder{};
    FoundThing event{};
    Wish wish{};
    ThingBatch batch{};
    std::optional<SpokenDays> days{};

    bool operator==(const AsideQuestion&) const = default;
};

} // namespace quorvell
