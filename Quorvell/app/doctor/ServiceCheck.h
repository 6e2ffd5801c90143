// SPDX-License-Identifier: MIT
// Whether the chosen live service can be reached: its name, its port and its certificate.
#pragma once

#include "Quorvell/app/doctor/DoctorFinding.h"
#include "Quorvell/connections/access/LiveAccessSource.h"
#include "Quorvell/loop/Scheduler.h"

#include <QObject>
#include <QSslSocket>

#include <functional>
#include <memory>
#include <string>

namespace quorvell {

/// No key is sent and nothing is paid for. Main thread; used once.
class ServiceCheck {
public:
    static constexpr std::chrono::milliseconds patience{8'000};

    /// The source finds the service and is kept.
    ServiceCheck(std::unique_ptr<LiveAccessSource> source, Scheduler& scheduler);

    void examine(std::function<void(const DoctorFinding&)> done);

private:
    void found(const LiveAccessSource::Found& found);
    void connectOver(ServiceLine& line);
    void connectTo(const ServiceAddress& address);
    void reached();
    void failed();
    void answer(DoctorFinding finding);

    Scheduler& m_scheduler;
    std::unique_ptr<LiveAccessSource> m_source;
    std::function<void(const DoctorFinding&)> m_done;
    std::string m_host;
    bool m_isOnDevice = false;
    SessionTime m_start{};
    QSslSocket m_socket;
    QObject m_context; ///< Receives the socket's signals; goes before it.
    TimerHandle m_deadline;
};

} // namespace quorvell
