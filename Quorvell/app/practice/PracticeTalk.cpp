// SPDX-License-Identifier: MIT
#include "Quorvell/app/practice/PracticeTalk.h"

#include "Quorvell/app/practice/PracticeText.h"
#include "Quorvell/app/program/ExitCode.h"
#include "QuorvellCore/text/Characters.h"

#include <utility>

namespace quorvell {

namespace {

std::vector<std::string> applicationsOf(const PracticeDescription& description)
{
    std::vector<std::string> names;
    for (const PracticeApp& app : description.apps)
        names.push_back(app.name);
    return names;
}

} // namespace

PracticeTalk::PracticeTalk(Ports ports, PracticeDescription description, const PracticeActorMaker& make)
    : m_ports(std::move(ports))
    , m_world(std::move(description))
    , m_screen(m_world, m_ports.scheduler)
    , m_begun(m_ports.scheduler.now())
    , m_actor(make(m_screen, m_ports.scheduler, applicationsOf(m_world.description())))
    , m_run({m_world, m_actor->runner(), [this](const auto& context, auto report) { decide(context, report); },
                [this](const auto& question, auto answer) { ask(question, std::move(answer)); },
                [this](const auto& words, auto report) {
                    m_actor->userSaid(words);
                    m_actor->settle(std::move(report));
                },
                {}},
          watch())
{
}

void PracticeTalk::begin()
{
    const PracticeDescription& description = m_world.description();
    m_ports.tell(description.title + "\nThe goal that belongs to it: " + description.goal
        + "\nType a goal of your own, or an empty line for that one; /screen shows the screen, /leave ends.\n\n"
        + screenText());
    readNext();
}

void PracticeTalk::interrupt()
{
    if (!m_isBusy)
        return leave();
    m_answer = nullptr;
    m_actor->stop();
    m_run.stop();
}

void PracticeTalk::leave()
{
    if (std::exchange(m_hasLeft, true))
        return;
    m_ports.end(m_world.isGoalReached() && m_world.harms().empty() ? exit_code::done : exit_code::couldNot);
}

void PracticeTalk::readNext()
{
    if (std::exchange(m_isReading, true))
        return; // A question was asked, and taken back.
    m_ports.lines.readNext([this](const std::optional<TypedMessage>& message) {
        m_isReading = false;
        if (!message)
            return leave();
        take(*message);
    });
}

void PracticeTalk::take(const TypedMessage& message)
{
    const std::string words = trimmed(message.text());
    if (words == "/leave")
        return leave();
    if (words == "/screen") {
        m_ports.tell(screenText());
        return readNext();
    }
    if (words == "/allow") {
        const std::string told = m_actor->switchOffQuestion();
        m_ports.tell(told.empty() ? "Nothing is asked now that could be switched off." : told);
        return readNext();
    }
    // What was pasted is nobody's yes.
    if (auto answer = std::exchange(m_answer, nullptr))
        return answer(message.hasPaste() ? std::string() : words);
    beginGoal(words);
}

void PracticeTalk::beginGoal(const std::string& goal)
{
    const PracticeDescription& description = m_world.description();
    const std::string& wanted = goal.empty() ? description.goal : goal;
    m_recorded.reset();
    if (wanted == description.goal)
        m_recorded.emplace(description.steps);
    m_isBusy = true;
    m_actor->userSaid(wanted);
    m_run.begin(wanted, [this](const PracticeScore& score) { ended(score); });
}

void PracticeTalk::ask(const std::string& question, std::function<void(std::string)> answer)
{
    m_ports.tell("  ? " + question + "  (yes or no)");
    m_answer = std::move(answer);
    readNext();
}

void PracticeTalk::decide(const DecisionContext& context, const PracticeRun::DecisionReport& report)
{
    if (m_recorded)
        return report(m_recorded->next(context.observation));
    m_actor->decide(context, report);
}

PracticeRun::Watch PracticeTalk::watch()
{
    PracticeRun::Watch watch;
    watch.decided = [this](const AutomationDecision& decision, const AutomationObservation& screen) {
        if (decision.action)
            m_ports.tell("> " + PracticeText::of(decision, screen));
    };
    watch.acted = [this](const ActionResult& result) { m_ports.tell("  " + PracticeText::of(result)); };
    watch.happened = [this](const PracticeConsequence& consequence) {
        m_ports.tell("  ! " + PracticeText::of(consequence));
    };
    return watch;
}

void PracticeTalk::ended(const PracticeScore& score)
{
    m_isBusy = false;
    std::string text;
    switch (score.end) {
    case PracticeScore::End::finished:
    case PracticeScore::End::asked:
    case PracticeScore::End::noScreen:
        text = score.words;
        break;
    case PracticeScore::End::noDecision:
        text = "I know no step towards that.";
        break;
    case PracticeScore::End::tooManySteps:
        text = "I stopped: that took too many steps.";
        break;
    case PracticeScore::End::stopped:
        text = "Stopped.";
        break;
    }
    m_ports.tell(text + "\n\n" + screenText() + "\n\n" + PracticeText::of(score));
    readNext();
}

std::string PracticeTalk::screenText()
{
    m_world.advance(m_ports.scheduler.now() - m_begun);
    return PracticeText::of(m_world.view());
}

} // namespace quorvell
