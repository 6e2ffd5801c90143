// SPDX-License-Identifier: MIT
// The sections of the instructions and how they are put together. Internal to this folder's sources.
#pragma once

#include "QuorvellCore/live/prompt/PromptOptions.h"

#include <initializer_list>
#include <string>
#include <string_view>

namespace quorvell::prompt_section {

/// The user's name on one line, or "your friend".
std::string userName(const PromptOptions& options);

/// The text with {name} and {family} replaced, each once and in one pass.
std::string filled(std::string_view text, const PromptOptions& options);

/// The body trimmed, the line breaks of the source taken out of its paragraphs and list entries, filled.
std::string paragraphs(std::string_view body, const PromptOptions& options);

/// "# heading", a blank line, the paragraphs.
std::string section(std::string_view heading, std::string_view body, const PromptOptions& options);

/// The texts that are not empty, with a blank line between two.
std::string joined(std::initializer_list<std::string> texts);

// Each a whole section with its heading.
std::string whoYouAre(const PromptOptions& options);
std::string whoYouHelp(const PromptOptions& options);
std::string howYouSound(const PromptOptions& options);
std::string yourHelper(const PromptOptions& options);
std::string yourPart(const PromptOptions& options);
std::string howVoiceHelps(const PromptOptions& options); ///< For a voice that holds no tools.
std::string howYouHelp(const PromptOptions& options);
std::string helpModes(const PromptOptions& options);
std::string modeTools(const PromptOptions& options); ///< No heading: continues helpModes for whoever holds the tools.
std::string workingWell(const PromptOptions& options);
std::string longerTasks(const PromptOptions& options);
std::string localExecution(const PromptOptions& options); ///< Empty without the engine.
std::string goingFast(const PromptOptions& options);
std::string keepingSafe(const PromptOptions& options);
std::string safetyTools(const PromptOptions& options); ///< No heading: continues keepingSafe.
std::string whenStuck(const PromptOptions& options);
std::string lookingThingsUp(const PromptOptions& options); ///< Empty when neither look-up nor apps are there.
std::string whereAndWhen(const PromptOptions& options); ///< Empty without a text.

} // namespace quorvell::prompt_section
