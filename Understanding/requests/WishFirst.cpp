// SPDX-License-Identifier: MIT
#include "Understanding/requests/WishFirst.h"

#include "QuorvellCore/text/Pattern.h"
#include "Understanding/requests/SkillTable.h"
#include "Understanding/time/TimeWords.h"
#include "Understanding/words/RequestReading.h"
#include "Understanding/words/RequestText.h"

#include <deque>
#include <optional>
#include <string_view>
#include <utility>

namespace quorvell {

namespace {

struct TurnedWish {
    explicit TurnedWish(const TrailingWish& row)
        : wish(row)
        , form("^(.+?)[,.;:]?\\s+(?:(?:and|so|but|could you|can you|would you|please|just)[,]?\\s+)*(?:"
                  + std::string(row.phrases) + ")(?: for me)?$",
              Pattern::caseless)
        , lead("^" + std::string(row.withoutLead), Pattern::caseless)
    {
    }

    TrailingWish wish;
    Pattern form;
    Pattern lead;
};

std::deque<TurnedWish> readWishes()
{
    std::deque<TurnedWish> wishes;
    for (const Skill* skill : SkillTable::all()) {
        for (const TrailingWish& wish : skill->trailingWishes)
            wishes.emplace_back(wish);
    }
    return wishes;
}

/// "The vet is on friday, put that in my diary" with the wish in front.
std::optional<std::string> wishBehind(const std::string& core)
{
    static const std::deque<TurnedWish> wishes = readWishes();
    const std::size_t end = RequestText::endOf(core);
    for (const auto& [wish, form, lead] : wishes) {
        const auto match = form.find(std::string_view(core).substr(end));
        if (!match)
            continue;
        const std::string said = RequestText::withoutOpening(core.substr(0, end) + match->texts[0]);
        return std::string(wish.before) + (wish.withoutLead.empty() ? said : lead.replaceAll(said, "to"))
            + std::string(wish.behind);
    }
    return std::nullopt;
}

} // namespace

std::string WishFirst::of(const std::string& core, const RuleSurroundings& around)
{
    if (auto request = wishBehind(core))
        return *std::move(request);
    const auto time = TimeWords::atStart(core, around);
    if (!time || time->rest.empty())
        return core;
    const std::string rest = RequestText::withoutOpening(time->rest);
    const RequestReading reading = RequestReading::of(rest, SkillTable::cues());
    const bool asks = reading.hasAny(Cue::followsTime);
    return asks ? rest + " " + time->time : core;
}

} // namespace quorvell
