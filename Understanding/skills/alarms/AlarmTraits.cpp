// SPDX-License-Identifier: MIT
#include "Understanding/skills/alarms/AlarmTraits.h"

#include "QuorvellCore/text/Characters.h"
#include "QuorvellCore/text/Pattern.h"
#include "Understanding/skills/alarms/AlarmRule.h"
#include "Understanding/skills/alarms/TimerLength.h"

namespace quorvell {

namespace {

using TraitWish = std::optional<AlarmWish>;
using Kind = AlarmWish::Kind;

/// One that is there is meant: "my alarm", not "an alarm".
bool isOfOneThere(const std::string& front)
{
    static const Pattern there("^(?:the|my|our|that|this)(?![\\w'’-])", Pattern::caseless);
    return there.find(front).has_value();
}

} // namespace

TraitWish AlarmTraits::readRename(const AlarmLine& cut)
{
    static const Pattern rename(
        "^(?:rename|relabel|(?:change|set|edit|update) the (?:name|label|title) of)\\b", Pattern::caseless);
    static const Pattern name("^(?:name|call|label)\\b", Pattern::caseless);
    static const Pattern link("^(?:to|as|into|with)(?![\\w'’-])\\s*", Pattern::caseless);
    std::string front = cut.front;
    const bool isRename = AlarmLine::take(rename, front);
    if (!isRename && !AlarmLine::take(name, front))
        return std::nullopt;
    std::string back = cut.back;
    AlarmLine::take(link, back);
    if (!isRename && (back.empty() || !isOfOneThere(front)))
        return std::nullopt;
    return AlarmWish{.kind = Kind::rename,
        .isOfTimers = cut.isOfTimers,
        .which = AlarmLine::withoutArticles(front),
        .when = trimmed(back, ".,:\"'")};
}

std::string AlarmTraits::ruleInWords(const std::string& words)
{
    static const Pattern daily("\\b(?:daily|everyday)\\b", Pattern::caseless);
    static const Pattern weekdays("\\b(?:on |(?:every|each) )?(?:weekdays?|work ?days?)\\b", Pattern::caseless);
    static const Pattern weekends("\\b(?:on |(?:every|each) )?weekends?\\b", Pattern::caseless);
    static const Pattern weekly("\\bweekly\\b", Pattern::caseless);
    const std::string days = weekdays.replaceAll(daily.replaceAll(words, "every day"), "every weekday");
    return weekly.replaceAll(weekends.replaceAll(days, "every saturday and sunday"), "every week");
}

std::string AlarmTraits::ruleInTime(const std::string& words)
{
    static const Pattern early("\\b(?:early |very )+(?:in the )?(?=morning\\b)", Pattern::caseless);
    return AlarmRule::inTime(early.replaceAll(words, "in the "));
}

bool AlarmTraits::isWholeTime(const std::string& words)
{
    static const Pattern ofTime(
        "^(?:(?:the|my|an?|new|another|next|for|at|on|in|every|each|daily|weekly|recurring|repeating|backup|extra|"
        "second|third|days?|early|and|morning|evening|night|"
        "afternoon|noon|midnight|today|tonight|tomorrow|tmrw|weekdays?|(?:mon|tues|wednes|thurs|fri|satur|"
        "sun)days?|half|past|quarter|to|o['’]?clock|[ap]\\.?m\\.?|\\d[\\d:.]*(?:[ap]\\.?m\\.?)?|one|two|three|four|"
        "five|six|seven|eight|nine|ten|eleven|twelve)(?:\\s+|$))*$",
        Pattern::caseless);
    return ofTime.find(words).has_value();
}

TraitWish AlarmTraits::readRepeat(const AlarmLine& cut)
{
    static const Pattern repeat("^(?:repeat|make|change|set|have|let|switch|turn)\\b", Pattern::caseless);
    static const Pattern lead(
        "^(?:(?:to|into|as|repeat(?:s|ing)?|recurs?|recurring|go(?:es)? off|ring|be|on|a|for)(?![\\w'’-]"
        ")\\s*)+",
        Pattern::caseless);
    static const Pattern rule(
        "^(?:(?:every|each) (?:day|morning|evening|night|week|weekday|weekend|month|year"
        "|(?:mon|tues|wednes|thurs|fri|satur|sun)day)s?|daily|everyday|weekly|monthly|yearly|weekdays|weekends)"
        "(?: (?:and |or )?(?:(?:mon|tues|wednes|thurs|fri|satur|sun)days?))*$",
        Pattern::caseless);
    std::string front = cut.front;
    if (!AlarmLine::take(repeat, front) || !isOfOneThere(front) || cut.isPlural)
        return std::nullopt;
    std::string back = cut.back;
    AlarmLine::take(lead, back);
    // "Set my alarm every day" lacks an hour.
    static const Pattern change("^(?:repeat|make|change)\\b|\\b(?:repeat|recur|ring|go off)", Pattern::caseless);
    if (!rule.find(back) || cut.isOfTimers || !change.find(cut.front + " " + cut.back))
        return std::nullopt;
    return AlarmWish{
        .kind = Kind::repeat, .which = AlarmLine::withoutArticles(front), .when = AlarmTraits::ruleInWords(back)};
}

TraitWish AlarmTraits::readSound(const std::string& core)
{
    static const Pattern asks(
        "^(?:play|test|try|change|set|what|which|make|turn|use|let me hear|i (?:want|would like) to hear"
        "|how|is|does|can|which|increase|raise|lower|reduce|choose|pick|switch|have|put)\\b",
        Pattern::caseless);
    static const Pattern sound(
        "\\b(?:alarm|timer)(?:['’]?s)?(?: clock)? (?:sounds?|tones?|ringtones?|melody|songs?|music|volume|noise)\\b"
        "|\\b(?:sound|tone|ringtone|melody|song|music|volume|noise) (?:of|for|on) (?:the|my|our) (?:alarm|timer)s?\\b"
        "|\\b(?:alarm|timer)s?\\b.*\\b(?:louder|quieter|softer|sound like|too loud|too quiet)\\b"
        "|\\b(?:song|music|tune|melody|sound|recording) (?:as|for) (?:the|my|an?) (?:alarm|timer)s?\\b"
        "|\\b(?:louder|quieter|softer) (?:alarm|timer)s?\\b"
        "|^(?:which|what) (?:sound|tone|song|music|ringtone|melody)\\b.*\\b(?:alarm|timer)s?\\b"
        "|^how (?:loud|quiet)\\b.*\\b(?:alarm|timer)s?\\b"
        "|^(?:test|try) (?:out )?(?:the|my) (?:alarm|timer)$",
        Pattern::caseless);
    return asks.find(core) && sound.find(core) ? TraitWish(AlarmWish{.kind = Kind::sound}) : std::nullopt;
}

bool AlarmTraits::namesSeveral(const std::string& words)
{
    static const Pattern another("\\band (?:then )?(?:another|one(?: more)?|a second)\\b", Pattern::caseless);
    static const Pattern hours(
        "\\d(?:[:.]\\d{2})?\\s?(?:[ap]m)?\\s*(?:,|&|,? and)\\s*(?:at |for )?\\d{1,2}(?:[:.]\\d{2})?"
        "(?:\\s?[ap]m)?(?:$|\\s|,)(?!\\s*(?:minutes?|mins?|seconds?|secs?|hours?|hrs?)\\b)",
        Pattern::caseless);
    const auto length = TimerLength::read(words);
    return another.find(words) || (hours.find(words) && !(length && length->rest.empty()));
}

bool AlarmTraits::namesAlarm(const std::string& words)
{
    static const Pattern named(
        "\\b(?:alarms?|timers?|wake[- ]?up|reminders?)\\b|^(?:first|last|second|next|other)(?: one)?$",
        Pattern::caseless);
    return named.find(words).has_value();
}

TraitWish AlarmTraits::readBefore(const std::string& words)
{
    static const Pattern form("^(?:(?:for|at|to ring|about|in) )*(.+?) (before|after|ahead of|prior to|in advance of) "
                              "(?:the |my |our )?(.+)$",
        Pattern::caseless);
    static const Pattern time(
        "\\d|\\b(?:noon|midday|midnight|sunrise|sunset|dawn|dusk|morning|evening)\\b", Pattern::caseless);
    const auto match = form.find(words);
    const bool isOfAlarm = match && namesAlarm(match->texts[2]);
    if (!match || (!isOfAlarm && time.find(match->texts[2])))
        return std::nullopt;
    const auto length = TimerLength::read(match->texts[0]);
    if (!length || !length->rest.empty())
        return std::nullopt;
    static const Pattern noun("\\s+(?:alarm|starts|begins)$", Pattern::caseless);
    return AlarmWish{.kind = Kind::before,
        .which = time.find(match->texts[2]) ? match->texts[2] : noun.replaceAll(match->texts[2], ""),
        .length = match->texts[1] == "after" ? -length->length : length->length};
}

} // namespace quorvell
