// SPDX-License-Identifier: MIT
// Notices on the desktop, by whatever program shows notifications there.
#pragma once

#include "Quorvell/desktop/BusSignals.h"
#include "Quorvell/reminding/Notifier.h"

#include <QDBusConnection>
#include <QDBusServiceWatcher>
#include <QObject>

#include <map>
#include <memory>
#include <string>

namespace quorvell {

/// When that one starts anew, what is still open is shown again. Main thread, with an event loop.
class DesktopNotifier final : public Notifier {
public:
    explicit DesktopNotifier(const QDBusConnection& sessionBus);
    /// What is open stays, without its buttons: nobody would hear them.
    ~DesktopNotifier() override;

    void setReports(Reports reports) override;
    void show(const Notice& notice) override;
    void withdraw(const std::string& key) override;

private:
    enum class Want { shown, withdrawn };
    struct Shown {
        Notice notice;
        uint id = 0; ///< Of the notification; 0 before it has one.
        bool isUnderWay = false; ///< An answer is due.
        bool isStale = false; ///< Changed since it was sent.
        Want want = Want::shown;
    };

    void askForAbilities();
    void send(const std::string& key);
    void answered(const std::string& key, uint id, bool isShown);
    void closeNotification(uint id);
    void actionInvoked(const QDBusMessage& signal);
    void notificationClosed(const QDBusMessage& signal);
    void ownerChanged(bool isThere);
    QDBusMessage notifyCall(const Shown& shown) const;
    Shown* withId(uint id);

    QDBusConnection m_bus;
    Reports m_reports;
    std::map<std::string, Shown> m_shown; ///< By key.
    bool m_knowsMarkup = true;
    bool m_knowsActions = true;
    std::unique_ptr<QDBusServiceWatcher> m_owner;
    std::unique_ptr<BusSignals> m_actions;
    std::unique_ptr<BusSignals> m_closings;
    std::unique_ptr<QObject> m_context; ///< Owns the calls that wait; goes first.
};

} // namespace quorvell
