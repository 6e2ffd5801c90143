#pragma once

#include "QuorvellCore/text/Instant.h"

#include <functional>
#include <iosfwd>
#include <string>

namespace CLI {
class App;
}

namespace quorvell {

struct ProgramEnvironment;

struct NotesRequest {
    enum class Action { list, find, show };

    Action action = Action::list;
    std::string words{}; ///< To be found, or the id or its beginning.
    bool asJson = false; ///< One object a line.
};

/// Reads the notebook folder as it lies there, whoever owns it. Returns the exit code.
int runNotes(const NotesRequest& request, const ProgramEnvironment& environment, Instant now, std::ostream& out,
    std::ostream& errors);

/// `quorvell notes [list | find WORDS... | show ID] [--json]`
std::function<int()> addNotesCommand(CLI::App& program, const ProgramEnvironment& environment);

} // namespace quorvell
