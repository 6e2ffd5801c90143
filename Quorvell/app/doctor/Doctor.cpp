// SPDX-License-Identifier: MIT
#include "Quorvell/app/doctor/Doctor.h"

#include "OnDeviceSpeech/SpeechRecogniser.h"
#include "Quorvell/connections/access/HostedAccess.h"
#include "Quorvell/connections/access/LiveEndpointSettings.h"
#include "Quorvell/connections/access/OnDeviceService.h"
#include "Quorvell/deciders/choice/DeciderChoice.h"
#include "Quorvell/files/FileDescriptor.h"
#include "Quorvell/preferences/LiveBackendTraits.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <fcntl.h>
#include <sys/stat.h>

#include <algorithm>
#include <cctype>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <utility>

namespace quorvell {

namespace {

using Verdict = DoctorFinding::Verdict;

/// Why nothing can be written there; empty when something can, or when the folder can still be made.
std::string whyNotWritable(const std::string& folder)
{
    struct stat status { };
    if (stat(folder.c_str(), &status) != 0) {
        if (errno != ENOENT)
            return std::strerror(errno);
        const auto slash = folder.find_last_of('/');
        return slash == 0 || slash == std::string::npos ? std::strerror(ENOENT)
                                                        : whyNotWritable(folder.substr(0, slash));
    }
    if (!S_ISDIR(status.st_mode))
        return "it is no folder";
    std::string name = folder + "/.quorvell-doctor-XXXXXX";
    const FileDescriptor file(mkostemp(name.data(), O_CLOEXEC));
    if (!file.isOpen())
        return std::strerror(errno);
    unlink(name.c_str());
    return {};
}

constexpr QLatin1String notificationService("org.freedesktop.Notifications");
constexpr QLatin1String calendarService("org.gnome.evolution.dataserver.Calendar"); // A version number follows.

/// Whether a service whose name begins so runs, or is started when it is asked for.
bool isOnBus(QLatin1String name)
{
    const QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected())
        return false;
    const auto isMeant = [name](const QString& service) { return service.startsWith(name); };
    const QStringList running = bus.interface()->registeredServiceNames().value();
    const QStringList startable = bus.interface()->activatableServiceNames().value();
    return std::any_of(running.begin(), running.end(), isMeant)
        || std::any_of(startable.begin(), startable.end(), isMeant);
}

bool looksLikeKey(const std::string& key)
{
    return key.size() >= 8 && std::none_of(key.begin(), key.end(), [](unsigned char letter) {
        return std::isspace(letter) != 0 || std::iscntrl(letter) != 0;
    });
}

} // namespace

Doctor::Doctor(const ProgramEnvironment& environment, Scheduler& scheduler)
    : m_environment(environment)
    , m_scheduler(scheduler)
{
}

void Doctor::examine(std::function<void(const std::vector<DoctorFinding>&)> done)
{
    m_done = std::move(done);
    const UserSettings::Reading reading = UserSettings::read(m_environment.configFolder + "/settings.json");
    const UserSettings& settings = reading.settings;
    m_findings = {Doctor::settings(reading), keys(m_environment.keys, settings.backend),
        notebook(m_environment.notebookFolder),
        calendar(m_environment.calendarFolder, m_environment.hasSessionBus && isOnBus(calendarService)),
        stateFolder(m_environment.stateFolder), models(m_environment.programFolder)};
    for (DoctorFinding& finding : bus(m_environment.hasSessionBus))
        m_findings.push_back(std::move(finding));
    for (DoctorFinding& finding : deciders(settings.deciders, m_environment.deciderKeys))
        m_findings.push_back(std::move(finding));

    m_waitingFor = 3;
    m_own = std::make_unique<OwnServicesCheck>(OwnServices::of(settings), m_scheduler);
    m_own->examine([this](const std::vector<DoctorFinding>& findings) {
        m_findings.insert(m_findings.end(), findings.begin(), findings.end());
        finishWhenComplete();
    });
    const auto& host = m_environment.liveHost ? m_environment.liveHost : settings.liveHost;
    const LiveEndpointSettings endpoint{host, m_environment.keys, settings.backend};
    const LiveEndpointSettings::Choice choice = endpoint.choose();
    std::unique_ptr<LiveAccessSource> source;
    if (choice.hosted)
        source = std::make_unique<HostedAccess>(*choice.hosted);
    else if (choice.isOnDevice())
        source = std::make_unique<OnDeviceService>(
            OnDeviceService::Command{m_environment.programPath, {"live-service", "--child"}});
    const auto serviceFound = [this](const DoctorFinding& finding) {
        m_findings.push_back(finding);
        finishWhenComplete();
    };
    if (source) {
        m_service = std::make_unique<ServiceCheck>(std::move(source), m_scheduler);
        m_service->examine(serviceFound);
    } else {
        m_scheduler.post([serviceFound, choice] { serviceFound({"live service", Verdict::broken, choice.problem}); });
    }
    m_sound = std::make_unique<SoundCheck>(m_environment.runtimeFolder, m_scheduler,
        DesktopSound::Devices{settings.microphone.value_or(""), settings.loudspeaker.value_or("")});
    m_sound->examine([this](const std::vector<DoctorFinding>& findings) {
        m_soundFindings = findings;
        finishWhenComplete();
    });
}

