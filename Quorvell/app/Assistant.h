#pragma once

#include "Quorvell/app/EventLogFile.h"
#include "Quorvell/app/ProgramEnvironment.h"
#include "Quorvell/app/QtScheduler.h"
#include "Quorvell/app/UserSettings.h"
#include "Quorvell/connections/LiveAccessSource.h"
#include "Quorvell/connections/LiveEndpointSettings.h"
#include "Quorvell/notebook/Notebook.h"
#include "Quorvell/session/AudioPlayer.h"
#include "Quorvell/session/SessionController.h"
#include "Quorvell/session/SessionObserver.h"
#include "QuorvellCore/reminders/Calendar.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace quorvell {

/// The whole assistant put together for one program: notebook, tools, live service, session. Needs a QCoreApplication.
/// Main thread.
class Assistant {
public:
    struct Wishes {
        std::optional<std::string> host; ///< From the command line; wins over the environment and the settings.
        SessionSettings::Replies replies = SessionSettings::Replies::spoken;
        SessionSettings::Greeting greeting = SessionSettings::Greeting::none;
    };
    struct Made;

    /// Either an assistant or a sentence for the user. The player and the observer are borrowed.
    static Made create(const ProgramEnvironment& environment, QtScheduler& scheduler, const Wishes& wishes,
        AudioPlayer& player, SessionObserver& observer);

    SessionController& session() { return *m_session; }
    bool isOnDevice() const { return m_isOnDevice; }

private:
    Assistant(const ProgramEnvironment& environment, QtScheduler& scheduler, UserSettings settings, Calendar calendar);

    // Each gives an empty text, or why the assistant cannot work.
    std::string openNotebookAndTools(const ProgramEnvironment& environment);
    std::string chooseService(const ProgramEnvironment& environment, const Wishes& wishes);
    void makeSession(const Wishes& wishes, AudioPlayer& player, SessionObserver& observer);
    std::string whereAndWhen() const;

    QtScheduler& m_scheduler;
    UserSettings m_settings;
    Calendar m_calendar;
    EventLogFile m_log;
    std::unique_ptr<Notebook> m_notebook;
    ToolRegistry m_registry;
    std::unique_ptr<ToolDispatcher> m_tools;
    bool m_isOnDevice = false;
    std::unique_ptr<LiveAccessSource> m_service;
    std::unique_ptr<SessionController> m_session; ///< Uses all of the above; goes first.
};

struct Assistant::Made {
    std::unique_ptr<Assistant> assistant;
    std::string problem; ///< When there is none.
    std::vector<std::string> notices; ///< Sentences for the user about what was left out.
};

} // namespace quorvell
