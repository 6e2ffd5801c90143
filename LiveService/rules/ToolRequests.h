// Builds the requests that the rules make, each only where the session offered its tool. Pure.
#pragma once

#include "LiveService/rules/RuleStep.h"
#include "LiveService/rules/RuleSurroundings.h"

#include <string>
#include <string_view>

namespace quorvell {

struct ToolRequests {
    using Answer = decltype(RuleStep::answer);

    const RuleSurroundings& surroundings;

    /// From the user's own words. `repeat` may be empty, or what an earlier result found in words that are gone.
    Answer remindFromWords(std::string_view text, std::string_view repeat = {}) const;
    /// From what an earlier result settled. `repeat` may be empty.
    Answer remindSettled(std::string_view task, std::string_view date, std::string_view repeat) const;
    Answer keep(std::string_view title, std::string_view text) const;
    /// At most `limit` notes; 0 leaves the number to the tool.
    Answer find(std::string_view query, int limit) const;
    Answer readNote(std::string_view id) const;
};

} // namespace quorvell
