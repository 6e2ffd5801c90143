// SPDX-License-Identifier: MIT
#include "Quorvell/sound/SoundServer.h"

#include "Quorvell/sound/PulseLock.h"
#include "Quorvell/sound/PulseOperation.h"
#include "Quorvell/sound/ServerWatch.h"

#include <pulse/context.h>
#include <pulse/error.h>
#include <pulse/introspect.h>
#include <pulse/subscribe.h>
#include <pulse/thread-mainloop.h>
#include <pulse/volume.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <iterator>
#include <string_view>
#include <utility>

namespace quorvell {

namespace {

/// Stands in where there is no loudspeaker, so that programs do not stop; nobody hears it.
constexpr std::string_view dummyLoudspeaker = "auto_null";
constexpr std::size_t mostDevices = 256;

/// Where the server's socket appears; empty when the server is on another computer.
std::string socketFolder(const SoundServer::Options& options)
{
    if (options.address.empty())
        return options.runtimeFolder.empty() ? "" : options.runtimeFolder + "/pulse";
    std::string path = options.address;
    if (path.starts_with("unix:"))
        path.erase(0, 5);
    return path.starts_with('/') ? path.substr(0, path.rfind('/')) : "";
}

/// The library makes the folder of the user's own server itself, and complains on the terminal where it cannot.
bool canHaveFolder(const SoundServer::Options& options)
{
    if (!options.address.empty() || options.runtimeFolder.empty())
        return true;
    struct stat status { };
    const std::string folder = socketFolder(options);
    if (stat(folder.c_str(), &status) == 0)
        return S_ISDIR(status.st_mode);
    return stat(options.runtimeFolder.c_str(), &status) == 0 && S_ISDIR(status.st_mode)
        && access(options.runtimeFolder.c_str(), W_OK | X_OK) == 0;
}

SoundProblem problemOf(int error, const SoundServer::Options& options)
{
    if (!canHaveFolder(options))
        return SoundProblem::noFolder;
    return error == PA_ERR_ACCESS || error == PA_ERR_AUTHKEY ? SoundProblem::refused : SoundProblem::noServer;
}

/// Of microphones and loudspeakers alike: the library tells of both in the same words.
template <typename Info> SoundDevice device(const Info& info)
{
    const auto text = [](const char* words) { return std::string(words ? words : ""); };
    return {text(info.name), text(info.description), info.active_port ? text(info.active_port->name) : std::string(),
        info.mute ? 0 : pa_cvolume_avg(&info.volume)};
}

} // namespace

struct SoundServer::Listing {
    SoundDevices devices;
};

/// Run on the sound thread, with its lock held.
struct SoundServer::Callbacks {
    static SoundServer& server(void* self) { return *static_cast<SoundServer*>(self); }

    static void postTo(SoundServer& server, std::function<void(SoundServer&)> action)
    {
        server.m_post([&server, serial = server.m_serial, action = std::move(action)] {
            if (serial == server.m_serial)
                action(server);
        });
    }

    static void contextChanged(pa_context* context, void* self)
    {
        const int state = pa_context_get_state(context);
        const int error = pa_context_errno(context);
        postTo(server(self), [state, error](SoundServer& it) { it.contextChanged(state, error); });
    }

    static void somethingChanged(pa_context*, pa_subscription_event_type_t, std::uint32_t, void* self)
    {
        postTo(server(self), [](SoundServer& it) { it.listDevices(); });
    }

    static void defaultsListed(pa_context*, const pa_server_info* info, void* self)
    {
        SoundDevices& devices = server(self).m_listing->devices;
        devices = {};
        if (info && info->default_source_name)
            devices.defaultMicrophone = info->default_source_name;
        if (info && info->default_sink_name)
            devices.defaultLoudspeaker = info->default_sink_name;
    }

    static void microphoneListed(pa_context*, const pa_source_info* info, int isLast, void* self)
    {
        auto& known = server(self).m_listing->devices.microphones;
        if (isLast != 0 || !info || known.size() >= mostDevices)
            return;
        known.push_back(device(*info));
        known.back().isMonitor = info->monitor_of_sink != PA_INVALID_INDEX;
    }

