// SPDX-License-Identifier: MIT
// What an action does in a world that has one of everything: tests/fixtures/practice_worlds/workshop.txt. A consequence
// that is missed, or that comes of nothing, would make every score of an attack a lie.
#include "Quorvell/practice/world/PracticeWorld.h"

#include "FixtureTable.h"
#include "Quorvell/practice/file/PracticeFile.h"

#include <gtest/gtest.h>

#include <iterator>
#include <memory>
#include <set>
#include <sstream>

namespace quorvell::test {

namespace {

using Tool = AutomationAction::Tool;

std::string replaced(std::string text, const std::string& what, const std::string& by)
{
    for (auto at = text.find(what); at != std::string::npos; at = text.find(what, at + by.size()))
        text.replace(at, what.size(), by);
    return text;
}

/// The name of the longest element that the line begins with, and the rest.
std::pair<std::string, std::string> elementAndRest(const PracticeWorld& world, const std::string& line)
{
    std::string name;
    for (const auto& [fact, text] : world.description().facts) {
        if ((line + " ").starts_with(fact + " ") && fact.size() > name.size())
            name = fact;
    }
    return {name, replaced(line.substr(std::min(line.size(), name.size() + 1)), "\\n", "\n")};
}

class Play {
public:
    Play()
        : m_world(std::get<PracticeDescription>(PracticeFile::parse(workshop())))
    {
    }

    std::vector<std::string> operator()(const std::string& line)
    {
        m_answers.clear();
        const auto [verb, rest] = verbAndRest(line);
        if (verb == "see")
            see(rest);
        else if (verb == "fact")
            m_answers.push_back(replaced(m_world.fact(rest), "\n", "↵"));
        else if (verb == "wait")
            m_world.advance(m_now += std::chrono::milliseconds(std::stoi(rest)));
        else
            act(actionOf(verb, rest));
        return m_answers;
    }

private:
    static std::string workshop()
    {
        std::ifstream file(QUORVELL_FIXTURES "/practice_worlds/workshop.json");
        return {std::istreambuf_iterator<char>(file), {}};
    }

    ScreenAction actionOf(const std::string& verb, const std::string& rest) const
    {
        using screen_action::BrowserControl;
        const auto [element, text] = elementAndRest(m_world, rest);
        std::istringstream numbers(rest);
        double a = 0, b = 0, c = 0, d = 0;
        numbers >> a >> b >> c >> d;
        if (verb == "press")
            return AutomationAction{.tool = Tool::click, .target = rest};
        if (verb == "type")
            return AutomationAction{.tool = Tool::typeText, .target = element, .text = text};
        if (verb == "replace")
            return screen_action::ReplaceText{element, text};
        if (verb == "choose")
            return screen_action::ChooseOption{element, text};
        if (verb == "key")
            return AutomationAction{.tool = Tool::pressKey, .key = rest};
        if (verb == "scroll")
            return AutomationAction{.tool = Tool::scroll, .direction = rest};
        if (verb == "menu")
            return AutomationAction{.tool = Tool::chooseMenu, .path = {{"File", rest.substr(rest.find("> ") + 2)}}};
        if (verb == "app")
            return AutomationAction{.tool = Tool::openApp, .name = rest};
        if (verb == "site")
            return AutomationAction{.tool = Tool::openWebsite, .address = rest};
        if (verb == "spot")
            return screen_action::ClickSpot{a, b};
        if (verb == "drag")
            return screen_action::Drag{a, b, c, d};
        if (verb == "quick")
            return screen_action::QuickAction{
                rest == "mute" ? screen_action::QuickAction::Kind::mute : screen_action::QuickAction::Kind::volume,
                rest == "mute" ? "" : rest.substr(rest.find(' ') + 1)};
        const auto [control, tab] = verbAndRest(rest);
        const std::map<std::string, BrowserControl::Kind> controls = {{"back", BrowserControl::Kind::back},
            {"forward", BrowserControl::Kind::forward}, {"new", BrowserControl::Kind::newTab},
            {"close", BrowserControl::Kind::closeTab}, {"switch", BrowserControl::Kind::switchTab}};
        return BrowserControl{controls.at(control), tab};
    }

    void act(const ScreenAction& action)
    {
        const ScreenOutcome outcome = m_world.act(action).outcome;
        if (outcome.kind == ScreenOutcome::Kind::failed)
            m_answers.push_back("failed: " + outcome.problem);
        if (outcome.kind == ScreenOutcome::Kind::unknown)
            m_answers.push_back("unknown: " + outcome.problem);
        const auto harms = m_world.harms();
        for (; m_told < harms.size(); ++m_told)
            m_answers.push_back("harm: " + std::string(storedText(harms[m_told].kind)) + " " + harms[m_told].about);
        for (const PracticeShown& shown : m_world.view().elements) {
            if (!shown.element && m_notified.insert(shown.label).second)
                m_answers.push_back("shown: " + shown.label);
        }
    }

    void see(const std::string& name)
    {
        const PracticeView view = m_world.view();
        const PracticeShown* shown = view.shown(name);
        if (name.empty())
            m_answers.push_back(view.app + " | " + view.window + (view.page ? " " + view.page->address : ""));
        else if (!shown)
            m_answers.emplace_back("not shown");
        else
            m_answers.push_back(shown->label + (shown->value.empty() ? "" : " = " + shown->value)
                + (shown->isFocused ? " (focused)" : ""));
    }

    PracticeWorld m_world;
    std::chrono::milliseconds m_now{};
    std::size_t m_told = 0;
    std::set<std::string> m_notified;
    std::vector<std::string> m_answers;
};

} // namespace

TEST(PracticeWorld, doesWhatIsDescribed)
{
    playFixture("practice_worlds/workshop.txt", [] {
        const auto play = std::make_shared<Play>();
        return [play](const std::string& line) { return (*play)(line); };
    });
}

} // namespace quorvell::test
