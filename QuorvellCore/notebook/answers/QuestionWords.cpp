// SPDX-License-Identifier: MIT
#include "QuorvellCore/notebook/answers/QuestionWords.h"

#include "QuorvellCore/text/Characters.h"
#include "QuorvellCore/text/TextMatch.h"

#include <algorithm>
#include <array>
#include <utility>

namespace quorvell {

namespace {

/// Words that every question is made of.
constexpr auto stopWords = std::to_array<std::string_view>({"a", "about", "again", "all", "am", "an", "and", "any",
    "anything", "are", "as", "at", "be", "been", "by", "called", "can", "could", "current", "did", "do", "does", "ever",
    "everything", "exactly", "find", "for", "from", "get", "give", "got", "had", "has", "have", "he", "her", "him",
    "his", "how", "i", "if", "in", "is", "it", "its", "just", "keep", "kept", "know", "last", "leave", "left", "let",
    "long", "me", "mention", "mentioned", "mine", "much", "many", "my", "name", "new", "note", "notebook", "noted",
    "notes", "of", "on", "or", "our", "out", "please", "put", "remember", "remind", "s", "said", "save", "saved", "say",
    "she", "should", "so", "some", "something", "store", "stored", "t", "tell", "that", "the", "their", "them", "there",
    "these", "they", "thing", "things", "this", "those", "to", "told", "up", "us", "use", "used", "was", "we", "went",
    "were", "what", "whats", "when", "where", "wheres", "which", "who", "whom", "whos", "whose", "why", "will", "with",
    "would", "write", "written", "wrote", "you", "your", "quorvell", "down", "best", "mean", "go", "goes", "going",
    "again", "one", "look", "now"});

/// Any of a row stands for all of it. The first one that is asked for is looked for by all of them.
constexpr std::string_view alike[] = {"wifi|wireless|wlan", "password|passwort|passcode|passphrase|pass",
    "mum|mom|mother|mummy", "dad|father|daddy", "birthday|born|birthdate|bday",
    "like|love|hate|dislike|prefer|enjoy|favourite|favorite", "favourite|favorite", "colour|color", "allergic|allergy",
    "doctor|gp|dr|physician", "phone|telephone|mobile|cell", "reset|restart|reboot", "fridge|refrigerator",
    "tv|television", "flat|apartment", "car|vehicle", "bin|trash|rubbish|garbage", "tyre|tire", "live|address|home",
    "address|live|street", "weigh|weight", "wear|size", "anniversary|wedding", "park|parking", "license|licence",
    "price|cost", "work|job", "kid|child|children|son|daughter"};

/// What digits answer, and how many of them at least.
struct NumberWord {
    std::string_view word;
    int digits;
};
constexpr auto numberWords =
    std::to_array<NumberWord>({{"number", 5}, {"phone", 5}, {"telephone", 5}, {"mobile", 5}, {"cell", 5}, {"code", 3},
        {"pin", 3}, {"size", 1}, {"cost", 1}, {"price", 1}, {"height", 2}, {"tall", 2}, {"weight", 2}, {"weigh", 2},
        {"old", 1}, {"age", 1}, {"wide", 1}, {"big", 1}, {"far", 1}, {"pressure", 1}, {"temperature", 1}});

int digitsFor(std::string_view word, std::string_view stem)
{
    const auto* const row = std::ranges::find_if(
        numberWords, [&](const NumberWord& number) { return number.word == word || number.word == stem; });
    return row == numberWords.end() ? 0 : row->digits;
}

std::vector<std::string> wordsOf(std::string_view text)
{
    std::vector<std::string> words;
    const std::string normalized = TextMatch::normalized(text);
    for (std::size_t start = 0; start < normalized.size();) {
        const std::size_t end = std::min(normalized.find(' ', start), normalized.size());
        if (end > start)
            words.push_back(normalized.substr(start, end - start));
        const std::size_t count = words.size();
        if (count > 1 && words[count - 1] == "fi" && words[count - 2] == "wi") {
            words.pop_back();
            words.back() = "wifi";
        }
        start = end + 1;
    }
    return words;
}

bool isOneOf(std::string_view row, std::string_view word)
{
    for (std::size_t start = 0; start <= row.size();) {
        const std::size_t end = std::min(row.find('|', start), row.size());
        if (row.substr(start, end - start) == word)
            return true;
        start = end + 1;
    }
    return false;
}

std::vector<std::string> formsOf(const std::string& word, const std::string& stem)
{
    std::vector<std::string> forms{word};
    for (const std::string_view row : alike) {
        if (!isOneOf(row, word) && !isOneOf(row, stem))
            continue;
        for (std::size_t start = 0; start < row.size();) {
            const std::size_t end = std::min(row.find('|', start), row.size());
            forms.emplace_back(row.substr(start, end - start));
            start = end + 1;
        }
        break;
    }
    return forms;
}

QuestionWords::Asks askedBy(const std::vector<std::string>& words)
{
    using Asks = QuestionWords::Asks;
    for (std::size_t index = 0; index < words.size(); ++index) {
        const std::string& word = words[index];
        if (word == "when")
            return Asks::when;
        if (word.starts_with("where"))
            return Asks::where;
        if (word == "who" || word == "whos" || word == "who's")
            return Asks::who;
        const std::string& next = index + 1 < words.size() ? words[index + 1] : word;
        if (word == "how"
            && (next == "do" || next == "to" || next == "can" || next == "did" || next == "should" || next == "does"))
            return Asks::how;
    }
    return Asks::anything;
}

} // namespace

std::string QuestionWords::stem(std::string_view said)
{
    std::string word(said);
    if (word.ends_with("'s"))
        word.resize(word.size() - 2);
    std::erase(word, '\'');
    constexpr std::size_t shortest = 3; // of a word that still says something
    const auto cut = [&word](std::string_view end, std::string_view instead) {
        if (!word.ends_with(end) || word.size() < end.size() + shortest)
            return false;
        word.replace(word.size() - end.size(), end.size(), instead);
        return true;
    };
    const bool isPlural = cut("ies", "y") || cut("sses", "ss") || cut("xes", "x") || cut("ches", "ch")
        || cut("shes", "sh")
        || (!word.ends_with("ss") && !word.ends_with("us") && !word.ends_with("is") && word.size() > shortest
            && cut("s", ""));
    if (!isPlural && (cut("ing", "") || cut("ed", ""))) {
        const std::size_t size = word.size();
        if (size > shortest && word[size - 1] == word[size - 2] && word[size - 1] != 'l' && word[size - 1] != 's')
            word.pop_back(); // "resetting"
    }
    if (word.size() > shortest && word.back() == 'e')
        word.pop_back(); // "store" and "storing"
    return word;
}

std::vector<std::string> QuestionWords::stems(std::string_view text)
{
    std::vector<std::string> all = wordsOf(text);
    for (std::string& word : all)
        word = stem(word);
    return all;
}

QuestionWords QuestionWords::of(std::string_view question)
{
    constexpr std::size_t longest = 500; // characters
    const auto words = wordsOf(firstCharacters(repairUtf8(question), longest));
    QuestionWords read{.asks = askedBy(words)};
    std::string_view before;
    for (const std::string& word : words) {
        const std::string_view last = std::exchange(before, word);
        const std::string plain = stem(word);
        const bool isKnown = std::ranges::any_of(
            read.terms, [&](const Term& term) { return std::ranges::find(term.stems, plain) != term.stems.end(); });
        const std::string bare = word.ends_with("'s") ? word.substr(0, word.size() - 2) : word;
        const bool isStop = std::ranges::find(stopWords, bare) != stopWords.end();
        if (isKnown || isStop || plain.empty() || read.terms.size() >= most)
            continue;
        Term term{
            .leastDigits = digitsFor(bare, plain), .isOwner = bare != word, .isTheirs = last == "my" || last == "our"};
        for (const std::string& form : formsOf(bare, plain)) {
            std::string joined;
            for (const std::string& part : stems(form))
                joined += (joined.empty() ? "" : " ") + part;
            if (std::ranges::find(term.stems, joined) == term.stems.end())
                term.stems.push_back(joined);
            read.phrases.push_back(form);
            if (form == "wifi")
                read.phrases.emplace_back("wi fi"); // as the index has "Wi-Fi"
        }
        read.terms.push_back(std::move(term));
    }
    return read;
}

bool QuestionWords::isOfSomebodyElse(std::string_view text) const
{
    const auto words = wordsOf(text);
    const auto holds = [](const Term& term, const std::string& word) {
        return std::ranges::find(term.stems, stem(word)) != term.stems.end();
    };
    for (std::size_t index = 0; index + 1 < words.size(); ++index) {
        const std::string& owner = words[index];
        const bool isKnown = std::ranges::any_of(terms, [&](const Term& term) { return holds(term, owner); });
        const bool isOwner = owner.ends_with("'s") && !isKnown
            && std::ranges::find(stopWords, std::string_view(owner).substr(0, owner.size() - 2)) == stopWords.end();
        const std::string& owned = words[index + 1];
        if (isOwner
            && std::ranges::any_of(terms, [&](const Term& term) { return term.isTheirs && holds(term, owned); }))
            return true;
    }
    return false;
}

} // namespace quorvell
