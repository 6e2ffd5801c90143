// SPDX-License-Identifier: MIT
// Begins an exchange the way that there is.
#pragma once

#include "Quorvell/connections/access/ServiceLine.h"
#include "Quorvell/connections/web/WebExchange.h"
#include "QuorvellCore/live/wire/transport/WebRequest.h"

#include <QNetworkAccessManager>

#include <memory>

namespace quorvell {

/// Over the line where there is one, else over the network.
std::unique_ptr<WebExchange> beginExchange(QNetworkAccessManager& web, const std::shared_ptr<ServiceLine>& line,
    const WebRequest& request, WebExchange::Reports reports, WebExchange::Limits limits);

} // namespace quorvell
