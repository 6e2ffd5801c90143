#include "Quorvell/app/Assistant.h"

#include "Quorvell/app/NotebookAccess.h"
#include "Quorvell/connections/HostedAccess.h"
#include "Quorvell/connections/OnDeviceService.h"
#include "Quorvell/connections/OpenAILiveClient.h"
#include "Quorvell/notebook/FreshNoteID.h"
#include "Quorvell/tools/NotebookTools.h"
#include "Quorvell/tools/ReminderTools.h"
#include "QuorvellCore/reminders/LocaleWords.h"

#include <utility>

namespace quorvell {

Assistant::Made Assistant::create(const ProgramEnvironment& environment, QtScheduler& scheduler, const Wishes& wishes,
    AudioPlayer& player, SessionObserver& observer)
{
    auto calendar = Calendar::create(environment.timeZone, environment.locale);
    if (!calendar)
        return {nullptr,
            "The time zone \"" + environment.timeZone + "\" is not known. Set TZ to a name such as Europe/Berlin.", {}};
    UserSettings::Reading settings = UserSettings::read(environment.configFolder + "/settings.json");
    std::unique_ptr<Assistant> assistant(
        new Assistant(environment, scheduler, std::move(settings.settings), *std::move(calendar)));
    std::string problem = assistant->chooseService(environment, wishes);
    if (problem.empty())
        problem = assistant->openNotebookAndTools(environment);
    if (!problem.empty())
        return {nullptr, std::move(problem), std::move(settings.problems)};
    assistant->makeSession(wishes, player, observer);
    return {std::move(assistant), {}, std::move(settings.problems)};
}

Assistant::Assistant(
    const ProgramEnvironment& environment, QtScheduler& scheduler, UserSettings settings, Calendar calendar)
    : m_scheduler(scheduler)
    , m_settings(std::move(settings))
    , m_calendar(std::move(calendar))
    , m_log(environment.stateFolder, scheduler)
{
}

std::string Assistant::chooseService(const ProgramEnvironment& environment, const Wishes& wishes)
{
    const auto& host = wishes.host ? wishes.host : environment.liveHost ? environment.liveHost : m_settings.liveHost;
    const LiveEndpointSettings::Choice choice = LiveEndpointSettings{host, environment.apiKey}.choose();
    m_isOnDevice = choice.isOnDevice;
    if (choice.hosted)
        m_service = std::make_unique<HostedAccess>(*choice.hosted);
    else if (choice.isOnDevice)
        m_service = std::make_unique<OnDeviceService>(
            OnDeviceService::Command{environment.programPath, {"live-service", "--child"}});
    return choice.problem;
}

std::string Assistant::openNotebookAndTools(const ProgramEnvironment& environment)
{
    OpenedNotebook opened = openNotebook(environment, m_scheduler);
    if (!opened.notebook)
        return opened.problem;
    m_notebook = std::move(opened.notebook);
    const auto now = [this] { return m_scheduler.wallClock(); };
    registerReminderTools(m_registry, *m_notebook, {now, m_calendar, freshNoteID});
    registerNotebookTools(m_registry, *m_notebook, {now, freshNoteID, m_calendar});
    return ToolDispatcher::startUpProblem(m_registry).value_or("");
}

void Assistant::makeSession(const Wishes& wishes, AudioPlayer& player, SessionObserver& observer)
{
    m_tools = std::make_unique<ToolDispatcher>(m_registry);
    SessionSettings settings;
    settings.userName = m_settings.userName;
    settings.familyName = m_settings.familyName;
    settings.replies = wishes.replies;
    settings.greeting = wishes.greeting;
    settings.microphone =
        m_settings.sendsOnlySpeech ? SessionSettings::Microphone::onlySpeech : SessionSettings::Microphone::everything;
    const auto connections = [this](LiveConnectionObserver& session, LiveMedium) {
        return std::make_unique<OpenAILiveClient>(*m_service, m_settings.models, session);
    };
    m_session = std::make_unique<SessionController>(SessionController::Ports{m_scheduler, connections, player, m_log,
                                                        observer, *m_tools, [this] { return whereAndWhen(); }},
        settings);
}

std::string Assistant::whereAndWhen() const
{
    return "It is " + formatted(m_scheduler.wallClock(), "EEEE d MMMM yyyy, HH:mm", m_calendar, "en_GB")
        + ", in the time zone " + m_calendar.zone() + ".";
}

} // namespace quorvell
