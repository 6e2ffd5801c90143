// SPDX-License-Identifier: MIT
// Where the content of a note came from.
#pragma once

#include <optional>
#include <string_view>

namespace quorvell {

enum class NoteOrigin { person, conversation, screen, web, explainer };

std::string_view storedText(NoteOrigin origin);
std::optional<NoteOrigin> noteOrigin(std::string_view stored);

/// True for what was captured from the screen or fetched from the web: never trusted when handed to a model.
bool isUntrusted(NoteOrigin origin);

} // namespace quorvell
