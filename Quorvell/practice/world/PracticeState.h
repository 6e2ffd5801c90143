// SPDX-License-Identifier: MIT
// How things stand in a practice world, and how effects change it.
#pragma once

#include "Quorvell/practice/description/PracticeDescription.h"

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quorvell {

/// A page that a browser shows, and those before and after it.
struct PracticeTab {
    std::vector<std::string> addresses{}; ///< Oldest first; none in an empty tab.
    std::size_t position = 0;
    const PracticePlace* place = nullptr; ///< Null: nothing is there.
    std::string problem{}; ///< The title where there is no page.
    std::chrono::milliseconds loadedAt{};

    std::string address() const { return position < addresses.size() ? addresses[position] : std::string(); }
};

/// A running application.
struct PracticeRunning {
    const PracticeApp* app = nullptr;
    std::vector<const PracticePlace*> windows{}; ///< The last is on top. In a browser they lie over the page.
    std::vector<PracticeTab> tabs{};
    std::size_t frontTab = 0;
};

/// A value; copies share the description, which never changes. Bounded: what grows too long is cut, and effects that
/// bring each other about without end come to one.
class PracticeState {
public:
    static constexpr std::size_t mostEffects = 500; ///< Of one action, or of one moment.
    static constexpr std::size_t mostWaiting = 500; ///< Effects that are still to come.
    static constexpr std::size_t mostConsequences = 1'000;
    static constexpr std::size_t mostTabs = 30;
    static constexpr std::size_t mostAddresses = 100; ///< That a tab remembers.
    static constexpr std::size_t mostWindows = 50; ///< Of one application.
    static constexpr std::size_t longestFact = 32 * 1024; ///< Bytes.
    static constexpr int mostRedirects = 10;
    static constexpr std::chrono::seconds notificationTime{6};

    explicit PracticeState(PracticeDescription description);

    const PracticeDescription& description() const { return *m_description; }

    // How things stand

    /// Null where there is none of that name.
    const PracticeApp* appNamed(std::string_view name) const;
    std::string fact(std::string_view name) const;
    /// The text with the facts in it.
    std::string filled(std::string_view text) const;
    bool hold(const PracticeConditions& conditions) const;
    /// Null when nothing is open.
    const PracticeRunning* front() const { return m_running.empty() ? nullptr : &m_running.back(); }
    /// The window on top, or the page; null where there is neither, or the page is still loading.
    const PracticePlace* place() const;
    /// Of the browser in front; null elsewhere.
    const PracticeTab* tab() const;
    const std::string& focus() const { return m_focus; }
    int scrolled() const { return m_scrolled; }
    std::vector<std::string> notifications() const;
    const std::vector<PracticeConsequence>& consequences() const { return m_consequences; }
    std::chrono::milliseconds now() const { return m_now; }
    std::optional<std::chrono::milliseconds> nextChange() const;
    /// A page is loading or an application is opening, which a desktop shows.
    bool isBusy() const;

    // What changes it

    void advance(std::chrono::milliseconds now);
    void run(const PracticeEffects& effects);
    void setFact(const std::string& name, std::string text);
    void setFocus(std::string element) { m_focus = std::move(element); }
    void scroll(int folds);
    /// After the time that it takes.
    void openApp(const PracticeApp& app);
    void closeWindow(const PracticePlace& window);
    /// In the front tab of the browser that is in front, or was last, or is the first.
    /// False where there is no browser.
    bool openPage(const std::string& address);
    /// An empty one where the address is; one that is empty already is taken.
    bool openTab(const std::string& address);
    // Of these three the browser is in front.
    void closeTab();
    void switchTab(std::size_t tab);
    /// By so many addresses, back where it is negative; 0 loads the page again. False when there is none.
    bool travel(int addresses);

private:
    struct Waiting {
        std::chrono::milliseconds due{};
        std::uint64_t order = 0;
        PracticeEffect effect{};
    };
    struct Notification {
        std::string text{};
        std::chrono::milliseconds until{};
    };

    bool holds(const PracticeCondition& condition) const;
    void carryOut(const PracticeEffect& effect);
    bool isRunning(const PracticeApp& app) const;
    void launch(const PracticeApp& app);
    void openWindow(const PracticePlace& window, const PracticeApp& app);
    PracticeRunning* browser();
    PracticeRunning& bringForward(const PracticeApp& app);
    void show(PracticeTab& tab, const PracticeApp& app);
    void arrived();

    std::shared_ptr<const PracticeDescription> m_description;
    std::map<std::string, std::string, std::less<>> m_facts;
    std::vector<PracticeRunning> m_running; ///< The last is in front.
    std::string m_focus; ///< The name of an element, shown or not.
    int m_scrolled = 0;
    std::vector<Notification> m_notifications;
    std::vector<PracticeConsequence> m_consequences;
    std::vector<Waiting> m_waiting;
    std::uint64_t m_order = 0;
    int m_depth = 0; ///< Effects bring about effects.
    std::size_t m_effects = 0; ///< Of the action, or moment, that is being carried out.
    std::chrono::milliseconds m_now{};
};

} // namespace quorvell
