// SPDX-License-Identifier: MIT
// The words, numbers and marks of a request, with what is known of each.
#pragma once

#include "QuorvellCore/reminders/wording/WordTerms.h"
#include "QuorvellCore/text/LowerCase.h"
#include "QuorvellCore/text/Pattern.h"

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

namespace quorvell {

struct RequestToken {
    enum class Kind {
        word,
        number, ///< "20"
        clock, ///< "5:30", "5.30", "5pm", "5.30pm": the hour and the minute may be impossible ones.
        ordinal, ///< "5th"
        figures, ///< "1.5", "10.0.0.1": digits that are no time.
        mark, ///< One character that is no letter and no digit.
    };

    enum class Meaning {
        open, ///< May be part of a time.
        task, ///< Never part of a time, whatever it looks like.
        doubtful, ///< May be a time or not; the user has to say.
        time, ///< Was read as part of the time.
    };

    Kind kind = Kind::word;
    TextRange range; ///< In the lower-cased text.
    std::string_view text; ///< Lower-cased.
    bool hasCapital = false; ///< Of its first letter, as it was written.
    bool followsSpace = false;
    WordTerms terms{};
    Meaning meaning = Meaning::open;
};

/// Positions outside the text give an empty mark, so that neighbours need no check. The texts must outlive it.
class RequestTokens {
public:
    using Words = std::initializer_list<std::string_view>;

    RequestTokens(const LowerCasedText& lower, std::string_view input);

    int size() const { return static_cast<int>(m_tokens.size()); }
    const RequestToken& token(int index) const;
    bool isInside(int index) const { return index >= 0 && index < size(); }
    bool is(int index, Words words) const;
    /// One of the terms holds of that word.
    bool has(int index, std::uint32_t anyOf) const { return token(index).terms.has(anyOf); }
    bool isOpen(int index) const { return isInside(index) && token(index).meaning == RequestToken::Meaning::open; }
    bool isTime(int index) const { return isInside(index) && token(index).meaning == RequestToken::Meaning::time; }
    bool isDoubtful(int index) const
    {
        return isInside(index) && token(index).meaning == RequestToken::Meaning::doubtful;
    }
    /// Where the request proper begins, behind "please remind me to".
    int start() const { return m_start; }

    void mark(int index, RequestToken::Meaning meaning) { m_tokens[static_cast<std::size_t>(index)].meaning = meaning; }
    /// The ranges are in order, without overlaps.
    void markTimes(const std::vector<TextRange>& ranges);

    /// What somebody put into quotes is a name: part of the task.
    void markQuotes();

    /// From the first to the last of these tokens, in the lower-cased text.
    TextRange range(int first, int last) const { return {token(first).range.start, token(last).range.end}; }

private:
    void findStart();
    bool closesQuote(int opening, int index) const;

    std::vector<RequestToken> m_tokens;
    int m_start = 0;
};

} // namespace quorvell
