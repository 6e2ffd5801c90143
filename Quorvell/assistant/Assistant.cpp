// SPDX-License-Identifier: MIT
#include "Quorvell/assistant/Assistant.h"

#include "Quorvell/assistant/AgendaAccess.h"
#include "Quorvell/connections/access/HostedAccess.h"
#include "Quorvell/connections/access/LiveEndpointSettings.h"
#include "Quorvell/connections/access/OnDeviceService.h"
#include "Quorvell/connections/choice/NetworkFingerprint.h"
#include "Quorvell/desktop/DesktopOpener.h"
#include "Quorvell/files/FileWorker.h"
#include "Quorvell/handover/NotebookAccess.h"
#include "Quorvell/notebook/FreshNoteID.h"
#include "Quorvell/records/UsageText.h"
#include "Quorvell/settings/KeyVariables.h"
#include "Quorvell/settings/PrivateFile.h"
#include "Quorvell/settings/UsersCalendar.h"
#include "Quorvell/tools/agenda/AgendaTools.h"
#include "Quorvell/tools/notebook/NotebookDigest.h"
#include "Quorvell/tools/notebook/NotebookTools.h"
#include "Quorvell/tools/reminders/ReminderTools.h"
#include "QuorvellCore/reminders/calendar/LocaleWords.h"

#include <QRandomGenerator>
#include <nlohmann/json.hpp>

#include <array>
#include <cstdio>
#include <utility>

