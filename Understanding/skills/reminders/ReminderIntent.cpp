// SPDX-License-Identifier: MIT
#include "Understanding/skills/reminders/ReminderIntent.h"

#include "QuorvellCore/text/Characters.h"
#include "QuorvellCore/text/Pattern.h"
#include "Understanding/time/SpokenLength.h"
#include "Understanding/time/SpokenPhrase.h"
#include "Understanding/words/RequestText.h"
#include "Understanding/words/RequestWords.h"

namespace quorvell {

namespace {

/// "for tomorrow at 5 to call mum": the phrase reader knows no "for" here; before a thing it means "about".
std::string withoutFor(std::string_view rest)
{
    static const Pattern connector("^for\\s+", Pattern::caseless);
    static const Pattern time(
        "^for (?:(?:the|an?|me|us|next|this|every|each|in|at|on|to|later|now|when) |\\d|to(?:day|night|morrow)"
        "|tmrw|noon|midday|midnight|morning|afternoon|evening|half |quarter |(?:mon|tues|wednes|thurs|fri|satur|sun)day"
        "|(?:mon|tue|wed|thu|fri|sat|sun)\\b|(?:jan|feb|mar|apr|may|june|july|aug|sep|oct|nov|dec)"
        "|(?:one|two|three|four|five|six|seven|eight|nine|ten|eleven|twelve|five|twenty|thirty)\\b"
        "|christmas|easter|new year)",
        Pattern::caseless);
    const std::string words = trimmed(rest);
    return connector.replaceAll(words, time.find(words) ? "" : "about ");
}

/// "Tomorrow's meeting at 10" as "meeting at 10 tomorrow"; the end of a stretch, and "it will be", belong to no task.
std::string withPlainTime(std::string words)
{
    static const Pattern owner(
        "\\b(tomorrow|today|tonight|(?:mon|tues|wednes|thurs|fri|satur|sun)day)['’]?s (?=\\p{L})", Pattern::caseless);
    static const Pattern another(
        "\\b(?:every|each|today(?!['’]?s)|tonight(?!['’]?s)|tomorrow(?!['’]?s)|tmrw|(?:on|next|this) [a-z]+day\\b)",
        Pattern::caseless);
    static const Pattern clause(
        "[,.;]?\\s*\\b(?:it|which|that|this)(?: will be|['’]ll be|['’]s| is)(?: held| happening| taking place)? "
        "(?=(?:at|on|from|in|tomorrow|next|today|tonight) ?\\b)",
        Pattern::caseless);
    static const Pattern end(
        "\\bfrom (\\d{1,2}(?:[:.]\\d{2})?\\s?[ap]\\.?m\\.?) ?(?:to|till|until|-|–) ?\\d{1,2}(?:[:.]\\d{2})?"
        "(?:\\s?[ap]\\.?m\\b\\.?)?",
        Pattern::caseless);
    static const Pattern moment(
        "\\bwhen it(?:['’]s| is) (?=\\d|noon\\b|midnight\\b|(?:one|two|three|four|five|six|seven|eight|nine|ten|"
        "eleven|twelve|half|quarter)\\b)",
        Pattern::caseless);
    static const Pattern asking("\\b(?:tell|ask) me (?=to\\b)", Pattern::caseless);
    words = asking.replaceAll(moment.replaceAll(clause.replaceAll(words, " "), "at "), "");
    if (const auto match = end.find(words))
        words = words.substr(0, match->range.start) + "at " + match->texts[0] + words.substr(match->range.end);
    const auto match = another.find(words) ? std::nullopt : owner.find(words);
    if (!match)
        return words;
    const bool isWeekday =
        match->texts[0].ends_with("day") && match->texts[0].size() > std::string_view("today").size();
    return words.substr(0, match->range.start) + words.substr(match->range.end) + (isWeekday ? " on " : " ")
        + match->texts[0];
}

} // namespace

ReminderIntent ReminderIntent::of(std::string_view rest)
{
    static const Pattern ofSomething("^of\\s+", Pattern::caseless);
    static const Pattern ofRule(
        "^an? (daily|weekly|monthly|yearly) (?:for|to|about|of|that|at|on) (.+)$", Pattern::caseless);
    static const Pattern dangling(
        "^(?:with|an?|the|in|up|me|please)?\\s?(?:an? |the "
        ")?(?:(?:repeating|recurring|regular|repeated|new|quick|little|small"
        "|gentle|friendly|one[- ]time|one[- ]off|follow[- ]up) )*(?:reminders? )?(?=(?:for|to|about|of|that)\\b)",
        Pattern::caseless);
    std::string wish =
        withPlainTime(ofSomething.replaceAll(withoutFor(dangling.replaceAll(trimmed(rest), "")), "about "));
    static const Pattern clause(
        "^(?:i|we|(?:i|we|there|it)['’](?:m|ve|re|s)|there (?:is|are)|(?:my|our) \\S+ (?:is|are|has|"
        "have|starts|begins)) ",
        Pattern::caseless);
    static const Pattern matter(
        "((?:\\d ?(?:[ap]\\.?m\\.?)?|noon|midnight|morning|afternoon|evening|tonight|today|tomorrow|day)) for "
        "(?=(?:the|my|our|an?|his|her|their|\\p{L}+['’]s) )",
        Pattern::caseless);
    // Nobody else can be reminded; the user can be, of reminding them.
    static const Pattern other("^(?!(?:Mon|Tues|Wednes|Thurs|Fri|Satur|Sun)day|To|Next|This|About|Again|Please)"
                               "\\p{Lu}\\p{Ll}+ (?:of|about) \\S");
    static const Pattern plainName(
        "^(?!(?:to|for|me|us|next|this|about|again|please|today|tonight|tomorrow|tmrw|later|now|not|the|my|our|"
        "an?|every|each|in|at|on|daily|weekly|(?:mon|tues|wednes|thurs|fri|satur|sun)days?|all|noon)\\b)"
        "\\p{L}{2,} about \\S",
        Pattern::caseless);
    if (other.find(wish) || plainName.find(wish))
        wish = "to remind " + wish;
    if (clause.find(wish)) // "I have a meeting at 10, please remind me."
        wish = "that " + wish;
    else if (const auto match = matter.find(wish); match && trimmed(rest) != wish) // What is left of "for friday for".
        wish = wish.substr(0, match->range.start) + match->texts[0] + " about " + wish.substr(match->range.end);
    if (const auto match = ofRule.find(wish)) // What is left of "set a monthly reminder for".
        wish = match->texts[1] + " " + match->texts[0];
    const auto length = SpokenLength::read(wish);
    const bool isLength = length && length->rest.empty();
    return {wish.empty() ? "remind me" : "remind me " + std::string(isLength ? "in " : "") + wish, wish.empty()};
}

std::optional<ReminderIntent> ReminderIntent::readTimed(
    std::string_view words, std::string_view timeWords, std::string_view task)
{
    static const Pattern statement(
        "^(?:is|are|was|were|will|would|has|have|had|i|i'm|we|we're|you|he|she|it|it's|they|there"
        "|the|my|our|this|that|and|what|when|where|who|how|why)\\b",
        Pattern::caseless);
    // Tasks of daily life; verbs that this service could be expected to carry out itself are not among them.
    static const Pattern chore(
        "^(?:call|ring|phone|buy|pay|water|feed|walk|pick up|collect|renew|return|clean|wash|visit)\\b",
        Pattern::caseless);
    const std::string core(words);
    const std::string firstTimeWord(RequestWords(timeWords).at(0));
    const bool beginsWithTime = !firstTimeWord.empty() && RequestWords(core).at(0) == firstTimeWord;
    if (task.empty() || !(beginsWithTime ? !statement.find(task) : chore.find(core).has_value()))
        return std::nullopt;
    return ReminderIntent{"remind me " + withPlainTime(core)};
}

std::string ReminderIntent::timeAnswer(std::string_view core)
{
    static const Pattern filler(
        "^[\\s,.;]*(?:(?:let's say|let us say|make (?:it|that)|change (?:it|that) to|wait|hang on|sorry|or "
        "rather|rather|say|maybe|how about|what about|and|perhaps|i mean|i meant|no|yes|yeah"
        "|it's|it is|do|try|that would be|on second thought|actually|remind me|well)\\b[,:]?\\s*)+",
        Pattern::caseless);
    static const Pattern closing(
        "[\\s,]+(?:would be (?:good|great|nice|fine|best)|is (?:good|great|fine|best)|sounds good"
        "|works(?: for me)?)$",
        Pattern::caseless);
    static const Pattern bareHour(
        "^(?:\\d{1,2}(?::\\d{2})?|one|two|three|four|five|six|seven|eight|nine|ten|eleven|twelve)$", Pattern::caseless);
    const std::string answer = trimmed(closing.replaceAll(filler.replaceAll(core, ""), ""));
    return bareHour.find(answer) ? "at " + answer : answer;
}

std::string ReminderIntent::bareTime(std::string_view core, const LocalTime& around)
{
    static const Pattern instead(",?\\s+instead$", Pattern::caseless);
    const std::string words = SpokenPhrase::withDigits(timeAnswer(instead.replaceAll(core, "")));
    const auto phrase = SpokenPhrase::read(words, around);
    return phrase && phrase->task.empty() && !phrase->repeatRule ? words : std::string();
}

std::string ReminderIntent::taskAnswer(std::string_view core)
{
    static const Pattern filler(
        "^(?:(?:it's|it is|that's|that is|it|remind me|just|yes|well|um+|the reminder is)\\b[,:]?\\s*)*"
        "(?:(?:to|about|for|that|of)\\b\\s*)?",
        Pattern::caseless);
    return RequestText::written(filler.replaceAll(core, ""));
}

} // namespace quorvell
