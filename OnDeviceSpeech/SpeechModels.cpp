// SPDX-License-Identifier: MIT
// Where the models of speech recognition lie, and which of them are missing.
#include "OnDeviceSpeech/SpeechRecogniser.h"

#include <filesystem>

namespace quorvell {

SpeechModels SpeechModels::find(const std::string& programFolder)
{
    // Both in a build folder and when installed the program's own models lie beside it.
    const std::string own = programFolder + "/../share/quorvell/speech/";
    const std::string system = "/usr/share/pocketsphinx/model/en-us/";
    return {.acousticModel = system + "en-us",
        .dictionary = own + "general.dict",
        .generalLanguageModel = system + "en-us.lm.bin",
        .commandLanguageModel = own + "commands.lm",
        .commandDictionary = own + "commands.dict"};
}

std::string SpeechModels::missing() const
{
    std::error_code error;
    for (const std::string* path : {&acousticModel, &generalLanguageModel}) {
        if (!std::filesystem::exists(*path, error))
            return "Speech cannot be recognised on this computer: " + *path
                + " is missing. Install the package pocketsphinx-en-us; typing works without it.";
    }
    for (const std::string* path : {&dictionary, &commandLanguageModel, &commandDictionary}) {
        if (!std::filesystem::exists(*path, error))
            return "Speech cannot be recognised on this computer: " + *path
                + " is missing. Build or install Quorvell again; typing works without it.";
    }
    return {};
}

} // namespace quorvell
