#pragma once

#include <memory>
#include <optional>
#include <string>

namespace CLI {
class App;
}

namespace quorvell {

/// What every command that holds a conversation can be told.
struct ConversationOptions {
    bool asJson = false;
    std::optional<std::string> host;

    /// Declares them; their values are there once the command line was read.
    static std::shared_ptr<ConversationOptions> declare(CLI::App& command);
};

} // namespace quorvell
