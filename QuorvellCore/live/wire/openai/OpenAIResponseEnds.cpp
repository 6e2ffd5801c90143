// SPDX-License-Identifier: MIT
#include "QuorvellCore/live/wire/openai/OpenAIResponseEnds.h"

#include <algorithm>

namespace quorvell {

bool OpenAIResponseEnds::isFirst(std::string_view responseID)
{
    if (std::find(recent.begin(), recent.end(), responseID) != recent.end())
        return false;
    recent.emplace_back(responseID);
    if (recent.size() > remembered)
        recent.pop_front();
    return true;
}

} // namespace quorvell
