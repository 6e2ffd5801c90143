// SPDX-License-Identifier: MIT
#include "Quorvell/practice/screen/PracticeScreen.h"

#include "QuorvellCore/automation/screen/ObservationBounds.h"
#include "QuorvellCore/text/Characters.h"
#include "QuorvellCore/text/LowerCase.h"
#include "QuorvellCore/text/OneLine.h"

#include <algorithm>
#include <utility>

namespace quorvell {

namespace {

constexpr std::size_t wordsAround = 40; ///< Bytes on each side of what was found.

ScreenElement elementOf(const PracticeShown& shown)
{
    ScreenElement element;
    element.area = shown.area;
    element.isContent = !shown.element || shown.element->isContent;
    if (!shown.element)
        return element;
    element.subrole = shown.element->subrole;
    element.hint = shown.element->hint;
    element.description = shown.description;
    element.address = shown.element->address;
    element.options = shown.element->options;
    element.isDefault = shown.element->isDefault;
    return element;
}

AutomationCandidate candidateOf(const PracticeShown& shown, std::string id)
{
    AutomationCandidate candidate{std::move(id), "AXStaticText", shown.label, shown.value};
    candidate.enabled = shown.isEnabled;
    candidate.focused = shown.isFocused;
    if (shown.element) {
        candidate.role = shown.element->role;
        candidate.secure = shown.element->isSecure;
    }
    return candidate;
}

/// Keeps to the bounds of a screen; what is known beside the candidates stays beside them.
void keepWithinBounds(ScreenLook& look)
{
    std::map<std::string, ScreenElement> known;
    for (std::size_t place = 0; place < look.elements.size(); ++place)
        known.emplace(look.observation.candidates[place].id, std::move(look.elements[place]));
    look.omissions = ObservationBounds::keep(look.observation);
    look.elements.clear();
    for (const AutomationCandidate& candidate : look.observation.candidates)
        look.elements.push_back(std::move(known.at(candidate.id)));
}

/// The id that the action is for; null for one that is for none.
std::string* targetOf(ScreenAction& action)
{
    if (auto* step = std::get_if<AutomationAction>(&action))
        return step->target ? &*step->target : nullptr;
    if (auto* replaced = std::get_if<screen_action::ReplaceText>(&action))
        return &replaced->target;
    if (auto* chosen = std::get_if<screen_action::ChooseOption>(&action))
        return &chosen->target;
    return nullptr;
}

std::string_view around(std::string_view text, std::size_t position, std::size_t length)
{
    const auto isInside = [&](std::size_t byte) {
        return byte < text.size() && (static_cast<unsigned char>(text[byte]) & 0xC0) == 0x80;
    };
    std::size_t begin = position - std::min(position, wordsAround);
    std::size_t end = std::min(text.size(), position + length + wordsAround);
    while (isInside(begin))
        ++begin;
    while (isInside(end))
        ++end;
    return text.substr(begin, end - begin);
}

} // namespace

/// An action in sub-steps, and whom to tell.
struct PracticeScreen::Typing {
    std::deque<ScreenAction> steps;
    std::shared_ptr<const ActionCancellation> cancellation;
    std::function<void(ScreenOutcome)> answer;
    bool isBegun = false;
};

PracticeScreen::PracticeScreen(PracticeWorld& world, Scheduler& scheduler)
    : m_world(world)
    , m_scheduler(scheduler)
    , m_begin(scheduler.now())
{
}

PracticeWorld& PracticeScreen::current()
{
    m_world.advance(m_scheduler.now() - m_begin);
    return m_world;
}

void PracticeScreen::later(std::chrono::milliseconds delay, std::function<void()> action)
{
    const std::uint64_t id = ++m_lastTimer;
    m_timers[id] = m_scheduler.after(delay, [this, id, action = std::move(action)] {
        const auto run = action; // Outlives the timer.
        m_timers.erase(id);
        run();
    });
}

// Looking

void PracticeScreen::look(const LookWish& wish, Answer<ScreenLook> answer)
{
    if (wish.wait == LookWish::Wait::settled)
        return lookWhenSettled(
            wish, std::move(answer), taken(wish).observation.stateKey(), m_scheduler.now() + settlePatience);
    later(lookTime, [this, wish, answer = std::move(answer)] { answer(taken(wish)); });
}

void PracticeScreen::lookWhenSettled(
    const LookWish& wish, Answer<ScreenLook> answer, std::string lastSeen, SessionTime deadline)
{
    later(restTime, [this, wish, answer = std::move(answer), lastSeen = std::move(lastSeen), deadline] {
        ScreenLook look = taken(wish);
        std::string seen = look.observation.stateKey();
        if ((seen == lastSeen && !m_world.isBusy()) || m_scheduler.now() >= deadline)
            answer(std::move(look));
        else
            lookWhenSettled(wish, answer, std::move(seen), deadline);
    });
}

ScreenLook PracticeScreen::taken(const LookWish& wish)
{
    const PracticeView view = current().view();
    ScreenLook look;
    look.observation.revision = ++m_revision;
    look.observation.app = view.app;
    look.observation.window = view.window;
    look.appIdentifier = view.identifier;
    look.page = view.page;
    if (view.page)
        look.observation.page = view.page->address;
    Look known{m_revision, {}};
    for (const PracticeShown& shown : view.elements) {
        const std::string id = "e" + std::to_string(++m_lastID);
        look.observation.candidates.push_back(candidateOf(shown, id));
        look.elements.push_back(elementOf(shown));
        known.elements[id] = {
            shown.element ? shown.element->name : "", look.observation.candidates.back().role, shown.label};
    }
    keepWithinBounds(look);
    for (const PracticeMenuItem* item : view.menus) {
        if (wish.menus == LookWish::Menus::listed)
            look.menus.push_back(item->path);
    }
    if (wish.image != LookWish::Image::none)
        look.omissions.emplace_back("There are no pictures of the practice world.");
    m_looks.push_back(std::move(known));
    if (m_looks.size() > knownLooks)
        m_looks.pop_front();
    return look;
}

const PracticeScreen::Seen* PracticeScreen::seen(const std::string& id, std::int64_t revision) const
{
    const auto look =
        std::find_if(m_looks.begin(), m_looks.end(), [&](const Look& known) { return known.revision == revision; });
    if (look == m_looks.end())
        return nullptr;
    const auto element = look->elements.find(id);
    return element == look->elements.end() ? nullptr : &element->second;
}

// Acting

void PracticeScreen::act(const ScreenAction& action, std::int64_t revision,
    std::shared_ptr<const ActionCancellation> cancellation, std::function<void(ScreenOutcome)> answer)
{
    ScreenAction named = action;
    if (std::string* target = targetOf(named)) {
        const Seen* known = seen(*target, revision);
        const PracticeView view = current().view();
        const PracticeShown* shown = known ? view.shown(known->name) : nullptr;
        if (!shown || !shown->element || shown->label != known->label || shown->element->role != known->role) {
            later(lookTime, [answer = std::move(answer)] {
                answer({ScreenOutcome::Kind::failed, "That element is not there any more."});
            });
            return;
        }
        *target = known->name;
    }
    const std::vector<ScreenAction> steps = PracticeWorld::subSteps(named);
    actNext(std::make_shared<Typing>(
        Typing{{steps.begin(), steps.end()}, std::move(cancellation), std::move(answer), false}));
}

void PracticeScreen::actNext(std::shared_ptr<Typing> typing)
{
    later(actTime, [this, typing = std::move(typing)] {
        if (typing->cancellation && typing->cancellation->isCancelled())
            return typing->answer({ScreenOutcome::Kind::stopped, "It was stopped."});
        PracticeOutcome came = current().act(typing->steps.front());
        typing->steps.pop_front();
        if (came.outcome.kind == ScreenOutcome::Kind::done && !typing->steps.empty()) {
            typing->isBegun = true;
            return actNext(typing);
        }
        if (came.outcome.kind == ScreenOutcome::Kind::failed && typing->isBegun)
            came.outcome.kind = ScreenOutcome::Kind::unknown; // A part of it was done.
        later(came.delay, [typing, outcome = came.outcome] { typing->answer(outcome); });
    });
}

// Reading and pointing

void PracticeScreen::read(std::size_t from, Answer<ScreenText> answer)
{
    later(lookTime, [this, from, answer = std::move(answer)] {
        const std::string text = current().text();
        ScreenText stretch;
        std::size_t begin = std::min(from, text.size());
        while (begin < text.size() && (static_cast<unsigned char>(text[begin]) & 0xC0) == 0x80)
            ++begin;
        stretch.text = firstCharacters(std::string_view(text).substr(begin), longestStretch);
        if (begin + stretch.text.size() < text.size())
            stretch.next = begin + stretch.text.size();
        answer(std::move(stretch));
    });
}

void PracticeScreen::find(const std::string& words, Answer<std::vector<std::string>> answer)
{
    later(lookTime, [this, words, answer = std::move(answer)] {
        const std::string text = onOneLine(current().text());
        const LowerCasedText lower(text);
        const std::string wanted = lowerCased(onOneLine(words));
        std::vector<std::string> places;
        std::size_t position = wanted.empty() ? std::string::npos : lower.text().find(wanted);
        while (position != std::string::npos && places.size() < mostFound) {
            const std::size_t begin = lower.inputPosition(position);
            const std::size_t end = lower.inputEndPosition(position + wanted.size());
            places.emplace_back(around(text, begin, end - begin));
            position = lower.text().find(wanted, position + wanted.size());
        }
        if (!places.empty())
            m_world.bringIntoView(words);
        answer(std::move(places));
    });
}

void PracticeScreen::listTabs(Answer<std::vector<ScreenTab>> answer)
{
    later(lookTime, [this, answer = std::move(answer)] {
        std::vector<ScreenTab> tabs = current().tabs();
        if (tabs.empty())
            return answer(ScreenProblem{"No browser is in front."});
        answer(std::move(tabs));
    });
}

void PracticeScreen::point(const std::string& target, std::function<void(ScreenOutcome)> answer)
{
    later(lookTime, [this, target, answer = std::move(answer)] {
        const Seen* known = m_looks.empty() ? nullptr : seen(target, m_looks.back().revision);
        const PracticeView view = current().view();
        const PracticeShown* shown = known ? view.shown(known->name) : nullptr;
        if (!shown || shown->label != known->label)
            return answer({ScreenOutcome::Kind::failed, "That element is not there any more."});
        m_pointed = known->label;
        answer({});
    });
}

void PracticeScreen::pointAtSpot(double x, double y, std::function<void(ScreenOutcome)> answer)
{
    later(lookTime, [this, x, y, answer = std::move(answer)] {
        m_pointed = std::to_string(static_cast<int>(x)) + ", " + std::to_string(static_cast<int>(y));
        answer({});
    });
}

} // namespace quorvell
