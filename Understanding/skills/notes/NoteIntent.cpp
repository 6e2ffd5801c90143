// SPDX-License-Identifier: MIT
#include "Understanding/skills/notes/NoteIntent.h"

#include "QuorvellCore/text/Characters.h"
#include "QuorvellCore/text/Pattern.h"
#include "Understanding/skills/notes/NoteCues.h"
#include "Understanding/skills/notes/NotebookQuestion.h"
#include "Understanding/time/TimeVocabulary.h"
#include "Understanding/words/CommonCues.h"
#include "Understanding/words/RequestText.h"
#include "Understanding/words/RequestWords.h"

#include <algorithm>
#include <utility>

namespace quorvell {

namespace {

using Purpose = RequestMemory::SearchPurpose;

constexpr int longestTitleWords = 6;
constexpr std::size_t longestTitleCharacters = 60;

/// What leads from the wish to the words themselves.
std::string withoutLead(std::string_view content)
{
    static const Pattern lead("^(?:(?:down|here|to self|in writing|as follows|saying that|saying|that says|which says"
                              "|reads?|please|in(?= that\\b)|for (?:me|us|later))\\b[,:]?\\s*)*"
                              "(?:(?:that|dat|this|of|about|to|for)\\b\\s*[:,]?\\s*)?",
        Pattern::caseless);
    return trimmed(lead.replaceAll(trimmed(content, ",;:-"), ""), ",;:-");
}

/// "about the plumber" of "find my note about the plumber".
std::string topicIn(const std::string& content)
{
    static const Pattern lead(
        "^(?:(?:about|on|for|of|with|in|that|the|my|our|an?|any|i|me|said|has|have|mentioning|regarding)\\s+)+",
        Pattern::caseless);
    static const Pattern tail("(?:,?\\s+(?:(?:and )?(?:read|show|open|find) (?:it|that|them)\\b.*|mentioned|written "
                              "down|in|in it|is|are|to me|please|again|out|have a look"
                              "|out loud|aloud|thing|one))+$",
        Pattern::caseless);
    return trimmed(tail.replaceAll(lead.replaceAll(trimmed(content), ""), ""), "\"“”,");
}

bool hasWords(const std::string& text, std::size_t most)
{
    return !text.empty() && static_cast<std::size_t>(std::ranges::count(text, ' ')) < most;
}

bool isSubject(std::string_view words)
{
    static const Pattern empty(
        "^(?:it|this|that|there|here|he|she|they|we|i|you|what|who|everything|nothing)\\b", Pattern::caseless);
    return !words.empty() && !empty.find(words);
}

std::string firstWords(const std::string& text)
{
    std::size_t end = 0;
    for (int words = 0; words < longestTitleWords && end < text.size(); ++words) {
        end = text.find_first_of(" \n", end + 1);
        if (end == std::string::npos || text[end] == '\n')
            break;
    }
    static const Pattern loose(
        "(?:\\s+(?:the|a|an|of|by|for|to|in|on|with|and|or|at|from|is|are|my|our|that))+$", Pattern::caseless);
    return loose.replaceAll(text.substr(0, end), "");
}

/// "Do I have anything at 3?" asks for no note.
bool isTime(const std::string& topic)
{
    const RequestWords words(topic);
    return TimeVocabulary::mayBeTime(words, 0, words.size());
}

} // namespace

NoteIntent NoteIntent::keeping(std::string_view content)
{
    static const Pattern named("^(?:called|titled|named)\\s+[\"“]?(.+?)[\"”]?(?:\\s*:|,?\\s+(?:saying|that says|with "
                               "the text|which says))\\s+(.+)$",
        Pattern::caseless);
    static const Pattern titled("^(?:called|titled|named)\\s+[\"“]?(.+?)[\"”]?$", Pattern::caseless);
    NoteIntent intent{.kind = NoteIntent::Kind::keep};
    const std::string text = trimmed(content);
    if (const auto match = named.find(text)) {
        intent.title = RequestText::written(match->texts[0]);
        intent.text = RequestText::written(match->texts[1]);
    } else if (const auto bare = titled.find(text)) {
        intent.title = RequestText::written(bare->texts[0]);
    } else {
        intent.text = RequestText::written(withoutLead(text));
    }
    return intent;
}

std::optional<NoteIntent> NoteIntent::searching(const RequestReading& reading, Purpose purpose)
{
    constexpr std::size_t mostBareWords = 3;
    const bool isOfNotes = reading.has(NoteCues::note) || reading.has(NoteCues::notes)
        || reading.has(NoteCues::notebook) || reading.has(NoteCues::wrote) || reading.has(NoteCues::newest);
    NoteIntent intent{.kind = Kind::search, .text = topicIn(reading.content), .purpose = purpose};
    if (intent.text.empty() && reading.has(NoteCues::newest))
        intent.purpose = Purpose::readNewest;
    else if (intent.text.empty() && (reading.has(NoteCues::notes) || reading.has(NoteCues::notebook)))
        intent.purpose = Purpose::listNotes;
    else if (intent.text.empty())
        return isOfNotes || reading.has(CommonCues::pronoun) ? std::optional(NoteIntent{.kind = Kind::readFound})
                                                             : std::nullopt;
    else if (!isOfNotes
        && (reading.has(CommonCues::foreign) || isTime(intent.text) || !hasWords(intent.text, mostBareWords)))
        return std::nullopt;
    // "Find my note about ..." wants the note, "what did I write about ..." what it says.
    const bool isOfOneNote = reading.has(NoteCues::note) || reading.has(NoteCues::newest)
        || reading.has(CommonCues::find) || reading.has(CommonCues::show);
    if (!intent.text.empty() && !isOfOneNote && NotebookQuestion::readAny(reading.words))
        intent.question = reading.words;
    return intent;
}

std::optional<NoteIntent> NoteIntent::readChoice(std::string_view core)
{
    static const Pattern lead("^(?:(?:read|open|show)(?: me)?(?: out)? )?", Pattern::caseless);
    static const Pattern it(
        "^(?:(?:read|open|show|tell)(?: me)?(?: out)? (?:it|that|this|that one|this one|that note|this note"
        "|the note)(?: to me| out| aloud| out loud| back)*|that one|this one)$",
        Pattern::caseless);
    NoteIntent intent{.kind = Kind::readFound, .place = ListPlace::read(lead.replaceAll(core, ""))};
    return intent.place || it.find(core) ? std::optional(intent) : std::nullopt;
}

std::string NoteIntent::titleFor(std::string_view text)
{
    static const Pattern subject(
        "^(?:(?:the|my|our)\\s+)?(\\S+(?:\\s+\\S+){0,4}?)\\s+(?:is|are|was|were)\\s+\\S", Pattern::caseless);
    static const Pattern tail("[\\s,.;:!?-]+$");
    const std::string whole(text);
    const auto match = subject.find(whole);
    std::string title = match && isSubject(match->texts[0]) ? match->texts[0] : firstWords(whole);
    title = firstCharacters(tail.replaceAll(title, ""), longestTitleCharacters);
    return title.empty() ? "Note" : withUpperCaseFirst(title);
}

} // namespace quorvell
