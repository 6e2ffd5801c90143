// SPDX-License-Identifier: MIT
// A typed conversation as it is sent along with every question.
#pragma once

#include "QuorvellCore/live/wire/openai/OpenAIItem.h"
#include "QuorvellCore/live/wire/vocabulary/LiveHistoryEntry.h"

#include <cstddef>
#include <vector>

namespace quorvell {

/// Bounded: the oldest turns go first, whole, so that no result is left without its call; old pictures go before the
/// words around them.
class ConversationItems {
public:
    static constexpr std::size_t mostItems = 400;
    static constexpr std::size_t mostBytes = 4 * 1024 * 1024; ///< Of texts and pictures, before base64.
    static constexpr std::size_t mostPictures = 4;

    void seed(const std::vector<LiveHistoryEntry>& history);
    void add(OpenAIItem item);
    const std::vector<OpenAIItem>& all() const { return m_items; }

private:
    void dropOldPictures();
    void dropOldestTurn();

    std::vector<OpenAIItem> m_items;
    std::size_t m_bytes = 0;
};

} // namespace quorvell
