// SPDX-License-Identifier: MIT
#include "Understanding/skills/reminders/TaskWords.h"

#include "QuorvellCore/text/Characters.h"
#include "QuorvellCore/text/LowerCase.h"
#include "QuorvellCore/text/Pattern.h"

namespace quorvell {

namespace {

/// How the user put the task, read from what stands before its first word.
std::string linkFor(const std::string& lowerTask, const std::string& lowerWords)
{
    static const Pattern thing(
        "^(?:the|my|our|your|his|her|their|a|an|this|that|these|those|all|some|\\d+)\\b|^\\S+'s\\b"
        "|^(?!(?:br|r|s|p|str|sl|spr|fl|st)ing\\b)[a-z]+ing\\b"); // "Paying rent", but not "bring" and "ring".
    static const Pattern clause("^(?:i|we|(?:i|we|there|it)['’](?:m|ve|re|s)|there (?:is|are)) ");
    if (lowerTask.starts_with("not to "))
        return "";
    if (clause.find(lowerTask))
        return "that";
    const std::size_t place = lowerWords.find(lowerTask.substr(0, lowerTask.find(' ')));
    const std::string before = place == std::string::npos ? "" : " " + trimmed(lowerWords.substr(0, place));
    if (before.ends_with(" to"))
        return "to";
    if (before.ends_with(" that"))
        return "that";
    if (before.ends_with(" about") || before.ends_with(" for") || before.ends_with(" of"))
        return "about";
    return thing.find(lowerTask) ? "about" : "to";
}

bool hasUpperCase(const std::string& text)
{
    return lowerCased(text) != text;
}

std::string withLowerCaseFirst(const std::string& text)
{
    const std::string first = firstCharacters(text, 1);
    return lowerCased(first) + text.substr(first.size());
}

} // namespace

TaskWords TaskWords::of(std::string_view task, std::string_view userWords)
{
    const std::string text = trimmed(task, ".;:,");
    if (text.empty())
        return {};
    const std::string firstWord = text.substr(0, text.find(' '));
    const bool wroteItSo = userWords.find(firstWord) != std::string_view::npos;
    const bool isCapitals = hasUpperCase(firstWord.substr(firstCharacters(firstWord, 1).size()));
    const std::string link = linkFor(lowerCased(text), lowerCased(userWords));
    // "Remind Bob to call mum": only the user can be reminded.
    constexpr std::string_view toDo = " to ";
    const bool isOfOther = wroteItSo && hasUpperCase(firstWord) && link == "to"
        && text.substr(firstWord.size()).starts_with(toDo) && !userWords.starts_with(firstWord);
    if (isOfOther)
        return {firstWord + " is" + text.substr(firstWord.size()), "that"};
    return {wroteItSo || isCapitals || firstWord == "I" ? text : withLowerCaseFirst(text), link};
}

} // namespace quorvell
