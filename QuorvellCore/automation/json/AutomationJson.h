// SPDX-License-Identifier: MIT
// The records of automation as JSON objects: what deciders are asked and answer, and what is kept of a task.
#pragma once

#include "QuorvellCore/automation/json/AutomationFields.h"
#include "QuorvellCore/text/Json.h"

#include <optional>
#include <string>
#include <vector>

namespace quorvell {

/// Keys are the names of the fields, in their order.
struct AutomationJson {
    /// What is not set is left out; an image is base64.
    template <AutomationRecord Record> static Json encode(const Record& record);

    /// Nothing when a field that is not optional is missing, when any has another type or an unknown name for one of
    /// its kinds, and when a decision to act has no action. An optional field may be null; other keys are passed over.
    /// What is beyond the bounds of a screen or a text is cut, and `problems` gets a sentence for it.
    template <AutomationRecord Record>
    static std::optional<Record> decode(const Json& object, std::vector<std::string>& problems);
    template <AutomationRecord Record> static std::optional<Record> decode(const Json& object)
    {
        std::vector<std::string> problems;
        return decode<Record>(object, problems);
    }
};

} // namespace quorvell
