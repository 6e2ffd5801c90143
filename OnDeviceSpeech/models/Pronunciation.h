// SPDX-License-Identifier: MIT
// How words are said, in the sounds of the acoustic model.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace quorvell {

/// Further ways to say a word that dictionaries lack, sounds separated by spaces.
std::vector<std::string> ownPronunciations(std::string_view word);

/// For a word that is in no dictionary: as the voice would say it. Empty when it cannot be said.
std::string guessedPronunciation(const std::string& word);

} // namespace quorvell
