// SPDX-License-Identifier: MIT
// What the results of all tools have in common. They come from outside: what cannot be read is left out.
#pragma once

#include "QuorvellCore/live/tools/ToolResult.h"
#include "QuorvellCore/text/Json.h"
#include "Understanding/dialogue/QuestionKind.h"
#include "Understanding/dialogue/memory/FoundThing.h"
#include "Understanding/dialogue/memory/ToolRequest.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quorvell {

struct ToolResults {
    /// Where the members of a thing stand.
    struct ThingForm {
        std::string_view skill{};
        const char* title = "title";
        const char* start = "start";
    };

    /// Asked where a call is not carried out without a yes.
    static const QuestionKind confirmation;

    static FoundThing thing(const Json& item, const ThingForm& form);
    /// The first ones of a list. What has no id cannot be pointed at, and is left out.
    static std::vector<FoundThing> things(const Json& result, const char* key, const ThingForm& form);
    static std::optional<DateParts> dateIn(const Json& item, const char* key);
    /// A failure in the tool's own sentences, without those that tell a model what to do next; nothing where there was
    /// none.
    static std::optional<std::string> failure(const ToolResult& result);
    static std::string forUser(const std::string& sentences);
    /// The step that says it, and keeps it in mind.
    static RuleStep say(std::string text, RequestMemory memory);
    /// Whether the call should really be made; nothing where that is not asked. `usual` stands in for a question that
    /// the tool did not word.
    static std::optional<RuleStep> confirming(
        const ToolRequest& call, const ToolResult& result, std::string_view usual, const RequestMemory& memory);
};

} // namespace quorvell
