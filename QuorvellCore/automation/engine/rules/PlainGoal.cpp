// SPDX-License-Identifier: MIT
#include "QuorvellCore/automation/engine/rules/PlainGoal.h"

#include "QuorvellCore/automation/actions/AutomationAction.h"
#include "QuorvellCore/automation/engine/context/GoalWords.h"
#include "QuorvellCore/text/OneLine.h"
#include "QuorvellCore/text/web/SiteMatch.h"

#include <algorithm>
#include <utility>

namespace quorvell {

namespace {

constexpr std::string_view courtesiesBefore[] = {"please ", "can you ", "could you ", "would you ", "will you ",
    "can you please ", "could you please ", "hey quorvell ", "quorvell ", "now ", "just "};
constexpr std::string_view courtesiesBehind[] = {" please", " for me", " now"};

/// Endings of hosts that are no endings of files: "open notes.org" and "open report.md" mean no site for certain.
constexpr std::string_view siteEndings[] = {"com", "net", "edu", "gov", "eu", "de", "uk", "fr", "it", "es", "nl", "ch",
    "be", "us", "ca", "au", "jp", "br", "io"};
/// Endings of hosts that files have too.
constexpr std::string_view fileLikeEndings[] = {"org", "io", "info", "app", "dev"};

/// Words by which a goal has a second step, or an object that is not the application alone.
constexpr std::string_view joiningWords[] = {"and", "then", "with", "in", "on", "to", "from", "of", "or", "after"};

struct NamedRole {
    std::string_view words;
    std::string_view role;
};
constexpr NamedRole namedRoles[] = {{" button", "AXButton"}, {" link", "AXLink"}, {" tab", "AXRadioButton"},
    {" checkbox", "AXCheckBox"}, {" check box", "AXCheckBox"}};

/// "press return" and "press enter" are keys, which the rules leave alone.
bool isKeyName(std::string_view name)
{
    const auto& keys = AutomationAction::supportedKeys();
    return name == "enter" || name == "page" || std::find(keys.begin(), keys.end(), name) != keys.end();
}

bool takeFront(std::string_view& text, std::string_view words)
{
    const bool isThere = text.starts_with(words) && text.size() > words.size();
    if (isThere)
        text.remove_prefix(words.size());
    return isThere;
}

bool takeBack(std::string_view& text, std::string_view words)
{
    const bool isThere = text.ends_with(words) && text.size() > words.size();
    if (isThere)
        text.remove_suffix(words.size());
    return isThere;
}

template <std::size_t Count> bool takeAnyFront(std::string_view& text, const std::string_view (&words)[Count])
{
    return std::any_of(
        std::begin(words), std::end(words), [&](std::string_view candidate) { return takeFront(text, candidate); });
}

std::string_view withoutCourtesies(std::string_view words)
{
    while (takeAnyFront(words, courtesiesBefore)) { }
    while (std::any_of(std::begin(courtesiesBehind), std::end(courtesiesBehind),
        [&](std::string_view behind) { return takeBack(words, behind); })) { }
    return words;
}

std::string_view withoutQuotes(std::string_view text)
{
    const bool isQuoted =
        text.size() > 2 && text.front() == text.back() && (text.front() == '"' || text.front() == '\'');
    return isQuoted ? text.substr(1, text.size() - 2) : text;
}

bool hasJoiningWord(std::string_view words)
{
    const std::string spaced = " " + std::string(words) + " ";
    return std::any_of(std::begin(joiningWords), std::end(joiningWords),
        [&](std::string_view word) { return spaced.find(" " + std::string(word) + " ") != std::string::npos; });
}

std::optional<PlainGoal> scrollGoal(std::string_view words)
{
    takeBack(words, " a bit") || takeBack(words, " a little") || takeBack(words, " a little bit");
    for (const std::string_view direction : {"down", "up"}) {
        for (const std::string_view form :
            {"scroll ", "scroll the page ", "scroll further ", "scroll the page further "}) {
            if (words == std::string(form) + std::string(direction))
                return PlainGoal{.kind = PlainGoal::Kind::scroll, .name = std::string(direction)};
        }
    }
    return std::nullopt;
}

std::optional<PlainGoal> backGoal(std::string_view words)
{
    constexpr std::string_view forms[] = {"go back", "go back a page", "go back one page", "go back to the last page",
        "go back to the previous page", "go to the previous page", "back"};
    if (std::find(std::begin(forms), std::end(forms), words) == std::end(forms))
        return std::nullopt;
    return PlainGoal{.kind = PlainGoal::Kind::back, .labels = {"back", "go back"}};
}

/// The word of the goal that says this in lower case, as the user wrote it: paths of addresses tell cases apart.
std::optional<std::string> asWritten(std::string_view goal, std::string_view lower)
{
    const std::string line = onOneLine(goal);
    for (std::size_t start = 0; start < line.size();) {
        const std::size_t end = std::min(line.find(' ', start), line.size());
        const std::string word = line.substr(start, end - start);
        if (GoalWords::of(word) == lower)
            return word.substr(0, lower.size());
        start = end + 1;
    }
    return std::nullopt;
}

bool isSiteName(std::string_view word)
{
    if (word.find(' ') != std::string_view::npos || !SiteMatch::host(word))
        return false;
    if (word.starts_with("https://") || word.starts_with("http://") || word.starts_with("www."))
        return true;
    const std::string host = SiteMatch::host(word).value_or("");
    const std::string_view ending = std::string_view(host).substr(host.rfind('.') + 1);
    const auto isOneOf = [&](const auto& endings) {
        return std::find(std::begin(endings), std::end(endings), ending) != std::end(endings);
    };
    // A file has neither a path behind its name nor, with these endings, two dots in it.
    const bool isMoreThanAName = word.find('/') != std::string_view::npos || std::ranges::count(host, '.') > 1;
    return isOneOf(siteEndings) || (isMoreThanAName && isOneOf(fileLikeEndings));
}

std::optional<PlainGoal> siteGoal(std::string_view goal, std::string_view words)
{
    constexpr std::string_view verbs[] = {"open ", "go to ", "visit "};
    constexpr std::string_view nouns[] = {"the website ", "the web site ", "the site ", "the page ", "website "};
    if (!takeAnyFront(words, verbs))
        return std::nullopt;
    takeAnyFront(words, nouns);
    auto address = isSiteName(words) ? asWritten(goal, words) : std::nullopt;
    if (!address)
        return std::nullopt;
    return PlainGoal{.kind = PlainGoal::Kind::site, .name = std::move(*address)};
}

/// Whether the goal calls it an application; the word is taken away.
bool takeApplicationWord(std::string_view& words)
{
    constexpr std::string_view before[] = {"the app ", "the application ", "the program ", "app ", "application "};
    constexpr std::string_view behind[] = {" app", " application", " program"};
    return takeAnyFront(words, before) || std::any_of(std::begin(behind), std::end(behind), [&](std::string_view word) {
        return takeBack(words, word);
    });
}

std::optional<PlainGoal> appGoal(std::string_view words, std::span<const std::string> applications)
{
    constexpr std::string_view verbs[] = {"open ", "launch ", "switch to "};
    constexpr std::string_view certainVerbs[] = {"start ", "run ", "bring up "};
    const bool isPlainVerb = takeAnyFront(words, verbs);
    if (!isPlainVerb && !takeAnyFront(words, certainVerbs))
        return std::nullopt;
    const bool isCertain = takeApplicationWord(words);
    takeFront(words, "the ");
    words = withoutQuotes(words);
    const auto isNamed = [&](const std::string& name) { return GoalWords::of(name) == words; };
    const auto known = std::find_if(applications.begin(), applications.end(), isNamed);
    if (known != applications.end() && (isPlainVerb || isCertain)
        && std::none_of(known + 1, applications.end(), isNamed))
        return PlainGoal{.kind = PlainGoal::Kind::app, .name = *known, .isCertain = isCertain};
    if (!isCertain || known != applications.end() || hasJoiningWord(words))
        return std::nullopt;
    return PlainGoal{.kind = PlainGoal::Kind::app, .name = std::string(words), .isCertain = true};
}

/// A control may be called with the word for what it is or without.
PlainGoal controlGoal(PlainGoal::Kind kind, std::string_view words)
{
    PlainGoal goal{.kind = kind, .labels = {std::string(words)}};
    for (const NamedRole& named : namedRoles) {
        std::string_view rest = words;
        if (!takeBack(rest, named.words))
            continue;
        goal.role = named.role;
        goal.labels.emplace_back(withoutQuotes(rest));
    }
    return goal;
}

std::optional<PlainGoal> pressGoal(std::string_view words)
{
    constexpr std::string_view verbs[] = {"click on ", "click ", "press on ", "press ", "tap on ", "tap "};
    if (!takeAnyFront(words, verbs))
        return std::nullopt;
    takeFront(words, "the ");
    words = withoutQuotes(words);
    if (isKeyName(words))
        return std::nullopt;
    return controlGoal(PlainGoal::Kind::press, words);
}

} // namespace

std::optional<PlainGoal> PlainGoal::read(std::string_view goal, std::span<const std::string> applications)
{
    const std::string all = GoalWords::of(goal);
    const std::string_view words = withoutCourtesies(all);
    if (words.empty())
        return std::nullopt;
    for (auto found :
        {scrollGoal(words), backGoal(words), siteGoal(goal, words), appGoal(words, applications), pressGoal(words)}) {
        if (found)
            return found;
    }
    return PlainGoal{.kind = Kind::label, .labels = {all}};
}

} // namespace quorvell
