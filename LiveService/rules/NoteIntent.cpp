#include "LiveService/rules/NoteIntent.h"

#include "LiveService/rules/RequestText.h"
#include "QuorvellCore/text/Characters.h"
#include "QuorvellCore/text/Pattern.h"

#include <utility>

namespace quorvell {

namespace {

using Purpose = RequestMemory::SearchPurpose;

constexpr int longestTitleWords = 6;
constexpr std::size_t longestTitleCharacters = 60;
constexpr auto caseless = Pattern::Case::insensitive;

/// Its last group that took part holds the topic; without one, everything is looked through.
struct SearchRow {
    Pattern pattern;
    Purpose purpose;
};

/// Where two rows fit, the first one wins.
const auto& searchRows()
{
    static const SearchRow rows[] = {
        {Pattern("^(?:read|open)(?: me)?(?: out)?(?: my| the)? (?:last|latest|newest|most recent) note$", caseless),
            Purpose::readNewest},
        {Pattern("^(?:(?:show|list|read|open|find)(?: me)?(?: out)?(?: all)?(?: of)?(?: my| the) notes?"
                 "|what are my notes|what notes do i have|what (?:is|do i have) in my (?:notes|notebook)"
                 "|what's in my (?:notes|notebook)|do i have (?:any )?notes)$",
             caseless),
            Purpose::listNotes},
        {Pattern(
             "^(?:read|open)(?: me)?(?: out| back)?(?: my| the| that| a)? notes?"
             " (?:about|on|for|of|with|called|named|titled) (.+?)(?: and read (?:it|that)(?: out| aloud| to me)*)?$",
             caseless),
            Purpose::read},
        {Pattern(
             "^what (?:do|does) (?:my|the) notes?(?: (?:about|on|for) (.+?) say| say (?:about|on) (.+))$", caseless),
            Purpose::read},
        {Pattern("^what (?:did|have) i (?:write|written|note|noted|say|said|save|saved|keep|kept)(?: down)?"
                 " (?:about|on|for) (.+)$",
             caseless),
            Purpose::read},
        {Pattern("^(?:find|show|look up|look for|search for)(?: me)? what i (?:wrote|noted|said|saved|kept)(?: down)?"
                 " (?:about|on|for) (.+)$",
             caseless),
            Purpose::tell},
        {Pattern("^(?:find|show|get|search(?: for)?|look for|look up|bring up|pull up|list|where is|where's|where are)"
                 "(?: me)?(?: all)?(?: my| the| any| a| some)? (?:notes?|anything)"
                 " (?:about|on|for|of|with|called|named|titled|mentioning|that mentions?|which mentions?) (.+)$",
             caseless),
            Purpose::tell},
        {Pattern("^(?:search|look(?: in| through)?|check|go through|find in)(?: in| through)? (?:my|the)"
                 " (?:notes?|notebook) (?:for|about|and find) (.+)$",
             caseless),
            Purpose::tell},
        {Pattern("^(?:find|search(?: for)?|look up|look for) (.+?) in (?:my|the) (?:notes?|notebook)$", caseless),
            Purpose::tell},
        {Pattern("^(?:(?:do i have|have i got|are there|is there)(?: a| any| some)? notes?|(?:do i have|have i got) "
                 "anything)"
                 " (?:about|on|for|of) (.+)$",
             caseless),
            Purpose::tell},
        {Pattern("^what (?:do i have|have i got)(?: (?:written|noted)(?: down)?)? (?:about|on) (.+)$", caseless),
            Purpose::tell},
        {Pattern("^(?:where|when) did i (?:write|note)(?: down)? (?:about )?(.+)$", caseless), Purpose::tell},
        {Pattern("^(?:read|open|what does)(?: me)?(?: out)? (?:the|my|our) "
                 "(?!(?:first|second|third|fourth|fifth|last|same|1st|2nd|3rd)\\b)(.+) note(?: say)?(?: out loud| to "
                 "me| out| "
                 "aloud)*$",
             caseless),
            Purpose::read},
        {Pattern("^(?:find|show|get|read|open|bring up|pull up|search for|look for|look up|where is|where's)(?: me)?"
                 "(?: all)? (?:the|my|our) "
                 "(?!(?:first|second|third|fourth|fifth|last|same|1st|2nd|3rd)\\b)(.+) notes?$",
             caseless),
            Purpose::tell},
        {Pattern("^(?:find|search for) (?!me\\b|out\\b|a \\b)((?:\\S+)(?: \\S+){0,2})$", caseless), Purpose::tell},
        {Pattern("^(?:which|what) notes? (?:mentions?|talks? about|are about|is about) (.+)$", caseless),
            Purpose::tell},
    };
    return rows;
}

/// Whatever follows the match is the note.
const auto& keepPatterns()
{
    static const Pattern patterns[] = {
        Pattern("^(?:make|take|keep|add|save|write|create|start|put)(?: down)?(?: me)?(?: a| another| this| the)?"
                "(?: quick| new| little)? (?:note|memo)(?: down)?\\b"
                "(?:[:,]?\\s+(?:to self\\b[:,]?|saying that|saying|that says|that|of|about|to(?= ))|\\s*[:,])?",
            caseless),
        Pattern("^(?:a )?new note\\b(?:\\s*[:,]|\\s+that\\b)?", caseless),
        Pattern("^note(?: down)?(?: to self| for later| this)?(?:\\s*[:,]|\\s+that\\b|(?=\\s|$))", caseless),
        Pattern("^(?:write|jot|put)(?: (?:this|that|it))? down(?: for me)?(?:\\s*[:,]|\\s+(?:that|this)\\b[:,]?)?",
            caseless),
        Pattern(
            "^(?:keep|save|store|note|write) (?:this|that)(?: for (?:later|me))?(?: in my (?:notes|notebook))?\\s*[:,]",
            caseless),
        Pattern("^remember (?:that\\b|this\\b[:,]?|(?=my |our |the |i |we ))", caseless),
        Pattern("^(?:add|put|write|save)(?: (?:this|it))? (?:in|into|to) (?:my|the) (?:notes|notebook)\\b"
                "(?:\\s*[:,]|\\s+that\\b)?",
            caseless),
        Pattern("^for (?:the record|future reference)\\b[:,]?", caseless),
    };
    return patterns;
}

NoteIntent keeping(std::string_view words)
{
    static const Pattern named("^(?:called|titled|named)\\s+[\"“]?(.+?)[\"”]?(?:\\s*:|,?\\s+(?:saying|that says|with "
                               "the text|which says))\\s+(.+)$",
        caseless);
    NoteIntent intent{.kind = NoteIntent::Kind::keep};
    const std::string text = trimmed(words);
    if (const auto match = named.find(text)) {
        intent.title = RequestText::written(match->texts[0]);
        intent.text = RequestText::written(match->texts[1]);
    } else {
        intent.text = RequestText::written(text);
    }
    return intent;
}

std::optional<NoteIntent> readKeep(const std::string& core)
{
    static const Pattern around(
        "^(?:add|put|write|save|note)\\s+(.+?)\\s+(?:in|into|to) (?:my|the) (?:notes|notebook)$", caseless);
    for (const Pattern& pattern : keepPatterns()) {
        const auto match = pattern.find(core);
        if (match && match->range.start == 0)
            return keeping(std::string_view(core).substr(match->range.end));
    }
    if (const auto match = around.find(core))
        return keeping(match->texts[0]);
    return std::nullopt;
}

std::optional<NoteIntent> readSearch(const std::string& core)
{
    static const Pattern article("^(?:the|my|our|a|an) (?=\\S)", caseless);
    for (const SearchRow& row : searchRows()) {
        const auto match = row.pattern.find(core);
        if (!match)
            continue;
        NoteIntent intent{.kind = NoteIntent::Kind::search, .purpose = row.purpose};
        for (const std::string& group : match->texts) {
            if (!group.empty())
                intent.text = article.replaceAll(trimmed(group, "\"“”"), "");
        }
        return intent;
    }
    return std::nullopt;
}

bool isSubject(std::string_view words)
{
    static const Pattern empty(
        "^(?:it|this|that|there|here|he|she|they|we|i|you|what|who|everything|nothing)\\b", caseless);
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
    return text.substr(0, end);
}

} // namespace

std::optional<NoteIntent> NoteIntent::read(std::string_view words)
{
    const std::string core(words);
    if (auto search = readSearch(core))
        return search;
    if (auto keep = readKeep(core))
        return keep;
    return readChoice(core);
}

std::optional<NoteIntent> NoteIntent::readChoice(std::string_view core)
{
    static const Pattern ordinal(
        "^(?:(?:read|open|show)(?: me)?(?: out)? )?(?:the )?(?:(first|1st)|(second|2nd)|(third|3rd)"
        "|(fourth|4th)|(fifth|5th)|(last))(?: one| note)?(?: please)?$",
        caseless);
    static const Pattern number(
        "^(?:(?:read|open|show)(?: me)?(?: out)? )?(?:note |number |note number )([1-9])$", caseless);
    static const Pattern it(
        "^(?:read|open|show|tell)(?: me)?(?: out)? (?:it|that|this|that one|this one|that note|this note"
        "|the note)(?: to me| out| aloud| out loud| back)*$",
        caseless);
    NoteIntent intent{.kind = Kind::readFound};
    if (const auto match = number.find(core)) {
        intent.index = match->texts[0].front() - '1';
        return intent;
    }
    if (it.find(core)) {
        intent.index = onlyIndex;
        return intent;
    }
    const auto match = ordinal.find(core);
    if (!match)
        return std::nullopt;
    while (match->texts[static_cast<std::size_t>(intent.index)].empty())
        ++intent.index;
    intent.index = intent.index == 5 ? lastIndex : intent.index;
    return intent;
}

std::string NoteIntent::titleFor(std::string_view text)
{
    static const Pattern subject(
        "^(?:(?:the|my|our)\\s+)?(\\S+(?:\\s+\\S+){0,4}?)\\s+(?:is|are|was|were)\\s+\\S", caseless);
    static const Pattern tail("[\\s,.;:!?-]+$");
    const std::string whole(text);
    const auto match = subject.find(whole);
    std::string title = match && isSubject(match->texts[0]) ? match->texts[0] : firstWords(whole);
    title = firstCharacters(tail.replaceAll(title, ""), longestTitleCharacters);
    return title.empty() ? "Note" : withUpperCaseFirst(title);
}

} // namespace quorvell
