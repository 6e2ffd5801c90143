// SPDX-License-Identifier: MIT
// How what tools did in this run can be taken back.
#pragma once

#include "Quorvell/session/tools/ToolReply.h"

#include <cstddef>
#include <deque>
#include <functional>
#include <string>

namespace quorvell {

/// Every tool that changes something writes the way back in here, and puts the token that it gets into its result:
/// "undo". The same tool called with nothing but that token takes the change back, and answers {"status": "undone",
/// "what"}; it does not ask again whether it may. Where a change cannot be taken back the result says why:
/// "cannot_undo". Main thread.
class UndoBook {
public:
    static constexpr std::size_t mostKept = 200; ///< The oldest goes first: nobody takes back so much.

    /// Answers exactly once. What was changed by other hands since is not overwritten: it fails with a sentence then.
    using TakeBack = std::function<void(ToolReply reply)>;

    std::string add(TakeBack takeBack);
    /// A token counts once. One that is not known fails.
    void takeBack(const std::string& token, ToolReply reply);

private:
    struct Entry {
        std::string token;
        TakeBack takeBack;
    };

    std::deque<Entry> m_entries;
    std::size_t m_added = 0;
};

} // namespace quorvell
