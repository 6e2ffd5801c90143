// SPDX-License-Identifier: MIT
// Estimates a trigram language model from sentences.
#pragma once

#include <array>
#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace quorvell {

/// Counts word sequences and smooths them after Witten and Bell: how much of a history's probability goes to words
/// never seen after it grows with the number of different words that were seen.
class TrigramModel {
public:
    /// `openness` multiplies the share of unseen words. Sentences drawn from templates repeat themselves, so that 1
    /// would trust the templates' own wordings too much.
    explicit TrigramModel(double openness)
        : m_openness(openness)
    {
    }

    void add(const std::vector<std::string>& sentence);
    /// log10 P(word | history), the last two words of `history` counting; "<s>" and "</s>" are words.
    double log10Probability(const std::vector<std::string>& history, const std::string& word);
    /// In the ARPA format.
    std::string written();

private:
    using Identifier = std::uint32_t;
    /// Up to three words, oldest first, 21 bits each, counted from 1; 0 is "none".
    using Sequence = std::uint64_t;
    struct Entry {
        double probability = 0;
        double backOff = 1;
    };

    Identifier identifier(const std::string& word);
    void estimate();
    double probability(Sequence history, Identifier word) const;
    std::string line(Sequence sequence, const Entry& entry, int order) const;

    double m_openness;
    std::map<std::string, Identifier, std::less<>> m_identifiers;
    std::vector<std::string> m_words;
    std::vector<Sequence> m_seen; ///< Every trigram as often as it was seen.
    std::array<std::map<Sequence, Entry>, 3> m_entries; ///< By order, from one word to three; filled by estimate().
};

} // namespace quorvell
