// SPDX-License-Identifier: MIT
#include "FaultyService.h"

#include <QFile>
#include <QRegularExpression>

#include <utility>

namespace quorvell::walk {

FaultyService::FaultyService(const std::vector<std::string>& faults, const std::string& certificate,
    std::function<void(const std::string& address)> ready)
    : m_ready(std::move(ready))
{
    QFile token(m_folder.filePath(QStringLiteral("token")));
    if (token.open(QIODevice::WriteOnly))
        token.write(key);
    token.close();
    QStringList arguments{QStringLiteral("live-service"), QStringLiteral("--token-file"), token.fileName()};
    for (const std::string& fault : faults)
        arguments << QStringLiteral("--fault") << QString::fromStdString(fault);
    if (!certificate.empty())
        arguments << QStringLiteral("--tls-certificate") << QString::fromStdString(certificate);
    QObject::connect(&m_process, &QProcess::readyReadStandardOutput, &m_process, [this] { readOutput(); });
    QObject::connect(&m_process, &QProcess::finished, &m_process, [this] {
        if (const auto report = std::exchange(m_ready, nullptr))
            report({});
    });
    m_process.start(QStringLiteral(QUORVELL_PROGRAM), arguments);
}

FaultyService::~FaultyService()
{
    m_ready = nullptr;
    m_process.kill();
    m_process.waitForFinished();
}

void FaultyService::readOutput()
{
    static const QRegularExpression address(QStringLiteral("(wss?://[^/\\s]+:\\d+)/"));
    const auto match = address.match(QString::fromUtf8(m_process.peek(4096)));
    if (match.hasMatch())
        if (const auto report = std::exchange(m_ready, nullptr))
            report(match.captured(1).toStdString());
}

} // namespace quorvell::walk
