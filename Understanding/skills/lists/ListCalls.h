// SPDX-License-Identifier: MIT
// Calls of keep_note about lists, and how one that waits is put right.
#pragma once

#include "QuorvellCore/text/Json.h"
#include "Understanding/dialogue/RuleStep.h"
#include "Understanding/dialogue/RuleSurroundings.h"

#include <optional>
#include <string>
#include <string_view>

namespace quorvell {

struct ListCalls {
    static constexpr std::string_view skill = "lists";
    static constexpr const char* tool = "keep_note";

    static RuleStep call(const Json& arguments, const RequestMemory& memory, const RuleSurroundings& around);
    /// Once the user says yes to the question.
    static RuleStep confirming(std::string question, const Json& arguments, const RequestMemory& memory);
    /// The same call about the list of that id.
    static Json withList(Json arguments, const std::string& id);
    /// The same call with one item instead of the words that were unclear.
    static Json withItem(Json arguments, const std::string& words, const std::string& item);
    /// As a new list is called.
    static std::string titleOf(const std::string& name);
    /// Whether that list is what reminders are when there is no list of that name.
    static bool isOfDuties(std::string_view name);
    /// The same asked of the reminders; nothing for what they cannot do.
    static std::optional<RuleStep> byReminders(
        const Json& arguments, const RequestMemory& memory, const RuleSurroundings& around);
};

} // namespace quorvell
