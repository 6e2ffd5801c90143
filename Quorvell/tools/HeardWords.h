// SPDX-License-Identifier: MIT
// Remembers the user's latest words of a conversation that it observes.
#pragma once

#include "Quorvell/session/reports/SessionObserver.h"
#include "Quorvell/tools/ConsentWords.h"

#include <functional>
#include <optional>
#include <string>
#include <utility>

namespace quorvell {

/// Main thread.
class HeardWords final : public ConsentWords, public SessionObserver {
public:
    explicit HeardWords(std::function<Instant()> wallClock)
        : m_wallClock(std::move(wallClock))
    {
    }

    std::optional<std::string> heardSince(Instant asked) const override
    {
        return m_words && m_heardAt > asked ? m_words : std::nullopt;
    }

    void userSaid(const std::string& text, Words) override
    {
        m_words = text;
        m_heardAt = m_wallClock();
    }

private:
    std::function<Instant()> m_wallClock;
    std::optional<std::string> m_words;
    Instant m_heardAt{};
};

} // namespace quorvell
