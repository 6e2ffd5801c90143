// SPDX-License-Identifier: MIT
#include "Understanding/skills/alarms/AlarmDress.h"

#include "QuorvellCore/text/Characters.h"
#include "QuorvellCore/text/Pattern.h"

#include <optional>

namespace quorvell {

namespace {

constexpr const char* leadingDay =
    "^(?:and )?((?:(?:for|on|this|next) "
    ")*(?:(?:mon|tues|wednes|thurs|fri|satur|sun)day|tomorrow|today|tonight|weekends|"
    "weekdays)(?: (?:morning|evening|night))?),? (?:please |kindly |can you |could you )*";

std::string withDaysOf(const std::string& wish, const std::string& reason)
{
    static const Pattern days("\\b(?:(?:this|next) (?:week|weekend)|tomorrow|today|tonight|(?:on |until |till )?"
                              "(?:next )?(?:mon|tues|wednes|thurs|fri|satur|sun)day)\\b",
        Pattern::caseless);
    const auto named = days.find(wish) ? std::nullopt : days.find(reason);
    return named ? wish + " " + reason.substr(named->range.start, named->range.end - named->range.start) : wish;
}

} // namespace

AlarmDress AlarmDress::takenOff(const std::string& said)
{
    static const Pattern sound(
        "[,]?\\s*\\b(?:with|using|playing|(?:and|to) play|to the (?=sound))\\s*(?:(?:an?|the|my|our|some) "
        ")?(?:[a-z'’]+ "
        "){0,3}(?:sounds?|tones?|ringtones?|music|songs?|melody|volume|birdsong|birds|vibrations?|bells?|chimes?|"
        "radio|noise|playlist)\\b(?! (?:lessons?|class|teacher|practi[cs]e|rehearsal|school|festival|exam))(?: "
        "(?:of|by|from)(?: [a-z]+){1,2}(?= at\\b| for\\b| on\\b|$))?"
        "|\\b(?:silent|silently|loud|loudly|quiet|quietly|gentle|vibrating|musical|melodious)\\b"
        "(?=\\s*(?:at|for|on|in|tomorrow|alarm|$|\\d))|\\b(?:(?:on|to|and|in) )?vibrat(?:e|ion)(?: mode)?\\b",
        Pattern::caseless);
    static const Pattern idle(
        "(?:\\b(?:and|to|that|which|should|will|must) )*\\b(?:go(?:es)?|going|ring(?:s|ing)?|sound(?:s|ing)?|"
        "beep(?:s|ing)?)(?: off)?(?=\\s+(?:at|on|in|for|every|each|tomorrow|from|until)\\b|\\s*\\d|$)"
        "|\\s*\\b(?:only|sharp|exactly|precisely|on the dot|for me|please|as usual|like(?=,? \\d)|a day ahead"
        "|to wake (?:me|us)(?: up)?|to (?:get|wake) up)(?=\\s|[,.]|$)"
        "|\\b(?:at |for )?(?:the |my )?(?:same|usual|normal|regular|right|correct) (?:time|hour)\\b"
        "(?: (?:as|like) (?:usual|always|before|today|yesterday|last \\w+|every ?day|my [a-z ]+))?",
        Pattern::caseless);
    static const Pattern reason(
        "\\bso(?: that)? (?:i|we) (?:can|could|will|may|don['’]?t forget to|do not forget to) ", Pattern::caseless);
    static const Pattern about("(?<=\\d)\\s?-?ish\\b", Pattern::caseless);
    static const Pattern hour("\\d");
    static const Pattern early("\\b(?:very |quite )?early\\b(?! in the)[,]?", Pattern::caseless);
    static const Pattern again(
        "^(?:an? )?\\b(?:repeating|repeat(?:ed)?|recurring|regular|repetitive)\\b\\s*"
        "|\\s*\\b(?:and )?(?:repeat(?:ing|ed)?|recur(?:ring)?)(?: it)?(?:$|(?= every| on| daily))",
        Pattern::caseless);
    static const Pattern rule("\\b(?:every ?day|every|each|daily|weekly|monthly|yearly|weekdays?|weekends?|mornings|"
                              "(?:mon|tues|wednes|thurs|fri|satur|sun)days)\\b",
        Pattern::caseless);
    static const Pattern spaces("\\s{2,}");
    AlarmDress dress;
    std::string words = sound.replaceAll(said, " ");
    dress.wantsSound = words != said;
    const std::string once = again.replaceAll(words, "");
    dress.wantsRule = once != words && !rule.find(once);
    words = idle.replaceAll(reason.replaceAll(about.replaceAll(once, ""), "to "), " ");
    if (hour.find(words))
        words = early.replaceAll(words, "");
    dress.words = trimmed(spaces.replaceAll(words, " "), " ,.");
    return dress;
}

std::string AlarmDress::withDayLast(const std::string& core)
{
    static const Pattern form(std::string(leadingDay)
            + "((?:(?:let|do not let|don['’]?t let|wake|get) (?:me|us)|(?:set|put|create|make|add|give me|i need)\\b.*"
              "\\balarms?)\\b.*)$",
        Pattern::caseless);
    static const Pattern link("^(?:for|on) (?=tom|tod|ton|this|next)", Pattern::caseless);
    const auto match = form.find(core);
    return match ? match->texts[1] + " " + link.replaceAll(match->texts[0], "") : core;
}

std::string AlarmDress::withoutReason(const std::string& core)
{
    static const Pattern before(
        "^(?:i['’]?(?:m|ve|ll|d)?|we['’]?(?:re|ve|ll)?|there is|there['’]s|it['’]?s|it is|my|our|the) (.+?)(?:[,;.]|,? "
        "(?:and|so|therefore|hence)\\b)+ (?:so |and |then )*(?:please |kindly |can you |could you )*"
        "(?=(?:cancel|delete|remove|turn|switch|skip|disable|set|wake|no|put|create|make|don['’]?t wake|do not wake"
        "|get me up)\\b)",
        Pattern::caseless);
    static const Pattern behind(
        "^(.*\\b(?:alarms?|wake (?:me|us)(?: up)?)\\b.*?)(?: please)?[,;.]+ (?:because |as |since |cause |cos )?"
        "((?:i['’]?m|i am|i['’]?ve|i have|i['’]?ll|we['’]?re|we are|we['’]?ve|it['’]?s|there['’]?s|no school|no "
        "work)\\b.*)$"
        "|^(.*\\b(?:alarms?|wake (?:me|us)(?: up)?)\\b.*?)(?: please)?,? (?:because|since) "
        "((?:i|we|my|it|there)\\b.*)$",
        Pattern::caseless);
    static const Pattern ours(
        "\\b(?:alarms?|timers?|wake|waking|get (?:me|us) up|wake[- ]?up call)\\b", Pattern::caseless);
    if (const auto match = before.find(core);
        match && match->range.start == 0 && ours.find(core.substr(match->range.end)))
        return withDaysOf(core.substr(match->range.end), match->texts[0]);
    const auto match = behind.find(core);
    return match ? withDaysOf(match->texts[0] + match->texts[2], match->texts[1] + match->texts[3]) : core;
}

} // namespace quorvell
