// SPDX-License-Identifier: MIT
#include "Understanding/dialogue/repair/UndoWish.h"

#include "QuorvellCore/text/Pattern.h"
#include "Understanding/words/RequestText.h"

#include <algorithm>
#include <array>

namespace quorvell {

namespace {

using Kind = UndoWish::Kind;

constexpr std::size_t mostAtOnce = 50;
constexpr auto numberWords =
    std::to_array<std::string_view>({"one", "two", "three", "four", "five", "six", "seven", "eight", "nine", "ten"});

std::size_t numberOf(const std::string& words)
{
    const auto word = std::ranges::find(numberWords, words);
    if (word != numberWords.end())
        return static_cast<std::size_t>(word - numberWords.begin()) + 1;
    std::size_t number = 0;
    for (const char digit : words)
        number = std::min(number * 10 + static_cast<std::size_t>(digit - '0'), mostAtOnce);
    return std::max<std::size_t>(number, 1);
}

const std::string undoing = "(?:undo|un do|revert|reverse|rollback|roll back|take back|retract|unmake)";
const std::string things = "(?:one|ones|thing|things|change|changes|action|actions|act|acts|step|steps|command"
                           "|commands|request|requests|entry|entries)";
const std::string whatYouDid = "(?:what|whatever|all|everything) (?:you|we|i) (?:have |had )?(?:just "
                               "|now )?(?:did|done|changed|set|added|made|deleted|removed)(?: (?:just )?now"
                               "| today| so far)?";

std::optional<UndoWish> readUndo(const std::string& phrase)
{
    static const Pattern everything("^" + undoing
        + " (?:it all|all|everything|all of (?:it|them|that|those|this)|all (?:the |my |your )?" + things
        + "|the whole (?:lot|thing)|everything you did|all (?:that )?you did)(?: you (?:did|made))?(?: so far"
          "| again| today)?$|^(?:take|put) everything back(?: (?:how|the way|as) it was)?$");
    static const Pattern several("^" + undoing
        + " (?:the |my |your )?last (\\d{1,3}|two|three|four|five|six|seven|eight|nine|ten)(?: " + things
        + "| of them)?$" + "|^" + undoing + " (both)(?: of them| " + things + ")?$");
    static const Pattern before("^(?:(?:and|also|now) )?(?:" + undoing
        + " )?(?:the (?:one|thing|change|act) before(?: that| it| this| last)?|the (?:previous"
          "|earlier) one(?: too)?)$");
    static const Pattern last("^(?:" + undoing
        + "|take (?:it|that|this) back|(?:put|change|set) (?:it|that|this) back|undo undo)(?: (?:it|that|this"
          "|again|please|now|then|too|the same))*(?: (?:how|the way|as|to (?:how|what"
          "|the way)) it was(?: before)?)?$"
        + "|^" + undoing + " (?:that|this|the|my|your|the very)(?: last| latest| previous)? " + things + "$|^" + undoing
        + " (?:the )?last$|^" + undoing
        + " (?:what|whatever) (?:you|we|i) (?:have |had )?(?:just |now )?(?:did|done|changed|set|added"
          "|made)(?: just now| last)?$|^(?:cancel|reverse|scratch|scrap) (?:(?:the|my|your) last "
        + things + "|" + whatYouDid + ")$|^i (?:want|need|would like) (?:it|that) undone$");
    static const Pattern named("^" + undoing + " (?:the )?(\\S.*)$|^take (?!it |that |this |me |us )(\\S.*) back$");
    if (everything.find(phrase))
        return UndoWish{.kind = Kind::everything};
    if (const auto match = several.find(phrase))
        return UndoWish{.count = match->texts[0].empty() ? 2 : numberOf(match->texts[0])};
    if (before.find(phrase))
        return UndoWish{.kind = Kind::before};
    if (last.find(phrase))
        return UndoWish{};
    if (const auto match = named.find(phrase))
        return UndoWish{.kind = Kind::named, .words = match->texts[0].empty() ? match->texts[1] : match->texts[0]};
    return std::nullopt;
}

/// "What did you just add", and by the user's own hand: "what did I just set".
std::optional<UndoWish> readTelling(const std::string& phrase)
{
    static const std::string verbs =
        "(?:do|done|change|changed|add|added|set|create|created|delete|deleted|remove|removed|save|saved|put in"
        "|put down|enter|entered|move|moved|make|made|undo|undone)";
    static const Pattern all("^(?:what (?:all )?(?:have|did) (?:you|we|i) (?:all )?" + verbs
        + "(?: (?:for me|so far|today|until now|in this conversation|up to now|all together))+|(?:tell|show"
          "|list)(?: me)? (?:everything|all|what)(?: that)? you (?:have |had )?(?:did|done|changed)(?: so far"
          "| today| for me)*|what have you done|what did you (?:all )?change"
          "|what has (?:been )?changed(?: so far)?|what changed(?: so far)?)$");
    static const Pattern last("^what (?:have|did) (?:you|we|i) just " + verbs + "(?: (?:now|there|then|for me))*$"
        + "|^what did you (?:do|change|set|save|delete|remove)(?: just)?(?: now| then| there| last)?$"
          "|^what was the last (?:thing|change)(?: that)? (?:you|i|we) (?:did|made|added|changed|set)$"
          "|^(?:please )?(?:confirm|check|recheck|verify|double check|double checking|validate)(?: (?:and confirm|and "
          "check|what|that|the|your|my|me|it|this"
          "|last|just|was|i|you|said|say|did|command|request|order|instruction|again|once more|correctly"
          "|details|action|whether|if|is|correct|right|done))*$");
    static const Pattern whether("^(?:did|have) you (?:really |just |already )?" + verbs
        + " (?:it|that|this|so)(?: yet| now| already)?$|^(?:is|was) (?:it|that|this) (?:done|set|saved|added"
          "|deleted|removed|changed)(?: now| already| yet)?$|^did (?:it|that) (?:work|go through|work out)$"
          "|^are you done(?: with (?:it|that))?$"
          "|^are you (?:sure|certain) (?:that )?you (?:did|have done|set|added|changed|deleted|removed|saved) "
          "(?:it|that|this)$|^(?:did you|have you) (?:really |just |already )?"
        + verbs
        + " (?:it|that|this|what i (?:asked|said|wanted|told you))$"
          "|^(?:is|was) (?:it|that|this|my (?:\\w+ )?(?:command|request|order)) (?:correctly |properly "
          ")?(?:done|carried out|executed|completed)$");
    if (all.find(phrase))
        return UndoWish{.kind = Kind::tellAll};
    if (last.find(phrase))
        return UndoWish{.kind = Kind::tellLast};
    return whether.find(phrase) ? std::optional(UndoWish{.kind = Kind::tellWhether}) : std::nullopt;
}

} // namespace

std::optional<UndoWish> UndoWish::read(std::string_view core)
{
    constexpr std::size_t longest = 120; ///< Bytes; longer words ask for something else.
    if (core.size() > longest)
        return std::nullopt;
    // "Not that, undo it."
    static const Pattern lead("^(?:(?:no|nope|not (?:that|this|it)(?: one)?|wait|oh|sorry|stop|actually|wrong(?: one)?"
                              "|(?:that|this|it) (?:is|was) (?:wrong|not right|a mistake)|please|just) )+(?=(?:"
        + undoing + "|take (?:it|that|this) back)\\b)");
    const std::string phrase = lead.replaceAll(RequestText::phrase(core), "");
    static const Pattern redo(
        "^(?:redo|re do|undo (?:the|that|your|my) undo(?:ing)?|restore)(?: (?:it|that|this|the last one|again"
        "|please))*$|^do (?:it|that) again after all$|^put (?:it|that) back (?:in|on) again$|^i did not (?:mean"
        "|want) to undo(?: (?:it|that))?$|^(?:do not|dont) undo (?:it|that)$");
    if (redo.find(phrase))
        return UndoWish{.kind = Kind::redo};
    auto wish = readUndo(phrase);
    return wish ? wish : readTelling(phrase);
}

bool UndoWish::isOfWhatWasJustDone(std::string_view core)
{
    constexpr auto phrases = std::to_array<std::string_view>(
        {"cancel that", "cancel it", "cancel this", "scrap that", "scratch that", "scrap it", "scratch it", "forget it",
            "forget that", "forget about it", "forget about that", "revoke that", "revoke it"});
    return std::ranges::find(phrases, RequestText::phrase(core)) != phrases.end();
}

} // namespace quorvell
