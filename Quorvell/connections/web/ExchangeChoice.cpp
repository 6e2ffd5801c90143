// SPDX-License-Identifier: MIT
#include "Quorvell/connections/web/ExchangeChoice.h"

#include "Quorvell/connections/web/LineExchange.h"
#include "Quorvell/connections/web/NetworkExchange.h"

#include <utility>

namespace quorvell {

std::unique_ptr<WebExchange> beginExchange(QNetworkAccessManager& web, const std::shared_ptr<ServiceLine>& line,
    const WebRequest& request, WebExchange::Reports reports, WebExchange::Limits limits)
{
    if (line)
        return std::make_unique<LineExchange>(line, request, std::move(reports), limits);
    return std::make_unique<NetworkExchange>(web, request, std::move(reports), limits);
}

} // namespace quorvell
