// SPDX-License-Identifier: MIT
#include "OnDeviceSpeech/models/Pronunciation.h"

#include <flite.h>

#include <algorithm>
#include <cctype>

extern "C" cst_lexicon* cmu_lex_init(); // NOLINT(readability-identifier-naming): the library's own name.

namespace quorvell {

std::vector<std::string> ownPronunciations(std::string_view word)
{
    if (word == "quorvell") {
        return {"K W AO R V EH L", "K W AO R V AH L", "K AO R V EH L"};
    }
    if (word == "a.m.") {
        return {"AH EH M"}; // when written "a m", voices read the article
    }
    if (word == "sure") {
        return {"SH ER", "SH AO R"}; // the dictionary has only the careful way
    }
    return {};
}

std::string guessedPronunciation(const std::string& word)
{
    flite_init();
    std::string sounds;
    cst_val* phones = lex_lookup(cmu_lex_init(), word.c_str(), nullptr, nullptr);
    for (const cst_val* phone = phones; phone != nullptr; phone = val_cdr(phone)) {
        std::string sound = val_string(val_car(phone));
        std::erase_if(sound, [](unsigned char c) { return std::isdigit(c) != 0; });
        std::transform(sound.begin(), sound.end(), sound.begin(), [](unsigned char c) { return std::toupper(c); });
        sounds += (sounds.empty() ? "" : " ") + (sound == "AX" ? std::string("AH") : sound);
    }
    delete_val(phones);
    return sounds;
}

} // namespace quorvell
