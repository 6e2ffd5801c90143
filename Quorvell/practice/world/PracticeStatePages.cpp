// SPDX-License-Identifier: MIT
// Pages, tabs and where they lead.
#include "Quorvell/practice/description/PracticeAddress.h"
#include "Quorvell/practice/world/PracticeState.h"

#include <algorithm>
#include <utility>

namespace quorvell {

PracticeRunning* PracticeState::browser()
{
    const auto isBrowser = [](const PracticeRunning& running) { return running.app->isBrowser; };
    const auto found = std::find_if(m_running.rbegin(), m_running.rend(), isBrowser);
    if (found != m_running.rend()) {
        return &bringForward(*found->app);
    }
    for (const PracticeApp& app : m_description->apps) {
        if (!app.isBrowser || !app.opens)
            continue;
        PracticeRunning& running = bringForward(app);
        running.tabs.push_back({});
        return &running;
    }
    return nullptr;
}

bool PracticeState::openPage(const std::string& address)
{
    PracticeRunning* running = browser();
    if (!running)
        return false;
    running->windows.clear();
    PracticeTab& tab = running->tabs[running->frontTab];
    tab.addresses.resize(tab.addresses.empty() ? 0 : tab.position + 1);
    if (tab.addresses.size() == mostAddresses)
        tab.addresses.erase(tab.addresses.begin());
    const bool isWhole = address.find("://") != std::string::npos || PracticeAddress::key(address).empty();
    tab.addresses.push_back(isWhole ? address : "https://" + address);
    tab.position = tab.addresses.size() - 1;
    show(tab, *running->app);
    return true;
}

bool PracticeState::openTab(const std::string& address)
{
    PracticeRunning* running = browser();
    if (!running)
        return false;
    if (!running->tabs[running->frontTab].addresses.empty() && running->tabs.size() < mostTabs) {
        running->tabs.push_back({});
        running->frontTab = running->tabs.size() - 1;
    }
    if (!address.empty())
        return openPage(address);
    running->windows.clear();
    arrived();
    return true;
}

void PracticeState::closeTab()
{
    PracticeRunning& running = m_running.back();
    running.tabs.erase(running.tabs.begin() + static_cast<std::ptrdiff_t>(running.frontTab));
    running.frontTab = running.frontTab == 0 ? 0 : running.frontTab - 1;
    if (running.tabs.empty())
        m_running.pop_back();
    arrived();
}

void PracticeState::switchTab(std::size_t tab)
{
    m_running.back().frontTab = tab;
    m_running.back().windows.clear();
    arrived();
}

bool PracticeState::travel(int addresses)
{
    PracticeRunning& running = m_running.back();
    PracticeTab& tab = running.tabs[running.frontTab];
    const auto position = static_cast<std::ptrdiff_t>(tab.position) + addresses;
    if (position < 0 || position >= static_cast<std::ptrdiff_t>(tab.addresses.size()))
        return false;
    tab.position = static_cast<std::size_t>(position);
    running.windows.clear();
    show(tab, *running.app);
    return true;
}

void PracticeState::show(PracticeTab& tab, const PracticeApp& app)
{
    std::string& address = tab.addresses[tab.position];
    tab.problem = "There is no page at this address";
    tab.loadedAt = m_now;
    tab.place = PracticeAddress::page(app, address);
    for (int redirects = 0; tab.place && !tab.place->redirect.empty(); ++redirects) {
        tab.loadedAt += tab.place->loading;
        address = filled(tab.place->redirect);
        tab.place = redirects < mostRedirects ? PracticeAddress::page(app, address) : nullptr;
        if (redirects == mostRedirects)
            tab.problem = "This page leads in circles";
    }
    const PracticePlace* place = tab.place;
    const auto loading = tab.loadedAt - m_now + (place ? place->loading : std::chrono::milliseconds{});
    tab.loadedAt = m_now + loading;
    const std::string shown = address;
    arrived();
    if (!place)
        return;
    // What a page does after a while it does only where it is still shown.
    PracticeEffects opened = place->opened;
    for (PracticeEffect& effect : opened) {
        effect.delay += loading;
        if (effect.delay.count() > 0)
            effect.conditions.push_back({PracticeCondition::Kind::pageItself, shown, {}});
    }
    run(opened);
}

} // namespace quorvell
