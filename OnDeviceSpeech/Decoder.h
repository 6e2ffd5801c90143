#pragma once

#include "OnDeviceSpeech/HeardUtterance.h"

#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <vector>

namespace quorvell {

/// One search of the recogniser with one language model or grammar. Blocking; one thread at a time.
class Decoder {
public:
    struct Options {
        std::string acousticModel; ///< Folder.
        std::string dictionary;
        std::string languageModel{};
        std::string secondLanguageModel{}; ///< Mixed in equal parts with the first; empty for none.
        std::string grammar{}; ///< Instead of language models.
    };

    /// Null when a model cannot be read.
    static std::unique_ptr<Decoder> create(const Options& options);
    ~Decoder();

    void begin();
    void feed(std::span<const std::int16_t> samples);
    /// The words of the utterance with their times and marks, without silences and fillers.
    std::vector<HeardWord> finish();

private:
    struct Parts;
    explicit Decoder(std::unique_ptr<Parts> parts);
    std::unique_ptr<Parts> m_parts;
};

} // namespace quorvell
