// SPDX-License-Identifier: MIT
// Every text that the assistant gives the models. Pure; constant tables are built once, on first use, and may be read
// from any thread.
#pragma once

#include "QuorvellCore/live/prompt/PromptOptions.h"
#include "QuorvellCore/live/tools/ToolCatalogue.h"

#include <string>
#include <string_view>

namespace quorvell {

/// The tools among them stand in the catalogue.
struct QuorvellPrompt : ToolCatalogue {
    // The app's events, which it puts into the conversation by itself. An empty name becomes "They".

    /// Begins every message that comes from the app and not from the user.
    static constexpr std::string_view eventPrefix = "[Quorvell app event]";

    static std::string greetingEvent(std::string_view userName, std::string_view frontApp);
    static std::string liveGreeting(std::string_view userName, std::string_view frontApp);
    /// Words that were heard but never reached the model.
    static std::string missedRequest(std::string_view text);
    /// Words that the recogniser on the device heard while the conversation rested.
    static std::string heardWhileResting(std::string_view text);

    enum class Entry { typed, dictated }; ///< Dictated: said aloud while the key was held, written by recognition.
    enum class Reply { spoken, shown };
    static std::string typedMessage(std::string_view text, Entry entry, Reply reply);

    // The instructions, in Markdown. An empty user name becomes "your friend".

    /// For the model that talks. When it holds the tools itself, the rules for using them are in it.
    static std::string systemInstruction(const PromptOptions& options);
    /// For the backend that the voice delegates to.
    static std::string liveBackendInstructions(const PromptOptions& options);
    /// For the one model of a typed conversation.
    static std::string textBackendInstructions(const PromptOptions& options);

    // The sections that the instructions are put together from.

    static std::string persona(const PromptOptions& options);
    static std::string taskGuide(const PromptOptions& options);
    static std::string typedGuide(const PromptOptions& options);
    static std::string notebookGuide(const PromptOptions& options);
    static std::string lookUpGuide(const PromptOptions& options);
    static std::string connectedAppsGuide(const PromptOptions& options); ///< Belongs under "Looking things up".
    static std::string nextStepGuide(const PromptOptions& options);
    static std::string backendReplyGuide(const PromptOptions& options);
};

} // namespace quorvell
