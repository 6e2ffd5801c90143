// SPDX-License-Identifier: MIT
// This process can write no larger file while this lives, as on a disk that is full half way through.
#pragma once

#include <sys/resource.h>

#include <csignal>

namespace quorvell::test {

class FileSizeLimit {
public:
    explicit FileSizeLimit(rlim_t bytes)
    {
        ::getrlimit(RLIMIT_FSIZE, &m_before);
        const rlimit limit{bytes, m_before.rlim_max};
        m_handler = std::signal(SIGXFSZ, SIG_IGN);
        ::setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~FileSizeLimit()
    {
        ::setrlimit(RLIMIT_FSIZE, &m_before);
        std::signal(SIGXFSZ, m_handler);
    }
    FileSizeLimit(const FileSizeLimit&) = delete;
    FileSizeLimit& operator=(const FileSizeLimit&) = delete;

private:
    rlimit m_before{};
    void (*m_handler)(int) = nullptr;
};

} // namespace quorvell::test
