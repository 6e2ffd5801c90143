// SPDX-License-Identifier: MIT
// Of what the calendar told, the events that are meant. Pure.
#pragma once

#include "QuorvellCore/live/tools/ToolResult.h"
#include "Understanding/dialogue/memory/EventSearch.h"
#include "Understanding/dialogue/memory/FoundThing.h"
#include "Understanding/time/LocalTime.h"

#include <string>
#include <vector>

namespace quorvell {

struct EventPick {
    /// `result` says more of each than `listed` does.
    static std::vector<FoundThing> fitting(
        std::vector<FoundThing> listed, const EventSearch& search, const ToolResult& result, const LocalTime& around);
    /// "The dentist and the yoga": the first of what each part names; nothing where one of them names nothing.
    static std::vector<FoundThing> eachOf(const std::vector<FoundThing>& listed, const std::string& name);
    /// None of them is at the hour that was said.
    static bool isAtOtherHour(const std::vector<FoundThing>& found, const EventSearch& search);
    /// Of each series its first time.
    static void keepOneOfSeries(std::vector<FoundThing>& found);
};

} // namespace quorvell
