// SPDX-License-Identifier: MIT
#include "QuorvellCore/reminders/request/RestatedWords.h"

#include "QuorvellCore/reminders/request/RuleStart.h"
#include "QuorvellCore/reminders/spoken/FigureDates.h"
#include "QuorvellCore/reminders/wording/RequestWording.h"
#include "QuorvellCore/text/Characters.h"
#include "QuorvellCore/text/Pattern.h"

#include <utility>
#include <vector>

namespace quorvell {

namespace {

using Restated = std::optional<RestatedWords>;

Restated onEitherDay(std::string_view words, Instant now, const Calendar& calendar)
{
    RequestWording wording(repairUtf8(words));
    wording.tokens().markQuotes();
    std::vector<std::string> readings = FigureDates::either(wording, now, calendar);
    return readings.size() == 2 ? Restated(RestatedWords{std::move(readings[0]), std::move(readings[1]), now})
                                : std::nullopt;
}

Restated fromStart(std::string_view words, Instant now, const Calendar& calendar)
{
    auto start = RuleStart::find(words, now, calendar);
    return start ? Restated(RestatedWords{std::move(start->words), {}, start->justBefore, true}) : std::nullopt;
}

/// "Not to eat after 8 pm" is said at 8 pm, and keeps its hour.
Restated notAfter(std::string_view words, Instant now, const Calendar&)
{
    static const Pattern form(
        R"(\bnot to [^,.;]*?\S (after|past) (\d{1,2}(?::\d\d)? ?[ap]\.?m\b\.?|\d{1,2}:\d\d|noon|midnight))",
        Pattern::Case::insensitive);
    constexpr std::size_t longest = 400; // Bytes; longer requests are hardly said.
    const auto match = words.size() <= longest ? form.find(words) : std::nullopt;
    if (!match)
        return std::nullopt;
    std::string text(words);
    const TextRange link = *match->groups[0];
    text.replace(link.start, link.end - link.start, "at");
    return RestatedWords{std::move(text), {}, now, false, " " + match->texts[0] + " " + match->texts[1]};
}

} // namespace

std::optional<RestatedWords> RestatedWords::find(std::string_view words, Instant now, const Calendar& calendar)
{
    for (const auto reader : {onEitherDay, fromStart, notAfter})
        if (auto meant = reader(words, now, calendar))
            return meant;
    return std::nullopt;
}

} // namespace quorvell
