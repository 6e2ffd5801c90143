// SPDX-License-Identifier: MIT
#include "QuorvellCore/notebook/NoteSource.h"

#include <string_view>

namespace quorvell {

std::optional<std::string> NoteSource::label() const
{
    constexpr std::string_view prefix = "www.";
    if (site && !site->empty())
        return site->starts_with(prefix) ? site->substr(prefix.size()) : *site;
    if (app && !app->empty())
        return app;
    return std::nullopt;
}

} // namespace quorvell
