// SPDX-License-Identifier: MIT
#include "Quorvell/connections/web/RetryAfter.h"

#include <QByteArray>
#include <QDateTime>
#include <QLocale>

#include <algorithm>

namespace quorvell {

std::optional<std::chrono::milliseconds> retryAfter(std::string_view field)
{
    constexpr qint64 longest = 24 * 60 * 60;
    const QByteArray text = QByteArray(field.data(), static_cast<qsizetype>(field.size())).trimmed();
    bool isNumber = false;
    qint64 seconds = text.toLongLong(&isNumber);
    if (!isNumber) {
        QDateTime date =
            QLocale::c().toDateTime(QString::fromLatin1(text), QStringLiteral("ddd, dd MMM yyyy hh:mm:ss 'GMT'"));
        date.setTimeSpec(Qt::UTC);
        if (!date.isValid())
            return std::nullopt;
        seconds = QDateTime::currentDateTimeUtc().secsTo(date);
    }
    return std::chrono::seconds(std::clamp<qint64>(seconds, 0, longest));
}

} // namespace quorvell
