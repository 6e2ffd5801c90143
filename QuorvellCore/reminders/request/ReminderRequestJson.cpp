// SPDX-License-Identifier: MIT
#include "QuorvellCore/reminders/request/ReminderRequestJson.h"

#include <nlohmann/json.hpp>

#include <utility>

namespace quorvell {

namespace {

const char* verdictText(ReminderRequest::Verdict verdict)
{
    switch (verdict) {
    case ReminderRequest::Verdict::ready:
        return "ready";
    case ReminderRequest::Verdict::whichTime:
        return "which_time";
    case ReminderRequest::Verdict::needsTime:
        return "needs_time";
    case ReminderRequest::Verdict::pastTime:
        return "past_time";
    case ReminderRequest::Verdict::needsTask:
        return "needs_task";
    }
    return "";
}

} // namespace

Json requestJson(const ReminderRequest& request, const Calendar& calendar)
{
    const bool hasDate = request.verdict != ReminderRequest::Verdict::needsTime;
    Json choices = Json::array();
    for (const Instant choice : request.choices)
        choices.push_back(isoText(choice));
    Json object = Json::object();
    object["status"] = verdictText(request.verdict);
    object["task"] = request.task;
    object["date"] = hasDate ? Json(isoText(request.date)) : Json(nullptr);
    object["hasTime"] = request.hasTime;
    object["choices"] = std::move(choices);
    object["repeatRule"] = request.repeatRule ? Json(request.repeatRule->stored()) : Json(nullptr);
    object["repeatWords"] = request.repeatRule ? Json(request.repeatRule->spoken(calendar.locale())) : Json(nullptr);
    object["unclear"] = request.unclear;
    return object;
}

} // namespace quorvell
