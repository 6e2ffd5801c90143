// SPDX-License-Identifier: MIT
// Which words of a request are a time that was passed over.
#pragma once

#include "QuorvellCore/reminders/phrase/PhraseFindings.h"
#include "QuorvellCore/reminders/request/PassedOverTime.h"
#include "QuorvellCore/reminders/wording/RequestTokens.h"

#include <cstdint>
#include <string_view>

namespace quorvell {

/// The tokens must outlive it.
class PassedOverRules {
public:
    struct Found {
        int length = 0; ///< Words; 0 where nothing was passed over.
        PassedOverTime::About about = PassedOverTime::About::everything;
    };

    PassedOverRules(const RequestTokens& tokens, const PhraseFindings& findings);

    Found timeAt(int index) const;

private:
    bool is(int index, RequestTokens::Words words) const { return m_tokens.is(index, words); }
    bool has(int index, std::uint32_t anyOf) const { return m_tokens.has(index, anyOf); }
    const RequestToken& token(int index) const { return m_tokens.token(index); }
    bool isLeft(int index) const { return m_tokens.isOpen(index); }

    // Each looks at one word with its neighbours and tells how many words from there on are such a time; 0 for none.
    int foreignDay(int index) const;
    int day(int index) const;
    bool isWordOfTask(int index) const;
    bool isEdge(int index) const;
    int monthOrDate(int index) const;
    bool isShortYear(int index) const;
    bool isBareDay(int index) const;
    bool isMonth(int index) const;
    bool isNumber(int index) const;
    int clock(int index) const;
    static bool isMilitary(std::string_view text);
    static bool isHourAbroad(std::string_view text);
    int bareHour(int index) const;
    int laterToday(int index) const;
    int vaguely(int index) const;
    int duration(int index) const;
    int bound(int index) const;
    int span(int index) const;
    bool isSomethingCounted(int index) const;
    int rule(int index) const;
    int period(int index) const;
    int offset(int index) const;
    int distance(int index) const;
    bool isCount(int index) const;
    bool isBeforeAfter(int index) const;
    int ordinal(int index) const;
    int feast(int index) const;
    int mealTime(int index) const;
    int numericDate(int index) const;

    const RequestTokens& m_tokens;
    bool m_hasDay = false;
    bool m_hasClock = false;
    bool m_hasRule = false;
};

} // namespace quorvell