    static void loudspeakerListed(pa_context*, const pa_sink_info* info, int isLast, void* self)
    {
        SoundDevices& devices = server(self).m_listing->devices;
        if (isLast != 0) {
            postTo(server(self), [devices](SoundServer& it) { it.devicesListed(devices); });
            return;
        }
        if (info && info->name && info->name != dummyLoudspeaker && devices.loudspeakers.size() < mostDevices)
            devices.loudspeakers.push_back(device(*info));
    }
};

SoundServer::SoundServer(Options options, Scheduler& scheduler)
    : m_scheduler(scheduler)
    , m_options(std::move(options))
    , m_loop(pa_threaded_mainloop_new())
    , m_listing(std::make_unique<Listing>())
    , m_post(scheduler)
{
    pa_threaded_mainloop_set_name(m_loop, "sound");
    pa_threaded_mainloop_start(m_loop);
    connect();
}

SoundServer::~SoundServer()
{
    m_watch.reset();
    disconnect();
    pa_threaded_mainloop_stop(m_loop);
    pa_threaded_mainloop_free(m_loop);
}

void SoundServer::removeListener(Listener& listener)
{
    std::erase(m_listeners, &listener);
}

void SoundServer::connect()
{
    disconnect();
    const PulseLock lock(m_loop);
    m_context = pa_context_new(pa_threaded_mainloop_get_api(m_loop), m_options.programName.c_str());
    pa_context_set_state_callback(m_context, Callbacks::contextChanged, this);
    pa_context_set_subscribe_callback(m_context, Callbacks::somethingChanged, this);
    const char* address = m_options.address.empty() ? nullptr : m_options.address.c_str();
    // A failure is also told through the state, but not every one: a missing cookie, for example, is only told here.
    if (pa_context_connect(m_context, address, PA_CONTEXT_NOFLAGS, nullptr) < 0)
        Callbacks::contextChanged(m_context, this);
}

void SoundServer::disconnect()
{
    const PulseLock lock(m_loop);
    ++m_serial;
    m_isListing = false;
    m_listAgain = false;
    if (pa_context* context = std::exchange(m_context, nullptr)) {
        pa_context_set_state_callback(context, nullptr, nullptr);
        pa_context_set_subscribe_callback(context, nullptr, nullptr);
        pa_context_disconnect(context);
        pa_context_unref(context);
    }
}

void SoundServer::contextChanged(int state, int error)
{
    if (state == PA_CONTEXT_READY) {
        const PulseLock lock(m_loop);
        const auto devices = static_cast<pa_subscription_mask_t>(
            PA_SUBSCRIPTION_MASK_SINK | PA_SUBSCRIPTION_MASK_SOURCE | PA_SUBSCRIPTION_MASK_SERVER);
        release(pa_context_subscribe(m_context, devices, nullptr, nullptr));
    }
    if (state == PA_CONTEXT_READY)
        listDevices();
    if (state == PA_CONTEXT_FAILED || state == PA_CONTEXT_TERMINATED)
        connectionFailed(problemOf(error, m_options));
}

void SoundServer::connectionFailed(SoundProblem problem)
{
    disconnect();
    m_isReady = false;
    m_devices = {};
    // Without its folder the next attempt fails alike, and the library says so each time.
    const bool isGivenUp =
        problem == SoundProblem::refused || problem == SoundProblem::noFolder || m_failures >= std::size(retryDelays);
    if (isGivenUp || m_failures + 1 >= toldFailure)
        m_problem = problem;
    watchForServer();
    if (!isGivenUp)
        m_retry = m_scheduler.after(retryDelays[m_failures++], [this] { connect(); });
    notify();
}

void SoundServer::watchForServer()
{
    if (m_watch)
        return;
    m_watch = std::make_unique<ServerWatch>(m_loop, socketFolder(m_options), [this] { m_post([this] { retry(); }); });
}

void SoundServer::retry()
{
    if (m_context)
        return;
    m_failures = 0;
    m_retry = m_scheduler.after(retryDelays[0], [this] { connect(); });
}

/// One list at a time: a device that comes makes several events.
void SoundServer::listDevices()
{
    m_listAgain = m_isListing;
    if (std::exchange(m_isListing, true))
        return;
    const PulseLock lock(m_loop);
    release(pa_context_get_server_info(m_context, Callbacks::defaultsListed, this));
    release(pa_context_get_source_info_list(m_context, Callbacks::microphoneListed, this));
    release(pa_context_get_sink_info_list(m_context, Callbacks::loudspeakerListed, this));
}

void SoundServer::devicesListed(SoundDevices devices)
{
    m_isListing = false;
    if (m_listAgain)
        listDevices();
    const bool isNews = !m_isReady || devices != m_devices;
    m_devices = std::move(devices);
    m_isReady = true;
    m_failures = 0;
    m_problem = SoundProblem::none;
    m_watch.reset();
    if (isNews)
        notify();
}

void SoundServer::notify()
{
    const std::vector<Listener*> listeners = m_listeners;
    for (Listener* listener : listeners)
        listener->soundServerChanged();
}

} // namespace quorvell
