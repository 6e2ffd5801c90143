// SPDX-License-Identifier: MIT
#include "Understanding/requests/ReachRules.h"

#include "QuorvellCore/text/Json.h"
#include "QuorvellCore/text/Pattern.h"
#include "Understanding/dialogue/ToolResults.h"
#include "Understanding/requests/RequestReader.h"
#include "Understanding/time/TimeWords.h"

#include <nlohmann/json.hpp>

#include <string_view>

namespace quorvell {

namespace {

/// What a reminder of it would say; nothing where the words are no deed: "BBC Radio 4 on".
std::string dutyOf(const std::string& core)
{
    static const Pattern wanted(
        "^(?:i|we)(?:['’]d| would)? (?:need|want|like) (?=(?:an?|the|some|two)\\b)", Pattern::caseless);
    static const Pattern deed("^(?:re-?order|book|reserve|buy|get|bring|call|phone|ring|hail|arrange|request|schedule|"
                              "order|turn|switch|dim|shut"
                              "|close|open|lock|unlock|start|run|stop|make|brew|prepare|play|put "
                              "on|send|e-?mail|mail|text|message|write|compose"
                              "|draft|reply|answer|forward|post|tweet|share|vacuum|clean|mop|sweep|set|change|pay|"
                              "transfer|print|record|take|watch"
                              "|listen|charge|find|tell|update|download|cook|activate|lower|raise)\\b",
        Pattern::caseless);
    const auto match = wanted.find(core);
    const std::string duty = match ? "get " + core.substr(match->range.end) : core;
    if (!deed.find(duty))
        return {};
    return std::string(1, static_cast<char>(duty.front() | ' ')) + duty.substr(1);
}

} // namespace

RuleStep ReachRules::answer(const ReachReply& matter, const std::string& core, RequestMood mood,
    const RequestMemory& memory, const RuleSurroundings& around)
{
    const bool isWish = matter.isDeed && mood == RequestMood::wish;
    const auto request = isWish && !matter.isOffScreen ? RequestReader::read(core, around) : std::nullopt;
    if (request && request->isForOthers)
        return request->answer(memory, around);
    const std::string reply(matter.reply);
    constexpr std::string_view reminding = "set_reminder";
    static const Pattern time(
        "\\b(?:at|on|every|by|tonight|today|tomorrow|next|noon|midnight|in an?|in \\d+)\\b|\\d ?[ap]\\.?m\\b",
        Pattern::caseless);
    const std::string duty = isWish ? dutyOf(core) : std::string();
    if (duty.empty() || !around.offers(reminding) || !time.find(duty) || !TimeWords::atEnd(duty, around))
        return {reply, memory, matter.isCommonKnowledge};
    return RuleStep::asking({.kind = &ToolResults::confirmation,
                                .question = reply + " Should I remind you to " + duty + "?",
                                .task = duty,
                                .tool = std::string(reminding),
                                .arguments = dumpJson(Json{{"text", "remind me to " + duty}})},
        memory);
}

} // namespace quorvell
