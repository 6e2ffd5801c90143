// SPDX-License-Identifier: MIT
#include "Quorvell/connections/choice/NetworkFingerprint.h"

#include <QCryptographicHash>
#include <QFile>

#include <sstream>

namespace quorvell {

namespace {

constexpr qint64 longestTable = 64 * 1024;

} // namespace

std::string NetworkFingerprint::of(std::string_view routes)
{
    // Device, destination, gateway, ...: a destination of zero is the way out. The first one is the one in use.
    std::istringstream lines{std::string(routes)};
    std::string line;
    while (std::getline(lines, line)) {
        std::istringstream fields(line);
        std::string device, destination, gateway;
        if (!(fields >> device >> destination >> gateway) || destination != "00000000")
            continue;
        const QByteArray wayOut = QByteArray::fromStdString(device + " " + gateway);
        return QCryptographicHash::hash(wayOut, QCryptographicHash::Sha256).toHex().left(16).toStdString();
    }
    return {};
}

std::string NetworkFingerprint::current()
{
    QFile table(QStringLiteral("/proc/net/route"));
    return table.open(QIODevice::ReadOnly) ? of(table.read(longestTable).toStdString()) : std::string();
}

} // namespace quorvell
