// SPDX-License-Identifier: MIT
#include "LocalModel/ModelSentences.h"

#include "QuorvellCore/text/Characters.h"
#include "QuorvellCore/text/OneLine.h"
#include "QuorvellCore/text/Pattern.h"
#include "QuorvellCore/text/PrintableText.h"

#include <algorithm>
#include <utility>

namespace quorvell {

namespace {

constexpr std::size_t longestSentence = 600; ///< Bytes without an end; then it is cut at a space.

/// Where the first sentence ends, or npos. A sign counts as its end once white space stands behind it; "5 p.m." and
/// "Mr. Jones" are cut at most at a place where a pause does no harm.
std::size_t endOfSentence(std::string_view text)
{
    for (std::size_t at = 0; at + 1 < text.size(); ++at) {
        const bool isSign = text[at] == '.' || text[at] == '!' || text[at] == '?';
        const bool isAbbreviation = text[at] == '.' && at >= 2 && (text[at - 2] == '.' || text[at - 2] == ' ');
        const bool isNumber = text[at] == '.' && at > 0 && text[at - 1] >= '0' && text[at - 1] <= '9' && at < 3;
        if (text[at] == '\n'
            || (isSign && !isAbbreviation && !isNumber && (text[at + 1] == ' ' || text[at + 1] == '\n')))
            return at + 1;
    }
    if (text.size() < longestSentence)
        return std::string_view::npos;
    const std::size_t space = text.rfind(' ', longestSentence);
    return space == std::string_view::npos || space == 0 ? longestSentence : space;
}

bool isForPrograms(std::string_view sentence)
{
    static const Pattern form(
        "^(?:[\\{\\[]|```|<\\|?[a-z_]+|\\[TOOL)|\"(?:name|arguments|function)\"\\s*:", Pattern::Case::insensitive);
    return form.find(sentence).has_value();
}

} // namespace

bool ModelSentences::claimsAct(std::string_view sentence)
{
    constexpr std::string_view acts =
        "(?:set|added|created|made|scheduled|booked|saved|stored|noted|kept|written|wrote|put|moved|changed|updated|"
        "renamed|"
        "deleted|removed|cancell?ed|cleared|ticked|checked|marked|turned|switched|sent|called|ordered|paused|resumed|"
        "stopped|started|snoozed|reminded|remembered|recorded|undone|undid|completed|finished|taken|done)";
    static const Pattern byItself(
        "\\b(?:I|we)(?:['’]ve| have| had)?(?: just| now| already| also| successfully)* " + std::string(acts) + "\\b",
        Pattern::Case::insensitive);
    static const Pattern passive("\\b(?:has|have) (?:now |just |already |also |successfully )*been "
                                 "(?:now |successfully )?"
            + std::string(acts) + "\\b|\\b(?:is|are) (?:now|successfully|all) " + std::string(acts)
            + "\\b|\\bsuccessfully " + std::string(acts) + "\\b",
        Pattern::Case::insensitive);
    static const Pattern alone(
        "^(?:all |all is |everything is |everything['’]s |it is |that is |it['’]s |that['’]s |you['’]re |okay,? |ok,? |"
        "sure,? |alright,? )*"
        "(?:done|set|added|saved|deleted|removed|"
        "cancell?ed|completed)\\b|^(?:your )?(?:reminder|alarm|timer|note|event|meeting|appointment|list|item)s? "
        "(?:was |were |is |are )?"
            + std::string(acts) + "\\b",
        Pattern::Case::insensitive);
    // What will be done by no tool is as good as claimed.
    static const Pattern promise("\\b(?:I|we)(?:['’]ll| will| am going to|['’]m going to)(?: now| also| just)* "
                                 "(?:remind|wake|set|add|create|schedule|book|save|store|note|move|update|delete|"
                                 "remove|cancel|ring|write (?:it|that|this) down|keep (?:it|that|this) in mind)\\b"
                                 "|\\byou(?:['’]ll| will) be reminded\\b|\\bconsider it done\\b",
        Pattern::Case::insensitive);
    static const Pattern onTheirs("\\b(?:was|were) (?:now |just |also |successfully )*" + std::string(acts)
            + " (?:to|on|in|into|from|off) your\\b|\\byour (?:[a-z]+ ){0,3}now (?:has|holds|includes|contains)\\b",
        Pattern::Case::insensitive);
    if (sentence.ends_with('?'))
        return false; // "Should I set one?"
    for (const Pattern* claim : {&byItself, &passive, &alone, &promise, &onTheirs})
        if (claim->find(sentence))
            return true;
    return false;
}

std::vector<std::string> ModelSentences::add(std::string_view text)
{
    std::vector<std::string> kept;
    m_rest += text;
    for (std::size_t end = endOfSentence(m_rest); end != std::string::npos; end = endOfSentence(m_rest)) {
        std::string sentence = m_rest.substr(0, end);
        m_rest.erase(0, end);
        keep(std::move(sentence), kept);
    }
    return kept;
}

std::vector<std::string> ModelSentences::end()
{
    std::vector<std::string> kept = add({});
    keep(std::exchange(m_rest, {}), kept);
    return kept;
}

void ModelSentences::keep(std::string sentence, std::vector<std::string>& kept)
{
    sentence = onOneLine(printableText(repairUtf8(sentence)));
    if (sentence.empty() || m_isForPrograms)
        return;
    // What follows the beginning of a form belongs to it.
    m_isForPrograms = isForPrograms(sentence);
    if (m_isForPrograms)
        return;
    if (claimsAct(sentence))
        m_hasClaimed = true;
    else
        kept.push_back(std::move(sentence));
}

} // namespace quorvell
