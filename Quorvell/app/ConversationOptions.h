#pragma once

#include "Quorvell/connections/LiveBackend.h"
#include "Quorvell/connections/LiveTransport.h"

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
    std::optional<LiveBackend> backend;
    std::optional<LiveTransport> transport;

    /// Declares them; their values are there once the command line was read.
    static std::shared_ptr<ConversationOptions> declare(CLI::App& command);
};

} // namespace quorvell
