#include "OnDeviceSpeech/models/Pronunciation.h"

#include <flite.h>

#include <algorithm>
#include <cctype>

extern "C" cst_lexicon* cmu_lex_init();

namespace quorvell {

const std::vector<std::string>& speechSounds()
{
    static const std::vector<std::string> sounds {"AA", "AE", "AH", "AO", "AW", "AY", "B", "CH", "D", "DH", "EH", "ER",
        "EY", "F", "G", "HH", "IH", "IY", "JH", "K", "L", "M", "N", "NG", "OW", "OY", "P", "R", "S", "SH", "T", "TH", "UH",
        "UW", "V", "W", "Y", "Z", "ZH"};
    return sounds;
}

std::string soundWord(std::string_view sound) { return "sound-" + std::string(sound); }

std::vector<std::string> pronunciations(const std::string& word)
{
    if (word == "quorvell") {
        return {"K W AO R V EH L", "K W AO R V AH L", "K AO R V EH L"};
    }
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
    return sounds.empty() ? std::vector<std::string> {} : std::vector<std::string> {sounds};
}

} // namespace quorvell
