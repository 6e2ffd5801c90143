// SPDX-License-Identifier: MIT
#include "Understanding/skills/alarms/AlarmFollowUp.h"

#include "QuorvellCore/text/Characters.h"
#include "QuorvellCore/text/Pattern.h"
#include "Understanding/skills/alarms/AlarmCalls.h"
#include "Understanding/skills/alarms/AlarmTraits.h"
#include "Understanding/skills/alarms/AlarmWishReader.h"
#include "Understanding/skills/alarms/TimerLength.h"
#include "Understanding/time/SpokenPhrase.h"
#include "Understanding/time/TimeWords.h"
#include "Understanding/words/ListPlace.h"
#include "Understanding/words/RequestText.h"

#include <cstdint>
#include <utility>

namespace quorvell {

namespace {

using Kind = AlarmWish::Kind;
using FollowUp = std::optional<RuleStep>;

std::string coreOf(const std::string& words)
{
    static const Pattern fillers(
        "^(?:(?:and|also|plus|then|oh|so|well|now|actually|wait)(?![\\w'’-])[,]?\\s+)+", Pattern::caseless);
    return fillers.replaceAll(RequestText::withoutClosing(RequestText::withoutOpening(words)), "");
}

const char* nounOf(const RequestMemory& memory)
{
    return memory.alarms.isTimer ? "timer " : "alarm ";
}

/// "The 6 am one" as the alarm of 6; a place in a list is read elsewhere.
std::string withNoun(const std::string& core, const RequestMemory& memory)
{
    static const Pattern one("^(.*?\\b(the|that|my) (.+?)) (ones?)\\b(.*)$", Pattern::caseless);
    const auto match = one.find(core);
    if (!match || ListPlace::read(match->texts[2]) || match->texts[2].find("other") != std::string::npos)
        return {};
    const bool isPlural = match->texts[3].ends_with('s');
    return match->texts[0] + " " + trimmed(nounOf(memory)) + (isPlural ? "s" : "") + match->texts[4];
}

bool isOfOne(Kind kind)
{
    return kind == Kind::cancel || kind == Kind::cancelAll || kind == Kind::move || kind == Kind::pause
        || kind == Kind::resume || kind == Kind::add || kind == Kind::list || kind == Kind::left || kind == Kind::ends
        || kind == Kind::rename || kind == Kind::repeat;
}

/// A length for the timer that was talked about: "no, 12 minutes", "make it 20 minutes".
FollowUp runAnew(const std::string& core, const RequestMemory& memory, const RuleSurroundings& around)
{
    static const Pattern form(
        "^(?:(?:no|sorry|i (?:mean|meant|said))[,]?\\s+)*(?:(?:make|set|change) (?:it|that)(?: to| for)? "
        "|for )?(.+?)(?: instead)?$",
        Pattern::caseless);
    static const Pattern added(
        "\\b(?:more|another|extra|longer|shorter|less|add|earlier|later|ago)\\b", Pattern::caseless);
    const auto match = form.find(core);
    const auto length = match && !added.find(core) ? TimerLength::read(match->texts[0]) : std::nullopt;
    if (!length || !length->rest.empty())
        return std::nullopt;
    return RuleStep{AlarmCalls{around}.startAgain(memory.alarms.id, length->length), memory};
}

} // namespace

std::optional<AlarmWish> AlarmFollowUp::another(const std::string& words, const RequestMemory& memory)
{
    auto wish = AlarmWishReader::read(words);
    return wish && wish->kind == Kind::set ? wish : AlarmWishReader::read(nounOf(memory) + words);
}

std::optional<AlarmWish> AlarmFollowUp::read(
    const std::string& words, const RequestMemory& memory, const RuleSurroundings& around)
{
    const std::string core = coreOf(words);
    static const Pattern more("^(?:(?:set|add|start|make|create|give me|i need|i want)\\s+)?"
                              "(?:another(?: one)?|(?:a )?(?:second|third|new) one|one more|one)\\s+"
                              "((?:for|at|in|on|called|named|every|of)\\b.+)$",
        Pattern::caseless);
    if (const auto match = more.find(core)) {
        auto wish = another(match->texts[0], memory);
        const bool isWhole =
            wish && (wish->isOfTimers ? wish->length.count() > 0 : TimeWords::isTime(wish->text, around));
        return isWhole && wish->kind == Kind::set ? wish : std::nullopt;
    }
    static const Pattern all("^(?:cancel|delete|remove|disable|clear|stop|turn off|switch off) (?:all|both|them|them "
                             "all|all of them|both of them|every one of "
                             "them|everything)$",
        Pattern::caseless);
    if (all.find(core))
        return AlarmWish{.kind = Kind::cancelAll, .isOfTimers = memory.alarms.isTimer};
    // "And for 7:30."
    static const Pattern also("^(?:and|also|plus)[,]?\\s+(?:for|at)\\s+(.+)$", Pattern::caseless);
    const auto time = memory.alarms.isTimer ? std::nullopt : also.find(trimmed(words, " .!?"));
    if (time && TimeWords::isTime("at " + time->texts[0], around))
        return another("at " + time->texts[0], memory);
    const std::string named = withNoun(core, memory);
    auto wish = named.empty() ? std::nullopt : AlarmWishReader::read(named);
    return wish && isOfOne(wish->kind) ? wish : std::nullopt;
}

FollowUp AlarmFollowUp::ofIt(const std::string& words, const RequestMemory& memory, const RuleSurroundings& around)
{
    const AlarmTalk& talk = memory.alarms;
    const std::string core = coreOf(words);
    if (talk.id.empty())
        return std::nullopt;
    static const Pattern off(
        "^(?:(?:turn|switch|shut) (?:it|that|this)(?: one)? off|(?:turn|switch|shut) off (?:it|that|this)(?: one)?"
        "|(?:cancel|delete|remove|disable) (?:it|this|that|this one|that one))$",
        Pattern::caseless);
    const AlarmCalls calls{around};
    if (off.find(core) && !talk.rings)
        return RuleStep{calls.cancelThis(talk.id, talk.isTimer), memory};
    static const Pattern snooze("^snooze (?:it|that|this)(?: (?:for|by) (.+))?$", Pattern::caseless);
    if (const auto match = talk.isTimer ? std::nullopt : snooze.find(core)) {
        const auto length = TimerLength::read(match->texts[0]);
        constexpr std::chrono::minutes usual{10};
        return RuleStep{calls.snooze(length ? std::chrono::ceil<std::chrono::minutes>(length->length) : usual), memory};
    }
    static const Pattern name("^(?:call|name|rename|label) (?:it|that)(?: to| as)? (.+)$", Pattern::caseless);
    if (const auto match = name.find(core))
        return RuleStep{calls.rename(talk.id, talk.isTimer, trimmed(match->texts[0], "\"'")), memory};
    if (talk.isTimer)
        return runAnew(core, memory, around);
    if (const auto rule = AlarmTraits::readRepeat({.front = "repeat the", .back = core}))
        return moveIt(rule->when, memory, around);
    static const Pattern repeat(
        "^(?:make|have|let|set) (?:it|that) (.+)$|^repeat (?:it|that) (.+)$", Pattern::caseless);
    const auto match = repeat.find(core);
    const auto rule = match
        ? AlarmTraits::readRepeat({.front = "repeat the", .back = match->texts[0] + match->texts[1]})
        : std::nullopt;
    return rule ? FollowUp(moveIt(rule->when, memory, around)) : std::nullopt;
}

std::optional<DateParts> AlarmFollowUp::inOtherHalf(const AlarmTalk& talk, const LocalTime& around)
{
    constexpr int noon = 12;
    constexpr std::int64_t minutesOfDay = 24 * 60;
    if (!talk.start || talk.start->allDay)
        return std::nullopt;
    DateParts other = *talk.start;
    other.hour += other.hour < noon ? noon : -noon;
    const bool isPast = other <= DateParts::from(around.now, around.calendar);
    return isPast ? other.adding(minutesOfDay) : other;
}

RuleStep AlarmFollowUp::moveIt(const std::string& when, RequestMemory memory, const RuleSurroundings& around)
{
    const AlarmCalls calls{around};
    const auto phrase = SpokenPhrase::read(when, around);
    if (phrase && phrase->repeatRule && !phrase->hasTime)
        return {calls.repeatThis(memory.alarms.id, phrase->repeatRule->stored()), std::move(memory)};
    return {calls.moveThis(memory.alarms.id, when), std::move(memory)};
}

} // namespace quorvell
