// SPDX-License-Identifier: MIT
#include "Quorvell/actions/tools/ActingTools.h"

#include "Quorvell/actions/pipeline/FoundAgain.h"

#include <cstddef>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace quorvell {

namespace {

constexpr const char* noYesText = "No clear yes to the pending action was heard.";
constexpr const char* noLookText = "No element with that id. Call look_at_screen again, then use a new id.";
constexpr const char* noPictureText = "Request look_at_screen with include_image true before using coordinates.";

bool isPlaceOf(const ScreenAction& action)
{
    return std::holds_alternative<screen_action::ClickSpot>(action)
        || std::holds_alternative<screen_action::Drag>(action);
}

/// "Step 1 is done." where there is something to tell.
std::string doneBefore(std::size_t count)
{
    if (count == 0)
        return "";
    return count == 1 ? "Step 1 is done. " : "Steps 1 to " + std::to_string(count) + " are done. ";
}

} // namespace

/// One call, on its way through its steps.
struct ActingTools::Series {
    LiveFunctionCall call;
    ToolReply reply;
    std::vector<AskedStep> steps;
    std::optional<ScreenLook> shown; ///< That the ids of all steps come from.
    std::size_t done = 0;
    bool isVerified = true; ///< So far.
    Json told = Json::array();
};

ActingTools::ActingTools(ActionToolPorts ports)
    : m_ports(std::move(ports))
    , m_self(std::make_shared<ActingTools*>(this))
{
}

void ActingTools::act(const LiveFunctionCall& call, ToolReply reply)
{
    auto read = ActionArguments::read(call.name, call.args);
    if (const auto* problem = std::get_if<std::string>(&read))
        return reply.fail(*problem);
    std::optional<ScreenLook> shown;
    if (const ScreenLook* const look = m_ports.teller.shown())
        shown = *look;
    next(std::make_shared<Series>(
        Series{call, std::move(reply), std::move(std::get<std::vector<AskedStep>>(read)), std::move(shown)}));
}

void ActingTools::next(const std::shared_ptr<Series>& series)
{
    const AskedStep& step = series->steps[series->done];
    auto action = onLatestLook(step.action, series->shown ? &*series->shown : nullptr);
    if (auto* problem = std::get_if<std::string>(&action))
        return ended(series, {.kind = ActionResult::Kind::failed, .words = std::move(*problem)});
    const ScreenLook* const look = m_ports.pipeline.latestLook();
    ProposedAction proposed{.callID = series->call.id, .tool = step.tool};
    proposed.action = std::move(std::get<ScreenAction>(action));
    proposed.expected = step.expected;
    proposed.revision = look ? look->observation.revision : 0;
    m_ports.pipeline.run(std::move(proposed), [self = std::weak_ptr(m_self), series](const ActionResult& result) {
        if (const auto tools = self.lock())
            (*tools)->ended(series, result);
    });
}

void ActingTools::ended(const std::shared_ptr<Series>& series, const ActionResult& result)
{
    const bool isDone = result.kind == ActionResult::Kind::done;
    if (series->steps.size() == 1)
        return isDone && result.isVerified ? follow(series, result) : answer(series, result);

    series->isVerified = series->isVerified && result.isVerified;
    series->told.push_back(
        Json{{"tool", series->steps[series->done].tool}, {"message", result.words}, {"verified", result.isVerified}});
    if (isDone && ++series->done < series->steps.size())
        return next(series);
    ActionResult whole = result;
    whole.isVerified = series->isVerified;
    whole.words = isDone ? "All steps are done."
                         : doneBefore(series->done) + "Step " + std::to_string(series->done + 1) + ": " + result.words;
    if (series->done + 1 < series->steps.size())
        whole.words += " The steps after it were not begun.";
    answer(series, whole);
}

/// The step that the model named for after this one, where it worked.
void ActingTools::follow(const std::shared_ptr<Series>& series, const ActionResult& result)
{
    const Json* const then = memberOf(series->call.args, "then");
    if (!m_ports.follow || !then || then->is_null() || !series->shown)
        return answer(series, result);
    m_ports.follow(series->call, *series->shown, result,
        [self = std::weak_ptr(m_self), series, result](std::optional<ActionResult> second) {
            const auto tools = self.lock();
            if (!tools)
                return;
            if (second)
                second->words = result.words + " Then the step that you named for after it: " + second->words;
            (*tools)->answer(series, second ? *second : result);
        });
}

void ActingTools::answer(const std::shared_ptr<Series>& series, const ActionResult& result)
{
    ToolResult told = resultOf(result, m_ports.teller);
    if (series->steps.size() > 1)
        told.add("steps", std::move(series->told));
    series->reply.answer(told);
}

/// The ids that the model knows are of the look that it was told last; meanwhile others may have looked, and each step
/// leaves a screen behind whose elements have new ones.
std::variant<ScreenAction, std::string> ActingTools::onLatestLook(
    const ScreenAction& action, const ScreenLook* shown) const
{
    const ScreenLook* const latest = m_ports.pipeline.latestLook();
    const bool isLatest = shown && latest && shown->observation.revision == latest->observation.revision;
    if (isPlaceOf(action) && !(isLatest && m_ports.teller.hasShownPicture()))
        return std::string(noPictureText);
    if (!targetOf(action) || isLatest)
        return action;
    if (!shown || !latest)
        return std::string(noLookText);
    return foundAgain(action, *shown, *latest);
}

void ActingTools::confirm(const LiveFunctionCall& call, ToolReply reply)
{
    auto shared = std::make_shared<ToolReply>(std::move(reply));
    m_ports.pipeline.confirm(
        call.id, [self = std::weak_ptr(m_self), shared](const std::optional<ActionResult>& result) {
            const auto alive = self.lock();
            if (!alive)
                return;
            ActingTools& tools = **alive;
            if (!result) {
                ToolResult refused(ToolStatus::refused);
                refused.advise(noYesText);
                if (const auto& pending = tools.m_ports.pipeline.pending())
                    refused.add("waiting", pending->question);
                return shared->answer(refused);
            }
            const bool isAskedAnew = result->kind == ActionResult::Kind::needsYes;
            if (!isAskedAnew && tools.m_ports.carryOn && tools.m_ports.carryOn(*shared))
                return;
            using Kind = ActionResult::Kind;
            if (result->kind != Kind::done && result->kind != Kind::failed && result->kind != Kind::unknown)
                return shared->answer(resultOf(*result, tools.m_ports.teller));
            ToolResult handled(ToolStatus::confirmationHandled);
            handled.advise(result->words).add("verified", result->isVerified);
            if (result->after)
                handled.add("screen", tools.m_ports.teller.tell(*result->after));
            shared->answer(handled);
        });
}

ToolResult ActingTools::resultOf(const ActionResult& result, LookTeller& teller)
{
    using Kind = ActionResult::Kind;
    ToolResult told = ToolResult::failed(result.words);
    switch (result.kind) {
    case Kind::done:
        told = ToolResult(ToolStatus::acted).advise(result.words).add("verified", result.isVerified);
        break;
    case Kind::needsYes:
        told = ToolResult(ToolStatus::needsConfirmation).ask(result.question).advise(result.words);
        break;
    case Kind::stopped:
        told = ToolResult(ToolStatus::stopped).advise(result.words);
        break;
    case Kind::failed:
    case Kind::refused:
    case Kind::unknown:
        break;
    }
    if (result.after)
        told.add("screen", teller.tell(*result.after));
    return told;
}

} // namespace quorvell
