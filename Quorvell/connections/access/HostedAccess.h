// SPDX-License-Identifier: MIT
// A service that somebody else keeps running.
#pragma once

#include "Quorvell/connections/access/LiveAccessSource.h"

#include <utility>

namespace quorvell {

class HostedAccess : public LiveAccessSource {
public:
    explicit HostedAccess(LiveAccess access)
        : m_access(std::move(access))
    {
    }

    void find(std::function<void(const Found&)> found) override { found({m_access, {}}); }

private:
    LiveAccess m_access;
};

} // namespace quorvell
