// SPDX-License-Identifier: MIT
#include "Quorvell/actions/work/ScreenWork.h"

#include "Quorvell/actions/tasks/TaskTools.h"
#include "Quorvell/actions/tools/ActionTools.h"
#include "QuorvellCore/automation/engine/pim/PimNextStep.h"
#include "QuorvellCore/text/Json.h"

#include <nlohmann/json.hpp>

#include <utility>

namespace quorvell {

ScreenWork::ScreenWork(Ports ports, Deciders deciders, HelpMode mode)
    : m_ports(std::move(ports))
    , m_deciders(std::move(deciders))
    , m_words({[this] { return m_ports.scheduler.wallClock(); }, m_ports.freshMark})
    , m_teller({[this](std::string text, WordOrigin origin) { return m_words.fence(text, origin); },
          [this](const ScreenLook& look) { m_words.seen(look); }})
    , m_pipeline(pipelinePorts(), mode)
    , m_macros({[this] { return m_ports.scheduler.wallClock(); },
                   [this](const MacroBook& book) {
                       if (m_deciders.storeMacros)
                           m_deciders.storeMacros(book);
                   }},
          m_deciders.macros)
    , m_thread([this](std::function<void()> action) { m_ports.scheduler.post(std::move(action)); })
    , m_coordinator(coordinatorPorts())
    , m_pointer(pointerPorts())
    , m_goals(goalPorts())
    , m_follower(followerPorts())
    , m_self(std::make_shared<ScreenWork*>(this))
{
    m_pipeline.addObserver(m_coordinator);
    m_pipeline.addObserver(m_pointer);
    m_pipeline.addObserver(m_goals);
}

ScreenWork::~ScreenWork()
{
    m_pipeline.removeObserver(m_goals);
    m_pipeline.removeObserver(m_pointer);
    m_pipeline.removeObserver(m_coordinator);
}

void ScreenWork::registerTools(ToolRegistry& registry)
{
    registerActionTools(registry,
        {.pipeline = m_pipeline,
            .screen = m_ports.screen,
            .scheduler = m_ports.scheduler,
            .log = m_ports.log,
            .teller = m_teller,
            .show = m_ports.show,
            .carryOn = [this](ToolReply& reply) { return m_goals.carryOn(reply); },
            .follow = [this](const auto& call, const auto& shown, const auto& result,
                          auto answer) { follow(call, shown, result, std::move(answer)); },
            .helper = m_ports.helper});
    registerTaskTools(registry, {m_coordinator, m_pointer, &m_goals});
}

std::optional<ProvenanceGrants::Grant> ScreenWork::switchableQuestion() const
{
    const auto& pending = m_pipeline.pending();
    if (!pending)
        return std::nullopt;
    const ActionVerdict verdict =
        m_words.verdict(m_ports.guard(pending->action, *pending->look), pending->action, *pending->look);
    if (verdict.reason != ActionVerdict::Reason::provenance)
        return std::nullopt;
    return ProvenanceGrants::Grant{pending->action.tool, pending->look->observation.app};
}

// ---- What the user does

void ScreenWork::userBargedIn()
{
    m_pipeline.userBargedIn();
    m_follower.giveUp();
    m_goals.stop();
}

void ScreenWork::userSaid(const HeardUtterance& heard)
{
    m_words.userSaid(heard);
    m_pipeline.userSaid(heard);
}

void ScreenWork::stopped()
{
    m_pipeline.stopped();
    m_follower.giveUp();
    m_goals.stop();
}

void ScreenWork::modeChanged(HelpMode mode)
{
    m_pipeline.modeChanged(mode);
    m_follower.giveUp();
    m_goals.stop();
    m_pointer.takeAway();
}

void ScreenWork::planChanged(const TaskPlan& plan)
{
    m_pipeline.planChanged(plan);
}

void ScreenWork::ended()
{
    m_pipeline.ended();
    m_follower.giveUp();
    m_goals.stop();
    m_pointer.takeAway();
    m_words.begin();
    m_teller.forget();
}

// ---- How the parts are joined

ActionPipeline::Ports ScreenWork::pipelinePorts()
{
    return {.screen = m_ports.screen,
        .scheduler = m_ports.scheduler,
        .gate = m_ports.gate,
        .consent = m_ports.consent,
        .log = m_ports.log,
        .problem = ActionJudge::problem,
        .judgedForm = ActionJudge::judgedAction,
        .originsOf = [this](const ScreenAction& action,
                         const ScreenLook& look) { return m_words.originsOf(action, look); },
        .judge =
            [this](const ProposedAction& proposed, const ScreenLook& look) {
                return m_words.verdict(m_ports.guard(proposed, look), proposed, look);
            }};
}

GoalRun::Ports ScreenWork::goalPorts()
{
    const auto screen = [this](const ScreenLook& look) { return m_teller.tell(look); };
    const auto fenced = [this](std::string text) { return m_teller.fenced(std::move(text)); };
    return {.scheduler = m_ports.scheduler,
        .log = m_ports.log,
        .actions = m_pipeline,
        .gate = m_ports.gate,
        .deciding = deciding(),
        .decider = [this] { return freshDecider(); },
        .mode = [this] { return m_pipeline.mode(); },
        .tell = m_ports.tell,
        .telling = {screen, fenced},
        .learn = [this](
                     const std::string& goal, std::vector<MacroStep> steps) { m_macros.learn(goal, std::move(steps)); },
        .undoLast =
            [this](std::string callID, std::function<void(ActionResult)> answer) {
                m_pipeline.undoLast(std::move(callID), std::move(answer));
            }};
}

/// Only the selector is quick enough to be worth a step that the model has named already.
NextStepFollower::Ports ScreenWork::followerPorts()
{
    const TieredDecisionEngine::Parts& engine = m_deciders.engine;
    const bool isUsed = engine.pim && engine.pimMode == PimMode::active;
    return {.actions = m_pipeline,
        .deciding = deciding(),
        .decider = isUsed ? NextStepFollower::by(PimNextStep::selector(*engine.pim)) : StepDecider()};
}

void ScreenWork::follow(
    const LiveFunctionCall& call, const ScreenLook& shown, const ActionResult& result, NextStepFollower::Answer answer)
{
    const Json* then = memberOf(call.args, "then");
    if (!then || !result.after)
        return answer(std::nullopt);
    m_follower.follow({.callID = call.id,
                          .then = *then,
                          .task = m_ports.plan().goal,
                          .before = shown.observation,
                          .screen = *result.after},
        std::move(answer));
}

TaskCoordinator::Ports ScreenWork::coordinatorPorts()
{
    return {.log = m_ports.log,
        .actions = m_pipeline,
        .plan = m_ports.plan,
        .endPlan = m_ports.endPlan,
        .screen = [this](const ScreenLook& look) { return m_teller.tell(look); },
        .taskBegan = [this] { m_pipeline.taskBegan(); },
        .taskEnded = [this] { m_pipeline.taskEnded(); }};
}

GuidePointer::Ports ScreenWork::pointerPorts()
{
    return {.scheduler = m_ports.scheduler,
        .log = m_ports.log,
        .screen = m_ports.screen,
        .shown = [this] { return m_teller.shown(); },
        .hasPicture = [this] { return m_teller.hasShownPicture(); },
        .isActing = [this] { return m_ports.gate.current().has_value(); },
        .tell = m_ports.tell,
        .showTarget = m_ports.showTarget,
        .clearTarget = m_ports.clearTarget};
}

/// Each goal gets an engine of its own: it is over with it.
StepDecider ScreenWork::freshDecider()
{
    TieredDecisionEngine::Parts parts = m_deciders.engine;
    parts.macros = m_macros.macros();
    parts.macroBroke = [this, self = std::weak_ptr(m_self)](const VerifiedMacro& macro) {
        m_ports.scheduler.post([self, macro] {
            if (const auto work = self.lock())
                (*work)->m_macros.drop(macro);
        });
    };
    const auto engine = std::make_shared<TieredDecisionEngine>(std::move(parts));
    return [engine](const DecisionContext& context, std::stop_token stop) {
        return engine->decide(context, std::move(stop));
    };
}

} // namespace quorvell
