// SPDX-License-Identifier: MIT
#include "Understanding/skills/alarms/AlarmLine.h"

#include "QuorvellCore/text/Characters.h"
#include "Understanding/skills/alarms/TimerLength.h"

namespace quorvell {

namespace {

constexpr const char* alarmNoun =
    "(?:(?:wake[- ]?up[- ])?(?:ala?ra?m|alram|alarum|alrm|alarn)|wake[- ]?up[- ]call)(s?)(?: clocks?)?(?:['’]s)?";
/// "Tomorrow 7" as "tomorrow at 7", "morning 5" as "at 5 in the morning".
std::string withHourBehindDay(std::string words)
{
    static const Pattern behind(
        "\\b(?:(?:mon|tues|wednes|thurs|fri|satur|sun|to|week|every ?|each )days?|tomorrow|tonight|"
        "weekends?|daily)(?: (?:morning|evening|night|afternoon))?(?=,? "
        "\\d{1,2}(?:[:.]\\d{2})?(?:\\s?[ap]m)?(?:$|,| (?:for|to|called|o)))",
        Pattern::caseless);
    static const Pattern part("^(?:(?:at|in|on|for) )?(?:the )?(?:early )?(morning|evening|afternoon)(?: at)? "
                              "(\\d{1,2}(?:[:.]\\d{2})?(?: ?o['’]?clock)?)(?=$|\\s)",
        Pattern::caseless);
    if (const auto match = part.find(words))
        return "at " + match->texts[1] + " in the " + match->texts[0] + words.substr(match->range.end);
    if (const auto match = behind.find(words))
        words.insert(match->range.end, " at");
    return words;
}

constexpr const char* timerNoun = "(?:timer|tiemr|timmer|count[- ]?down)(s?)(?:['’]s)?";

} // namespace

std::optional<AlarmLine> AlarmLine::cut(const std::string& core)
{
    static const Pattern alarm("\\b" + std::string(alarmNoun) + "(?![a-z'’-])", Pattern::caseless);
    static const Pattern timer("\\b" + std::string(timerNoun) + "(?![a-z'’-])", Pattern::caseless);
    const auto ofTimer = timer.find(core);
    const auto found = ofTimer ? ofTimer : alarm.find(core);
    if (!found)
        return std::nullopt;
    return AlarmLine{trimmed(core.substr(0, found->range.start)), trimmed(core.substr(found->range.end), ",.:"),
        ofTimer.has_value(), !found->texts[0].empty()};
}

bool AlarmLine::isOfOthers(const std::string& core)
{
    static const Pattern others(
        "^(?:note|take a note|write|remember|find|search|read (?:me )?(?:my|the) note|buy|order|keep a note|don['’]?t "
        "let me forget|do not let me forget|remind me(?! (?:of|about) (?:(?:my|the|all|any) )*(?:alarms?|timers?)\\b)"
        "|why|how (?:do|does|can|to)\\b)"
        "|\\b(?:fire|smoke|burglar|car|house|security|intruder|monoxide|false|biological) alarm"
        "|\\balarm (?:sounds?|tones?|volume|songs?|music)\\b|\\b(?:louder|quieter|softer|too loud|too quiet)\\b"
        "|\\b(?:to|on|onto|in|into|from|off) (?:my|the|our) (?:[a-z]+ )?(?:list|calendar|diary|agenda)\\b|\\bfull[- "
        "]timer\\b"
        "|\\balarm (?:system|company|code|bell)\\b",
        Pattern::caseless);
    return others.find(core).has_value();
}

std::string AlarmLine::withPlainHalves(const std::string& words)
{
    static const Pattern before("(?<![a-z])a\\.\\s?m\\b\\.?", Pattern::caseless);
    static const Pattern after("(?<![a-z])p\\.\\s?m\\b\\.?", Pattern::caseless);
    return after.replaceAll(before.replaceAll(words, "am"), "pm");
}

bool AlarmLine::take(const Pattern& pattern, std::string& text)
{
    const auto match = pattern.find(text);
    if (!match || match->range.start != 0)
        return false;
    text = trimmed(std::string_view(text).substr(match->range.end));
    return true;
}

std::string AlarmLine::withoutArticles(std::string words)
{
    static const Pattern articles("^(?:(?:the|my|our|your|me|us|up|an?|that|this|this one|any|all|of|every|each|single"
                                  "|new|another|one|current|existing|scheduled|active|upcoming|set|"
                                  "reminder|personal|custom)(?![\\w'’-])\\s*)+",
        Pattern::caseless);
    take(articles, words);
    return words;
}

std::string AlarmLine::withoutLead(std::string words)
{
    static const Pattern lead(
        "^(?:(?:(?:which|that) (?:is|are|was|i|i['’]ve|i have)|that['’]s|is|are|was|currently|"
        "already|set|scheduled|active|running|going|please|clock|named|called|labell?ed"
        "|i (?:have )?set|you (?:have )?set|for me|for us|back on|off|on(?= for\\b|$)|up(?= for\\b|$)"
        "|if any|there|now|all)(?![\\w'’-])[,:]?\\s*)+",
        Pattern::caseless);
    static const Pattern link("^(?:for|at|on|of|to|from|in(?= the\\b)|by)(?![\\w'’-])\\s*", Pattern::caseless);
    take(lead, words);
    take(link, words);
    return words;
}

std::string AlarmLine::which(const std::string& front) const
{
    static const Pattern possessive("['’]s\\b");
    return possessive.replaceAll(trimmed(withoutArticles(front) + " " + withoutLead(back)), "");
}

std::string AlarmLine::takeName(std::string& words)
{
    static const Pattern named("[,]?\\s*\\b(?:and )?(?:call it|name it|called|named|labell?ed|titled|with the "
                               "(?:name|label|title)|label)[:]?\\s+[\"“']?(.+?)[\"”']?$",
        Pattern::caseless);
    const auto match = named.find(words);
    if (!match)
        return {};
    words = trimmed(words.substr(0, match->range.start));
    return trimmed(match->texts[0], ",.;:\"'");
}

std::string AlarmLine::withoutEdges(const std::string& words)
{
    static const Pattern edges("^(?:(?:for|to|on|of|the|my|a|an|at|from|with|and|about)(?![\\w'’-])\\s*)+"
                               "|(?:\\s+(?:for|to|on|of|the|my|at|from|with|and|by|in|now))+$",
        Pattern::caseless);
    return trimmed(edges.replaceAll(words, ""), ",.;:");
}

std::string AlarmLine::asTime(std::string words)
{
    static const Pattern several(
        "^(?:two|three|four|five|2|3|4|5|multiple|several|some|following)$", Pattern::caseless);
    static const Pattern spaces("\\s{2,}");
    static const Pattern hour("^\\d{1,2}(?:[:.]\\d{2})?(?![\\d/-]|st\\b|nd\\b|rd\\b|th\\b)");
    static const Pattern moment("^(?:when it(?:['’]s| is)|by)(?= )", Pattern::caseless);
    // "730", "for 1845": nobody means another number by it.
    static const Pattern run(
        "^(?:at )?([01]?\\d|2[0-3])([0-5]\\d)(?=$|\\s?[ap]m\\b| (?:hrs|hours|in the|at night|today|"
        "tonight|tomorrow|tmrw|on|every|this|next)\\b)",
        Pattern::caseless);
    static const Pattern ofHours("^ (?:hrs|hours)\\b", Pattern::caseless);
    words = moment.replaceAll(spaces.replaceAll(words, " "), "at");
    if (const auto match = run.find(words))
        words = match->texts[0] + ":" + match->texts[1] + ofHours.replaceAll(words.substr(match->range.end), "");
    for (const char* day : {"tomorrow", "today", "tonight"})
        words = Pattern("\\b" + std::string(day) + "['’]?s\\b", Pattern::caseless).replaceAll(words, day);
    if (several.find(words))
        return {};
    static const Pattern after("^after ", Pattern::caseless);
    if (const auto length = TimerLength::read(words); length && length->rest == "after")
        return after.replaceAll(words, "in ");
    if (const auto length = TimerLength::read(words); length && (length->rest.empty() || length->rest == "from now"))
        return "in "
            + words.substr(0, words.size() - (length->rest.empty() ? 0 : std::string_view(" from now").size()));
    return hour.find(words) ? "at " + words : withHourBehindDay(words);
}

bool AlarmLine::isQuestion(const std::string& core)
{
    static const Pattern asks(
        "^(?:what|which|when|how|is|are|was|were|did|do i|do we|do you have|does|have i|have you|have "
        "we|has|any|show|list|tell|"
        "see\\b|view|display|check|just see|may i know|(?:let me )?(?:see|know|hear)|remind me "
        "(?:of|about)|confirm|verify|"
        "read|give me (?:a list|the|my|all)|whether|if|will|look at|go (?:over|through)|all (?:my|of my)|am i|(?:how "
        "much )?time (?:left|remaining)|(?:i|we) (?:(?:already|just|have|had) "
        ")*(?:turned|switched|set|cancelled|deleted)\\b|"
        "i (?:want|need|would like) to (?:know|see))\\b",
        Pattern::caseless);
    return asks.find(core) || core.ends_with('?');
}

} // namespace quorvell
