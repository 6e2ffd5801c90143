// SPDX-License-Identifier: MIT
// Notices on the desktop, by whatever program shows notifications there.
#pragma once

#include "Quorvell/desktop/BusSignals.h"
#include "Quorvell/desktop/NoticeNumbers.h"
#include "Quorvell/reminding/Notifier.h"

#include <QDBusConnection>
#include <QDBusServiceWatcher>
#include <QObject>

#include <cstddef>
#include <map>
#include <memory>
#include <string>

namespace quorvell {

/// When that one starts anew, what is still open is shown again; when this program does, it takes the place of what the
/// one before had shown. Main thread, with an event loop.
class DesktopNotifier final : public Notifier {
public:
    explicit DesktopNotifier(const QDBusConnection& sessionBus, NoticeNumbers numbers = NoticeNumbers(""));
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
        std::size_t retries = 0; ///< Since it was last shown.
        bool wasSent = false; ///< By this program: then its own number counts.
        Want want = Want::shown;
    };

    void askForAbilities();
    void send(const std::string& key);
    void sent(const std::string& key, const NoticeNumbers::Number& inPlaceOf, const QDBusMessage& answer);
    void retry(const std::string& key); ///< A little later.
    void answered(const std::string& key, uint id, bool isShown);
    void closeNotification(uint id);
    void actionInvoked(const QDBusMessage& signal);
    void notificationClosed(const QDBusMessage& signal);
    void ownerChanged(bool isThere);
    /// To the program that gave the number, else to whoever shows notices.
    QDBusMessage notifyCall(const Notice& notice, const NoticeNumbers::Number& inPlaceOf) const;
    Shown* withId(uint id);

    QDBusConnection m_bus;
    NoticeNumbers m_numbers;
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