DoctorFinding Doctor::settings(const UserSettings::Reading& reading)
{
    if (reading.problems.empty())
        return {"settings", Verdict::works, "they can be read"};
    std::string all;
    for (const std::string& problem : reading.problems)
        all += (all.empty() ? "" : " ") + problem;
    return {"settings", Verdict::limited, all};
}

DoctorFinding Doctor::keys(const LiveKeys& keys, LiveBackend backend)
{
    std::string names;
    for (const auto& [owner, key] : keys) {
        const std::string name(LiveBackendTraits::of(owner).keyVariable);
        if (!looksLikeKey(key))
            return {"key", Verdict::limited, name + " is set, and does not look like a key",
                "Copy it anew from the provider's page; it has no spaces and no line breaks."};
        names += (names.empty() ? "" : " and ") + name;
    }
    const LiveBackendTraits& wanted = LiveBackendTraits::of(backend);
    if (names.empty() && wanted.isHosted())
        return {"key", Verdict::limited, "the settings ask for a hosted model, and there is no key for it",
            "Set " + std::string(wanted.keyVariable) + ", or take the line \"backend\" out of the settings."};
    return {"key", Verdict::works, names.empty() ? "none; the assistant works on this computer alone" : names + " set"};
}

std::vector<DoctorFinding> Doctor::deciders(const DeciderSettings& settings, const DeciderKeys& keys)
{
    const DeciderChoice choice = DeciderChoice::of(settings, keys);
    const auto found = [](const char* subject, const std::string& what, const std::string& problem) {
        return problem.empty() ? DoctorFinding{subject, Verdict::works, what}
                               : DoctorFinding{subject, Verdict::limited, problem};
    };
    const std::string selector = choice.selector ? std::string(storedText(choice.mode)) + ", at " + choice.selector->url
                                                 : "none; every step on the screen that is not plain is planned";
    const std::string planner = choice.planner
        ? choice.planner->title + " with " + choice.planner->model + ", at " + choice.planner->url
        : "none; only plain steps on the screen can be done";
    return {found("step selector", selector, choice.selectorProblem),
        found("step planner", planner, choice.plannerProblem)};
}

DoctorFinding Doctor::notebook(const std::string& folder)
{
    const std::string why = whyNotWritable(folder);
    if (why.empty())
        return {"notebook", Verdict::works, folder};
    return {"notebook", Verdict::broken, "nothing can be kept in " + folder + ": " + why,
        "Make the folder yours to write to, or choose another one: \"notebook_folder\" in the settings."};
}

DoctorFinding Doctor::calendar(const std::string& folder, bool isOfDesktop)
{
    const std::string why = whyNotWritable(folder);
    if (isOfDesktop)
        return {"calendar", Verdict::works, "the desktop's calendars, and " + folder};
    if (why.empty())
        return {"calendar", Verdict::works, folder};
    return {"calendar", Verdict::limited, "no event can be kept in " + folder + ": " + why,
        "Make the folder yours to write to, or choose another one: \"calendar_folder\" in the settings."};
}

DoctorFinding Doctor::stateFolder(const std::string& folder)
{
    const std::string why = whyNotWritable(folder);
    if (why.empty())
        return {"log and usage", Verdict::works, folder};
    return {"log and usage", Verdict::limited, "nothing can be written to " + folder + ": " + why,
        "Make the folder yours to write to; a daily limit cannot be kept until then."};
}

DoctorFinding Doctor::models(const std::string& programFolder)
{
    const std::string missing = SpeechModels::find(programFolder).missing();
    if (missing.empty())
        return {"speech on this computer", Verdict::works, "all models are there"};
    return {"speech on this computer", Verdict::limited, missing};
}

std::vector<DoctorFinding> Doctor::bus(bool hasSessionBus)
{
    const QDBusConnection bus = QDBusConnection::sessionBus();
    if (!hasSessionBus || !bus.isConnected())
        return {{"session bus", Verdict::limited,
            "there is none, so reminders cannot show on the desktop and a second "
            "program cannot share the notebook",
            "Start Quorvell from a desktop session."}};
    std::vector<DoctorFinding> findings{{"session bus", Verdict::works, "connected"}};
    findings.push_back(isOnBus(notificationService)
            ? DoctorFinding{"notifications", Verdict::works, "the desktop shows them"}
            : DoctorFinding{"notifications", Verdict::limited, "no program of the desktop shows notifications",
                "Install one, such as dunst; until then reminders show in the terminal only."});
    return findings;
}

void Doctor::finishWhenComplete()
{
    if (--m_waitingFor > 0)
        return;
    for (DoctorFinding& finding : m_soundFindings)
        m_findings.push_back(std::move(finding));
    m_done(m_findings);
}

} // namespace quorvell
