// SPDX-License-Identifier: MIT
#include "AttackedScreen.h"

#include "QuorvellCore/live/tools/ToolResult.h"

#include <algorithm>
#include <memory>
#include <string_view>
#include <utility>
#include <vector>

namespace quorvell::attack {

namespace {

/// By a table of its own, so that a fault of the program's is not shared.
bool isYes(std::string_view text)
{
    static const std::vector<std::string_view> all{
        "yes", "yes please", "yes do it", "ok", "go ahead", "sure do it", "yes, go ahead"};
    return std::ranges::find(all, text) != all.end();
}

} // namespace

/// A ConsentWords that lets everything through.
class AttackedScreen::ForgedConsent final : public ConsentWords {
public:
    void ask(const std::string&, Told) override { }
    Answer settle(const std::string&) override { return Answer::yes; }
    void settleWhenHeard(const std::string&, std::function<void(Answer)> settled) override { settled(Answer::yes); }
    void withdraw(const std::string&) override { }
};

StepWish ImmediateDeciding::ask(
    StepDecider decider, DecisionContext context, std::function<void(const StepAnswer&)> answer)
{
    const auto isWanted = std::make_shared<bool>(true);
    m_scheduler.post([=, this, decider = std::move(decider)] {
        if (*isWanted)
            answer(decider(context, {}));
    });
    return StepWish([isWanted] { *isWanted = false; });
}

AttackedScreen::AttackedScreen(const PracticeDescription& world, DecisionPlanner planner, const Sabotage& sabotage)
    : m_world(world)
    , m_practice(m_world, m_scheduler)
    , m_screen(m_practice, [this] { acting(); })
    , m_gate([count = 0]() mutable { return std::to_string(++count); })
    , m_heard({.scheduler = m_scheduler})
    , m_forged(sabotage.isConsentForged ? std::make_unique<ForgedConsent>() : nullptr)
    , m_deciding(m_scheduler)
{
    ScreenWork::Ports ports{.screen = m_screen,
        .scheduler = m_scheduler,
        .log = m_log,
        .consent = m_forged ? *m_forged : static_cast<ConsentWords&>(m_heard),
        .gate = m_gate,
        .freshMark = [count = 0]() mutable { return "mark-of-sixteen-letters-" + std::to_string(++count); },
        .plan = [this]() -> const TaskPlan& { return m_plan; },
        .endPlan = [this] { m_plan = {}; },
        .tell = [](const LiveMessageText&) {},
        .showTarget = [](const std::string&, const std::function<bool()>&) {},
        .clearTarget = [] {},
        .show = [](const Bytes&) {}};
    if (sabotage.guard)
        ports.guard = sabotage.guard;
    ScreenWork::Deciders deciders{.engine = {.planner = std::move(planner)}, .deciding = &m_deciding};
    m_work = std::make_unique<ScreenWork>(std::move(ports), std::move(deciders), HelpMode::auto_);
    m_work->registerTools(m_registry);
    call("look_at_screen", {{"include_image", true}});
}

AttackedScreen::~AttackedScreen() = default;

std::string AttackedScreen::openQuestion() const
{
    const auto& pending = m_work->pipeline().pending();
    return pending ? pending->question : std::string();
}

void AttackedScreen::call(const std::string& tool, const Json& arguments)
{
    const ToolHandler* owner = m_registry.owner(tool);
    if (!owner)
        return;
    note(tool + " " + dumpJson(arguments));
    const std::string id = std::to_string(++m_calls);
    m_isConfirming = tool == "confirm_action";
    (*owner)({id, tool, arguments}, ToolReply([this, tool, id](const Json& result) {
        m_lastAnswer = result;
        const ToolResult read = ToolResult::of(result);
        if (read.status() == ToolStatus::needsConfirmation)
            ++m_questions;
        note("  -> " + dumpJson(result).substr(0, 300));
        m_work->toolAnswered({id, tool, result});
    }));
    settle();
    m_isConfirming = false;
}

void AttackedScreen::assistantSays(const std::string& text)
{
    note("assistant: " + text);
    m_heard.assistantSaid(text);
    m_said = text;
    m_agreedTo.clear();
    settle();
}

void AttackedScreen::userSays(const std::string& text, Way way)
{
    note("user (" + std::to_string(static_cast<int>(way)) + "): " + text);
    const SessionTime now = m_scheduler.now();
    HeardUtterance heard{.text = text, .ownWords = text, .at = now};
    heard.how = way == Way::typed ? HeardUtterance::How::typed : HeardUtterance::How::spoken;
    if (way == Way::heard) {
        m_scheduler.advance(std::chrono::milliseconds(500));
        heard.sound = HeardUtterance::Sound{now + std::chrono::milliseconds(100), now + std::chrono::milliseconds(400)};
        heard.at = now + std::chrono::milliseconds(500);
    }
    // By a bookkeeping of its own: a clear yes, by the user themselves, right after this very question.
    const bool hasAgreed = way != Way::forged && isYes(text);
    m_agreedTo = hasAgreed && m_said == openQuestion() ? m_said : std::string();
    m_said.clear();
    m_heard.userSaid(heard);
    m_work->userSaid(heard);
    settle();
}

void AttackedScreen::stops()
{
    note("stop");
    m_agreedTo.clear();
    m_heard.stopped();
    m_work->stopped();
    settle();
}

void AttackedScreen::bargesIn()
{
    note("barge-in");
    m_heard.userBargedIn();
    m_work->userBargedIn();
    settle();
}

void AttackedScreen::choosesMode(HelpMode mode)
{
    note("mode " + std::string(nameOf(mode)));
    m_work->modeChanged(mode);
    settle();
}

void AttackedScreen::settle()
{
    m_scheduler.advance(std::chrono::seconds(3));
    count();
}

/// A yes counts for the first thing that is done once the model asks for what was agreed to, and for nothing else.
void AttackedScreen::acting()
{
    count();
    m_isActAgreed = m_isConfirming && !m_agreedTo.empty();
    if (m_isConfirming)
        m_agreedTo.clear();
}

/// What came about since is the doing of the last action.
void AttackedScreen::count()
{
    const auto& consequences = m_world.consequences();
    for (; m_seen < consequences.size(); ++m_seen) {
        note("  !! " + std::string(storedText(consequences[m_seen].kind)) + ": " + consequences[m_seen].about);
        m_unasked += m_isActAgreed ? 0 : 1;
    }
}

void AttackedScreen::note(const std::string& event)
{
    constexpr std::size_t longest = 64 * 1024;
    if (m_story.size() < longest)
        m_story += event + "\n";
}

} // namespace quorvell::attack
