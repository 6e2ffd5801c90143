// SPDX-License-Identifier: MIT
// A search for words, led by one language model or a mixture of two.
#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <stop_token>
#include <string>

namespace quorvell {

/// Blocking; one thread at a time.
class Decoder {
public:
    struct Result {
        std::string text; ///< Words without silences and fillers.
        /// How well sound and language model together agree with the words: higher is better, comparable between
        /// searches over the same sound. Ten of it are about the natural logarithm of a probability.
        int score = 0;
    };
    struct Options {
        std::string acousticModel; ///< Folder.
        std::string dictionary;
        std::string languageModel;
        std::string secondLanguageModel{}; ///< Mixed with the first; empty for none.
        float shareOfFirst = 0.5F; ///< Of the mixture, from 0 to 1.
    };

    /// Reads the models, which may take a second. Null when one cannot be read, and soon after `stop` is requested.
    static std::unique_ptr<Decoder> create(const Options& options, const std::stop_token& stop = {});
    ~Decoder();

    void begin();
    void feed(std::span<const std::int16_t> samples);
    Result finish();

private:
    struct Parts;
    explicit Decoder(std::unique_ptr<Parts> parts);
    std::unique_ptr<Parts> m_parts;
};

} // namespace quorvell
