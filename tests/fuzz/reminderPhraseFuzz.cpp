// SPDX-License-Identifier: MIT
// Any bytes as a phrase, at any moment in any of some zones. The first five bytes choose moment and zone.
#include "QuorvellCore/reminders/phrase/PhraseKeywords.h"
#include "QuorvellCore/reminders/phrase/PhrasePatterns.h"
#include "QuorvellCore/reminders/phrase/ReminderPhraseJson.h"
#include "QuorvellCore/reminders/request/ReminderRequest.h"
#include "QuorvellCore/text/Characters.h"
#include "QuorvellCore/text/LowerCase.h"
#include "fuzzing.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <utility>
#include <vector>

using namespace quorvell;

namespace {

constexpr std::size_t headerSize = 5;

void demand(bool holds, const char* what)
{
    if (holds)
        return;
    std::fprintf(stderr, "Not so: %s\n", what);
    std::abort();
}

const Calendar& calendarOf(std::uint8_t choice)
{
    static const std::vector<Calendar> calendars = [] {
        std::vector<Calendar> made;
        for (const char* zone : {"UTC", "Europe/Berlin", "America/New_York", "Australia/Lord_Howe", "Asia/Kolkata",
                 "Pacific/Apia", "America/Sao_Paulo", "Asia/Beirut", "Africa/Casablanca", "Pacific/Kiritimati"})
            made.push_back(*Calendar::create(zone, "en_US"));
        return made;
    }();
    return calendars[choice % calendars.size()];
}

/// Every minute of the years 1970 to 2106 or so, a quarter of which has been seen by every zone's history.
Instant momentOf(std::string_view bytes)
{
    std::uint32_t number = 0;
    for (const char byte : bytes.substr(0, 4))
        number = number << 8 | static_cast<std::uint8_t>(byte);
    return Instant(std::chrono::seconds(number));
}

/// The words that spare most searches never hide a match.
void checkKeywords(std::string_view text)
{
    const std::string lower = lowerCased(repairUtf8(text));
    const PhraseKeywords keywords(lower);
    const PhrasePatterns& all = PhrasePatterns::all();
    const std::pair<PhraseSearch, const Pattern*> searches[] = {{PhraseSearch::repeat, &all.repeat},
        {PhraseSearch::offset, &all.offset}, {PhraseSearch::namedDay, &all.namedDay},
        {PhraseSearch::thisPart, &all.thisPart}, {PhraseSearch::weekday, &all.weekday},
        {PhraseSearch::nextWeek, &all.nextWeek}, {PhraseSearch::dayAndMonth, &all.dayAndMonth},
        {PhraseSearch::dayOfMonth, &all.dayOfMonth}, {PhraseSearch::clock, &all.clock},
        {PhraseSearch::clock, &all.secondChanceClock}, {PhraseSearch::part, &all.part}};
    for (const auto& [search, pattern] : searches) {
        const auto match = pattern->find(lower);
        demand(!match || keywords.start(search) <= match->range.start, "a pattern matches no earlier than its keyword");
    }
}

void checkPhrase(const ReminderPhrase& phrase, std::string_view text, const Calendar& calendar)
{
    demand(std::is_sorted(phrase.alternatives.begin(), phrase.alternatives.end()), "alternatives are in order");
    demand(phrase.alternatives.empty() || phrase.date < phrase.alternatives.front(), "the date is the first choice");
    demand(phrase.alternatives.size() <= 2, "there are at most two alternatives");
    demand(phrase.isAmbiguous() == !phrase.alternatives.empty(), "ambiguous means that there are alternatives");
    demand(!phrase.isAmbiguous() || phrase.hasTime, "only an hour is ambiguous");
    demand(!phrase.timeWords.empty(), "something was read as the time");
    demand(trimmed(phrase.task, ",.;:-!") == phrase.task, "the task is trimmed");
    demand(phrase.task.find("  ") == std::string::npos, "the task has single spaces");
    demand(phrase.task.size() <= 3 * text.size() + 3, "the task comes from the text");
    if (phrase.repeatRule) {
        demand(ReminderRepeat::fromStored(phrase.repeatRule->stored()) == phrase.repeatRule, "a rule can be stored");
        const auto next = phrase.repeatRule->next(phrase.date, phrase.date, calendar);
        demand(next && *next > phrase.date, "a repeating reminder comes back");
    }
    demand(parseJson(dumpJson(phraseJson(phrase))) == phraseJson(phrase), "it survives as JSON");
}

} // namespace

void quorvell::search(std::string_view bytes)
{
    if (bytes.size() < headerSize)
        return;
    const Calendar& calendar = calendarOf(static_cast<std::uint8_t>(bytes[4]));
    const Instant now = momentOf(bytes);
    const std::string text(bytes.substr(headerSize));

    const auto started = std::chrono::steady_clock::now();
    const auto phrase = ReminderPhrase::parse(text, now, calendar);
    const auto taken = std::chrono::steady_clock::now() - started;
    demand(taken < std::chrono::seconds(5), "a phrase takes bounded time");
    demand(phrase == ReminderPhrase::parse(text, now, calendar), "the same words mean the same");
    if (phrase)
        checkPhrase(*phrase, text, calendar);
    if (text.size() < 4096)
        checkKeywords(text);
    const auto request = ReminderRequest::fromWords(text, now, calendar);
    demand(request.verdict != ReminderRequest::Verdict::ready || (request.date >= now && !request.task.empty()),
        "what is ready lies ahead and says what to do");
}
