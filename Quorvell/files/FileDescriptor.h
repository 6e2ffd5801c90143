// SPDX-License-Identifier: MIT
// Owns an open file and closes it.
#pragma once

#include <unistd.h>

#include <utility>

namespace quorvell {

/// Negative when there is none.
class FileDescriptor {
public:
    FileDescriptor() = default;
    explicit FileDescriptor(int number)
        : m_number(number)
    {
    }
    ~FileDescriptor() { close(); }
    FileDescriptor(FileDescriptor&& other) noexcept
        : m_number(std::exchange(other.m_number, -1))
    {
    }
    FileDescriptor& operator=(FileDescriptor&& other) noexcept
    {
        if (this != &other) {
            close();
            m_number = std::exchange(other.m_number, -1);
        }
        return *this;
    }

    int number() const { return m_number; }
    bool isOpen() const { return m_number >= 0; }
    void close()
    {
        if (const int number = std::exchange(m_number, -1); number >= 0)
            ::close(number);
    }

private:
    int m_number = -1;
};

} // namespace quorvell
