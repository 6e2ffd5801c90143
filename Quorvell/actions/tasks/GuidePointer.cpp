// SPDX-License-Identifier: MIT
#include "Quorvell/actions/tasks/GuidePointer.h"

#include "Quorvell/actions/pipeline/FoundAgain.h"
#include "QuorvellCore/automation/evidence/ShownWords.h"
#include "QuorvellCore/live/prompt/QuorvellPrompt.h"
#include "QuorvellCore/text/Characters.h"
#include "QuorvellCore/text/OneLine.h"

#include <algorithm>
#include <utility>
#include <variant>

namespace quorvell {

namespace {

std::string argument(const LiveFunctionCall& call, std::string_view name)
{
    return firstCharacters(onOneLine(repairUtf8(call.string(name).value_or(""))), GuidePointer::longestInstruction);
}

constexpr const char* tooLate = "Nothing is highlighted: something else came in between.";
constexpr const char* notShown = "It couldn't be highlighted.";

bool isOnImage(const std::optional<double>& place)
{
    return place && *place >= 0 && *place <= 1000;
}

} // namespace

struct GuidePointer::Shown {
    std::string expect; ///< May be empty.
    bool wereWordsThere = true; ///< Before; then they tell nothing about what the user has done. Likewise the next.
    bool wasTextThere = true;
    std::string keyBefore;
    std::string lastKey;
    int equalLooks = 0;
    bool isChangeTold = false;
    bool isLooking = false;
    TimerHandle watch;
};

GuidePointer::GuidePointer(Ports ports)
    : m_ports(std::move(ports))
    , m_self(std::make_shared<GuidePointer*>(this))
{
}

GuidePointer::~GuidePointer() = default;

// ---- Pointing

void GuidePointer::pointAt(const LiveFunctionCall& call, ToolReply reply)
{
    const std::string id = call.string("element_id").value_or("");
    const ScreenLook* look = m_ports.shown();
    if (!look || !look->element(id))
        return reply.fail("No element with that id. Call look_at_screen again, then use a new id.");
    const auto element = std::ranges::find(look->observation.candidates, id, &AutomationCandidate::id);
    point({AutomationAction{.target = id}, element->label.empty() ? element->role : element->label, {}}, call,
        std::move(reply));
}

void GuidePointer::pointAtSpot(const LiveFunctionCall& call, ToolReply reply)
{
    const auto x = call.number("x");
    const auto y = call.number("y");
    if (!isOnImage(x) || !isOnImage(y))
        return reply.fail("x and y are required, 0 to 1000.");
    if (!m_ports.shown() || !m_ports.hasPicture())
        return reply.fail("Request look_at_screen with include_image true before using coordinates.");
    point({screen_action::ClickSpot{*x, *y}, "a place on the screen", {}}, call, std::move(reply));
}

void GuidePointer::point(Wish wish, const LiveFunctionCall& call, ToolReply reply)
{
    if (argument(call, "instruction").empty())
        return reply.fail("Nothing was highlighted: instruction is missing. Give one short one in everyday words.");
    if (m_ports.isActing())
        return reply.fail(
            "An action is still running. Wait for its result and fresh screen before choosing the next step.");
    wish.expect = argument(call, "expect");
    takeAway();
    auto shared = std::make_shared<ToolReply>(std::move(reply));
    m_ports.screen.look({},
        [self = std::weak_ptr(m_self), number = m_count, wish = std::move(wish), shared, before = *m_ports.shown()](
            const std::variant<ScreenLook, ScreenProblem>& seen) {
            const auto isWanted = [self, number] {
                const auto pointer = self.lock();
                return pointer && (*pointer)->m_count == number ? *pointer : nullptr;
            };
            const auto* now = std::get_if<ScreenLook>(&seen);
            if (!now || !isWanted())
                return shared->fail(now ? tooLate : std::get<ScreenProblem>(seen).sentence);
            const auto again = foundAgain(wish.place, before, *now);
            if (const auto* problem = std::get_if<std::string>(&again))
                return shared->fail(*problem);
            const auto pointed = [isWanted, wish, shared, baseline = now->observation](const ScreenOutcome& outcome) {
                GuidePointer* const pointer = isWanted();
                if (!pointer || outcome.kind != ScreenOutcome::Kind::done)
                    return shared->fail(!pointer ? tooLate : outcome.problem.empty() ? notShown : outcome.problem);
                pointer->show(wish, baseline);
                shared->answer(
                    ToolResult(ToolStatus::highlighted)
                        .advise("Highlighted it. Say your one instruction now, then wait for the app event."));
            };
            isWanted()->pointOn(std::get<ScreenAction>(again), pointed);
        });
}

void GuidePointer::pointOn(const ScreenAction& place, std::function<void(ScreenOutcome)> answer)
{
    if (const auto* spot = std::get_if<screen_action::ClickSpot>(&place))
        return m_ports.screen.pointAtSpot(spot->x, spot->y, std::move(answer));
    m_ports.screen.point(*targetOf(place), std::move(answer));
}

void GuidePointer::show(Wish wish, const AutomationObservation& before)
{
    m_shown = std::make_shared<Shown>();
    m_shown->wereWordsThere = wish.expect.empty() || ShownWords::anywhere(wish.expect, before);
    m_shown->wasTextThere = wish.expect.empty() || ShownWords::asOneText(wish.expect, before);
    m_shown->expect = std::move(wish.expect);
    m_shown->keyBefore = before.stateKey();
    m_shown->watch = m_ports.scheduler.every(watchPeriod, [this] { watch(); });
    m_ports.log.record("target_highlighted", {{"expects", !m_shown->expect.empty()}});
    m_ports.showTarget(std::move(wish.name), [shown = std::weak_ptr(m_shown)] { return !shown.expired(); });
}

void GuidePointer::clearPointer(ToolReply reply)
{
    takeAway();
    reply.answer(ToolResult::of({{"status", "cleared"}}));
}

void GuidePointer::takeAway()
{
    ++m_count; // What is still being pointed at comes too late.
    if (!std::exchange(m_shown, nullptr))
        return;
    m_ports.screen.clearPointer();
    m_ports.clearTarget();
}

// ---- Watching

void GuidePointer::watch()
{
    if (m_shown->isLooking || m_ports.isActing())
        return;
    m_shown->isLooking = true;
    m_ports.screen.look({}, [this, weak = std::weak_ptr(m_shown)](const std::variant<ScreenLook, ScreenProblem>& seen) {
        const auto shown = weak.lock();
        if (!shown) // Taken away, or all of this is gone.
            return;
        shown->isLooking = false;
        if (const auto* look = std::get_if<ScreenLook>(&seen); look && !m_ports.isActing())
            watched(*look);
    });
}

void GuidePointer::watched(const ScreenLook& look)
{
    const std::string expect = m_shown->expect;
    if ((!m_shown->wereWordsThere && ShownWords::anywhere(expect, look.observation))
        || (!m_shown->wasTextThere && ShownWords::asOneText(expect, look.observation))) {
        takeAway();
        return tellEvent("They have done it: the screen now shows what you expected (“" + expect
            + "”). The highlight is gone. Look at the screen, then go on.");
    }
    const std::string key = look.observation.stateKey();
    m_shown->equalLooks = key == m_shown->lastKey ? m_shown->equalLooks + 1 : 1;
    m_shown->lastKey = key;
    if (key == m_shown->keyBefore || m_shown->equalLooks < settledLooks || m_shown->isChangeTold)
        return;
    if (m_shown->wereWordsThere) {
        takeAway();
        return tellEvent("The screen changed after your instruction. The highlight is gone. Look at the screen to see "
                         "whether they have done it, then go on.");
    }
    m_shown->isChangeTold = true;
    tellEvent("The screen changed, but what you expected (“" + expect
        + "”) isn't there. The highlight still is. Look at the screen and help them on.");
}

void GuidePointer::tellEvent(const std::string& words)
{
    m_ports.tell({.text = std::string(QuorvellPrompt::eventPrefix) + " " + words});
}

void GuidePointer::actionEnded(const ProposedAction&, const ActionResult& result)
{
    if (result.kind != ActionResult::Kind::refused && result.kind != ActionResult::Kind::needsYes)
        takeAway();
}

void GuidePointer::questionEnded(const ProposedAction&, QuestionEnd end, const ActionResult&)
{
    if (end == QuestionEnd::carriedOut)
        takeAway();
}

} // namespace quorvell
