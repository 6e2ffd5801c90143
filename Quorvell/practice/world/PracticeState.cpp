// SPDX-License-Identifier: MIT
#include "Quorvell/practice/world/PracticeState.h"

#include "Quorvell/practice/description/PracticeAddress.h"
#include "QuorvellCore/automation/screen/ObservationBounds.h"
#include "QuorvellCore/text/TextMatch.h"
#include "QuorvellCore/text/web/SiteMatch.h"

#include <algorithm>
#include <utility>

namespace quorvell {

namespace {

/// Effects that are due at one time may bring about others that are due at once: this many, then they are forgotten.
constexpr std::size_t mostInOneAdvance = 5'000;

const PracticePlace* windowNamed(const PracticeApp& app, std::string_view name)
{
    const auto found = std::find_if(
        app.windows.begin(), app.windows.end(), [&](const PracticePlace& window) { return window.name == name; });
    return found == app.windows.end() ? nullptr : &*found;
}

} // namespace

PracticeState::PracticeState(PracticeDescription description)
    : m_description(std::make_shared<const PracticeDescription>(std::move(description)))
    , m_facts(m_description->facts.begin(), m_description->facts.end())
{
    if (const PracticeApp* app = appNamed(m_description->front))
        launch(*app);
}

const PracticeApp* PracticeState::appNamed(std::string_view name) const
{
    const std::string normalized = TextMatch::normalized(name);
    const auto& apps = m_description->apps;
    const auto found = std::find_if(apps.begin(), apps.end(),
        [&](const PracticeApp& app) { return TextMatch::normalized(app.name) == normalized; });
    return found == apps.end() || name.empty() ? nullptr : &*found;
}

std::string PracticeState::fact(std::string_view name) const
{
    const auto found = m_facts.find(name);
    return found == m_facts.end() ? std::string() : found->second;
}

std::string PracticeState::filled(std::string_view text) const
{
    std::string whole;
    while (!text.empty()) {
        const std::size_t begin = std::min(text.find('{'), text.size());
        whole += text.substr(0, begin);
        text.remove_prefix(begin);
        const std::size_t end = text.find('}');
        const auto known = end == std::string_view::npos ? m_facts.end() : m_facts.find(text.substr(1, end - 1));
        const std::size_t taken = known == m_facts.end() ? std::min<std::size_t>(1, text.size()) : end + 1;
        whole += known == m_facts.end() ? text.substr(0, taken) : std::string_view(known->second);
        text.remove_prefix(taken);
        if (whole.size() > longestFact)
            break;
    }
    if (whole.size() > longestFact)
        ObservationBounds::cut(whole, longestFact / 4);
    return whole;
}

bool PracticeState::hold(const PracticeConditions& conditions) const
{
    return std::all_of(
        conditions.begin(), conditions.end(), [this](const PracticeCondition& condition) { return holds(condition); });
}

bool PracticeState::holds(const PracticeCondition& condition) const
{
    using Kind = PracticeCondition::Kind;
    const auto hasHappened = [&] {
        return std::any_of(m_consequences.begin(), m_consequences.end(), [&](const PracticeConsequence& consequence) {
            return storedText(consequence.kind) == condition.name
                && TextMatch::normalized(consequence.about).find(TextMatch::normalized(condition.value))
                != std::string::npos;
        });
    };
    const auto said = [&] { return TextMatch::normalized(fact(condition.name)); };
    switch (condition.kind) {
    case Kind::factIs:
        return said() == TextMatch::normalized(filled(condition.value));
    case Kind::factIsNot:
        return said() != TextMatch::normalized(filled(condition.value));
    case Kind::factContains:
        return said().find(TextMatch::normalized(filled(condition.value))) != std::string::npos;
    case Kind::app:
        return front() && TextMatch::normalized(front()->app->name) == TextMatch::normalized(condition.name);
    case Kind::window:
        return front() && !front()->windows.empty() && front()->windows.back()->name == condition.name;
    case Kind::page: {
        const std::string path = SiteMatch::path(condition.name);
        const std::string shown = tab() ? tab()->address() : std::string();
        return SiteMatch::sameSite(condition.name, shown) && (path.empty() || path == SiteMatch::path(shown));
    }
    case Kind::pageItself:
        return tab() && PracticeAddress::key(tab()->address()) == PracticeAddress::key(condition.name);
    case Kind::happened:
        return hasHappened();
    case Kind::notHappened:
        return !hasHappened();
    }
    return false;
}

const PracticePlace* PracticeState::place() const
{
    if (!front())
        return nullptr;
    if (!front()->windows.empty())
        return front()->windows.back();
    return tab() && tab()->loadedAt <= m_now ? tab()->place : nullptr;
}

const PracticeTab* PracticeState::tab() const
{
    return front() && front()->frontTab < front()->tabs.size() ? &front()->tabs[front()->frontTab] : nullptr;
}

std::vector<std::string> PracticeState::notifications() const
{
    std::vector<std::string> texts;
    for (const Notification& notification : m_notifications) {
        if (notification.until > m_now)
            texts.push_back(notification.text);
    }
    return texts;
}

std::optional<std::chrono::milliseconds> PracticeState::nextChange() const
{
    std::optional<std::chrono::milliseconds> next;
    const auto consider = [&](std::chrono::milliseconds moment) {
        if (moment > m_now && (!next || moment < *next))
            next = moment;
    };
    for (const Waiting& waiting : m_waiting)
        consider(waiting.due);
    for (const Notification& notification : m_notifications)
        consider(notification.until);
    if (tab())
        consider(tab()->loadedAt);
    return next;
}

bool PracticeState::isBusy() const
{
    const bool isOpening = std::any_of(m_waiting.begin(), m_waiting.end(),
        [](const Waiting& waiting) { return waiting.effect.kind == PracticeEffect::Kind::app; });
    return isOpening || (tab() && tab()->loadedAt > m_now);
}

void PracticeState::advance(std::chrono::milliseconds now)
{
    const auto isEarlier = [](const Waiting& one, const Waiting& other) {
        return std::pair(one.due, one.order) < std::pair(other.due, other.order);
    };
    for (std::size_t count = 0; !m_waiting.empty(); ++count) {
        const auto first = std::min_element(m_waiting.begin(), m_waiting.end(), isEarlier);
        if (first->due > now)
            break;
        const Waiting waiting = *first;
        m_waiting.erase(first);
        m_now = std::max(m_now, waiting.due);
        run({waiting.effect});
        if (count == mostInOneAdvance)
            m_waiting.clear();
    }
    m_now = std::max(m_now, now);
    std::erase_if(m_notifications, [this](const Notification& shown) { return shown.until <= m_now; });
}

void PracticeState::run(const PracticeEffects& effects)
{
    if (m_depth == 0)
        m_effects = 0;
    ++m_depth;
    for (const PracticeEffect& effect : effects) {
        if (++m_effects > mostEffects)
            break;
        if (effect.delay.count() == 0)
            carryOut(effect);
        else if (m_waiting.size() < mostWaiting) {
            m_waiting.push_back({m_now + effect.delay, ++m_order, effect});
            m_waiting.back().effect.delay = {};
        }
    }
    --m_depth;
}

void PracticeState::carryOut(const PracticeEffect& effect)
{
    if (!hold(effect.conditions))
        return;
    switch (effect.kind) {
    case PracticeEffect::Kind::set:
        setFact(effect.name, filled(effect.text));
        break;
    case PracticeEffect::Kind::window:
    case PracticeEffect::Kind::close:
        for (const PracticeApp& app : m_description->apps) {
            const PracticePlace* window = windowNamed(app, effect.name);
            if (window && effect.kind == PracticeEffect::Kind::window)
                openWindow(*window, app);
            else if (window)
                closeWindow(*window);
        }
        break;
    case PracticeEffect::Kind::app:
        if (const PracticeApp* app = appNamed(effect.name))
            launch(*app);
        break;
    case PracticeEffect::Kind::page:
        openPage(filled(effect.text));
        break;
    case PracticeEffect::Kind::happens:
        if (const auto kind = practiceConsequence(effect.name); kind && m_consequences.size() < mostConsequences)
            m_consequences.push_back({*kind, filled(effect.text)});
        break;
    case PracticeEffect::Kind::notify:
        if (m_notifications.size() < mostWindows)
            m_notifications.push_back({filled(effect.text), m_now + notificationTime});
        break;
    case PracticeEffect::Kind::focus:
        m_focus = effect.name;
        break;
    }
}

void PracticeState::setFact(const std::string& name, std::string text)
{
    if (text.size() > longestFact)
        ObservationBounds::cut(text, longestFact / 4);
    m_facts[name] = std::move(text);
}

void PracticeState::scroll(int folds)
{
    int lowest = 0;
    if (const PracticePlace* shown = place()) {
        for (const PracticeElement& element : shown->elements)
            lowest = std::max(lowest, element.fold.value_or(0));
    }
    m_scrolled = std::clamp(m_scrolled + folds, 0, lowest);
}

// Applications and windows

PracticeRunning& PracticeState::bringForward(const PracticeApp& app)
{
    const auto found = std::find_if(
        m_running.begin(), m_running.end(), [&](const PracticeRunning& running) { return running.app == &app; });
    if (found == m_running.end()) {
        m_running.push_back({});
        m_running.back().app = &app;
    } else if (found + 1 != m_running.end()) {
        std::rotate(found, found + 1, m_running.end());
        arrived();
    }
    return m_running.back();
}

bool PracticeState::isRunning(const PracticeApp& app) const
{
    return std::any_of(
        m_running.begin(), m_running.end(), [&](const PracticeRunning& running) { return running.app == &app; });
}

void PracticeState::openApp(const PracticeApp& app)
{
    if (isRunning(app) || (app.opens && app.opening.count() == 0))
        launch(app);
    else if (app.opens)
        run({PracticeEffect{PracticeEffect::Kind::app, app.name, {}, {}, app.opening}});
}

void PracticeState::launch(const PracticeApp& app)
{
    if (!app.opens)
        return;
    const bool isNew = !isRunning(app);
    PracticeRunning& running = bringForward(app);
    if (!isNew)
        return;
    arrived();
    if (app.isBrowser) {
        running.tabs.push_back({});
        if (!app.start.empty())
            openPage(app.start);
    } else if (const PracticePlace* window = windowNamed(app, app.start)) {
        openWindow(*window, app);
    }
    run(app.opened);
}

void PracticeState::openWindow(const PracticePlace& window, const PracticeApp& app)
{
    const bool isNew = !isRunning(app);
    PracticeRunning& running = bringForward(app);
    if (isNew && app.isBrowser)
        running.tabs.push_back({});
    std::erase(running.windows, &window);
    if (running.windows.size() >= mostWindows)
        return;
    running.windows.push_back(&window);
    arrived();
    run(window.opened);
}

void PracticeState::closeWindow(const PracticePlace& window)
{
    for (PracticeRunning& running : m_running)
        std::erase(running.windows, &window);
    std::erase_if(
        m_running, [](const PracticeRunning& running) { return running.windows.empty() && !running.app->isBrowser; });
    arrived();
}

void PracticeState::arrived()
{
    m_scrolled = 0;
    if (tab() && front()->app->addressBar)
        setFact(front()->app->addressBar->fact, tab()->address());
}

} // namespace quorvell
