// SPDX-License-Identifier: MIT
// Remembers what was said, kept, read and found in a conversation, to tell where the words of an action come from.
//
// Texts are compared normalised and by whole words. Trust needs the whole: an argument is the user's when one thing
// that they said holds all of it. Distrust needs a part: it is from outside as soon as a piece that matters (an address
// of mail or web, a file, a number, a run of five words) stands in a text from outside and in none that is trusted.
#pragma once

#include "QuorvellCore/automation/proposals/WordOrigin.h"
#include "QuorvellCore/automation/provenance/WordPieces.h"
#include "QuorvellCore/automation/surface/ScreenAction.h"
#include "QuorvellCore/automation/surface/ScreenLook.h"

#include <cstddef>
#include <cstdint>
#include <deque>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quorvell {

/// What an argument is used for: how much of it has to come from the user.
enum class WordUse {
    typedText,
    recipient, ///< Whom something goes to.
    address, ///< On the web.
    addressData, ///< What an address carries along behind its host.
};

/// A value; lives with the conversation. Of each origin only what was told last is remembered.
class WordLedger {
public:
    static constexpr std::size_t mostBytes = 512 * 1024; ///< For each origin: about what a model keeps in mind.
    static constexpr std::size_t mostTexts = 512; ///< For each origin.
    static constexpr std::size_t longestText = 64 * 1024; ///< Bytes; a longer one is remembered in parts.

    /// One whole utterance, message, note or tool result. The user's own words are `user`; a piece that they pasted is
    /// `web`; a note that was clipped (NoteOrigin isUntrusted) is `screen` or `web`, as it was. Model is told nothing.
    void told(WordOrigin origin, std::string_view text);
    /// Everything that can be read on a look, as `screen`.
    void seen(const ScreenLook& look);

    WordOrigin originOf(std::string_view words, WordUse use) const;
    /// Of each argument that carries words, under the name that provenanceRisk knows: "text", "recipient" (a text for a
    /// box that names whom something goes to), "address", "address_data".
    WordOrigins originsOf(const ScreenAction& action, const ScreenLook& look) const;

private:
    struct Remembered {
        WordOrigin origin;
        std::string words; ///< Normalised, a space at both ends.
        WordPieces pieces;
        std::vector<std::uint64_t> runs; ///< Hashes, in order; only of texts from outside.
    };

    void remember(WordOrigin origin, std::string_view part);
    void forgetOldest(WordOrigin origin);

    /// The origin of the first text that holds it, from the most trusted on.
    template <typename Holds> std::optional<WordOrigin> trustedWith(const Holds& holds) const;
    template <typename Holds> std::optional<WordOrigin> outsideWith(const Holds& holds) const;
    std::optional<WordOrigin> trustedWhole(std::string_view words) const;
    std::optional<WordOrigin> trustedNumber(std::string_view raw) const;
    std::optional<WordOrigin> outsideIn(std::string_view raw, std::string_view words) const;
    std::optional<WordOrigin> outsidePieces(const WordPieces& pieces) const;
    std::optional<WordOrigin> outsideRuns(std::string_view words) const;
    WordOrigin originOfAddress(std::string_view address) const;
    WordOrigin originOfData(std::string_view address) const;
    WordOrigin originOfWords(std::string_view raw, WordUse use) const;
    void addTyping(WordOrigins& origins, std::string_view target, std::string_view text, const ScreenLook& look) const;
    void addAddress(WordOrigins& origins, std::string_view address) const;

    std::deque<Remembered> m_texts; ///< Oldest first.
};

} // namespace quorvell
