// SPDX-License-Identifier: MIT
// What every command that holds a conversation can be told.
#pragma once

#include "Quorvell/app/conversation/ConversationText.h"
#include "Quorvell/preferences/LiveBackend.h"
#include "Quorvell/preferences/LiveTransport.h"

#include <memory>
#include <optional>
#include <string>

namespace quorvell {

struct Command;
struct ProgramEnvironment;

struct ConversationOptions {
    bool asJson = false;
    bool isVerbose = false; ///< Tools with all that they are asked and answer.
    std::optional<std::string> host;
    std::optional<LiveBackend> backend;
    std::optional<LiveTransport> transport;

    /// How the conversation looks where no other program reads it.
    ConversationText::Style textStyle(const ProgramEnvironment& environment) const;

    /// Declares them; their values are there once the command line was read.
    static std::shared_ptr<ConversationOptions> declare(Command& command);
};

} // namespace quorvell
