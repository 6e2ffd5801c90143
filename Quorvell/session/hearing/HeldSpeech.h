// SPDX-License-Identifier: MIT
// The user's speech that nothing has answered yet.
#pragma once

#include "QuorvellCore/live/gate/MicGateOutput.h"

#include <cstddef>
#include <deque>
#include <functional>

namespace quorvell {

/// What no connection could take waits here; what one took stays until the model reacts to it, so that a connection
/// lost in between costs the user no word.
class HeldSpeech {
public:
    static constexpr std::size_t most = 750; ///< 30 s of chunks; the oldest go first.

    /// What is added from here on is spoken after what is held.
    void speechBegan();
    void add(MicGateOutput output);
    /// Hands over what was not given yet, in order.
    void giveTo(const std::function<void(const MicGateOutput&)>& take);
    /// The connection is gone, and with it all that it was given.
    void connectionLost();
    /// The model has reacted to what it was given.
    void answered();
    /// Likewise, to what was said before the user began to speak again.
    void earlierAnswered();
    void forget();

    bool isEmpty() const { return m_heldChunks.empty(); }
    /// Whether something was given that still waits for a reaction.
    bool isAwaitingAnswer() const { return m_given > 0; }
    /// Whether the beginning of what is held is missing: too much was said, or the model reacted amid a sentence.
    bool isCutOff() const { return m_isCutOff; }
    std::size_t size() const { return m_heldChunks.size(); }

private:
    void letGo(std::size_t count);

    std::deque<MicGateOutput> m_heldChunks; ///< Oldest first.
    std::size_t m_given = 0; ///< So many of the oldest.
    std::size_t m_earlier = 0; ///< So many of the oldest were there when speech began last.
    bool m_isCutOff = false;
};

} // namespace quorvell
