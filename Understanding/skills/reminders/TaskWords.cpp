// SPDX-License-Identifier: MIT
#include "Understanding/skills/reminders/TaskWords.h"

#include "QuorvellCore/text/Characters.h"
#include "QuorvellCore/text/LowerCase.h"
#include "QuorvellCore/text/Pattern.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace quorvell {

namespace {

/// What reminders are most often of; a task that begins with anything else is rather a thing: "passport renewal".
bool isDeed(std::string_view firstWord)
{
    static constexpr auto verbs = std::to_array<std::string_view>({"add", "answer", "apply", "arrange", "ask", "attend",
        "back", "bake", "bathe", "be", "bin", "book", "breathe", "bring", "brush", "build", "buy", "call", "cancel",
        "cash", "celebrate", "change", "charge", "check", "claim", "clean", "clear", "close", "collect", "come",
        "complete", "confirm", "contact", "cook", "copy", "cut", "decorate", "defrost", "deliver", "deposit", "discuss",
        "do", "donate", "download", "draw", "drink", "drive", "drop", "dust", "eat", "email", "empty", "enroll",
        "enter", "exercise", "feed", "fetch", "file", "fill", "find", "finish", "fix", "floss", "fold", "follow", "get",
        "give", "go", "grab", "groom", "hand", "hang", "have", "help", "hoover", "hydrate", "install", "invest",
        "invite", "iron", "join", "keep", "kiss", "learn", "leave", "lend", "let", "listen", "load", "lock", "log",
        "look", "mail", "make", "measure", "meditate", "meet", "mend", "message", "move", "mow", "open", "order",
        "organise", "organize", "pack", "paint", "park", "pay", "perform", "phone", "pick", "plan", "plant", "play",
        "plug", "polish", "post", "practice", "practise", "pray", "prepare", "print", "purchase", "put", "read",
        "recycle", "refill", "register", "renew", "repair", "replace", "reply", "reset", "respond", "rest", "return",
        "review", "revise", "ring", "rinse", "run", "save", "scan", "schedule", "see", "sell", "send", "serve", "set",
        "shave", "ship", "shop", "shower", "sign", "sleep", "smile", "sort", "speak", "start", "stay", "stop",
        "stretch", "study", "submit", "subscribe", "sweep", "swim", "switch", "take", "talk", "teach", "tell", "test",
        "text", "thank", "throw", "tidy", "train", "transfer", "trim", "try", "turn", "unload", "unplug", "unsubscribe",
        "update", "upload", "use", "vacuum", "visit", "vote", "wait", "wake", "walk", "wash", "watch", "water", "wear",
        "weed", "wipe", "wish", "work", "wrap", "write"});
    return std::ranges::binary_search(verbs, firstWord);
}

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
    return thing.find(lowerTask) || !isDeed(lowerTask.substr(0, lowerTask.find(' '))) ? "about" : "to";
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

std::string TaskWords::told() const
{
    struct Person {
        Pattern words;
        const char* other;
    };
    static const Person persons[] = {
        {Pattern("\\bI['’]?m\\b|\\bI am\\b", Pattern::caseless), "you are"},
        {Pattern("\\bI was\\b", Pattern::caseless), "you were"},
        {Pattern("\\bI['’]ve\\b", Pattern::caseless), "you have"},
        {Pattern("\\bI['’]ll\\b", Pattern::caseless), "you will"},
        {Pattern("\\bI(?![\\w.'’-])", Pattern::caseless), "you"},
        {Pattern("\\bmyself\\b", Pattern::caseless), "yourself"},
        {Pattern("\\bmine\\b", Pattern::caseless), "yours"},
        {Pattern("\\bmy\\b", Pattern::caseless), "your"},
        {Pattern("\\bme\\b", Pattern::caseless), "you"},
    };
    std::string words = linked();
    for (const auto& [person, other] : persons)
        words = person.replaceAll(words, other);
    return words;
}

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
    const bool isOfOther = wroteItSo && hasUpperCase(firstWord) && link != "that"
        && text.substr(firstWord.size()).starts_with(toDo) && !userWords.starts_with(firstWord);
    if (isOfOther)
        return {firstWord + " is" + text.substr(firstWord.size()), "that"};
    return {wroteItSo || isCapitals || firstWord == "I" ? text : withLowerCaseFirst(text), link};
}

} // namespace quorvell
