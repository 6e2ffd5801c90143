#pragma once

#include "QuorvellCore/live/wire/WebRequest.h"

#include <QNetworkRequest>

namespace quorvell {

/// As the network library wants it: certificates verified, no redirection (the request carries a key), no cookies.
QNetworkRequest networkRequest(const WebRequest& request);

} // namespace quorvell
