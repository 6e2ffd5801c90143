// SPDX-License-Identifier: MIT
#include "Understanding/words/CueSpelling.h"

#include "QuorvellCore/text/LowerCase.h"
#include "Understanding/words/WordDistance.h"

#include <algorithm>
#include <array>
#include <optional>

namespace quorvell {

namespace {

constexpr std::size_t longestText = 400; ///< Bytes; in a longer one nobody looks for slips.
constexpr std::size_t shortestWord = 5; ///< Bytes of a slip; shorter words are too near to others.
constexpr std::size_t longWord = 8; ///< Bytes of a word from which on two slips are believed.

constexpr auto commands = std::to_array<std::string_view>(
    {"remind", "reminder", "reminders", "calendar", "schedule", "scheduled", "schedules", "reschedule", "alarm",
        "alarms", "timer", "timers", "appointment", "appointments", "meeting", "meetings", "event", "events", "delete",
        "remove", "cancel", "create", "change", "update", "notebook", "shopping", "grocery", "groceries", "agenda",
        "notification", "snooze", "birthday", "please", "upcoming", "postpone", "remember", "checklist"});
/// Nouns that a thing is put into or looked for in.
constexpr auto containers =
    std::to_array<std::string_view>({"calendar", "schedule", "agenda", "notebook", "checklist", "shopping", "grocery"});
struct Slip {
    std::string_view typed;
    std::string_view right;
};

/// Short words that fingers turn about, and what people write as they say it. None is a word of its own.
constexpr auto slips = std::to_array<Slip>(
    {{"waht", "what"}, {"wht", "what"}, {"whta", "what"}, {"wat", "what"}, {"wats", "what's"}, {"wahts", "what's"},
        {"whts", "what's"}, {"whne", "when"}, {"wehn", "when"}, {"whens", "when's"}, {"wheres", "where's"},
        {"hwo", "how"}, {"shwo", "show"}, {"sohw", "show"}, {"shw", "show"}, {"tunr", "turn"}, {"trun", "turn"},
        {"teh", "the"}, {"hte", "the"}, {"tiem", "time"}, {"hav", "have"}, {"hve", "have"}, {"ahve", "have"},
        {"sett", "set"}, {"wak", "wake"}, {"waek", "wake"}, {"upp", "up"}, {"addd", "add"}, {"aad", "add"},
        {"adda", "add"}, {"noet", "note"}, {"ntoe", "note"}, {"notse", "notes"}, {"ntoes", "notes"}, {"tkae", "take"},
        {"mkae", "make"}, {"amke", "make"}, {"wirte", "write"}, {"wrtie", "write"}, {"lsit", "list"}, {"lisst", "list"},
        {"liste", "list"}, {"lsits", "lists"}, {"mvoe", "move"}, {"ptu", "put"}, {"fidn", "find"}, {"raed", "read"},
        {"opne", "open"}, {"clera", "clear"}, {"alam", "alarm"}, {"alrm", "alarm"}, {"appt", "appointment"},
        {"appts", "appointments"}, {"plz", "please"}, {"plss", "please"}, {"gimme", "give me"}, {"lemme", "let me"},
        {"wanna", "want to"}, {"cna", "can"}, {"cuold", "could"}, {"yuo", "you"}, {"tehre", "there"}, {"nwe", "new"},
        {"gonna", "going to"}, {"gotta", "have to"}, {"hafta", "have to"}, {"hows", "how's"}, {"whos", "who's"},
        {"theres", "there's"}, {"apptmt", "appointment"}, {"aptmt", "appointment"}, {"appmt", "appointment"},
        {"apt", "appointment"}, {"mtg", "meeting"}, {"mtgs", "meetings"}, {"bday", "birthday"}, {"bdays", "birthdays"},
        {"cal", "calendar"}, {"sched", "schedule"}, {"delet", "delete"}, {"dlete", "delete"}, {"rmove", "remove"},
        {"cancl", "cancel"}, {"creat", "create"}, {"crete", "create"}, {"lits", "list"}, {"tak", "take"},
        {"tel", "tell"}, {"giv", "give"}, {"mak", "make"}, {"snoze", "snooze"}, {"timr", "timer"}, {"alrams", "alarms"},
        {"calandar", "calendar"}, {"clander", "calendar"}, {"calander", "calendar"}, {"calnder", "calendar"}});
/// Words of their own, as near to a command as a slip.
constexpr auto others = std::to_array<std::string_view>(
    {"rewind", "remand", "remainder", "remainders", "reminded", "remote", "removed", "remover", "reprove", "cancer",
        "cancels", "chancel", "crate", "crates", "crated", "crease", "crater", "cremate", "created", "creates",
        "creator", "deleted", "deletes", "deplete", "melting", "meting", "greeting", "heating", "seating", "beating",
        "timber", "tiger", "times", "timed", "tamer", "charge", "chance", "changed", "changes", "changer", "charges",
        "pleased", "pleases", "updated", "updates", "upset", "stopping", "shipping", "chopping", "grocer", "grocers",
        "alarmed", "snoozed", "evens", "evert", "advent", "invent", "birthdays", "cancelled", "canceled", "reminding",
        "scheduler", "calendars", "remembers", "remembered", "notebooks", "checklists", "time", "meets", "meaning",
        "slipping", "swapping", "skipping", "snapping", "stepping", "shaping", "sopping", "scheming"});
/// Behind these the request may still begin.
constexpr auto light = std::to_array<std::string_view>({"please", "pls", "can", "could", "would", "will", "you", "u",
    "i", "we", "want", "need", "like", "to", "my", "the", "a", "an", "all", "any", "new", "next", "for", "on", "in",
    "into", "from", "of", "off", "me", "us", "show", "tell", "what", "whats", "what's", "is", "are", "do", "have",
    "when", "add", "put", "set", "up", "make", "list", "read", "open", "check", "move", "find", "get", "give", "there",
    "today", "todays", "today's", "tomorrow", "tomorrows", "tomorrow's", "this", "that", "hey", "hi", "hello", "ok",
    "okay", "quorvell", "also", "and", "it", "clear", "erase", "stop", "turn", "name", "pull", "let", "know", "how",
    "many", "does", "did", "was", "were", "has", "am", "our", "another", "first", "last", "second", "no", "not",
    "don't", "dont", "week", "month", "weeks", "it's", "i'm", "id", "i'd", "look", "at", "view", "display", "see",
    "your", "start", "begin", "book", "plan", "wake", "take", "lists", "note", "notes", "where", "how's", "where's",
    "when's", "time", "clear", "give me", "let me", "want to", "there's", "who's", "who", "which", "going to", "got to",
    "have to", "don't", "need"});
/// What begins a request that only looks for what is there: its nouns may be put right wherever they stand.
constexpr auto lookers = std::to_array<std::string_view>({"what", "what's", "whats", "when", "when's", "where",
    "where's", "who", "which", "how", "is", "are", "do", "did", "cancel", "delete", "remove", "move", "reschedule",
    "postpone", "clear", "erase", "drop", "skip", "show", "tell", "find", "check", "turn", "stop", "push", "snooze"});
constexpr auto things = std::to_array<std::string_view>({"appointment", "appointments", "meeting", "meetings",
    "reminder", "reminders", "alarm", "alarms", "timer", "event", "events", "birthday", "calendar", "schedule"});
/// What follows is the user's to say.
constexpr auto keepers = std::to_array<std::string_view>(
    {"remind", "reminder", "note", "write", "jot", "remember", "called", "named", "saying"});

bool isAmong(const auto& table, std::string_view word)
{
    return std::ranges::find(table, word) != table.end();
}

/// The only command that it can be a slip of.
std::optional<std::string_view> meant(std::string_view word)
{
    const auto slip = std::ranges::find(slips, word, &Slip::typed);
    if (slip != slips.end())
        return slip->right;
    if (word.size() < shortestWord || isAmong(commands, word) || isAmong(others, word) || isAmong(light, word))
        return std::nullopt;
    std::optional<std::string_view> found;
    for (const std::string_view command : commands) {
        const std::size_t most = command.size() >= longWord ? 2 : 1;
        if (command.front() != word.front() || WordDistance::between(word, command) > most)
            continue;
        const bool isNearer = !found || WordDistance::between(word, command) < WordDistance::between(word, *found);
        found = isNearer ? command : *found;
    }
    return found;
}

struct Typed {
    std::size_t start;
    std::size_t end;
    std::string word; ///< In lower case, without signs around it.
};

bool isLetter(char letter)
{
    return (letter >= 'a' && letter <= 'z') || (letter >= 'A' && letter <= 'Z') || letter == '\'' || letter < 0;
}

std::optional<Typed> nextWord(std::string_view text, std::size_t from)
{
    std::size_t start = from;
    while (start < text.size() && !isLetter(text[start]))
        ++start;
    std::size_t end = start;
    while (end < text.size() && isLetter(text[end]))
        ++end;
    return start < end ? std::optional(Typed{start, end, lowerCased(text.substr(start, end - start))}) : std::nullopt;
}

/// Which words may be put right depends on those before them.
class Reader {
public:
    /// What is typed instead; nothing where it stays.
    std::optional<std::string_view> take(const Typed& typed, std::string_view text)
    {
        const bool isName = typed.start > 0 && text[typed.start] >= 'A' && text[typed.start] <= 'Z'
            && text.substr(typed.end).find_first_of("abcdefghijklmnopqrstuvwxyz") != std::string_view::npos;
        const std::string_view rest = text.substr(typed.end);
        const auto right = isName ? std::nullopt : isOff(typed.word, rest) ? "off" : meantHere(typed, rest);
        const bool isListName = m_isLed && rest.starts_with(" list");
        const bool mayBe = right
            && (m_isHead || ((m_isInside || isListName) && isAmong(containers, *right))
                || (m_isLooking && isAmong(things, *right)));
        const std::string_view word = mayBe ? *right : std::string_view(typed.word);
        m_isLooking = m_isLooking || (m_isHead && isAmong(lookers, word));
        m_isInside = (m_isLed && isAmong(owners, word)) || (m_isInside && isAmong(kinds, word));
        m_isLed = isAmong(links, word);
        m_isHead = m_isHead && (isAmong(light, word) || isAmong(commands, word));
        m_isKept = m_isKept || isAmong(keepers, word);
        m_last = word;
        return mayBe ? right : std::nullopt;
    }
    /// Nothing behind it is put right any more.
    bool isKept() const { return m_isKept; }

private:
    /// "Turn of my alarm", and not "the turn of the century".
    bool isOff(std::string_view word, std::string_view rest) const
    {
        constexpr std::string_view switched[] = {"alarm", "timer", "reminder", "light"};
        const bool isThing = std::ranges::any_of(
            switched, [&](std::string_view thing) { return rest.find(thing) != std::string_view::npos; });
        return word == "of" && m_isHead && (m_last == "turn" || m_last == "switch")
            && (rest.starts_with(" my ") || rest.starts_with(" all ") || (rest.starts_with(" the ") && isThing));
    }
    /// Nobody begins with a crate of something, or with a band's name.
    static std::optional<std::string_view> meantHere(const Typed& typed, std::string_view rest)
    {
        if (typed.word == "rem" && rest.starts_with(" me"))
            return "remind";
        if (typed.word == "apt" && rest.starts_with(" ") && rest.size() > 1 && rest[1] >= '0' && rest[1] <= '9')
            return std::nullopt; // A flat and its number.
        if (typed.start == 0 && typed.word == "crate" && (rest.starts_with(" a ") || rest.starts_with(" new ")))
            return "create";
        return meant(typed.word);
    }

    static constexpr auto links = std::to_array<std::string_view>({"in", "to", "on", "into", "onto", "from", "off"});
    static constexpr auto owners = std::to_array<std::string_view>({"my", "the", "our"});
    static constexpr auto kinds = std::to_array<std::string_view>({"work", "family", "shared", "personal", "private"});

    std::string m_last; ///< The word before, put right.
    bool m_isHead = true; ///< No word came yet that the request may be about.
    bool m_isLooking = false; ///< Nothing is made or written.
    bool m_isLed = false; ///< Behind "in".
    bool m_isInside = false; ///< Behind "in my".
    bool m_isKept = false;
};

} // namespace

std::string CueSpelling::repaired(std::string_view words)
{
    std::string text;
    std::size_t position = 0;
    Reader reader;
    while (words.size() <= longestText && !reader.isKept()) {
        const auto typed = nextWord(words, position);
        if (!typed)
            break;
        const auto right = reader.take(*typed, words);
        text += words.substr(position, typed->start - position);
        text += right ? *right : words.substr(typed->start, typed->end - typed->start);
        position = typed->end;
    }
    return text + std::string(words.substr(position));
}

} // namespace quorvell
