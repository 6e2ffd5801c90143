// SPDX-License-Identifier: MIT
// A search for words, led by one language model or a mixture of two.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <stop_token>
#include <string>
#include <vector>

namespace quorvell {

/// Blocking; one thread at a time.
class Decoder {
public:
    struct Word {
        std::string text;
        float confidence = 1; ///< 0 to 1: the share of all that the search thought possible which has the word there.
    };
    struct Result {
        std::string text{}; ///< Words without silences and fillers.
        std::vector<Word> words{}; ///< Of the text.
        std::vector<std::string> others{}; ///< What the search thought next likely, the likeliest first.
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

    static constexpr int mostOthers = 30; ///< Wordings looked at, many of them alike.

    void begin();
    void feed(std::span<const std::int16_t> samples);
    /// The words of what was fed so far, as far as they are known. Quick.
    std::string heardSoFar() const;
    Result finish();
    /// How well the sound agrees with these very words, spelled as in the dictionary: on the scale of Result::score,
    /// but comparable only between words for the same sound. Nothing where the dictionary lacks one. Between
    /// utterances.
    std::optional<int> agreement(std::span<const std::int16_t> samples, const std::string& words);

private:
    struct Parts;
    explicit Decoder(std::unique_ptr<Parts> parts);
    std::unique_ptr<Parts> m_parts;
};

} // namespace quorvell
