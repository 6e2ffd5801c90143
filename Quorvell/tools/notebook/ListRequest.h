// SPDX-License-Identifier: MIT
// What keep_note is asked to do with a list.
#pragma once

#include "QuorvellCore/live/wire/vocabulary/LiveFunctionCall.h"
#include "QuorvellCore/notebook/ListEdit.h"

#include <optional>
#include <string>
#include <vector>

namespace quorvell {

struct ListRequest {
    static constexpr std::size_t longestName = 200; ///< Characters.
    static constexpr std::size_t mostNamed = 200; ///< Items in one call.

    enum class Kind { showAll, show, create, edit, rename, remove };

    Kind kind = Kind::show;
    std::string id{};
    std::string name{}; ///< As they call it; empty for the only one.
    std::string title{}; ///< The new one.
    std::vector<std::string> has{}; ///< Items that are asked about.
    bool showsItems = false; ///< Of all lists; of one they are always told.
    ListEdit edit{};
    std::string problem{}; ///< What is wrong with the call, for the model; empty for nothing.

    /// Nothing for a call that is about no list.
    static std::optional<ListRequest> of(const LiveFunctionCall& call);
};

} // namespace quorvell