namespace quorvell {

namespace {

std::string freshRunName()
{
    std::array<char, 9> digits{};
    std::snprintf(digits.data(), digits.size(), "%06x", QRandomGenerator::system()->generate() & 0xFFFFFF);
    return digits.data();
}

/// Who is going to talk shall not wait for speech recognition; who types needs none.
OnDeviceService::Command onDeviceCommand(const ProgramEnvironment& environment, const Assistant::Wishes& wishes)
{
    OnDeviceService::Command command{environment.programPath, {"live-service", "--child"}};
    if (wishes.listening != SessionSettings::Listening::none)
        command.arguments.emplace_back("--expect-speech");
    return command;
}

/// On a thread of its own: starting a program may take a moment.
auto showingElsewhere(Scheduler& scheduler)
{
    const auto worker =
        std::make_shared<FileWorker>([&scheduler](std::function<void()> action) { scheduler.post(std::move(action)); });
    return [worker](const std::string& path, NotebookToolContext::Shown shown) {
        worker->run([path] { return showOnDesktop(path); }, std::move(shown));
    };
}

} // namespace

Assistant::Made Assistant::create(const ProgramEnvironment& environment, const UserSettings& settings,
    QtScheduler& scheduler, const Wishes& wishes, const Sound& sound, SessionAudience& observer)
{
    auto calendar = calendarIn(environment.timeZone, environment.locale);
    if (!calendar)
        return {nullptr, environment.unknownTimeZone()};
    std::unique_ptr<Assistant> assistant(new Assistant(environment, scheduler, settings, *std::move(calendar)));
    std::string problem = assistant->chooseService(environment, wishes);
    if (problem.empty())
        problem = assistant->openNotebookAndTools(environment);
    if (!problem.empty())
        return {nullptr, std::move(problem)};
    assistant->makeSession(wishes, sound, observer);
    if (wishes.screen)
        problem = assistant->joinScreen(wishes);
    if (!problem.empty())
        return {nullptr, std::move(problem)};
    assistant->fireReminders(environment, wishes, sound.alarm);
    return {std::move(assistant), {}};
}

Assistant::Assistant(
    const ProgramEnvironment& environment, QtScheduler& scheduler, UserSettings settings, Calendar calendar)
    : m_scheduler(scheduler)
    , m_settings(std::move(settings))
    , m_calendar(std::move(calendar))
    , m_log(environment.stateFolder, scheduler, freshRunName(), secretsOf(environment))
    , m_heard(consentPorts())
    , m_stateFolder(environment.stateFolder)
    , m_deciders(Deciders::create(DeciderChoice::of(m_settings.deciders, environment.deciderKeys), environment.webProxy,
          [] { return std::chrono::steady_clock::now(); }))
{
}

/// What works the screen goes before the session, whose last reports must not reach it any more.
Assistant::~Assistant()
{
    if (!m_screen)
        return;
    m_watches->remove(m_screen->work());
    m_observers->remove(m_screen->work());
}

/// The session comes later than whoever asks in it.
HeardWords::Ports Assistant::consentPorts()
{
    const auto put = [this](const std::string& question, std::function<bool()> isStillOpen) {
        m_scheduler.post([this, question, isStillOpen = std::move(isStillOpen)] {
            if (m_session && isStillOpen())
                m_session->putQuestion(question);
        });
    };
    return {m_scheduler, put, &m_log, [this] { return m_session ? m_session->saidUntil() : m_scheduler.now(); },
        [this] { return m_session && m_session->areWordsAwaited(); },
        [this](SessionController::Consent consent) {
            if (m_session)
                m_session->noteConsent(consent);
        }};
}

std::string Assistant::chooseService(const ProgramEnvironment& environment, const Wishes& wishes)
{
    const auto& host = wishes.host ? wishes.host : environment.liveHost ? environment.liveHost : m_settings.liveHost;
    const LiveEndpointSettings endpoint{host, environment.keys, wishes.backend.value_or(m_settings.backend)};
    const LiveEndpointSettings::Choice choice = endpoint.choose();
    m_connections.backend = choice.backend;
    m_connections.transport = wishes.transport.value_or(m_settings.transport);
    m_connections.models = m_settings.modelsFor(choice.backend);
    if (choice.hosted)
        m_service = std::make_unique<HostedAccess>(*choice.hosted);
    else if (choice.isOnDevice())
        m_service = std::make_unique<OnDeviceService>(onDeviceCommand(environment, wishes));
    return choice.problem;
}

std::string Assistant::openNotebookAndTools(const ProgramEnvironment& environment)
{
    OpenedNotebook opened = openNotebook(environment, m_scheduler);
    if (!opened.notebook)
        return opened.problem;
    m_notebook = std::move(opened.notebook);
    const auto now = [this] { return m_scheduler.wallClock(); };
    registerReminderTools(m_registry, *m_notebook, {now, m_calendar, freshNoteID, &m_undo});
    m_agenda = openAgenda(environment, m_scheduler);
    registerAgendaTools(m_registry, *m_agenda, *m_notebook,
        {now, m_calendar, freshEventUid, &m_heard, m_settings.wakingHours, &m_undo});
    m_search = std::make_unique<NotebookSearch>(*m_notebook, m_scheduler);
    registerNotebookTools(m_registry, *m_notebook,
        {now, freshNoteID, m_calendar, m_search.get(), &m_heard, showingElsewhere(m_scheduler), &m_undo});
    return ToolDispatcher::startUpProblem(m_registry).value_or("");
}

void Assistant::makeFarewell()
{
    m_farewellAsker = std::make_unique<FarewellAsker>(m_deciders.dismissal, m_scheduler);
    Farewell::Ports ports{m_scheduler, m_log,
        [this](const std::string& words, std::function<void(bool)> answer) {
            m_farewellAsker->ask(words, std::move(answer));
        },
        [this] { return m_session->isTurnOpen(); },
        [this] { return m_session->tools().isWorking() || m_session->tools().isActing(); },
        [this] { m_session->stop("goodbye"); }};
    m_farewell = std::make_unique<Farewell>(std::move(ports));
}

void Assistant::makeSession(const Wishes& wishes, const Sound& sound, SessionAudience& observer)
{
    m_tools = std::make_unique<ToolDispatcher>(m_registry);
    // Apart, since only a hosted service costs something.
    m_usage = std::make_unique<UsageFile>(
        m_stateFolder + (isOnDevice() ? "/usage-on-device.json" : "/usage.json"), m_scheduler, m_calendar);
    makeFarewell();
    m_observers = std::make_unique<ObserverGroup>(
        std::vector<SessionAudience*>{&m_heard, &observer, m_usage.get(), m_farewell.get()});
    m_alarmStop = std::make_unique<AlarmStop>(
        AlarmStop::Ports{*m_notebook, [this] { return m_scheduler.wallClock(); }, [this] { return m_calendar; }});
    m_watches =
        std::make_unique<ActionWatchGroup>(std::vector<ActionWatch*>{&m_heard, m_farewell.get(), m_alarmStop.get()});
    m_choice = std::make_unique<LiveConnectionChoice>(*m_service, m_connections, networks());
    const auto connections = [this](LiveConnectionObserver& session, LiveMedium medium) {
        return m_choice->make(session, medium);
    };
    SessionController::Ports ports{
        m_scheduler, connections, sound.player, m_log, *m_observers, *m_tools, [this] { return whereAndWhen(); }};
    ports.capture = sound.capture;
    ports.dozeListener = sound.dozeListener;
    ports.synthesiser = sound.synthesiser;
    ports.usageStore = m_usage.get();
    ports.jitter = [] { return QRandomGenerator::global()->generateDouble(); };
    ports.watch = m_watches.get();
    m_session = std::make_unique<SessionController>(ports, sessionSettings(wishes));
}

/// After the session, whose gate it uses, and before the first conversation, which offers its tools.
std::string Assistant::joinScreen(const Wishes& wishes)
{
    m_screen = std::make_unique<ScreenAccess>(ScreenAccess::Ports{.screen = *wishes.screen,
        .scheduler = m_scheduler,
        .log = m_log,
        .consent = m_heard,
        .session = *m_session,
        .deciders = m_deciders,
        .applications = wishes.applications,
        .macroFile = m_stateFolder + "/ways.json"});
    m_screen->registerTools(m_registry);
    m_observers->add(m_screen->work());
    m_watches->add(m_screen->work());
    if (!m_screen->problem().empty())
        m_observers->problemArose(m_screen->problem());
    return ToolDispatcher::startUpProblem(m_registry).value_or("");
}

std::string Assistant::usageText() const
{
    const auto service = isOnDevice() ? UsageText::Service::onDevice : UsageText::Service::hosted;
    return UsageText::ofConversation(m_session->usage(), service) + "\n"
        + UsageText::ofDays(m_usage->book(), m_usage->today(), service);
}

/// On the desktop and in the conversation; in the conversation too what the program that owns the notebook fires.
void Assistant::fireReminders(const ProgramEnvironment& environment, const Wishes& wishes, AlarmSound* alarm)
{
    const auto announce = [this](const std::string& sentence) { m_session->announce(sentence); };
    const auto unheard = [this, bell = wishes.bell] {
        m_observers->problemArose("An alarm rings, but nothing here can play it. Say or type \"stop\".");
        if (bell)
            bell();
    };
    m_reminders = std::make_unique<ReminderService>(environment, *m_notebook, m_scheduler, m_log,
        ReminderService::Voices{announce, nullptr,
            [this] {
                m_observers->problemArose(
                    "The desktop's message bus has ended: reminders come up here only, and other "
                    "programs cannot change the "
                    "notebook while this one runs. Start this one again once the desktop is back.");
            },
            unheard, alarm, m_settings.loudspeaker.value_or("")});
    m_remindersElsewhere = std::make_unique<RemindersElsewhere>(RemindersElsewhere::Ports{
        *m_notebook, [this] { return m_scheduler.wallClock(); }, [this] { return m_calendar; }, announce});
}

SessionSettings Assistant::sessionSettings(const Wishes& wishes) const
{
    SessionSettings settings;
    settings.userName = m_settings.userName;
    settings.familyName = m_settings.familyName;
    settings.medium = wishes.medium;
    settings.replies = wishes.replies;
    settings.greeting = wishes.greeting;
    settings.listening = wishes.listening;
    settings.limits = wishes.limits;
    settings.microphone =
        m_settings.sendsOnlySpeech ? SessionSettings::Microphone::onlySpeech : SessionSettings::Microphone::everything;
    settings.restsWhenQuiet = m_settings.restsWhenQuiet;
    settings.helpMode = m_settings.helpMode;
    if (!isOnDevice())
        settings.dailyMinutes = m_settings.dailyMinutes;
    return settings;
}

/// With what the model should know of the notebook from its first word.
LiveConnectionChoice::Networks Assistant::networks()
{
    constexpr std::size_t longestFile = 16 * 1024;
    const std::string path = m_stateFolder + "/networks.json";
    LiveConnectionChoice::Networks networks;
    if (const auto known = parseJson(PrivateFile::readWhole(path, longestFile)))
        networks.blocked = BlockedNetworks::fromJson(*known);
    networks.current = &NetworkFingerprint::current;
    networks.now = [this] { return m_scheduler.wallClock(); };
    networks.changed = [path](const BlockedNetworks& blocked) {
        PrivateFile::replace(path, dumpJson(blocked.json()) + "\n");
    };
    return networks;
}

std::string Assistant::whereAndWhen() const
{
    const std::string digest = notebookDigest(m_notebook->notes(), m_scheduler.wallClock(), m_calendar);
    return "It is " + formatted(m_scheduler.wallClock(), "EEEE d MMMM yyyy, HH:mm", m_calendar, "en_GB")
        + ", in the time zone " + m_calendar.zone() + "."
        + (digest.empty() ? "" : "\n\nFrom their notebook, as it stands now:\n\n" + digest);
}

} // namespace quorvell
