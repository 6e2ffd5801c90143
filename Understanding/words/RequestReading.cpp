// SPDX-License-Identifier: MIT
#include "Understanding/words/RequestReading.h"

#include "Understanding/words/CommonCues.h"

#include <algorithm>
#include <array>
#include <optional>
#include <vector>

namespace quorvell {

namespace {

/// Goes through the words from the first to the last. Before what the request is about every cue counts; behind its
/// first word only those that count anywhere.
class Walk {
public:
    Walk(std::string_view core, const CueTable& table)
        : m_words(core)
        , m_table(table)
        , m_article(m_words.size())
    {
    }

    RequestReading read()
    {
        while (m_place < m_words.size() && !m_reading.isVerbatim) {
            if (!takeCue())
                takeContent(1);
            m_reading.isVerbatim = m_content.empty() && asksToTakeDown();
        }
        if (m_reading.isVerbatim)
            takeContent(closing() - m_place);
        m_reading.content = joined();
        return m_reading;
    }

private:
    struct Span {
        std::size_t first;
        std::size_t end;
    };

    /// What follows is the user's to say, and hints at nothing.
    bool asksToTakeDown() const
    {
        const bool makesThing = m_reading.hasAny(Cue::makes) && m_reading.hasAny(Cue::thing);
        const bool follows = m_reading.hasAny(Cue::keeps) && (m_words.at(m_place) == "that" || isBehindColon());
        return makesThing || follows || m_reading.hasAny(Cue::takesDown);
    }

    /// Where the words to take down end: "instead" is no part of what they want to be reminded of.
    std::size_t closing()
    {
        for (std::size_t index = m_place; index < m_words.size() && m_reading.hasAny(Cue::cutsClosing); ++index) {
            const auto match = m_table.at(m_words, index, CuePlace::end);
            if (!match || index + match->words < m_words.size())
                continue;
            m_reading.add(match->cue);
            return index;
        }
        return m_words.size();
    }

    bool isBehindColon() const { return m_place > 0 && m_place < m_words.size() && m_words.endsClause(m_place - 1); }

    bool takeCue()
    {
        const bool isHead = m_content.empty();
        const CuePlace place = !isHead ? CuePlace::anywhere : m_place == 0 ? CuePlace::start : CuePlace::head;
        const std::size_t lead = leadLength();
        auto match = m_table.at(m_words, m_place, place);
        if (const auto noun = lead > 0 ? m_table.at(m_words, m_place + lead, CuePlace::anywhere) : std::nullopt;
            noun && (!match || noun->words + lead > match->words) && noun->cue.is(Cue::container)) {
            match = CueMatch{noun->cue, noun->place, noun->words + lead};
        }
        // What is to be written down may well speak of notes and the like.
        const bool isContained =
            match && ((match->words > lead && lead > 0) || m_place + match->words == m_words.size());
        const bool isWritten = !isHead && !isContained && (!match || !match->cue.is(Cue::asksForWriting))
            && m_reading.hasAny(Cue::ofWriting);
        if (!match || isWritten)
            return false;
        m_reading.add(match->cue);
        if (!match->cue.is(Cue::content))
            m_article = isArticle(*match) ? m_place : m_words.size();
        if (match->cue.is(Cue::content))
            takeContent(match->words);
        else
            m_place += match->words;
        return true;
    }

    bool isArticle(const CueMatch& match) const
    {
        return !m_words.endsClause(m_place) && match.words == 1
            && (match.cue == CommonCues::definite || match.cue == CommonCues::indefinite);
    }

    /// "in my" of "in my notes".
    std::size_t leadLength() const
    {
        constexpr std::array<std::string_view, 11> links{
            "in", "into", "to", "on", "onto", "from", "of", "for", "through", "off", "down"};
        constexpr std::array<std::string_view, 7> owners{"my", "the", "our", "your", "a", "that", "this"};
        const auto isAt = [this](const auto& table, std::size_t index) {
            return std::ranges::find(table, m_words.at(index)) != table.end();
        };
        std::size_t length = isAt(links, m_place) ? 1 : 0;
        return isAt(owners, m_place + length) ? length + 1 : 0;
    }

    /// An article just before belongs to it.
    void takeContent(std::size_t count)
    {
        if (m_content.empty() && m_article + 1 == m_place)
            m_content.push_back({m_article, m_place});
        if (!m_content.empty() && m_content.back().end == m_place)
            m_content.back().end += count;
        else
            m_content.push_back({m_place, m_place + count});
        m_place += count;
    }

    std::string joined() const
    {
        std::string text;
        for (const Span& span : m_content)
            text += (text.empty() ? "" : " ") + m_words.said(span.first, span.end);
        return text;
    }

    RequestWords m_words;
    const CueTable& m_table;
    std::size_t m_place = 0;
    std::size_t m_article = 0; ///< Where the last cue was one; behind the last word otherwise.
    std::vector<Span> m_content;
    RequestReading m_reading;
};

} // namespace

RequestReading RequestReading::of(std::string_view core, const CueTable& table)
{
    RequestReading reading = Walk(core, table).read();
    reading.words = core;
    return reading;
}

} // namespace quorvell
