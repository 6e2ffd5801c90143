// SPDX-License-Identifier: MIT
#include "Understanding/words/CueTable.h"

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

namespace quorvell {

namespace {

std::vector<std::string> split(std::string_view text, char separator)
{
    std::vector<std::string> parts;
    for (std::size_t start = 0; start <= text.size();) {
        const std::size_t end = std::min(text.find(separator, start), text.size());
        parts.emplace_back(text.substr(start, end - start));
        start = end + 1;
    }
    return parts;
}

/// "reminding" may be of "remind", "moving" of "move", "putting" of "put".
std::vector<std::string> basesOf(std::string_view word)
{
    constexpr std::string_view ending = "ing";
    constexpr std::size_t shortestBase = 3;
    if (!word.ends_with(ending) || word.size() < ending.size() + shortestBase)
        return {};
    const std::string base(word.substr(0, word.size() - ending.size()));
    std::vector<std::string> bases{base, base + "e"};
    if (base[base.size() - 1] == base[base.size() - 2])
        bases.push_back(base.substr(0, base.size() - 1));
    return bases;
}

} // namespace

void CueTable::add(std::span<const CueWords> rows)
{
    for (const CueWords& row : rows) {
        for (std::string& phrase : split(row.phrases, '|')) {
            const bool isLast = phrase.ends_with('$');
            if (isLast)
                phrase.pop_back();
            auto words = split(phrase, ' ');
            const std::string first = words.front();
            words.erase(words.begin());
            m_entries[first].push_back({row.cue, row.place, std::move(words), isLast});
        }
    }
}

void CueTable::look(std::string_view first, const RequestWords& words, std::size_t index, CuePlace place,
    std::optional<CueMatch>& best) const
{
    const auto found = m_entries.find(first);
    if (found == m_entries.end())
        return;
    for (const Entry& entry : found->second) {
        const std::size_t count = 1 + entry.others.size();
        const bool fits = entry.place >= place && words.areAt(index + 1, entry.others)
            && (!entry.isLast || index + count == words.size());
        const bool isBetter = !best || count > best->words || (count == best->words && entry.place < best->place);
        if (fits && isBetter)
            best = CueMatch{entry.cue, entry.place, count};
    }
}

std::optional<CueMatch> CueTable::at(const RequestWords& words, std::size_t index, CuePlace place) const
{
    std::optional<CueMatch> best;
    look(words.at(index), words, index, place, best);
    if (!best && place != CuePlace::anywhere) {
        for (const std::string& base : basesOf(words.at(index)))
            look(base, words, index, place, best);
    }
    return best;
}

} // namespace quorvell
