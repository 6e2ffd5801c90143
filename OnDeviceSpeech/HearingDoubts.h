// SPDX-License-Identifier: MIT
// What else may have been said, where that matters: the hours, days and numbers of a request. Pure.
//
// A recogniser is least sure of what is said in a few sounds and means most. Three signs tell: two searches over the
// same sound found different numbers; the search gives a number little confidence and thought of another one; or the
// words have a twin that hardly sounds different ("fifteen", "fifty"), which the sound itself is then asked about.
#pragma once

#include "OnDeviceSpeech/Decoder.h"

#include <optional>
#include <string>
#include <vector>

namespace quorvell {

struct HearingDoubts {
    /// Below it another number that the search thought of is a doubt. Of 130 requests in five voices, hours that were
    /// heard wrong had up to 0.64 and those that were heard rightly hardly ever less.
    static constexpr float leastConfidence = 0.66F;
    /// By so much the sound has to speak for the twin before it is believed without asking.
    static constexpr int sure = 260;
    /// Below it a name is doubtful: of the same requests seven of nine such names were wrong.
    static constexpr float leastOfName = 0.2F;
    static constexpr std::size_t most = 2; ///< Other readings: nobody remembers more.

    /// A wording with one word changed for its twin.
    struct Twin {
        std::string words; ///< As `heard`, with the twin.
        /// By how much the sound has to speak for the words that were heard. In scores of Decoder::agreement. Minutes
        /// such as "fourteen" are much rarer than "forty".
        int margin = 0;
    };

    /// For every number of the text that has one.
    static std::vector<Twin> twins(const std::string& text);
    /// "Remind me and ten minutes", "remind me ten minutes to ..." as "in ten minutes": nobody says the former, and it
    /// sounds nearly the same. Nothing for other words.
    static std::optional<std::string> withSpan(const std::string& text);
    /// How little the sound may speak against that.
    static constexpr int marginOfSpan = 250;
    /// Another time of which the sound speaks for the one that was heard by more is none.
    static constexpr int marginOfOther = 130;
    /// Wordings with other times than `heard`: of those that it was chosen before, and of `second`, the other search.
    static std::vector<std::string> otherTimes(const Decoder::Result& heard, const Decoder::Result& second);
    /// The confidence in the word of a time that is least sure; 1 where there is none.
    static float leastOfTimes(const Decoder::Result& heard);
    /// Names that were heard badly.
    static std::vector<std::string> faintNames(const Decoder::Result& heard);
};

} // namespace quorvell
