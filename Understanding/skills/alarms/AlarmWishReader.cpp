// SPDX-License-Identifier: MIT
// The words are cut at the noun, "alarm" or "timer": in front of it stand what is to be done and words that tell which,
// behind it times and names. A line without the noun counts only where it can mean nothing else: "wake me at 7".
#include "Understanding/skills/alarms/AlarmWishReader.h"

#include "QuorvellCore/text/Characters.h"
#include "QuorvellCore/text/Pattern.h"
#include "Understanding/skills/alarms/AlarmAsked.h"
#include "Understanding/skills/alarms/AlarmDress.h"
#include "Understanding/skills/alarms/AlarmLine.h"
#include "Understanding/skills/alarms/AlarmMove.h"
#include "Understanding/skills/alarms/AlarmSeries.h"
#include "Understanding/skills/alarms/AlarmTraits.h"
#include "Understanding/skills/alarms/NounlessAlarm.h"
#include "Understanding/skills/alarms/TimerLength.h"
#include "Understanding/words/RequestText.h"

#include <algorithm>
#include <utility>

namespace quorvell {

namespace {

using Kind = AlarmWish::Kind;
using Found = std::optional<AlarmWish>;

Found setTimer(const AlarmLine& cut, const std::string& front)
{
    if (cut.isPlural && AlarmTraits::namesSeveral(cut.back))
        return AlarmWish{.kind = Kind::several, .isOfTimers = true};
    static const Pattern reminding(
        "\\b(?:(?:and|to) )?remind me(?: (?:to|about|of|that))?\\b|\\b(?:and|to)(?= (?:check|take|turn|get))",
        Pattern::caseless);
    static const Pattern ordinal("^(?:second|2nd|third|3rd|other|fourth)(?![\\w-])\\s*", Pattern::caseless);
    std::string words = trimmed(ordinal.replaceAll(AlarmLine::withoutArticles(front), "") + " " + cut.back);
    AlarmWish wish{.kind = Kind::set, .isOfTimers = true, .name = AlarmLine::takeName(words)};
    const auto length = TimerLength::read(words);
    static const Pattern clock("\\d|\\b(?:noon|midnight|o['’]?clock|tomorrow|tonight)\\b", Pattern::caseless);
    if (!length && clock.find(words)) // "A timer for 5 pm".
        return AlarmWish{
            .kind = Kind::set, .text = AlarmLine::asTime(AlarmLine::withoutLead(words)), .name = wish.name};
    if (length && TimerLength::read(length->rest)) // Two at once: which?
        return AlarmWish{.kind = Kind::set, .isOfTimers = true};
    if (length)
        wish.length = length->length;
    if (wish.name.empty())
        wish.name = AlarmLine::withoutEdges(AlarmLine::withoutArticles(
            AlarmLine::withoutEdges(reminding.replaceAll(length ? length->rest : words, ""))));
    static const Pattern there("^(?:the|my|our|that) (?!second|third|other|next|new)\\S", Pattern::caseless);
    if (length && !wish.name.empty() && there.find(front)) { // "The oven timer" may be running already.
        wish.kind = Kind::runAnew;
        wish.which = wish.name;
    }
    return wish;
}

Found setAlarm(const AlarmLine& cut, const std::string& front)
{
    static const Pattern reminding(
        "\\b(?:so as )?(?:to|and) remind me(?: (?:to|of|about|that|for))?\\b", Pattern::caseless);
    std::string back = cut.back;
    AlarmWish wish{.kind = Kind::set, .name = AlarmLine::takeName(back)};
    if (const auto before = AlarmTraits::readBefore(AlarmLine::withoutLead(back)))
        return before;
    static const Pattern number(
        "^(?:(?:an?|the|my) )?(?:two|three|four|five|six|[2-9]|1[0-2]|multiple|several|some|a few)"
        "(?: (?:different|separate|more|new|other))*$",
        Pattern::caseless);
    const bool isCounted = cut.isPlural && number.find(front);
    if (isCounted)
        wish.count = std::max(AlarmSeries::countIn(front), back.empty() ? 2 : 0);
    const std::string lead = isCounted ? "" : AlarmTraits::ruleInWords(AlarmLine::withoutArticles(front));
    const std::string time =
        AlarmLine::asTime(AlarmTraits::ruleInTime(AlarmLine::withoutLead(reminding.replaceAll(back, " to "))));
    static const Pattern part("^(?:morning|afternoon|evening)$", Pattern::caseless);
    if (part.find(lead) && !time.empty()) {
        wish.text = time + " in the " + lead;
        return wish;
    }
    wish.text = AlarmLine::asTime(trimmed(lead + (lead.empty() || time.empty() ? "" : " ") + time));
    return wish;
}

/// "Add 5 minutes to the pasta timer", "make the timer 2 minutes shorter".
Found lengthening(const std::string& core)
{
    static const Pattern form(
        "^(?:add|put|give (?:me|it|us|the [a-z ]*timer)|extend|lengthen|prolong|increase|make|i need|need|just|another|"
        "take|shorten|reduce|cut|decrease|subtract|remove|knock|\\d|(?:one|two|three|five|ten|fifteen|twenty) )",
        Pattern::caseless);
    static const Pattern more(
        "\\b(?:more|another|extra|add|extend|lengthen|prolong|longer|increase|on top)\\b", Pattern::caseless);
    static const Pattern less(
        "\\b(?:shorten|shorter|reduce|off|less|decrease|subtract|remove|knock|take)\\b", Pattern::caseless);
    const auto length = TimerLength::read(core);
    if (!length || !form.find(core))
        return std::nullopt;
    const auto cut = AlarmLine::cut(length->rest);
    const bool isShorter = less.find(core).has_value();
    if (!(isShorter && cut && cut->isOfTimers) && !more.find(core))
        return std::nullopt;
    static const Pattern words(
        "\\b(?:add|put|give|me|it|us|extend|lengthen|prolong|increase|make|i|need|just|another|take|"
        "shorten|reduce|cut|decrease|subtract|remove|knock|more|extra|longer|shorter|less|off|by|"
        "to|from|of|on|onto|top|for|the|my|time|please|that|want|and)\\b",
        Pattern::caseless);
    static const Pattern given(
        "^(?:give|add) .*\\b(?:more|another|extra) .*\\b(?:on|for|to) the ([a-z]+)$", Pattern::caseless);
    if (const auto match = given.find(core); match && !cut) // "Give me 10 more minutes on the oven".
        return AlarmWish{.kind = Kind::add, .isOfTimers = true, .which = match->texts[0], .length = length->length};
    AlarmWish wish{.kind = Kind::add, .isOfTimers = true, .length = isShorter ? -length->length : length->length};
    if (!cut) {
        wish.isOfAny = true;
        return trimmed(words.replaceAll(length->rest, " ")).empty() ? Found(wish) : std::nullopt;
    }
    if (!cut->isOfTimers)
        return std::nullopt;
    wish.which = trimmed(words.replaceAll(cut->front + " " + cut->back, " "));
    return wish;
}

struct Verb {
    Pattern words;
    Kind kind;
};

/// The first words of a request about the noun.
const Verb* verbOf(const std::string& core)
{
    static const Verb verbs[] = {
        {Pattern("^(?:snooze)\\b", Pattern::caseless), Kind::snooze},
        {Pattern("^(?:pause|hold|freeze|suspend|halt)\\b", Pattern::caseless), Kind::pause},
        {Pattern("^(?:resume|continue|unpause|restart|go on with|carry on with|start again|unfreeze)\\b",
             Pattern::caseless),
            Kind::resume},
        {Pattern("^(?:cancel|delete|remove|erase|clear|disable|deactivate|dismiss|kill|end|drop|scrap|unset|abort|"
                 "silence|mute"
                 "|get rid of|take (?:off|away|out|down)|turn(?:ing)? off|switch off|shut off|shut down|shut "
                 "up|shut|cut|stop|quit|undo|lose|strike|scratch|void|revoke|call off|leave out|do "
                 "away with|forget(?: about)?|never ?mind|i(?: have|['’]?ve)? changed my mind about|discard|throw "
                 "(?:out|away)|wipe|(?:turn|switch|shut|take)(?= (?:the|my|that|this|all|every|any)?\\b.*\\boff\\b)"
                 "|skip|no(?: more)?|(?:i )?(?:do not|don['’]?t|no longer|won['’]?t(?: be)?|will not(?: be)?) "
                 "(?:need(?:ing)?|want)(?: to)?(?: set| have)?|do not (?:set|ring|use|sound)|don['’]?t "
                 "(?:set|ring|use|sound)|(?:keep|leave) only|only (?:keep|leave))(?![\\w-])",
             Pattern::caseless),
            Kind::cancel},
        {Pattern("^(?:change|move|reschedule|shift|push|postpone|update|edit|modify|adjust|alter|bring|delay|correct|"
                 "reset|switch)\\b",
             Pattern::caseless),
            Kind::move},
        {Pattern(
             "^(?:(?:set(?:ting)?(?: up)?|sat|seat|put(?: on)?|make|create|add|start|begin|give(?: "
             "me)?|schedule|activate|"
             "enable|turn on|switch on|(?:turn|switch)(?= (?:the|my|that|this|our)\\b.*\\balarms?(?: clock)? "
             "(?:back )?on\\b)|run|launch|program|arrange|establish|fix|have|get(?: me)?|need|want|i "
             "(?:need|want)"
             "|i would like|i['’]?d "
             "like|do|use|insert|ring|raise|place|book|enter|input|store|save|register|mark|prepare|plan|fit|keep"
             "(?! (?:the|my|our|that|only))|could i have|can i (?:have|get)|new|another|please|also|and|now|we['’]?re|"
             "were)(?![\\w'’-])\\s*)+",
             Pattern::caseless),
            Kind::set},
    };
    for (const Verb& verb : verbs)
        if (const auto match = verb.words.find(core); match && match->range.start == 0)
            return &verb;
    return nullptr;
}

Found withVerb(const Verb& verb, const AlarmLine& cut)
{
    std::string front = cut.front;
    const bool isLed = AlarmLine::take(verb.words, front);
    if (static const Pattern apart("^(?:turn|switch|shut|take)\\b", Pattern::caseless); !isLed)
        AlarmLine::take(apart, front); // "Turn the alarm off".
    static const Pattern kept("^(?:keep only|only keep|leave only|only leave)\\b", Pattern::caseless);
    if (kept.find(cut.front))
        return AlarmWish{
            .kind = Kind::cancelAll, .isOfTimers = cut.isOfTimers, .which = "all except " + cut.which(front)};
    AlarmWish wish{.kind = verb.kind, .isOfTimers = cut.isOfTimers, .which = cut.which(front)};
    switch (verb.kind) {
    case Kind::set:
        if (static const Pattern relative("\\b(?:earlier|later|sooner)$", Pattern::caseless);
            relative.find(cut.back) || AlarmMove::isMeant(cut, front))
            return AlarmMove::read(cut, front);
        if (static const Pattern on(
                "^(?:turn|switch) on\\b|^(?:activate|enable)\\b|^(?:turn|switch) (?:the|my|that|this|our)\\b",
                Pattern::caseless);
            !cut.isOfTimers && on.find(cut.front)) { // It may be there already.
            wish.kind = Kind::turnOn;
            return wish;
        }
        return cut.isOfTimers ? setTimer(cut, isLed ? front : cut.front) : setAlarm(cut, isLed ? front : cut.front);
    case Kind::move:
        return AlarmMove::read(cut, front);
    case Kind::snooze: {
        const auto length = TimerLength::read(cut.back);
        return AlarmWish{
            .kind = Kind::snooze, .isOfAny = true, .length = length ? length->length : std::chrono::seconds(0)};
    }
    case Kind::cancel: {
        static const Pattern all("\\b(?:all|any|every|each|both)\\b", Pattern::caseless);
        static const Pattern none("^no\\b", Pattern::caseless); // "No alarm on weekdays".
        static const Pattern silent("^(?:stop|silence|mute|dismiss|quit|shut up)\\b", Pattern::caseless);
        if (wish.which.empty() && !cut.isPlural && !cut.isOfTimers && silent.find(cut.front) && !all.find(cut.front))
            return AlarmWish{.kind = Kind::stop, .isOfAny = true};
        wish.kind = cut.isPlural || all.find(cut.front) || none.find(cut.front) ? Kind::cancelAll : Kind::cancel;
        return wish;
    }
    case Kind::pause:
    case Kind::resume:
        if (!cut.isOfTimers && verb.kind == Kind::pause && !wish.which.empty()) // Alarms rest for some days.
            return AlarmWish{.kind = Kind::cancelAll, .which = wish.which};
        return cut.isOfTimers ? Found(wish) : std::nullopt;
    default: // No verb says these.
        break;
    }
    return std::nullopt;
}

/// "Pasta timer 8 minutes", "alarm for 10 am", "alarm off", "my alarms".
Found bare(const AlarmLine& cut, const std::string& core)
{
    static const Pattern off("^(?:off|stop|out)$", Pattern::caseless);
    if (off.find(cut.back))
        return AlarmWish{
            .kind = Kind::cancel, .isOfTimers = cut.isOfTimers, .which = AlarmLine::withoutArticles(cut.front)};
    static const Pattern list("^(?:list|status|details|info|times)$", Pattern::caseless);
    if (list.find(cut.back))
        return AlarmAsked::read({.front = cut.front, .isOfTimers = cut.isOfTimers, .isPlural = true}, core);
    if (!cut.isOfTimers && cut.isPlural && AlarmSeries::isMeant(cut.back))
        return setAlarm(cut, cut.front);
    static const Pattern place(
        "^(?:(?:my|the|our) )*(?:very )?(?:next|last|latest|earliest|first|current)$", Pattern::caseless);
    if (cut.back.empty() && place.find(cut.front))
        return AlarmAsked::read(cut, core);
    static const Pattern ofTime(
        "^(?:(?:at )?(?:what )?times?|timings?|details|status)(?: (?:of|for|is|are))?(?: the| my)*$",
        Pattern::caseless);
    if (ofTime.find(cut.front))
        return AlarmAsked::read({.front = "what time is the", .back = cut.back, .isOfTimers = cut.isOfTimers}, core);
    static const Pattern mine("^(?:my|the|all|all my|all the|our)?$", Pattern::caseless);
    static const Pattern begins(
        "^(?:$|for|at|on|in|by|every|each|daily|tomorrow|today|tonight|this|next|called|named|set|time|noon|"
        "midnight|half|quarter|(?:mon|tues|wednes|thurs|fri|satur|sun)day|one|two|three|four|five|six|seven|"
        "eight|nine|ten|eleven|twelve|weekdays|weekends|an? (?:hour|minute|quarter|day|half)|half|to\\b|\\d|please|"
        "i (?:have|set)|that|going|go|early|morning|after|before|around|repeat|with|should|must|(?:has|needs|is) to)",
        Pattern::caseless);
    static const Pattern timed("^(?:every|each|at|tomorrow|on|daily|in)\\b.*\\d", Pattern::caseless);
    if (!cut.isOfTimers && !cut.isPlural && timed.find(cut.front) && AlarmTraits::isWholeTime(cut.front)
        && !cut.back.empty())
        return AlarmWish{.kind = Kind::set,
            .text = AlarmLine::asTime(AlarmTraits::ruleInTime(cut.front)),
            .name = AlarmLine::withoutEdges(cut.back)};
    if (!cut.isOfTimers && !begins.find(cut.back)) // "My alarm is broken".
        return std::nullopt;
    if (cut.isPlural || (cut.back.empty() && !cut.front.empty() && mine.find(cut.front)))
        return AlarmAsked::read(cut, core);
    static const Pattern words("\\S+(?:\\s+\\S+){5}", Pattern::caseless);
    if (words.find(cut.front)) // A sentence that only speaks of one.
        return std::nullopt;
    static const Pattern subject("^(?:i|we|he|she|they|it|there)\\b", Pattern::caseless);
    if (subject.find(core))
        return std::nullopt;
    if (cut.isOfTimers)
        return TimerLength::read(core) || cut.back.empty() ? setTimer(cut, cut.front) : std::nullopt;
    if (!AlarmTraits::isWholeTime(cut.front)) // "Play my alarm song".
        return std::nullopt;
    std::string back = cut.back;
    static const Pattern time("^time\\b\\s*", Pattern::caseless);
    AlarmLine::take(time, back);
    return setAlarm({.front = {}, .back = back}, cut.front);
}

/// A wish for an alarm, with what does not belong to its time and name taken off.
AlarmWish finished(AlarmWish wish)
{
    if (wish.kind != Kind::set || wish.isOfTimers)
        return wish;
    const AlarmDress dress = AlarmDress::takenOff(wish.text);
    wish.wantsSound = dress.wantsSound;
    wish.text = AlarmLine::asTime(dress.words);
    if (wish.count > 1 || AlarmSeries::isMeant(wish.text))
        wish.kind = Kind::several;
    static const Pattern day("\\b(?:on )?(?=(?:mon|tues|wednes|thurs|fri|satur|sun)day\\b)", Pattern::caseless);
    if (const auto first = dress.wantsRule ? day.find(wish.text) : std::nullopt) { // "Recurring, mon wed fri".
        wish.text = wish.text.substr(0, first->range.start) + "every " + wish.text.substr(first->range.end);
        wish.kind = Kind::set;
    } else if (dress.wantsRule && wish.kind == Kind::set)
        wish.kind = Kind::howOften;
    return wish;
}

Found readLine(std::string_view words)
{
    if (RequestText::isStory(words))
        return std::nullopt;
    static const Pattern opening("^(?:(?:pls|plz|plzz|please)\\b|(?:can|could|will|would) "
                                 "(?:u|ya)\\b|(?:go|check|go ahead) "
                                 "and\\b|(?!alarms?,|timers?,|no,|yes,|today,|tomorrow,|tonight,)[a-z]+,(?=\\s))",
        Pattern::caseless);
    static const Pattern named("^name:\\s*", Pattern::caseless);
    static const Pattern closing("(?:[,]?\\s+(?:too|as well|also|then|though|pls|plz|please))+$", Pattern::caseless);
    std::string core = closing.replaceAll(trimmed(AlarmLine::withPlainHalves(std::string(words)), ".!"), "");
    while (AlarmLine::take(opening, core) || AlarmLine::take(named, core)) { }
    static const Pattern sleep(
        "^(?:(?:let me )?sleep (?:in|late)\\b.*?)[,;.]? ?(?:and )?no (?:alarms?|waking)$", Pattern::caseless);
    static const Pattern noAlarm("[,;.]? ?(?:and )?no (?:alarms?|waking)$", Pattern::caseless);
    core = AlarmDress::withDayLast(AlarmDress::withoutReason(core));
    if (sleep.find(core))
        core = noAlarm.replaceAll(core, "");
    if (auto wish = AlarmTraits::readSound(core))
        return wish;
    if (AlarmLine::isOfOthers(core))
        return std::nullopt;
    static const Pattern watched(
        "^(?:time|(?:tell me|let me know|ring|beep|buzz)(?: me)? (?:when|after)) (.+?)(?: (?:is|are|have|has)"
        "(?: (?:up|over|gone(?: by)?|passed))?)?$",
        Pattern::caseless);
    if (const auto match = watched.find(core))
        if (const auto length = TimerLength::read(match->texts[0]); length && length->rest.empty())
            return AlarmWish{.kind = Kind::set, .isOfTimers = true, .length = length->length};
    if (auto wish = lengthening(core))
        return wish;
    const auto cut = AlarmLine::cut(core);
    if (!cut)
        return NounlessAlarm::read(trimmed(core, "?"));
    static const Pattern spared(
        "^(?:do not|don['’]?t|never) (?:you )?(?:ever )?(?:cancel|delete|remove|change|move|turn off|switch off|"
        "touch|clear|disable|stop)\\b",
        Pattern::caseless);
    if (spared.find(core)) // What there is stays, and is told.
        return AlarmWish{.kind = Kind::list, .isOfTimers = cut->isOfTimers};
    for (const auto reader : {AlarmTraits::readRename, AlarmTraits::readRepeat})
        if (auto wish = reader(*cut))
            return wish;
    static const Pattern recalled(
        "\\b(?:what|which|when|how many) (?:are |time are |time is )?(?:my |the )?alarms?\\b", Pattern::caseless);
    static const Pattern unsure("^(?:i (?:can['’]?t|cannot|do not|don['’]?t|forgot|forget|wonder|want to know|need to "
                                "know)|remind me)\\b",
        Pattern::caseless);
    if (unsure.find(core) && recalled.find(core))
        return AlarmWish{.kind = Kind::list, .isOfTimers = cut->isOfTimers};
    const Verb* verb = verbOf(core);
    if (verb && verb->kind != Kind::set)
        return withVerb(*verb, *cut);
    if (AlarmLine::isQuestion(core))
        return AlarmAsked::read(*cut, core);
    if (verb)
        return withVerb(*verb, *cut);
    return bare(*cut, core);
}

} // namespace

Found AlarmWishReader::read(std::string_view words)
{
    auto wish = readLine(words);
    return wish ? Found(finished(*std::move(wish))) : std::nullopt;
}

} // namespace quorvell
