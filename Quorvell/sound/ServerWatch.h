// SPDX-License-Identifier: MIT
// Notices that a sound server has come, by its socket, without asking again and again.
#pragma once

#include <functional>
#include <string>

struct pa_threaded_mainloop;
struct pa_io_event;

namespace quorvell {

/// The folder of the socket may itself be missing yet. Made and destroyed on the main thread.
class ServerWatch {
public:
    /// `appeared` runs on the sound thread, also for other new files in the socket's folder.
    ServerWatch(pa_threaded_mainloop* loop, std::string folder, std::function<void()> appeared);
    ~ServerWatch();
    ServerWatch(const ServerWatch&) = delete;
    ServerWatch& operator=(const ServerWatch&) = delete;

private:
    void watch();
    void readEvents();
    bool isNews(int watch, const char* name) const;

    pa_threaded_mainloop* m_loop;
    std::string m_folder;
    std::function<void()> m_appeared;
    int m_descriptor = -1;
    int m_folderWatch = -1;
    int m_parentWatch = -1;
    pa_io_event* m_event = nullptr;
};

} // namespace quorvell
