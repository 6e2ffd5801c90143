// SPDX-License-Identifier: MIT
// Looks which servers of models answer, and which models they have.
#pragma once

#include "Quorvell/loop/Scheduler.h"
#include "QuorvellCore/live/wire/transport/ServiceAddress.h"

#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QObject>

#include <chrono>
#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace quorvell {

/// Sends nothing of the user's. Main thread; used once.
class ModelSearch {
public:
    struct Found {
        ServiceAddress address{};
        std::vector<std::string> models{};
        bool operator==(const Found&) const = default;
    };

    static constexpr std::chrono::milliseconds patience{1'500};
    static constexpr qint64 longestAnswer = 256 * 1024; ///< Bytes.
    static constexpr std::size_t mostModels = 20; ///< Of one server.

    /// This computer, at the ports at which servers of models usually listen.
    static std::vector<ServiceAddress> usualPlaces();

    ModelSearch(const std::vector<ServiceAddress>& places, Scheduler& scheduler);
    ~ModelSearch();

    /// Calls back once, with those that answered.
    void search(std::function<void(const std::vector<Found>&)> done);

    /// The names in an answer; none for what is no such answer.
    static std::vector<std::string> modelsIn(std::string_view answer);

private:
    void answered(std::size_t place);
    void finish();

    Scheduler& m_scheduler;
    std::vector<ServiceAddress> m_places;
    std::vector<Found> m_found;
    std::function<void(const std::vector<Found>&)> m_done;
    QNetworkAccessManager m_web;
    std::vector<QNetworkReply*> m_replies; ///< The manager's; null once read.
    QObject m_context; ///< Receives the replies' signals; goes before them.
    TimerHandle m_deadline;
};

} // namespace quorvell
