// SPDX-License-Identifier: MIT
#include "Quorvell/sound/ServerWatch.h"

#include "Quorvell/sound/PulseLock.h"

#include <pulse/thread-mainloop.h>
#include <sys/inotify.h>
#include <unistd.h>

#include <array>
#include <utility>

namespace quorvell {

ServerWatch::ServerWatch(pa_threaded_mainloop* loop, std::string folder, std::function<void()> appeared)
    : m_loop(loop)
    , m_folder(std::move(folder))
    , m_appeared(std::move(appeared))
    , m_descriptor(inotify_init1(IN_NONBLOCK | IN_CLOEXEC))
{
    if (m_descriptor < 0 || m_folder.empty())
        return;
    watch();
    const PulseLock lock(m_loop);
    pa_mainloop_api* api = pa_threaded_mainloop_get_api(m_loop);
    m_event = api->io_new(
        api, m_descriptor, PA_IO_EVENT_INPUT,
        [](pa_mainloop_api*, pa_io_event*, int, pa_io_event_flags_t, void* self) {
            static_cast<ServerWatch*>(self)->readEvents();
        },
        this);
}

ServerWatch::~ServerWatch()
{
    if (m_event) {
        const PulseLock lock(m_loop);
        pa_threaded_mainloop_get_api(m_loop)->io_free(m_event);
    }
    if (m_descriptor >= 0)
        close(m_descriptor);
}

/// Also the folder above, where the socket's own folder may appear later. Watching twice changes nothing.
void ServerWatch::watch()
{
    constexpr std::uint32_t news = IN_CREATE | IN_MOVED_TO | IN_ONLYDIR;
    m_folderWatch = inotify_add_watch(m_descriptor, m_folder.c_str(), news);
    if (const auto slash = m_folder.rfind('/'); slash != std::string::npos && slash > 0)
        m_parentWatch = inotify_add_watch(m_descriptor, m_folder.substr(0, slash).c_str(), news);
}

bool ServerWatch::isNews(int watch, const char* name) const
{
    return watch == m_folderWatch || (watch == m_parentWatch && name == m_folder.substr(m_folder.rfind('/') + 1));
}

void ServerWatch::readEvents()
{
    alignas(inotify_event) std::array<char, 4096> events;
    bool hasNews = false;
    for (ssize_t bytes = read(m_descriptor, events.data(), events.size()); bytes > 0;
         bytes = read(m_descriptor, events.data(), events.size())) {
        for (ssize_t place = 0; place < bytes;) {
            const auto* event = reinterpret_cast<const inotify_event*>(events.data() + place);
            hasNews = hasNews || isNews(event->wd, event->len > 0 ? event->name : "");
            place += static_cast<ssize_t>(sizeof(inotify_event) + event->len);
        }
    }
    watch();
    if (hasNews)
        m_appeared();
}

} // namespace quorvell
