// SPDX-License-Identifier: MIT
#include "Quorvell/app/doctor/ServiceCheck.h"

#include <QUrl>
#include <unistd.h>

#include <utility>

namespace quorvell {

namespace {

using Verdict = DoctorFinding::Verdict;

} // namespace

ServiceCheck::ServiceCheck(std::unique_ptr<LiveAccessSource> source, Scheduler& scheduler)
    : m_scheduler(scheduler)
    , m_source(std::move(source))
{
    QObject::connect(&m_socket, &QSslSocket::errorOccurred, &m_context, [this] { failed(); });
}

void ServiceCheck::examine(std::function<void(const DoctorFinding&)> done)
{
    m_done = std::move(done);
    m_start = m_scheduler.now();
    m_source->find([this](const LiveAccessSource::Found& found) { this->found(found); });
}

void ServiceCheck::found(const LiveAccessSource::Found& found)
{
    if (!found.access)
        return answer({"live service", Verdict::broken, found.problem});
    m_isOnDevice = found.access->place == LiveAccess::Place::onDevice;
    if (found.access->line)
        return connectOver(*found.access->line);
    connectTo({found.access->endpoint.host, found.access->endpoint.security});
}

void ServiceCheck::connectOver(ServiceLine& line)
{
    const int descriptor = line.connect();
    if (descriptor < 0)
        return answer({"live service", Verdict::broken, "the service on this computer is gone",
            "Try again; it is started anew."});
    ::close(descriptor);
    reached();
}

void ServiceCheck::connectTo(const ServiceAddress& address)
{
    m_host = address.host;
    const bool isSecure = address.security == ServiceAddress::Security::tls;
    const QUrl url = QUrl(QString::fromStdString(address.webUrl("/")));
    const auto port = static_cast<quint16>(url.port(isSecure ? 443 : 80));
    m_deadline = m_scheduler.after(patience, [this] {
        answer({"live service", Verdict::broken,
            m_host + " did not answer within "
                + std::to_string(std::chrono::duration_cast<std::chrono::seconds>(patience).count()) + " s",
            "Look at the network connection, and whether a firewall or a proxy stands in between."});
    });
    if (isSecure) {
        QObject::connect(&m_socket, &QSslSocket::encrypted, &m_context, [this] { reached(); });
        m_socket.connectToHostEncrypted(url.host(), port);
    } else {
        QObject::connect(&m_socket, &QSslSocket::connected, &m_context, [this] { reached(); });
        m_socket.connectToHost(url.host(), port);
    }
}

void ServiceCheck::reached()
{
    const auto took = (m_scheduler.now() - m_start).count();
    answer({"live service", Verdict::works,
        m_isOnDevice ? "on this computer; it started and answered within " + std::to_string(took) + " ms"
                     : m_host + ", reached within " + std::to_string(took) + " ms"});
}

void ServiceCheck::failed()
{
    const std::string why = m_socket.errorString().toStdString();
    switch (m_socket.error()) {
    case QAbstractSocket::HostNotFoundError:
        return answer({"live service", Verdict::broken, "the name " + m_host + " is not known",
            "Look at the network connection and at the host in the settings."});
    case QAbstractSocket::SslHandshakeFailedError:
        return answer({"live service", Verdict::broken, m_host + " could not prove who it is: " + why,
            "Look at the date of this computer. Where a company inspects connections, its certificate has to be "
            "installed."});
    default:
        return answer({"live service", Verdict::broken, m_host + " cannot be reached: " + why,
            "Look at the network connection and at the host in the settings."});
    }
}

void ServiceCheck::answer(DoctorFinding finding)
{
    m_deadline.cancel();
    if (const auto done = std::exchange(m_done, nullptr))
        m_scheduler.post([done, finding = std::move(finding)] { done(finding); }); // Never from inside its own socket.
}

} // namespace quorvell
