// SPDX-License-Identifier: MIT
// The tools that the models are told about. Pure; built once, on first use, and may be read from any thread.
#pragma once

#include "QuorvellCore/live/tools/ToolFlags.h"
#include "QuorvellCore/live/tools/ToolNames.h"
#include "QuorvellCore/text/Json.h"

namespace quorvell {

struct ToolCatalogue {
    // A declaration is {"name", "description", "parameters"} with schema types in upper case; a tool
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
