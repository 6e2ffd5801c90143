// SPDX-License-Identifier: MIT
// A web request for the library that owns the network.
#pragma once

#include "QuorvellCore/live/wire/transport/WebRequest.h"

#include <QNetworkRequest>

namespace quorvell {

/// Certificates verified, no redirection (the request carries a key), no cookies.
QNetworkRequest networkRequest(const WebRequest& request);

} // namespace quorvell
