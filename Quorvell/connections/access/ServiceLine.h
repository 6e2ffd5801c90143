// SPDX-License-Identifier: MIT
// A way to a service that has no address.
#pragma once

namespace quorvell {

/// Main thread.
class ServiceLine {
public:
    virtual ~ServiceLine() = default;

    /// A fresh stream to the service, as the descriptor of a socket that is the caller's from now on; -1 when the
    /// service cannot be reached.
    [[nodiscard]] virtual int connect() = 0;
};

} // namespace quorvell
