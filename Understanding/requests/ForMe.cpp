// SPDX-License-Identifier: MIT
#include "Understanding/requests/ForMe.h"

#include "QuorvellCore/text/Characters.h"
#include "QuorvellCore/text/Pattern.h"
#include "Understanding/words/RequestText.h"
#include "Understanding/words/RequestWords.h"

namespace quorvell {

std::string ForMe::removed(std::string_view words)
{
    static const Pattern courtesy(
        "[,.;!?]?\\s+(?:(?:and|so|then|please|pls|just|if possible)\\s+)*(?:(?:can|could|will|would) (?:you|u|ya)\\s+)?"
        "(?:(?:please|kindly|just)\\s+)*(?:do|handle|sort|arrange|take care of) (?:it|that|this|these|them|so)"
        "(?: all)? for me(?: please| pls| thanks| now| then)*(?:\\s*[?!]+|(?=\\s*[.,;]|\\s*$))",
        Pattern::caseless);
    static const Pattern guided(
        "\\b(?:show|guide|teach|walk|talk|help|explain|how)\\b|^(?:no|yes|ok|okay|please)\\b", Pattern::caseless);
    // The wish is in front of the courtesy: what they forgot is to be done now.
    static const Pattern forgot("^i (?:forgot|need|meant|wanted|have|still have|was going|would like) to "
                                "(?=(?:put|add|set|make|create|write|note|book|schedule|cancel|delete|remove)\\b)",
        Pattern::caseless);
    constexpr std::size_t leastWords = 3; ///< Of a request in front.
    const auto match = courtesy.find(words);
    const std::string front = match ? trimmed(words.substr(0, match->range.start)) : std::string();
    if (RequestWords(front).size() < leastWords || guided.find(front))
        return std::string(words);
    const std::string opened = forgot.replaceAll(RequestText::withoutOpening(front), "");
    const std::string behind = trimmed(words.substr(match->range.end), " .,;!?");
    // "Put bananas on the grocery list ... Also oranges."
    static const Pattern listed("^(?:put|add) (.+?)(?= (?:on|onto|to|in|into) )", Pattern::caseless);
    static const Pattern also("^(?:also|and|plus)[,]? ", Pattern::caseless);
    const auto item = also.find(behind) ? listed.find(opened) : std::nullopt;
    if (item)
        return opened.substr(0, item->range.end) + " and " + also.replaceAll(behind, "")
            + opened.substr(item->range.end);
    return behind.empty() ? opened : opened + ". " + behind;
}

} // namespace quorvell
