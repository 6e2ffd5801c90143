// SPDX-License-Identifier: MIT
// Remembers what was said, kept, read and found in a conversation, to tell where the words of an action come from.
//
// Texts are compared normalised and by whole words. Trust needs the whole: an argument is the user's when one thing
// that they said holds all of it. Distrust needs a part: it is from outside as soon as a piece that matters (an address
// of mail or web, a number, a name, a run of words) stands in a text from outside and not in the user's own words.
#pragma once

#include "QuorvellCore/automation/proposals/WordOrigin.h"
#include "QuorvellCore/automation/surface/ScreenAction.h"
#include "QuorvellCore/automation/surface/ScreenLook.h"

#include <cstddef>
#include <deque>
#include <string>
#include <string_view>

namespace quorvell {

/// What an argument is used for: how much of it has to come from the user.
enum class WordUse {
    typedText,
    recipient, ///< Whom something goes to.
    address, ///< On the web.
    addressData, ///< What an address carries along behind "?" or "#".
};

/// A value; lives with the conversation. Of each origin only what was told last is remembered.
class WordLedger {
public:
    static constexpr std::size_t mostBytes = 256 * 1024; ///< Of normalised text, for each origin.
    static constexpr std::size_t longestText = 64 * 1024; ///< Bytes of one text; the rest of it is not remembered.

    /// One whole utterance, message, note, tool result or look. The user's own words are `user`; a piece that they
    /// pasted is `web`; a note that was clipped (NoteOrigin isUntrusted) is `screen` or `web`, as it was.
    void told(WordOrigin origin, std::string_view text);
    /// Everything that can be read on a look, as `screen`.
    void seen(const ScreenLook& look);

    WordOrigin originOf(std::string_view words, WordUse use) const;
    /// Of each argument that carries words, under the name that provenanceRisk knows: "text", "recipient" (a text for a
    /// box that names whom something goes to), "address", "address_data".
    WordOrigins originsOf(const ScreenAction& action, const ScreenLook& look) const;

private:
    struct Text {
        WordOrigin origin;
        std::string raw; ///< Lower case, for addresses and numbers.
        std::string words; ///< Normalised, a space at both ends.
    };

    template <typename Holds> const Text* firstFrom(bool isWantedOutside, const Holds& holds) const;
    bool isTrusted(std::string_view normalized) const;
    WordOrigin originOfPieces(std::string_view words, WordUse use) const;
    WordOrigin originOfAddress(std::string_view address) const;

    std::deque<Text> m_texts; ///< Oldest first.
};

} // namespace quorvell
