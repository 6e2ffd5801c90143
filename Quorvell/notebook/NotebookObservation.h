// SPDX-License-Identifier: MIT
// While it lives, somebody hears of a notebook's changes.
#pragma once

#include <functional>
#include <utility>

namespace quorvell {

/// Movable; an empty one is nobody's.
class [[nodiscard]] NotebookObservation {
public:
    NotebookObservation() = default;
    explicit NotebookObservation(std::function<void()> end)
        : m_end(std::move(end))
    {
    }
    ~NotebookObservation() { end(); }
    NotebookObservation(NotebookObservation&& other) noexcept
        : m_end(std::exchange(other.m_end, nullptr))
    {
    }
    NotebookObservation& operator=(NotebookObservation&& other) noexcept
    {
        if (this != &other) {
            end();
            m_end = std::exchange(other.m_end, nullptr);
        }
        return *this;
    }

private:
    void end()
    {
        if (auto end = std::exchange(m_end, nullptr))
            end();
    }

    std::function<void()> m_end;
};

} // namespace quorvell
