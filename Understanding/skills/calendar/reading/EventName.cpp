// SPDX-License-Identifier: MIT
#include "Understanding/skills/calendar/reading/EventName.h"

#include "QuorvellCore/text/TextMatch.h"
#include "Understanding/words/WordDistance.h"

#include <algorithm>
#include <array>
#include <iterator>

namespace quorvell {

namespace {

constexpr auto nouns =
    std::to_array<std::string_view>({"meeting", "appointment", "conference", "call", "session", "visit", "appt",
        "class", "event", "entry", "entrie", "thing", "plan", "item", "commitment", "engagement", "booking", "activity",
        "activitie", "occasion", "gathering", "function", "happening", "block", "slot", "reservation"});
constexpr auto anyOfThem = std::to_array<std::string_view>({"meeting", "appointment", "appt", "conference"});
constexpr std::size_t nounsThatSayLittle = 8; ///< Those before it say at least what it is.

constexpr auto idle = std::to_array<std::string_view>({"a", "about", "add", "added", "again", "all", "already", "am",
    "an", "and", "any", "anything", "are", "as", "at", "attend", "attending", "be", "been", "begin", "book", "booked",
    "by", "calendar", "called", "can", "cancelled", "check", "coming", "correct", "could", "currently", "date", "day",
    "detail", "details", "diary", "do", "does", "doing", "due", "else", "end", "entered", "every", "everything", "find",
    "finish", "for", "forthcoming", "from", "future", "get", "give", "go", "going", "got", "had", "happen", "happening",
    "happens", "has", "have", "having", "held", "here", "how", "i", "if", "important", "in", "information",
    "interesting", "invited", "is", "it", "item", "its", "just", "know", "last", "left", "list", "listed", "long",
    "look", "looking", "made", "many", "marked", "me", "mine", "more", "most", "much", "my", "need", "needed", "new",
    "next", "no", "noted", "now", "of", "off", "on", "one", "ones", "or", "other", "our", "out", "over", "place",
    "planned", "please", "put", "recorded", "remaining", "rescheduled", "rest", "right", "save", "saved", "schedule",
    "scheduled", "see", "set", "should", "show", "some", "something", "soon", "special", "start", "starting", "still",
    "stuff", "supposed", "take", "taking", "tell", "that", "the", "their", "them", "then", "there", "these", "they",
    "this", "those", "time", "times", "to", "true", "until", "up", "upcoming", "us", "was", "we", "were", "what",
    "when", "where", "which", "who", "will", "with", "would", "you", "your", "agenda", "planner", "timetable", "going",
    "being", "also", "well", "early", "latest", "following", "later", "around", "entire", "whole", "current", "single",
    "each", "whatever", "let", "want", "like", "wondering", "anyone", "someone", "pull", "bring", "busy", "either",
    "actually", "really", "ok", "okay", "must", "may", "might", "did", "done", "cancel", "delete", "remove", "erase",
    "clear", "reminder", "away", "completely", "pls", "open", "view", "display", "print", "read", "say", "speak",
    "hear", "announce", "present", "fetch", "describe", "summarize", "summarise", "review", "run", "recap", "brief",
    "update", "number", "through", "down", "today", "todays", "soonest", "meet", "seeing", "repeating", "recurring",
    "regular", "daily", "anymore", "usual", "usually", "evaluate", "assess", "analyse", "analyze", "inspect", "explain",
    "named", "titled", "entitled", "labelled", "labeled", "anyone's", "anybody's", "someone's", "only", "both",
    "occurrence", "occurrences", "instance", "instances", "everyone", "whose", "search", "including", "involving",
    "regarding", "concerning", "arranged", "starts", "begins", "ends", "finishes", "past"});

std::string singular(std::string_view word)
{
    return std::string(word.ends_with('s') && !word.ends_with("ss") ? word.substr(0, word.size() - 1) : word);
}

std::vector<std::string> normalWords(std::string_view text)
{
    const std::string normal = TextMatch::normalized(text);
    std::vector<std::string> words;
    for (std::size_t start = 0; start < normal.size();) {
        const std::size_t end = std::min(normal.find(' ', start), normal.size());
        words.push_back(normal.substr(start, end - start));
        start = end + 1;
    }
    return words;
}

/// Those that name something.
std::vector<std::string> contentOf(std::string_view name)
{
    auto words = normalWords(name);
    std::erase_if(words, [](const std::string& word) { return EventName::isIdle(word); });
    return words;
}

/// "Doctors" and "doctor's" are about the doctor.
bool holds(const std::string& title, std::string word)
{
    constexpr std::size_t shortestPlural = 4;
    if (title.find(" " + word) != std::string::npos)
        return true;
    if (word.size() < shortestPlural || !word.ends_with('s'))
        return false;
    word.erase(word.size() - (word.ends_with("'s") ? 2 : 1));
    return title.find(" " + word) != std::string::npos
        || (word.ends_with('e') && title.find(" " + word.substr(0, word.size() - 1)) != std::string::npos);
}

std::vector<FoundThing> holding(const std::vector<FoundThing>& events, const std::vector<std::string>& words)
{
    std::vector<FoundThing> found;
    if (words.empty())
        return found;
    std::ranges::copy_if(events, std::back_inserter(found), [&](const FoundThing& event) {
        const std::string title = " " + TextMatch::normalized(event.title);
        return std::ranges::all_of(words, [&](const std::string& word) { return holds(title, word); });
    });
    return found;
}

/// "Lunch with Anna", "denist": each word stands there, or one that is typed nearly so.
std::vector<FoundThing> holdingAlike(const std::vector<FoundThing>& events, const std::vector<std::string>& words)
{
    constexpr std::size_t shortest = 3;
    std::vector<FoundThing> found;
    if (words.empty())
        return found;
    std::ranges::copy_if(events, std::back_inserter(found), [&](const FoundThing& event) {
        const auto there = normalWords(event.title);
        return std::ranges::all_of(words, [&](const std::string& word) {
            return std::ranges::any_of(there, [&](const std::string& other) {
                return other == word
                    || (std::min(word.size(), other.size()) >= shortest && word.size() + other.size() > 2 * shortest
                        && WordDistance::between(word, other) <= 1);
            });
        });
    });
    return found;
}

std::vector<FoundThing> entitled(const std::vector<FoundThing>& events, std::string_view name)
{
    const auto withoutArticle = [](std::string_view text) {
        auto words = normalWords(text);
        while (words.size() > 1 && (words.front() == "the" || words.front() == "my" || words.front() == "our"))
            words.erase(words.begin());
        return words;
    };
    std::vector<FoundThing> found;
    const auto wanted = withoutArticle(name);
    std::ranges::copy_if(events, std::back_inserter(found),
        [&](const FoundThing& event) { return withoutArticle(event.title) == wanted; });
    return found;
}

} // namespace

bool EventName::isNoun(std::string_view word)
{
    return std::ranges::find(nouns, singular(word)) != nouns.end();
}

bool EventName::isAnyNoun(std::string_view word)
{
    return std::find(nouns.begin() + nounsThatSayLittle, nouns.end(), singular(word)) != nouns.end();
}

bool EventName::isIdle(std::string_view word)
{
    return std::ranges::find(idle, word) != idle.end();
}

std::string EventName::words(std::string_view name)
{
    auto words = contentOf(name);
    if (!std::ranges::all_of(words, isNoun))
        std::erase_if(words, [](const std::string& word) { return isNoun(word); });
    std::string joined;
    for (const std::string& word : words)
        joined += (joined.empty() ? "" : " ") + word;
    return joined;
}

std::vector<FoundThing> EventName::fitting(const std::vector<FoundThing>& events, std::string_view name)
{
    auto found = entitled(events, name);
    if (found.empty())
        found = holding(events, contentOf(name));
    return found.empty() ? holding(events, normalWords(words(name))) : found;
}

std::vector<FoundThing> EventName::alike(const std::vector<FoundThing>& events, std::string_view name)
{
    return holdingAlike(events, normalWords(words(name)));
}

std::vector<FoundThing> EventName::holdingAll(const std::vector<FoundThing>& events, std::string_view name)
{
    return holding(events, contentOf(name));
}

bool EventName::isLoosePlural(std::string_view noun)
{
    return noun.ends_with('s') && std::ranges::find(anyOfThem, singular(noun)) != anyOfThem.end();
}

std::vector<FoundThing> EventName::called(const std::vector<FoundThing>& events, std::string_view noun)
{
    if (noun.empty() || isAnyNoun(noun))
        return events;
    // People call anything their meeting; a call is a call.
    const bool isLoose = std::ranges::find(anyOfThem, singular(noun)) != anyOfThem.end();
    auto found = holding(events, {singular(noun)});
    return found.empty() && isLoose ? events : found;
}

} // namespace quorvell
