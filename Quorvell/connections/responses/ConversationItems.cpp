// SPDX-License-Identifier: MIT
#include "Quorvell/connections/responses/ConversationItems.h"

#include "QuorvellCore/live/wire/vocabulary/LiveHistorySeed.h"

#include <algorithm>
#include <utility>

namespace quorvell {

namespace {

namespace item = openai_item;

std::size_t sizeOf(const OpenAIItem& one)
{
    struct Size {
        std::size_t operator()(const item::Message& message) const
        {
            std::size_t size = message.text.size();
            for (const LiveImage& image : message.images)
                size += image.jpeg.size();
            return size;
        }
        std::size_t operator()(const item::FunctionCall& call) const { return call.arguments.size(); }
        std::size_t operator()(const item::FunctionOutput& output) const { return output.output.size(); }
    };
    return std::visit(Size{}, one);
}

bool isUsers(const OpenAIItem& one)
{
    const auto* message = std::get_if<item::Message>(&one);
    return message && message->role == "user";
}

} // namespace

void ConversationItems::seed(const std::vector<LiveHistoryEntry>& history)
{
    for (const LiveHistoryEntry& entry : LiveHistorySeed::of(history))
        add(item::Message{entry.role == "assistant" ? "assistant" : "user", entry.text});
}

void ConversationItems::add(OpenAIItem one)
{
    m_bytes += sizeOf(one);
    m_items.push_back(std::move(one));
    dropOldPictures();
    while (m_items.size() > mostItems || (m_bytes > mostBytes && m_items.size() > 1))
        dropOldestTurn();
}

void ConversationItems::dropOldPictures()
{
    std::size_t kept = 0;
    for (auto one = m_items.rbegin(); one != m_items.rend(); ++one) {
        auto* message = std::get_if<item::Message>(&*one);
        if (!message || message->images.empty())
            continue;
        kept += message->images.size();
        if (kept <= mostPictures)
            continue;
        m_bytes -= sizeOf(*one);
        message->images.clear();
        m_bytes += sizeOf(*one);
    }
}

/// Up to the next thing that the user said; a conversation without one loses its first entry.
void ConversationItems::dropOldestTurn()
{
    auto end = std::find_if(m_items.begin() + 1, m_items.end(), isUsers);
    if (end == m_items.end())
        end = m_items.begin() + 1;
    for (auto one = m_items.begin(); one != end; ++one)
        m_bytes -= sizeOf(*one);
    m_items.erase(m_items.begin(), end);
}

} // namespace quorvell
