#include "Quorvell/tools/NoteSearch.h"

#include "QuorvellCore/text/Characters.h"
#include "QuorvellCore/text/TextMatch.h"

#include <algorithm>

namespace quorvell {

namespace {

constexpr std::string_view whiteSpace = " \t\n\v\f\r";
constexpr std::string_view ellipsis = "…";

std::vector<std::string_view> wordsOf(std::string_view text)
{
    std::vector<std::string_view> words;
    while (true) {
        const std::size_t start = std::min(text.find_first_not_of(whiteSpace), text.size());
        text.remove_prefix(start);
        if (text.empty())
            return words;
        const std::size_t end = std::min(text.find_first_of(whiteSpace), text.size());
        words.push_back(text.substr(0, end));
        text.remove_prefix(end);
    }
}

/// Both sides normalised, and the text with a space before its first word.
bool hasWordBeginning(std::string_view spacedText, std::string_view word)
{
    for (std::size_t position = spacedText.find(word); position != std::string_view::npos;
         position = spacedText.find(word, position + 1))
        if (position > 0 && spacedText[position - 1] == ' ')
            return true;
    return false;
}

std::string spacedNormalized(std::string_view text)
{
    return " " + TextMatch::normalized(text);
}

struct Hit {
    const Note* note = nullptr;
    std::ptrdiff_t wordsInTitle = 0;
};

bool holdsAll(const Note& note, const std::vector<std::string_view>& words)
{
    const std::string text = spacedNormalized(note.searchText());
    return std::all_of(words.begin(), words.end(), [&](std::string_view word) { return hasWordBeginning(text, word); });
}

std::ptrdiff_t wordsInTitle(const Note& note, const std::vector<std::string_view>& words)
{
    const std::string title = spacedNormalized(note.title);
    return std::count_if(
        words.begin(), words.end(), [&](std::string_view word) { return hasWordBeginning(title, word); });
}

/// Where in the note's words the query first occurs; 0 when nowhere.
std::size_t firstHit(const std::vector<std::string_view>& words, std::string_view query)
{
    const std::string normalizedQuery = TextMatch::normalized(query);
    const auto wanted = wordsOf(normalizedQuery);
    for (std::size_t index = 0; index < words.size(); ++index) {
        const std::string text = spacedNormalized(words[index]);
        const auto occurs = [&text](std::string_view word) { return hasWordBeginning(text, word); };
        if (std::any_of(wanted.begin(), wanted.end(), occurs))
            return index;
    }
    return 0;
}

} // namespace

std::vector<const Note*> searchNotes(
    const std::vector<Note>& notes, std::string_view query, const std::function<bool(const Note&)>& isWanted)
{
    const std::string normalizedQuery = TextMatch::normalized(query);
    const auto words = wordsOf(normalizedQuery);
    std::vector<Hit> hits;
    for (const Note& note : notes)
        if (isWanted(note) && (words.empty() || holdsAll(note, words)))
            hits.push_back({&note, wordsInTitle(note, words)});
    std::stable_sort(hits.begin(), hits.end(),
        [](const Hit& left, const Hit& right) { return left.wordsInTitle > right.wordsInTitle; });
    std::vector<const Note*> found(hits.size());
    std::transform(hits.begin(), hits.end(), found.begin(), [](const Hit& hit) { return hit.note; });
    return found;
}

std::string noteSnippet(const Note& note, std::string_view query)
{
    constexpr std::size_t maximumBytesLookedAt = 20'000; // a long note costs no more than a page of it
    constexpr std::size_t maximumCharacters = 160;
    constexpr std::size_t wordsBefore = 5;
    const std::string whole = note.plainText();
    const std::string text = repairUtf8(std::string_view(whole).substr(0, maximumBytesLookedAt));
    const auto words = wordsOf(text);
    const std::size_t hit = firstHit(words, query);
    const std::size_t first = hit > wordsBefore ? hit - wordsBefore : 0;

    std::string line;
    std::size_t next = first;
    for (; next < words.size() && line.size() < maximumCharacters; ++next)
        line.append(line.empty() ? "" : " ").append(words[next]);
    const std::string shown = firstCharacters(line, maximumCharacters);
    const bool isCutBehind = next < words.size() || shown.size() < line.size() || whole.size() > maximumBytesLookedAt;
    return std::string(first > 0 ? ellipsis : "").append(shown).append(isCutBehind ? ellipsis : "");
}

std::string onOneLine(std::string_view text)
{
    std::string line;
    for (const std::string_view word : wordsOf(text))
        line.append(line.empty() ? "" : " ").append(word);
    return line;
}

} // namespace quorvell
