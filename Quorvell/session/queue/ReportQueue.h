// SPDX-License-Identifier: MIT
// Has the owner of several parts hear what they report once the call that led to it has returned. So a part is never
// called from inside its own report, and whoever reports from inside a call of the owner changes nothing under it.
#pragma once

#include <deque>
#include <functional>
#include <utility>

namespace quorvell {

/// One thread. Reports are values, which may move only.
template <typename Report> class ReportQueue {
public:
    explicit ReportQueue(std::function<void(Report)> take)
        : m_take(std::move(take))
    {
    }
    ReportQueue(const ReportQueue&) = delete;
    ReportQueue& operator=(const ReportQueue&) = delete;

    /// While one lives, reports wait; before the last one goes, they are taken.
    class Call {
    public:
        explicit Call(ReportQueue& queue)
            : m_queue(queue)
        {
            ++m_queue.m_calls;
        }
        ~Call()
        {
            if (m_queue.m_calls == 1)
                m_queue.takeAll();
            --m_queue.m_calls;
        }
        Call(const Call&) = delete;
        Call& operator=(const Call&) = delete;

    private:
        ReportQueue& m_queue;
    };
    [[nodiscard]] Call enter() { return Call(*this); }

    /// Of a part, about what it has done; taken at once where no call is under way.
    void add(Report report) { put(m_reports, std::move(report)); }
    /// From outside. It waits until nothing is left to be taken of what the parts have done so far.
    void addFromOutside(Report report) { put(m_fromOutside, std::move(report)); }
    /// Nothing is taken any more.
    void close() { m_take = nullptr; }

private:
    void put(std::deque<Report>& queue, Report report)
    {
        const Call call(*this);
        queue.push_back(std::move(report));
    }
    void takeAll()
    {
        while (m_take && (!m_reports.empty() || !m_fromOutside.empty())) {
            std::deque<Report>& next = m_reports.empty() ? m_fromOutside : m_reports;
            Report report = std::move(next.front());
            next.pop_front();
            m_take(std::move(report));
        }
    }

    std::function<void(Report)> m_take;
    std::deque<Report> m_reports;
    std::deque<Report> m_fromOutside;
    int m_calls = 0; ///< Under way, one inside the other.
};

} // namespace quorvell
