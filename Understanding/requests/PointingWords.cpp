// SPDX-License-Identifier: MIT
#include "Understanding/requests/PointingWords.h"

#include "QuorvellCore/text/Characters.h"
#include "QuorvellCore/text/Pattern.h"
#include "Understanding/dialogue/Pointing.h"
#include "Understanding/dialogue/repair/ActBook.h"
#include "Understanding/requests/TalkedOf.h"
#include "Understanding/skills/calendar/AgendaRules.h"
#include "Understanding/time/SpokenDays.h"
#include "Understanding/time/SpokenLength.h"
#include "Understanding/time/SpokenMoment.h"
#include "Understanding/time/TimeWords.h"

namespace quorvell {

namespace {

using Kind = TalkedOf::Kind;

std::string replaced(const std::string& text, const TextRange& range, const std::string& by)
{
    return trimmed(trimmed(text.substr(0, range.start)) + " " + by + " " + trimmed(text.substr(range.end)));
}

/// "That day", "the evening before", "the day after that".
std::string withDay(std::string words, const TalkedOf& talked)
{
    static const Pattern same("(?:\\bon )?\\b(?:that|the same|that same|the very) day\\b", Pattern::caseless);
    static const Pattern beside("(?:\\bon )?\\bthe (day|night|evening|morning|afternoon) (before|after)(?: it| that)?"
                                "(?=(?: at\\b.*| to (?!the\\b).*| and .*|[,.?!].*)?$)",
        Pattern::caseless);
    static const Pattern following("(?:\\bon )?\\bthe (?:next|following) day\\b(?! of)", Pattern::caseless);
    if (talked.kind == Kind::none)
        return words;
    if (const auto match = same.find(words))
        words = replaced(words, match->range, talked.day());
    if (const auto match = following.find(words))
        words = replaced(words, match->range, talked.day(1));
    const auto match = beside.find(words);
    if (!match)
        return words;
    const bool isDay = match->texts[0] == "day";
    const std::string part = isDay ? "" : match->texts[0] == "night" ? " at 8 pm" : " in the " + match->texts[0];
    return replaced(words, match->range, talked.day(match->texts[1] == "before" ? -1 : 1) + part);
}

/// "Remind me two days before to buy a present", "wake me 3 hours before".
std::string withTimeBefore(const std::string& words, const TalkedOf& talked)
{
    static const Pattern days(
        "^((?:.*\\b)?remind me )((?:\\S+ )?\\S+ (?:days?|weeks?)) before(?: it| that)?( (?:to|about|of) .+)$",
        Pattern::caseless);
    static const Pattern hours("^((?:.*\\b)?(?:wake me(?: up)?|get me up|set an? alarm(?: for)?|alarm) )"
                               "((?:\\S+ ){1,3}(?:minutes?|mins?|hours?)) before(?: it| that)?$",
        Pattern::caseless);
    if (talked.kind == Kind::none || talked.kind == Kind::day)
        return words;
    if (const auto match = days.find(words)) {
        const auto count = TimeWords::daysIn(match->texts[1]);
        return count ? match->texts[0] + talked.day(-*count) + match->texts[2] : words;
    }
    const auto match = talked.hasHour() ? hours.find(words) : std::nullopt;
    const auto length = match ? SpokenLength::read(match->texts[1]) : std::nullopt;
    if (!length || !length->rest.empty())
        return words;
    const TalkedOf before{.kind = talked.kind, .start = talked.start->adding(-length->minutes)};
    return match->texts[0] + before.hour() + " " + before.day();
}

/// "And tea with her tomorrow at the same time"; alone it keeps the hour of what is moved, which is read elsewhere.
std::string withSameTime(const std::string& words, const TalkedOf& talked)
{
    static const Pattern form("(?:\\bat )?(?:\\bthe )?\\bsame time\\b(?! as\\b)", Pattern::caseless);
    static const Pattern makes(
        "^(?:(?:and|also|ok|okay|then|now|please|can you|could you) )*(?:set|add|put|book|schedule|remind me|wake me"
        "|(?:a|an|another|one|\\w+) (?:\\w+ ){0,2}with\\b)",
        Pattern::caseless);
    const auto match = talked.hasHour() && makes.find(words) ? form.find(words) : std::nullopt;
    return match ? replaced(words, match->range, talked.hour()) : words;
}

/// "With her", of "lunch with Priya".
std::string withName(const std::string& words, const RequestMemory& memory)
{
    static const Pattern pronoun("\\bwith (?:her|him|them)\\b", Pattern::caseless);
    static const Pattern name("\\bwith (\\p{Lu}[\\p{L}'’-]+)");
    const auto match = pronoun.find(words);
    const auto known = match ? name.find(memory.event.title) : std::nullopt;
    return known ? replaced(words, match->range, "with " + known->texts[0]) : words;
}

/// "Make it half past": of the hour that it has.
std::string withWholeHour(const std::string& words, const TalkedOf& talked)
{
    static const Pattern form(
        "^(?:(?:no|actually|and|oh|sorry|wait|better|rather)[,]? )*(?:(?:make|move|set) (?:it|that)"
        "(?: to| for| at)? |at )?(half|quarter) (past|to)[.!]*$",
        Pattern::caseless);
    const auto match = talked.hasHour() ? form.find(words) : std::nullopt;
    if (!match)
        return words;
    constexpr int halfHour = 30;
    constexpr int quarter = 15;
    DateParts moved = *talked.start;
    moved.minute = 0;
    const int minutes = match->texts[0] == "half" ? halfHour : quarter;
    moved = moved.adding(match->texts[1] == "past" ? minutes : -minutes);
    return "move it to " + TalkedOf{.kind = talked.kind, .start = moved}.hour().substr(3);
}

/// "They moved it to friday", "they called, it's the 16th", "he can't today, put it on wednesday".
std::string asMove(const std::string& words, const RuleSurroundings& around)
{
    static const std::string told =
        "^(?:(?:hm+|oh|actually|so|the|my|our|ok|well|sorry)[,]? )*(?:\\S+ (?:just )?(?:called"
        "|phoned|rang|wrote|texted|emailed)[,;]?(?: and| that| to say)? )?";
    static const Pattern moved(told
            + "(?:they|he|she|it|that|it['’]s|it is|it has)(?: has| have| had| just| now| been| got| was|['’]ve)*"
              " (moved|postponed|pushed|shifted|rescheduled|put off|delayed|brought forward)(?: it| that)?"
              "(?: back)?( forward)? (?:to|(by)|until|till|for) (.+?)(?: now)?[.!]*$",
        Pattern::caseless);
    static const Pattern called(
        "^(?:(?:hm+|oh|actually|so|the|my|our|ok)[,]? )*\\S+ (?:just )?(?:called|phoned|rang|wrote"
        "|texted|emailed)[,;]? (?:(?:so|and|now) )*it(?:['’]s| is| will be)(?: now)?(?: on)? (.+?)"
        "(?: now)?[.!]*$",
        Pattern::caseless);
    static const Pattern unable(
        "^\\S+ (?:can['’]?t|cannot|can not|couldn['’]?t)(?: \\S+){0,3}?[,;]? (?:so |please |then )*"
        "(?:put|make|move|do|have) it (?:on |to |for |at )?(.+?)[.!]*$",
        Pattern::caseless);
    if (const auto match = moved.find(words)) {
        const std::string& time = match->texts[3];
        const bool isEarlier = match->groups[1] || match->texts[0] == "brought forward";
        return match->groups[2] ? "move it " + time + (isEarlier ? " earlier" : " later") : "move it to " + time;
    }
    auto match = called.find(words);
    if (!match)
        match = unable.find(words);
    const bool isTime =
        match && (TimeWords::isTime(match->texts[0], around) || SpokenDays::read(match->texts[0], around));
    return isTime ? "move it to " + match->texts[0] : "";
}

/// "Rename it lunch with Bella", "call it cardiologist", "change it to 'tax meeting'".
std::string asRenaming(const std::string& words)
{
    static const Pattern form("^(?:(?:ok|okay|and|please|no|actually) )*(?:rename it(?: to| as)?|call it|change it to"
                              "(?= [\"'‘“])) (\\S.*)$",
        Pattern::caseless);
    const auto match = form.find(words);
    return match ? "rename it to " + trimmed(match->texts[0], " \"'‘’“”") : "";
}

/// "The one with bob", where one of several lunches was told of.
std::string asOther(const std::string& words, const RequestMemory& memory)
{
    static const Pattern form(
        "^(?:(?:no|and|what about|i mean|i meant)[,.]? )*(?:the|that) one ((?:with|about|for|at|in) "
        "\\S.*?)[.?!]*$",
        Pattern::caseless);
    static const Pattern noun("^(\\S+)(?: with\\b| at\\b| for\\b|$)", Pattern::caseless);
    const auto match = memory.pending.isOpen() || ActBook::wasJustDone(memory) ? std::nullopt : form.find(words);
    const auto kind = match ? noun.find(memory.event.title) : std::nullopt;
    if (!kind || !Pointing::named(memory.found, match->texts[0]).empty())
        return {};
    return "when is " + kind->texts[0] + " " + match->texts[0];
}

/// "Put lunch there", "put lunch at 12", right after that day was asked about.
std::string withAskedDay(
    const std::string& words, const TalkedOf& talked, const RequestMemory& memory, const RuleSurroundings& around)
{
    static const Pattern putThere(
        "^(?:(?:and|ok|okay|then|so|please|can you|could you|just) )*(?:put|add|book|schedule|set up"
        "|plan|arrange)\\b",
        Pattern::caseless);
    static const Pattern there(",? (?:there|then|in there|in that slot)(?=(?:,? all day)?[.!]*$)", Pattern::caseless);
    static const Pattern timeLead(
        "^(?:(?:and|ok|okay|then|so|well|make it|let['’]?s say|say)[,]? )+", Pattern::caseless);
    static const Pattern timeTail("(?: then| please)+[.!]*$", Pattern::caseless);
    if (talked.kind != Kind::day)
        return words;
    const PendingQuestion& asked = memory.pending;
    const std::string time = timeTail.replaceAll(timeLead.replaceAll(words, ""), "");
    const bool isAnswer = asked.kind == &AgendaRules::when && asked.choices.empty() && !asked.date
        && TimeWords::isTime(time.find_first_of("0123456789") == 0 ? "at " + time : time, around);
    const auto moment = SpokenMoment::read(isAnswer ? time : words, around);
    const bool lacksDay = moment ? !moment->namesDay && moment->repeat.empty() : false;
    if (isAnswer)
        return lacksDay ? time + " " + talked.day() : words;
    if (!putThere.find(words))
        return words;
    if (const auto match = there.find(words); match && (!moment || lacksDay))
        return replaced(words, match->range, trimmed(talked.day() + " " + talked.hour()));
    return lacksDay ? words + " " + talked.day() : words;
}

/// "How many weeks until then?"
std::string withEnd(const std::string& words, const TalkedOf& talked)
{
    static const Pattern form("\\b(?:until|till|to) (?:then|that day|it)(?=[.?!]*$)", Pattern::caseless);
    static const Pattern asks("^(?:(?:and|so|but) )*how (?:many|long|much)\\b", Pattern::caseless);
    const auto match = talked.kind != Kind::none && asks.find(words) ? form.find(words) : std::nullopt;
    return match ? replaced(words, match->range, "until " + talked.day().substr(3)) : words;
}

/// "What about next week?": more than a day is no other time for anything.
std::string asDaysAsked(const std::string& words, const TalkedOf& talked, const RuleSurroundings& around)
{
    static const Pattern form("^(?:and |so |ok |okay )*(?:what|how) about (.+?)[.?!]*$", Pattern::caseless);
    const auto match = talked.kind == Kind::alarm ? std::nullopt : form.find(words);
    const auto days = match ? SpokenDays::read(match->texts[0], around) : std::nullopt;
    return days && !days->isOneDay() ? "what is on " + match->texts[0] : "";
}

/// "Cancel that too", "sunday as well": what is done too is done.
std::string withoutToo(const std::string& words)
{
    static const Pattern form(
        "^(?:(?:and|also|then|ok|okay|please|yes)[,]? )*(?:(?:cancel|delete|remove|move|change|clear"
        "|turn off|switch off|get rid of|take off|drop|rename)\\b.*?) (?:too|as well|also)"
        "(?: then| please)?[.!]*$",
        Pattern::caseless);
    static const Pattern tail(" (?:too|as well|also)(?: then| please)?[.!]*$", Pattern::caseless);
    static const Pattern bare("\\b(?:move|change) (?:the|my) (?:reminder|alarm)$", Pattern::caseless);
    const std::string alone = form.find(words) ? tail.replaceAll(words, "") : words;
    return bare.find(alone) ? words : alone;
}

} // namespace

PointingWords PointingWords::resolved(
    std::string_view said, const RequestMemory& memory, const RuleSurroundings& around)
{
    constexpr std::size_t longest = 200; ///< Bytes; who tells more names what they mean.
    PointingWords result{.words = trimmed(said)};
    if (said.size() > longest)
        return result;
    static const Pattern mind("^(?:oh |no |sorry |actually )*(?:i(?:['’]ve| have)? changed my mind|on second thoughts?)"
                              "[,.:;]* (?=\\S)",
        Pattern::caseless);
    TalkedOf talked = TalkedOf::of(memory);
    std::string words = withoutToo(mind.replaceAll(result.words, ""));
    const bool hasEvent = !memory.event.id.empty() && memory.event.start;
    const bool isAsking = memory.pending.isOpen();
    if (std::string days = isAsking ? "" : asDaysAsked(words, talked, around); !days.empty())
        return {.words = std::move(days)};
    const bool isOffered = memory.pending.tool == "add_event";
    if (std::string move = isOffered || hasEvent || talked.kind != Kind::none ? asMove(words, around) : "";
        !move.empty())
        return {.words = std::move(move), .isOfEvent = hasEvent && !isOffered};
    if (std::string name = talked.kind == Kind::event ? asRenaming(words) : ""; !name.empty())
        return {.words = std::move(name)};
    if (std::string other = hasEvent ? asOther(words, memory) : ""; !other.empty())
        return {.words = std::move(other)};
    words = withAskedDay(words, talked, memory, around);
    words = withEnd(withWholeHour(withName(words, memory), talked), talked);
    result.words = withSameTime(withTimeBefore(withDay(std::move(words), talked), talked), talked);
    return result;
}

} // namespace quorvell
