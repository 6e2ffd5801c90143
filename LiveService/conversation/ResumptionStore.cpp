// SPDX-License-Identifier: MIT
#include "LiveService/conversation/ResumptionStore.h"

#include <algorithm>
#include <utility>

namespace quorvell {

void ResumptionStore::put(std::string handle, LiveSessionEngine::State state, Time now)
{
    m_kept.push_back({std::move(handle), std::move(state), now});
    if (m_kept.size() > mostKept)
        m_kept.pop_front();
}

std::optional<LiveSessionEngine::State> ResumptionStore::find(std::string_view handle, Time now)
{
    std::erase_if(m_kept, [now](const Kept& kept) { return now - kept.since >= longestKept; });
    const auto kept = std::ranges::find(m_kept, handle, &Kept::handle);
    return kept != m_kept.end() ? std::optional(kept->state) : std::nullopt;
}

void ResumptionStore::forget(std::string_view handle)
{
    std::erase_if(m_kept, [handle](const Kept& kept) { return kept.handle == handle; });
}

} // namespace quorvell
