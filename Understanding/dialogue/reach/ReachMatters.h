// SPDX-License-Identifier: MIT
// The matters that are out of reach, each with the words that ask for it. A group has a source of its own.
#pragma once

#include "QuorvellCore/text/Pattern.h"
#include "Understanding/dialogue/reach/ReachReply.h"

#include <span>
#include <string_view>

namespace quorvell {

struct ReachMatter {
    /// Words of ours that leave a request to the skills: any of them, only those that can mean nothing else, or none
    /// at all.
    enum class Ours { any, plain, none };

    ReachMatter(std::string_view words, ReachReply reply, Ours ofOurs = Ours::any)
        : pattern(words)
        , says(reply)
        , ours(ofOurs)
    {
    }

    Pattern pattern;
    ReachReply says;
    Ours ours;
};

/// Asked in this order; the first that fits says what is out of reach.
namespace ReachMatters {

std::span<const ReachMatter> sureRows();
std::span<const ReachMatter> houseRows();
std::span<const ReachMatter> mediaRows();
std::span<const ReachMatter> worldRows();
std::span<const ReachMatter> travelRows();
std::span<const ReachMatter> peopleRows();
std::span<const ReachMatter> ordersRows();
std::span<const ReachMatter> knowledgeRows();
std::span<const ReachMatter> computerRows();

} // namespace ReachMatters

} // namespace quorvell
