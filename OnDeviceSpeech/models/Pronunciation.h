// How words are said, in the sounds of the acoustic model.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace quorvell {

/// The speech sounds that the acoustic model knows.
const std::vector<std::string>& speechSounds();

/// A made-up word that consists of one sound, for stretches where any sounds may pass.
std::string soundWord(std::string_view sound);

/// For words that no dictionary has: the assistant's own name, else as the voice would say it. Sounds are separated by
/// spaces; a word may have several pronunciations.
std::vector<std::string> pronunciations(const std::string& word);

} // namespace quorvell
