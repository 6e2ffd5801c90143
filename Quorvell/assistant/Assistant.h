// SPDX-License-Identifier: MIT
// The whole assistant put together for one program: notebook, tools, live service, session.
#pragma once

#include "Quorvell/agenda/Agenda.h"
#include "Quorvell/assistant/AlarmStop.h"
#include "Quorvell/assistant/FarewellAsker.h"
#include "Quorvell/assistant/ReminderService.h"
#include "Quorvell/assistant/ScreenAccess.h"
#include "Quorvell/connections/access/LiveAccessSource.h"
#include "Quorvell/connections/choice/LiveConnectionChoice.h"
#include "Quorvell/deciders/Deciders.h"
#include "Quorvell/desktop/QtScheduler.h"
#include "Quorvell/notebook/FullNotebook.h"
#include "Quorvell/notebook/NotebookSearch.h"
#include "Quorvell/records/EventLogFile.h"
#include "Quorvell/records/UsageFile.h"
#include "Quorvell/reminding/RemindersElsewhere.h"
#include "Quorvell/session/SessionController.h"
#include "Quorvell/session/consent/HeardWords.h"
#include "Quorvell/session/farewell/Farewell.h"
#include "Quorvell/session/ports/AudioCapture.h"
#include "Quorvell/session/ports/AudioPlayer.h"
#include "Quorvell/session/ports/DozeListener.h"
#include "Quorvell/session/ports/SpeechSynthesiser.h"
#include "Quorvell/session/reports/ActionWatchGroup.h"
#include "Quorvell/session/reports/ObserverGroup.h"
#include "Quorvell/session/reports/SessionAudience.h"
#include "Quorvell/settings/ProgramEnvironment.h"
#include "Quorvell/settings/UserSettings.h"
#include "Quorvell/tools/UndoBook.h"
#include "QuorvellCore/reminders/calendar/Calendar.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace quorvell {

/// Needs a QCoreApplication. Main thread.
class Assistant {
public:
    struct Wishes {
        /// The first three from the command line; they win over the environment and the settings.
        std::optional<std::string> host;
        std::optional<LiveBackend> backend;
        std::optional<LiveTransport> transport;
        LiveMedium medium = LiveMedium::voice;
        SessionSettings::Replies replies = SessionSettings::Replies::spoken;
        SessionSettings::Listening listening = SessionSettings::Listening::openMicrophone;
        SessionSettings::Greeting greeting = SessionSettings::Greeting::none;
        SessionLimits limits{};
        Screen* screen = nullptr; ///< That may be worked; borrowed. Absent: nothing on the screen is.
        std::vector<std::string> applications{}; ///< That can be opened there.
        std::function<void()> bell{}; ///< The terminal's, for an alarm that no loudspeaker plays.
    };
    /// What the program hears and speaks through. All are borrowed.
    struct Sound {
        AudioPlayer& player;
        AudioCapture* capture = nullptr;
        DozeListener* dozeListener = nullptr;
        SpeechSynthesiser* synthesiser = nullptr;
        AlarmSound* alarm = nullptr; ///< Without it alarms sound by a connection of their own.
    };
    struct Made;

    /// Either an assistant or a sentence for the user. The observer is borrowed.
    static Made create(const ProgramEnvironment& environment, const UserSettings& settings, QtScheduler& scheduler,
        const Wishes& wishes, const Sound& sound, SessionAudience& observer);

    ~Assistant();
    Assistant(const Assistant&) = delete;
    Assistant& operator=(const Assistant&) = delete;

    SessionController& session() { return *m_session; }
    bool isOnDevice() const { return m_connections.backend == LiveBackend::onDevice; }
    const UsageFile& usage() const { return *m_usage; }
    /// Of this conversation, today and this month, for the user.
    std::string usageText() const;

private:
    Assistant(const ProgramEnvironment& environment, QtScheduler& scheduler, UserSettings settings, Calendar calendar);

    // Each gives an empty text, or why the assistant cannot work.
    HeardWords::Ports consentPorts();
    std::string openNotebookAndTools(const ProgramEnvironment& environment);
    std::string chooseService(const ProgramEnvironment& environment, const Wishes& wishes);
    void makeFarewell();
    void makeSession(const Wishes& wishes, const Sound& sound, SessionAudience& observer);
    std::string joinScreen(const Wishes& wishes);
    void fireReminders(const ProgramEnvironment& environment, const Wishes& wishes, AlarmSound* alarm);
    SessionSettings sessionSettings(const Wishes& wishes) const;
    LiveConnectionChoice::Networks networks();
    std::string whereAndWhen() const;

    QtScheduler& m_scheduler;
    UserSettings m_settings;
    Calendar m_calendar;
    EventLogFile m_log;
    std::unique_ptr<FullNotebook> m_notebook;
    std::unique_ptr<NotebookSearch> m_search;
    std::unique_ptr<Agenda> m_agenda;
    HeardWords m_heard; ///< What the user answered to a question of a tool.
    UndoBook m_undo; ///< Before the registry, whose tools write into it.
    ToolRegistry m_registry;
    std::unique_ptr<ToolDispatcher> m_tools;
    LiveConnectionChoice::Settings m_connections;
    std::string m_stateFolder;
    std::unique_ptr<UsageFile> m_usage;
    Deciders m_deciders; ///< Of steps on the screen, and of what is a goodbye.
    std::unique_ptr<FarewellAsker> m_farewellAsker;
    std::unique_ptr<Farewell> m_farewell;
    std::unique_ptr<ObserverGroup> m_observers;
    std::unique_ptr<AlarmStop> m_alarmStop;
    std::unique_ptr<ActionWatchGroup> m_watches;
    std::unique_ptr<LiveAccessSource> m_service;
    std::unique_ptr<LiveConnectionChoice> m_choice;
    std::unique_ptr<SessionController> m_session; ///< Uses all of the above.
    std::unique_ptr<ScreenAccess> m_screen; ///< Where there is one to work.
    std::unique_ptr<RemindersElsewhere> m_remindersElsewhere;
    std::unique_ptr<ReminderService> m_reminders; ///< Fires them while this program owns the notebook; goes first.
};

struct Assistant::Made {
    std::unique_ptr<Assistant> assistant;
    std::string problem; ///< When there is none.
};

} // namespace quorvell
