// SPDX-License-Identifier: MIT
#include "QuorvellCore/live/history/RecentRequests.h"

#include "QuorvellCore/text/Characters.h"

#include <utility>

namespace quorvell {

void RecentRequests::heard(std::string_view text, Time at)
{
    if (std::string words = trimmed(text); !words.empty())
        join(std::move(words), at);
    forget(at);
}

void RecentRequests::typed(std::string_view text, Time at)
{
    if (std::string words = trimmed(text); !words.empty()) {
        lastHeard = at;
        requests.push_back({at, std::move(words), {}, at});
    }
    forget(at);
}

void RecentRequests::join(std::string words, Time at)
{
    lastHeard = at;
    const bool belongsToLast = !requests.empty() && std::chrono::abs(at - requests.back().updated) <= joinWithin
        && at - requests.back().at <= longest;
    if (!belongsToLast) {
        requests.push_back({at, std::move(words), {}, at});
        return;
    }
    requests.back().text += ' ' + words;
    requests.back().updated = at;
}

void RecentRequests::forget(Time now)
{
    // By the first words: no word counts for longer, however much was said after it without a pause.
    std::erase_if(requests, [now](const Request& request) { return now - request.at > keptFor; });
    if (requests.size() > most)
        requests.erase(requests.begin(), requests.end() - static_cast<std::ptrdiff_t>(most));
}

} // namespace quorvell
