// SPDX-License-Identifier: MIT
#include "Understanding/requests/AsideRules.h"

#include "QuorvellCore/text/TextMatch.h"
#include "Understanding/dialogue/QuestionKind.h"
#include "Understanding/dialogue/repair/ActBook.h"
#include "Understanding/requests/CarefulStep.h"
#include "Understanding/requests/RequestMood.h"
#include "Understanding/skills/alarms/AlarmQuestions.h"

#include <string>
#include <utility>

namespace quorvell {

namespace {

/// An action on the screen is not the one that was asked about any more, once something else was said.
constexpr std::string_view ofTheScreen = "confirm_action";

/// Whether the user said something already that would be lost with the question.
bool matters(const RequestMemory& memory)
{
    const PendingQuestion& asked = memory.pending;
    // What was offered behind a mere question is nobody's wish; what is taken back later would be something else.
    const bool isOffer = !memory.words.empty() && moodOf(memory.words) == RequestMood::question;
    const bool takesBack = ActBook::isTakingBack({asked.tool, asked.arguments}, memory);
    if (asked.isTakenUpAgain || asked.tool == ofTheScreen || isOffer || takesBack)
        return false;
    if (!asked.tool.empty())
        return CarefulStep::mayChange({asked.tool, asked.arguments});
    return !asked.task.empty() || asked.kind == &AlarmQuestions::when;
}

/// "Remind me to call mum at 5" settles what was asked of calling mum.
bool settles(const std::string& core, const std::string& task)
{
    const std::string words = " " + TextMatch::normalized(core) + " ";
    return !task.empty() && words.find(" " + TextMatch::normalized(task) + " ") != std::string::npos;
}

std::string asked(const PendingQuestion& question)
{
    const bool namesTask = question.task.empty()
        || TextMatch::normalized(question.question).find(TextMatch::normalized(question.task)) != std::string::npos;
    const bool saysI = question.question.starts_with("I ") || question.question.starts_with("I'");
    std::string words = question.question;
    if (!saysI && !words.empty() && words[0] >= 'A' && words[0] <= 'Z' && namesTask && words.find('.') == words.npos)
        return "And " + std::string(1, static_cast<char>(words[0] - 'A' + 'a')) + words.substr(1);
    return namesTask ? "Back to what I asked: " + words : "Back to " + question.task + ": " + words;
}

} // namespace

void AsideRules::put(const RequestMemory& before, const std::string& core, RequestMemory& memory)
{
    const PendingQuestion& open = before.pending;
    if (!open.isOpen() || memory.pending == open || !matters(before) || settles(core, open.task))
        return;
    if (memory.aside.size() >= AsideQuestion::most)
        memory.aside.erase(memory.aside.begin());
    memory.aside.push_back({.pending = open,
        .words = before.words,
        .topic = before.topic,
        .request = before.request,
        .found = before.found,
        .reminder = before.reminder,
        .event = before.event,
        .wish = before.wish,
        .batch = before.batch,
        .days = before.days});
}

RuleStep AsideRules::takenUp(RuleStep step, Behind behind)
{
    RequestMemory& memory = step.memory;
    auto* text = std::get_if<std::string>(&step.answer);
    if (!text || memory.aside.empty() || memory.pending.isOpen() || text->ends_with('?'))
        return step;
    if (step.isNotUnderstood && behind == Behind::words)
        return step;
    AsideQuestion aside = std::move(memory.aside.back());
    memory.aside.pop_back();
    // What was asked about an event is out of date once that was changed.
    const bool isChanged = !memory.acts.empty() && memory.acts.back().turn == memory.turn
        && aside.pending.tool == "change_event" && memory.acts.back().call.name == aside.pending.tool;
    if (isChanged)
        return step;
    aside.pending.isTakenUpAgain = true;
    aside.pending.misses = 0;
    *text += (text->empty() ? "" : " ") + asked(aside.pending);
    memory.pending = std::move(aside.pending);
    memory.words = std::move(aside.words);
    memory.topic = aside.topic;
    memory.request = std::move(aside.request);
    memory.found = std::move(aside.found);
    memory.reminder = std::move(aside.reminder);
    memory.event = std::move(aside.event);
    memory.wish = std::move(aside.wish);
    memory.batch = std::move(aside.batch);
    memory.days = std::move(aside.days);
    return step;
}

} // namespace quorvell
