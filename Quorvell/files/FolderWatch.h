// SPDX-License-Identifier: MIT
// Tells when something in a folder changes. Waits in the kernel: costs nothing while nothing happens.
#pragma once

#include "Quorvell/files/FileDescriptor.h"

#include <atomic>
#include <functional>
#include <memory>
#include <string>
#include <thread>

namespace quorvell {

/// Hidden files do not count. Follows the folder when it goes and comes back under its name. Where the system grants no
/// watch nothing is ever reported.
class FolderWatch {
public:
    /// Hands a callback to the thread that wants to know; callable from any thread while the watch lives.
    using Post = std::function<void(std::function<void()>)>;

    /// `changed` is posted after each burst of changes; at most one is on its way at a time.
    FolderWatch(std::string folder, Post post, std::function<void()> changed);
    /// What was posted before may still run.
    ~FolderWatch();
    FolderWatch(const FolderWatch&) = delete;
    FolderWatch& operator=(const FolderWatch&) = delete;

private:
    enum class Attached { toFolder, toParent, toNothing };

    void watch();
    Attached attach();
    bool readEvents();
    void report();

    std::string m_folder;
    Post m_post;
    std::function<void()> m_changed;
    FileDescriptor m_events;
    FileDescriptor m_end; ///< Readable once the watch shall end.
    Attached m_attached = Attached::toNothing; ///< Only the thread's, as what follows.
    int m_watch = -1;
    std::shared_ptr<std::atomic<bool>> m_isPosted = std::make_shared<std::atomic<bool>>(false);
    std::thread m_thread;
};

} // namespace quorvell
