// SPDX-License-Identifier: MIT
#include "Understanding/skills/alarms/NounlessWaking.h"

#include "QuorvellCore/text/Characters.h"
#include "QuorvellCore/text/Pattern.h"
#include "Understanding/skills/alarms/AlarmHours.h"
#include "Understanding/skills/alarms/AlarmLine.h"
#include "Understanding/skills/alarms/AlarmTraits.h"
#include "Understanding/skills/alarms/TimerLength.h"
#include "Understanding/time/SpokenPhrase.h"
#include "Understanding/time/SpokenWhen.h"

namespace quorvell {

namespace {

using WakingWish = std::optional<AlarmWish>;
using Kind = AlarmWish::Kind;

/// A lone number is an hour here, and never how many.
std::string hourOrTime(const std::string& words)
{
    static const Pattern lone("^\\d$");
    return AlarmLine::asTime(lone.find(words) ? "at " + words : words);
}

WakingWish wakeAt(const std::string& words)
{
    return AlarmWish{.kind = Kind::set, .isWaking = true, .text = hourOrTime(words)};
}

/// "In 30 minutes wake me", "tomorrow at 6 please wake us up".
WakingWish timeFirst(const std::string& core)
{
    static const Pattern form("^((?:in|at|after|tomorrow|today|tonight|on|every|each|\\d)\\b.*?),? (?:please |kindly )?"
                              "(?:you )?(?:wake|get) (?:me|us)(?: up)?$",
        Pattern::caseless);
    const auto match = form.find(core);
    const bool isTime = match && (AlarmTraits::isWholeTime(match->texts[0]) || TimerLength::read(match->texts[0]));
    return isTime ? wakeAt(match->texts[0]) : std::nullopt;
}

/// "Let me sleep until 9 on thursday", "let me nap for 20 minutes", "don't let me sleep past 8".
WakingWish sleeping(const std::string& core)
{
    static const Pattern until(
        "^(?:(?:please )?let (?:me|us) |i (?:want|would like|need|wanna) (?:to )?|i['’]?d like to |i(?:['’]?m| am| "
        "will|['’]ll) "
        "(?:going to |gonna )?)?(?:have )?(?:a |take )*(?:sleep|nap|doze|rest|snooze)(?:ing)?(?: in)? "
        "(?:until|till|til|to) (.+)$",
        Pattern::caseless);
    static const Pattern past(
        "^(?:please )?(?:do not|don['’]?t|never) let (?:me|us) (?:sleep|nap|oversleep|stay in bed|lie in|"
        "rest)(?: in)?(?: (?:past|beyond|after|longer than|later than|until|till))?[,]?\\s*(.*)$",
        Pattern::caseless);
    static const Pattern length("^(?:(?:please )?let (?:me|us) (?:have |take )?|i (?:want|need|would like) (?:to "
                                "(?:take |have )?)?|i['’]?m (?:going to "
                                "|gonna )?(?:take |have )?|take )?(?:a |an )?(?:power )?(?:sleep|nap|doze|siesta)(?: "
                                "for)?(?: (?:about|around))? (.+)$"
                                "|^(?:let me (?:take|have) )?(?:a )?(.+?)[- ](?:power )?nap$",
        Pattern::caseless);
    for (const Pattern* form : {&until, &past})
        if (const auto match = form->find(core))
            return wakeAt(match->texts[0]);
    const auto match = length.find(core);
    const auto minutes = match ? TimerLength::read(match->texts[0] + match->texts[1]) : std::nullopt;
    return minutes && minutes->rest.empty() ? wakeAt(match->texts[0] + match->texts[1]) : std::nullopt;
}

/// "Let me sleep in tomorrow", "I don't want to be woken at 7 on friday".
WakingWish sleepingIn(const std::string& core)
{
    static const Pattern in("^(?:(?:please )?let (?:me|us) |i (?:want to |would like to |['’]?d like to |wanna ))?"
                            "(?:sleep in|sleep late|lie in|have a lie[- ]?in)(?:(?: on)? (.+?))?(?:[,;.] ?(?:and )?no "
                            "(?:alarms?|waking))?$",
        Pattern::caseless);
    static const Pattern spared(
        "^(?:i (?:do not|don['’]?t|dont|won['’]?t|wont|no longer) (?:want|need|have|like)(?: to)? (?:be (?:woken|waked|"
        "awakened)(?: up)?|wake up|get up|be up|waking(?: up)?)|no (?:need to )?wak(?:e|ing)(?: (?:me|us))?(?: up)?"
        "|no wake[- ]?ups?)\\s*(.*)$",
        Pattern::caseless);
    for (const Pattern* form : {&in, &spared}) {
        const auto match = form->find(core);
        if (match && (form == &spared || !match->texts[0].empty()))
            return AlarmWish{.kind = Kind::cancelAll, .which = AlarmLine::withoutLead(match->texts[0])};
    }
    return std::nullopt;
}

/// "My flight is at 9 am tomorrow, wake me 3 hours before": the hour is counted from there.
WakingWish beforeReason(const std::string& core)
{
    static const Pattern form("^(.*\\b(?:at|by|from) .*?\\d.*?)(?:[,;.]|,? (?:and|so)\\b)+ ?(?:so |and |please "
                              ")*(?:wake|get) (?:me|us)(?: up)? "
                              "(.+?) (?:before|earlier|ahead|prior)(?: (?:to )?(?:that|it|then|of (?:that|it)))?$",
        Pattern::caseless);
    static const Pattern day(
        "\\b(?:tomorrow|today|tonight|(?:next |on |this )*(?:mon|tues|wednes|thurs|fri|satur|sun)day)\\b",
        Pattern::caseless);
    constexpr int minutesOfDay = 24 * 60;
    const auto match = form.find(core);
    const auto length = match ? TimerLength::read(match->texts[1]) : std::nullopt;
    std::string reason = match ? SpokenPhrase::withDigits(match->texts[0]) : "";
    const auto hour = length && length->rest.empty() ? AlarmHours::takeClock(reason) : std::nullopt;
    if (!hour)
        return std::nullopt;
    const auto ahead = static_cast<int>(std::chrono::duration_cast<std::chrono::minutes>(length->length).count());
    const int minute = hour->from - ahead;
    if (minute < 0 || minute >= minutesOfDay) // The day before: what is meant is asked.
        return AlarmWish{.kind = Kind::set, .isWaking = true};
    const auto named = day.find(reason);
    const std::string on = named ? " " + reason.substr(named->range.start, named->range.end - named->range.start) : "";
    return wakeAt("at " + SpokenWhen::clock(DateParts{2000, 1, 1, minute / 60, minute % 60}) + on);
}

/// "9 instead of 6:30".
WakingWish inPlaceOf(const std::string& core)
{
    static const Pattern form(
        "^(?:make it |let['’]?s do |do |at )?(.+?),? (?:instead of|rather than|in place of) (?:at )?(.+)$",
        Pattern::caseless);
    static const Pattern clock(
        "^(?:\\d{1,2}(?:[:.]\\d{2})?|one|two|three|four|five|six|seven|eight|nine|ten|eleven|twelve|"
        "noon|half past \\w+)(?: ?[ap]\\.?m\\.?)?(?: (?:tomorrow|in the morning))?$",
        Pattern::caseless);
    const auto match = form.find(core);
    const bool areClocks = match && clock.find(match->texts[0]) && clock.find(match->texts[1]);
    return areClocks ? WakingWish(
               AlarmWish{.kind = Kind::move, .which = match->texts[1], .when = AlarmLine::asTime(match->texts[0])})
                     : std::nullopt;
}

/// "Ring at 9:15 pm for the oven", "alert me at 3 pm", "when it's 8".
WakingWish ringing(const std::string& core)
{
    static const Pattern ring(
        "^(?:(?:please )?(?:ring|beep|buzz|chime|sound)(?: me)?|set off) (?=(?:at|in|on|by|every|when)\\b)",
        Pattern::caseless);
    static const Pattern alert(
        "^(?:(?:please )?(?:alert|notify|buzz|ping|signal|tell|warn|inform|let)(?: me)?(?: know)?) "
        "(?:when (?:it(?:['’]?s| is| turns| hits| becomes)|the (?:time|clock) (?:is|turns|hits|strikes)) )?(?:at "
        ")?(.+)$",
        Pattern::caseless);
    static const Pattern linked("^\\S+(?: me)?(?: know)? (?:at|when)\\b", Pattern::caseless);
    std::string words = core;
    if (AlarmLine::take(ring, words)) {
        std::string name = AlarmLine::takeName(words);
        return AlarmWish{.kind = Kind::set, .text = hourOrTime(words), .name = std::move(name)};
    }
    const auto match = alert.find(core);
    static const Pattern digit(
        "\\d|noon|midnight|one|two|three|four|five|six|seven|eight|nine|ten|eleven|twelve", Pattern::caseless);
    const bool isTime =
        match && linked.find(core) && digit.find(match->texts[0]) && AlarmTraits::isWholeTime(match->texts[0]);
    return isTime ? WakingWish(AlarmWish{.kind = Kind::set, .text = hourOrTime(match->texts[0])}) : std::nullopt;
}

} // namespace

WakingWish NounlessWaking::read(const std::string& core)
{
    for (const auto reader : {timeFirst, beforeReason, sleepingIn, sleeping, inPlaceOf, ringing})
        if (auto wish = reader(core))
            return wish;
    return std::nullopt;
}

} // namespace quorvell
