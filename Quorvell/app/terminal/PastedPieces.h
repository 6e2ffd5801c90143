// SPDX-License-Identifier: MIT
// Remembers what was pasted into a line while the line is edited, so that the sent message tells the user's own words
// from those of others.
#pragma once

#include "QuorvellCore/live/history/TypedMessage.h"

#include <string>
#include <string_view>
#include <vector>

namespace quorvell {

/// The line shows a line break of the clipboard as one sign, since it is one line.
class PastedPieces {
public:
    static constexpr std::string_view shownLineBreak = "⏎";
    static constexpr std::size_t mostLineBreaksShown = 3; ///< A longer text is shown by its size.
    static constexpr std::size_t mostCharactersShown = 200;

    /// What the line is to show for it.
    std::string paste(const std::string& text);
    /// The message of a finished line. A paste that was edited can no longer be told apart: then all counts as pasted.
    TypedMessage message(const std::string& line) const;
    void clear() { m_pastes.clear(); }

private:
    struct Paste {
        std::string text;
        std::string shown;
    };

    std::vector<Paste> m_pastes; ///< In the order in which they came, which may differ from where they stand.
};

} // namespace quorvell
