// Every text that the assistant gives the models: instructions, the app's events, and the tools. Pure; constant tables
// are built once, on first use, and may be read from any thread.
#pragma once

#include "QuorvellCore/live/prompt/PromptOptions.h"
#include "QuorvellCore/live/prompt/ToolFlags.h"
#include "QuorvellCore/live/prompt/ToolNames.h"
#include "QuorvellCore/text/Json.h"

#include <string>
#include <string_view>

namespace quorvell {

struct QuorvellPrompt {
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

    // The tools. A declaration is {"name", "description", "parameters"} with schema types in upper case; a tool
    // without arguments has no "parameters", because the Gemini service refuses an object without properties.

    static const ToolNames notebookToolNames;
    static const ToolNames connectedAppToolNames;
    static const ToolNames nextStepTools; ///< May carry `then`, the step after them.
    static const ToolNames planUpdateTools; ///< May carry `plan_update`.

    static const Json& planUpdateProperty();
    static const Json& nextStepProperty();

    static const Json& notebookTools(); ///< Declarations in the order of notebookToolNames.
    static const Json& connectedAppTools(); ///< Declarations in the order of connectedAppToolNames.
    static const Json& lookUpTool(); ///< One declaration.
    static const Json& updateTool(); ///< One declaration.

    /// All 47 tools in the Gemini form: a list of groups {"functionDeclarations": [...]}. The groups are the screen
    /// with its tasks and modes, the notebook, the update, the connected apps, the look-up.
    static const Json& tools();
    /// The groups that the flags ask for. `tiered` off leaves do_task out, `webLookup` and `connectedApps` off their
    /// whole groups; `nextStep` off removes `then` everywhere.
    static Json liveTools(const ToolFlags& flags);
    /// The same declarations in the same order as tools of the Responses service, in one list.
    static Json responsesTools(const ToolFlags& flags);

    /// A Gemini schema as JSON Schema: type names in lower case at every depth. A property that is called "type" is a
    /// property and stays as it is.
    static Json jsonSchema(const Json& schema);
};

} // namespace quorvell
