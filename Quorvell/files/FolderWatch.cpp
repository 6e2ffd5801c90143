// SPDX-License-Identifier: MIT
#include "Quorvell/files/FolderWatch.h"

#include <poll.h>
#include <sys/eventfd.h>
#include <sys/inotify.h>

#include <array>
#include <cerrno>
#include <cstdint>
#include <cstring>
#include <filesystem>
#include <utility>

namespace quorvell {

namespace {

constexpr std::uint32_t inFolder = IN_CLOSE_WRITE | IN_MODIFY | IN_MOVED_FROM | IN_MOVED_TO | IN_CREATE | IN_DELETE
    | IN_DELETE_SELF | IN_MOVE_SELF | IN_ONLYDIR;
constexpr std::uint32_t inParent = IN_CREATE | IN_MOVED_TO | IN_ONLYDIR;
constexpr std::uint32_t folderGone = IN_DELETE_SELF | IN_MOVE_SELF | IN_IGNORED;

} // namespace

FolderWatch::FolderWatch(std::string folder, Post post, std::function<void()> changed)
    : m_folder(std::move(folder))
    , m_post(std::move(post))
    , m_changed(std::move(changed))
    , m_events(::inotify_init1(IN_CLOEXEC | IN_NONBLOCK))
    , m_end(::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK))
{
    // Attached before the constructor returns: what happens afterwards is seen.
    m_attached = m_events.isOpen() ? attach() : Attached::toNothing;
    if (m_attached != Attached::toNothing && m_end.isOpen())
        m_thread = std::thread([this] { watch(); });
}

FolderWatch::~FolderWatch()
{
    if (!m_thread.joinable())
        return;
    constexpr std::uint64_t one = 1;
    (void)!::write(m_end.number(), &one, sizeof(one));
    m_thread.join();
}

void FolderWatch::watch()
{
    while (true) {
        std::array<pollfd, 2> waiting{{{m_events.number(), POLLIN, 0}, {m_end.number(), POLLIN, 0}}};
        if (::poll(waiting.data(), waiting.size(), -1) < 0 && errno != EINTR)
            return;
        if (waiting[1].revents != 0)
            return;
        if (waiting[0].revents != 0 && readEvents())
            report();
    }
}

/// The folder above is watched first, so that one that comes back between the two steps is seen.
FolderWatch::Attached FolderWatch::attach()
{
    const int before = m_watch;
    const std::string above = std::filesystem::path(m_folder).parent_path().string();
    const int parent = ::inotify_add_watch(m_events.number(), above.c_str(), inParent);
    const int folder = ::inotify_add_watch(m_events.number(), m_folder.c_str(), inFolder);
    m_watch = folder >= 0 ? folder : parent;
    for (const int old : {before, parent})
        if (old >= 0 && old != m_watch)
            ::inotify_rm_watch(m_events.number(), old);
    if (folder >= 0)
        return Attached::toFolder;
    return parent >= 0 ? Attached::toParent : Attached::toNothing;
}

/// True when something that counts has happened.
bool FolderWatch::readEvents()
{
    alignas(inotify_event) std::array<char, 16 * 1024> buffer{};
    bool isChanged = false;
    bool isLost = false;
    while (true) {
        const ssize_t length = ::read(m_events.number(), buffer.data(), buffer.size());
        if (length <= 0)
            break;
        for (std::size_t position = 0; position + sizeof(inotify_event) <= static_cast<std::size_t>(length);) {
            inotify_event event{};
            std::memcpy(&event, buffer.data() + position, sizeof(event));
            const char* const name = buffer.data() + position + sizeof(event);
            position += sizeof(event) + event.len;
            // A watch that was taken off still says goodbye; that is no news about the present one.
            const bool isOfOurs = event.wd == m_watch || (event.mask & IN_Q_OVERFLOW) != 0;
            isLost = isLost || (isOfOurs && (event.mask & folderGone) != 0);
            isChanged = isChanged || (isOfOurs && (event.len == 0 || name[0] != '.'));
        }
    }
    if (!isLost && m_attached == Attached::toFolder)
        return isChanged;
    m_attached = attach();
    return isChanged || m_attached == Attached::toFolder;
}

void FolderWatch::report()
{
    if (m_isPosted->exchange(true))
        return;
    m_post([isPosted = m_isPosted, changed = m_changed] {
        isPosted->store(false);
        changed();
    });
}

} // namespace quorvell
