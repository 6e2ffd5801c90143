// SPDX-License-Identifier: MIT
#include "Understanding/CueTable.h"

#include "Understanding/CueWords.h"

#include <algorithm>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace quorvell {

namespace {

struct Entry {
    Cue cue;
    CuePlace place;
    std::vector<std::string> others; ///< Words behind the first.
    bool isLast; ///< Nothing follows it.
};

using Entries = std::map<std::string, std::vector<Entry>, std::less<>>;

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

Entries readEntries()
{
    Entries entries;
    for (const CueWords& row : CueWords::all()) {
        for (std::string& phrase : split(row.phrases, '|')) {
            const bool isLast = phrase.ends_with('$');
            if (isLast)
                phrase.pop_back();
            auto words = split(phrase, ' ');
            const std::string first = words.front();
            words.erase(words.begin());
            entries[first].push_back({row.cue, row.place, std::move(words), isLast});
        }
    }
    return entries;
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

void look(const Entries& entries, std::string_view first, const RequestWords& words, std::size_t index, CuePlace place,
    std::optional<CueMatch>& best)
{
    const auto found = entries.find(first);
    if (found == entries.end())
        return;
    for (const Entry& entry : found->second) {
        const std::size_t count = 1 + entry.others.size();
        const bool fits = entry.place >= place && words.areAt(index + 1, entry.others)
            && (!entry.isLast || index + count == words.size());
        if (fits && (!best || count > best->words))
            best = CueMatch{entry.cue, entry.place, count};
    }
}

} // namespace

std::optional<CueMatch> CueTable::at(const RequestWords& words, std::size_t index, CuePlace place)
{
    static const Entries entries = readEntries();
    std::optional<CueMatch> best;
    look(entries, words.at(index), words, index, place, best);
    if (!best && place != CuePlace::anywhere) {
        for (const std::string& base : basesOf(words.at(index)))
            look(entries, base, words, index, place, best);
    }
    return best;
}

} // namespace quorvell
