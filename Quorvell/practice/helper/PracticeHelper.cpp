// SPDX-License-Identifier: MIT
#include "Quorvell/practice/helper/PracticeHelper.h"

#include "Quorvell/loop/FreshUUID.h"

#include <optional>
#include <utility>
#include <variant>

namespace quorvell {

PracticeHelper::PracticeHelper(Screen& screen, Scheduler& scheduler, TieredDecisionEngine::Parts engine)
    : m_scheduler(scheduler)
    , m_gate(freshUUID)
    , m_heard({.scheduler = scheduler})
    , m_work(ports(screen), {}, HelpMode::auto_)
    , m_engine(std::make_shared<TieredDecisionEngine>(std::move(engine)))
    , m_thread([&scheduler](std::function<void()> action) { scheduler.post(std::move(action)); })
    , m_self(std::make_shared<PracticeHelper*>(this))
{
    m_work.pipeline().addObserver(*this);
}

PracticeHelper::~PracticeHelper()
{
    m_work.pipeline().removeObserver(*this);
}

ScreenWork::Ports PracticeHelper::ports(Screen& screen)
{
    return {.screen = screen,
        .scheduler = m_scheduler,
        .log = m_log,
        .consent = m_heard,
        .gate = m_gate,
        .freshMark = freshUUID,
        .plan = [this]() -> const TaskPlan& { return m_plan; },
        .endPlan = [this] { m_plan = {}; },
        .tell = [](const LiveMessageText&) {},
        .showTarget = [](const std::string&, const std::function<bool()>&) {},
        .clearTarget = [] {}};
}

void PracticeHelper::userSaid(const std::string& words)
{
    const HeardUtterance heard{
        .text = words, .ownWords = words, .how = HeardUtterance::How::typed, .at = m_scheduler.now()};
    m_heard.userSaid(heard);
    m_work.userSaid(heard);
}

void PracticeHelper::settle(PracticeRun::ResultReport report)
{
    m_work.pipeline().confirm(freshUUID(), [report = std::move(report)](std::optional<ActionResult> result) {
        report(result.value_or(
            ActionResult{.kind = ActionResult::Kind::refused, .words = "Not done, without a clear yes."}));
    });
}

void PracticeHelper::decide(const DecisionContext& context, PracticeRun::DecisionReport report)
{
    const auto decider = [engine = m_engine](const DecisionContext& asked, std::stop_token stop) {
        return engine->decide(asked, std::move(stop));
    };
    m_asked = m_thread.ask(decider, context, [report = std::move(report)](const StepAnswer& answer) {
        const auto* routed = std::get_if<RoutedDecision>(&answer);
        report(routed ? std::optional(routed->decision) : std::nullopt);
    });
}

std::string PracticeHelper::switchOffQuestion()
{
    const auto question = m_work.switchableQuestion();
    if (!question)
        return {};
    m_work.switchOff(*question);
    std::string told = "Until the end you are not asked where words come from for:";
    for (const ProvenanceGrants::Grant& grant : m_work.switchedOff())
        told += " " + grant.tool + " in " + grant.app + ";";
    told.back() = '.';
    return told;
}

void PracticeHelper::stop()
{
    m_asked.abandon();
    m_heard.stopped();
    m_work.stopped();
}

/// The question is shown where this is told; then it has been put.
void PracticeHelper::actionEnded(const ProposedAction&, const ActionResult& result)
{
    if (result.kind != ActionResult::Kind::needsYes)
        return;
    m_scheduler.post([self = std::weak_ptr(m_self), question = result.question] {
        if (const auto helper = self.lock())
            (*helper)->m_heard.assistantSaid(question);
    });
}

} // namespace quorvell
