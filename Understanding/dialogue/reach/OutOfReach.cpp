// SPDX-License-Identifier: MIT
#include "Understanding/dialogue/reach/OutOfReach.h"

#include "QuorvellCore/text/Pattern.h"
#include "Understanding/dialogue/reach/OurMatters.h"
#include "Understanding/dialogue/reach/ReachMatters.h"
#include "Understanding/dialogue/reach/ReachThings.h"
#include "Understanding/words/RequestText.h"

#include <array>
#include <string>

namespace quorvell {

std::optional<ReachReply> OutOfReach::of(std::string_view core)
{
    constexpr std::size_t longest = 300; ///< Bytes; longer words tell a story.
    if (core.size() > longest)
        return std::nullopt;
    static const Pattern gonna("\\bgonna\\b");
    const std::string phrase = gonna.replaceAll(RequestText::phrase(core), "going to");
    const bool isOurs = OurMatters::areNamed(phrase);
    const bool mayBeOurs = isOurs || OurMatters::mayBeNamed(phrase);
    constexpr std::array groups{ReachMatters::sureRows, ReachMatters::houseRows, ReachMatters::mediaRows,
        ReachMatters::worldRows, ReachMatters::travelRows, ReachMatters::peopleRows, ReachMatters::ordersRows,
        ReachMatters::knowledgeRows, ReachMatters::computerRows};
    for (const auto rows : groups) {
        for (const ReachMatter& matter : rows()) {
            using Ours = ReachMatter::Ours;
            const bool isLeft = matter.ours == Ours::any ? mayBeOurs : matter.ours == Ours::plain && isOurs;
            if (!isLeft && matter.pattern.find(phrase))
                return ReachThings::named(matter.says, phrase);
        }
    }
    return std::nullopt;
}

} // namespace quorvell
