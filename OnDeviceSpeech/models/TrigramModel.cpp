// SPDX-License-Identifier: MIT
#include "OnDeviceSpeech/models/TrigramModel.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

namespace quorvell {

namespace {

constexpr int wordBits = 21;
constexpr std::uint64_t wordMask = (std::uint64_t{1} << wordBits) - 1;
constexpr std::uint32_t sentenceStart = 1;
constexpr double never = -99; ///< The format's way to say log10 of 0.

/// A sequence without its oldest word.
std::uint64_t shorter(std::uint64_t sequence, int order)
{
    return sequence & ((std::uint64_t{1} << (wordBits * (order - 1))) - 1);
}

} // namespace

TrigramModel::Identifier TrigramModel::identifier(const std::string& word)
{
    const auto [place, isNew] = m_identifiers.emplace(word, static_cast<Identifier>(m_words.size()) + 1);
    if (isNew) {
        m_words.push_back(word);
    }
    return place->second;
}

void TrigramModel::add(const std::vector<std::string>& sentence)
{
    Sequence recent = identifier("<s>");
    const auto append = [&](const std::string& word) {
        recent = ((recent << wordBits) | identifier(word)) & ((Sequence{1} << (3 * wordBits)) - 1);
        m_seen.push_back(recent);
    };
    std::for_each(sentence.begin(), sentence.end(), append);
    append("</s>");
    m_entries = {};
}

double TrigramModel::probability(Sequence history, Identifier word) const
{
    int order = history == 0 ? 1 : history <= wordMask ? 2 : 3;
    double backOff = 1;
    for (; order > 1; --order) {
        const auto& entries = m_entries[static_cast<std::size_t>(order - 1)];
        if (const auto found = entries.find((history << wordBits) | word); found != entries.end()) {
            return backOff * found->second.probability;
        }
        const auto& histories = m_entries[static_cast<std::size_t>(order - 2)];
        if (const auto found = histories.find(history); found != histories.end()) {
            backOff *= found->second.backOff;
        }
        history = shorter(history, order - 1);
    }
    const auto found = m_entries[0].find(word);
    return found == m_entries[0].end() ? 0 : backOff * found->second.probability;
}

void TrigramModel::estimate()
{
    const double uniform = 1.0 / static_cast<double>(std::max<std::size_t>(m_words.size() - 1, 1)); // all but "<s>"
    for (int order = 1; order <= 3; ++order) {
        std::vector<Sequence> seen;
        for (const Sequence trigram : m_seen) {
            const Sequence sequence = trigram & ((Sequence{1} << (order * wordBits)) - 1);
            if (order == 1 || (sequence >> ((order - 1) * wordBits)) != 0) {
                seen.push_back(sequence);
            }
        }
        std::sort(seen.begin(), seen.end());
        auto& entries = m_entries[static_cast<std::size_t>(order - 1)];
        for (auto first = seen.begin(); first != seen.end();) {
            const Sequence history = *first >> wordBits;
            const auto end =
                std::find_if(first, seen.end(), [&](Sequence other) { return other >> wordBits != history; });
            double different = 0;
            for (auto word = first; word != end; word = std::upper_bound(word, end, *word)) {
                ++different;
            }
            const double total = static_cast<double>(end - first);
            const double unseen = m_openness * different;
            for (auto word = first; word != end;) {
                const auto next = std::upper_bound(word, end, *word);
                const Identifier last = static_cast<Identifier>(*word & wordMask);
                const double lower = order == 1 ? uniform : probability(shorter(history, order - 1), last);
                entries[*word].probability = (static_cast<double>(next - word) + unseen * lower) / (total + unseen);
                word = next;
            }
            if (order > 1) {
                m_entries[static_cast<std::size_t>(order - 2)][history].backOff = unseen / (total + unseen);
            }
            first = end;
        }
    }
    m_entries[0][sentenceStart].probability = 0;
}

double TrigramModel::log10Probability(const std::vector<std::string>& history, const std::string& word)
{
    if (m_entries[0].empty()) {
        estimate();
    }
    const auto known = m_identifiers.find(word);
    Sequence recent = 0;
    for (std::size_t i = history.size() > 2 ? history.size() - 2 : 0; i < history.size(); ++i) {
        const auto found = m_identifiers.find(history[i]);
        recent = found == m_identifiers.end() ? 0 : (recent << wordBits) | found->second;
    }
    const double value = known == m_identifiers.end() ? 0 : probability(recent, known->second);
    return value > 0 ? std::log10(value) : never;
}

std::string TrigramModel::line(Sequence sequence, const Entry& entry, int order) const
{
    char number[32];
    std::snprintf(number, sizeof number, "%.4f", entry.probability > 0 ? std::log10(entry.probability) : never);
    std::string result = number;
    for (int word = order - 1; word >= 0; --word) {
        result += ' ' + m_words[static_cast<std::size_t>(((sequence >> (word * wordBits)) & wordMask) - 1)];
    }
    if (order < 3) {
        std::snprintf(number, sizeof number, " %.4f", std::log10(entry.backOff));
        result += number;
    }
    return result + '\n';
}

std::string TrigramModel::written()
{
    if (m_entries[0].empty()) {
        estimate();
    }
    std::string result = "\\data\\\n";
    for (std::size_t order = 0; order < 3; ++order) {
        result += "ngram " + std::to_string(order + 1) + "=" + std::to_string(m_entries[order].size()) + "\n";
    }
    for (int order = 1; order <= 3; ++order) {
        result += "\n\\" + std::to_string(order) + "-grams:\n";
        for (const auto& [sequence, entry] : m_entries[static_cast<std::size_t>(order - 1)]) {
            result += line(sequence, entry, order);
        }
    }
    return result + "\n\\end\\\n";
}

} // namespace quorvell
