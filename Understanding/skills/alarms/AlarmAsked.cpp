// SPDX-License-Identifier: MIT
#include "Understanding/skills/alarms/AlarmAsked.h"

#include "QuorvellCore/text/Characters.h"
#include "QuorvellCore/text/Pattern.h"

namespace quorvell {

namespace {

using Kind = AlarmWish::Kind;

/// How much of timers is left, or when they are over.
std::optional<AlarmWish> askedOfTimer(const AlarmLine& cut, const std::string& core)
{
    static const Pattern left(
        "\\b(?:how (?:much|long)|time (?:is )?left|left|remain(?:s|ing)?|status|when (?:does|do|is|will)"
        "|how far|done|finish(?:ed)?|over|progress|still (?:running|going|on))\\b",
        Pattern::caseless);
    static const Pattern howMany("\\bhow many\\b", Pattern::caseless);
    if (cut.isOfTimers && left.find(core) && !howMany.find(core)) {
        static const Pattern words(
            "\\b(?:how|much|long|more|time|is|are|there|left|remains?|remaining|on|of|the|my|for|when|"
            "does|do|will|go|off|end|ring|status|what|still|running|going|has|have|i|until|to|"
            "be|over|done|finish|finished|did|far|in|it|currently|a|an|check|tell|me|show|s|progress|longer)\\b|['’]",
            Pattern::caseless);
        static const Pattern when("^(?:when|(?:at )?what time)\\b", Pattern::caseless);
        return AlarmWish{.kind = when.find(core) ? Kind::ends : Kind::left,
            .isOfTimers = true,
            .which = trimmed(words.replaceAll(cut.front + " " + cut.back, " "))};
    }
    return std::nullopt;
}

/// How long it is until an alarm rings.
std::optional<AlarmWish> askedUntilRing(const AlarmLine& cut, const std::string& core)
{
    static const Pattern howMany("\\bhow many alarms\\b", Pattern::caseless);
    static const Pattern untilRing("^(?:how (?:much|many|long)|in how many|time (?:left|remaining)|what time is "
                                   "left)\\b.*\\b(?:until|till|til|before|left|"
                                   "remaining|to go|in|rings?|goes? off)\\b",
        Pattern::caseless);
    if (!cut.isOfTimers && !cut.isPlural && untilRing.find(core) && !howMany.find(core)) {
        static const Pattern words(
            "\\b(?:how|much|long|many|more|hours?|minutes?|time|is|are|there|left|remaining|until|till|til|"
            "before|to|go|in|on|of|for|the|my|next|does|do|will|goes?|off|rings?|going|have|i|it|s)\\b|['’]",
            Pattern::caseless);
        return AlarmWish{.kind = Kind::left, .which = trimmed(words.replaceAll(cut.front + " " + cut.back, " "))};
    }
    return std::nullopt;
}

} // namespace

std::optional<AlarmWish> AlarmAsked::read(const AlarmLine& cut, const std::string& core)
{
    if (auto wish = askedOfTimer(cut, core))
        return wish;
    if (auto wish = askedUntilRing(cut, core))
        return wish;
    static const Pattern lead("^(?:(?:what|whats|which|when|whens|how|many|much|long|until|till|time|times|timings?|"
                              "schedule|day|days|is|are|was|"
                              "were|did|does|do|have|has|had|will|would|i|we|you|"
                              "there|any|show|list|tell|me|us|see|check|view|display|give|read|out|just|may|know|"
                              "remind|of|about|let|the|my|our|"
                              "all|for|set|currently|confirm|verify|whether|if|that|go|through|over|current|next|last|"
                              "please|active|upcoming|an?|"
                              "hear|name|got|find|up|look|at|your)(?![\\w-])(?:['’](?:s|re|ve|d))?[,]?\\s*)+",
        Pattern::caseless);
    static const Pattern tail(
        "\\b(?:do|i|we|you|have|had|has|got|set|active|currently|go|goes|going|off|ring|listed|running|"
        "on my phone|on the phone|already|right now|now|are|is|there|at the "
        "moment|scheduled|still|up|list|timings?|times?|"
        "and (?:at )?(?:what time|when)|(?:at )?what (?:time|hour)|please|made|created|added|as well|or not|for "
        "sure|be|"
        "hours?|upcoming|coming|ring|rings|in total|to|that|which|status|details|info|information)(?![\\w-])",
        Pattern::caseless);
    static const Pattern count("(?:^|\\s+)(?:two|three|four|five|\\d)$", Pattern::caseless);
    static const Pattern doing(
        "^(?:did|have) (?:i|you|we) (?:already |just )*(?:turn|switch|cancel|delete|remove|stop|disable)",
        Pattern::caseless);
    static const Pattern told(
        "^(?:i|we) (?:(?:already|just|have|had) )*(?:turned|switched|set|cancelled|deleted)\\b", Pattern::caseless);
    if (told.find(core) || doing.find(core))
        return AlarmWish{.kind = Kind::list, .isOfTimers = cut.isOfTimers};
    std::string front = cut.front;
    AlarmLine::take(lead, front);
    static const Pattern next("\\bnext$", Pattern::caseless);
    if (cut.isPlural)
        front = count.replaceAll(front, "");
    else if (next.find(cut.front))
        front = "next";
    const std::string back = AlarmLine::withoutLead(trimmed(tail.replaceAll(cut.back, " "), " ?,."));
    return AlarmWish{.kind = Kind::list,
        .isOfTimers = cut.isOfTimers,
        .which = trimmed(AlarmLine::withoutArticles(front) + " " + back)};
}

} // namespace quorvell
