// SPDX-License-Identifier: MIT
// As the network library wants it: certificates verified, no redirection (the request carries a key), no cookies.
#pragma once

#include "QuorvellCore/live/wire/transport/WebRequest.h"

#include <QNetworkRequest>

namespace quorvell {

QNetworkRequest networkRequest(const WebRequest& request);

} // namespace quorvell
