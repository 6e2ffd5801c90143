// SPDX-License-Identifier: MIT
// What a terminal sends, taken apart: keys for the line editor, history keys, and what came from the clipboard.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace quorvell {

/// One piece of input, in the order in which it was typed.
struct TerminalInput {
    enum class Kind {
        keys, ///< Characters, and control sequences that the editor knows.
        pasted,
        older, ///< The arrow keys that browse the history.
        newer,
    };

    Kind kind = Kind::keys;
    std::string text{};

    bool operator==(const TerminalInput&) const = default;
};

/// Reads bytes of a terminal in bracketed paste mode. Never passes half a character or half a control sequence on, so
/// that whoever reads keys never waits for the rest of one. Sequences that nobody asked for are dropped.
class TerminalKeys {
public:
    static constexpr std::size_t longestSequence = 32; ///< Bytes; what is longer is no key.
    static constexpr std::size_t longestPaste = 64 * 1024; ///< Bytes; the rest of a longer one is left out.

    std::vector<TerminalInput> received(std::string_view bytes);
    /// Half a sequence waits for its end, which a lone Escape never gets: call `giveUpWaiting` a moment later.
    bool isWaiting() const { return !m_isPasting && !m_held.empty(); }
    void giveUpWaiting();

private:
    bool readPaste(std::vector<TerminalInput>& inputs);
    bool readKey(std::vector<TerminalInput>& inputs);
    bool readSequence(std::vector<TerminalInput>& inputs);
    void keep(std::string_view pasted);

    std::string m_held; ///< Bytes that are not understood yet.
    std::string m_paste;
    bool m_isPasting = false;
};

} // namespace quorvell
