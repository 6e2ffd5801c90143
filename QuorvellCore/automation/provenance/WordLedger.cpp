// SPDX-License-Identifier: MIT
#include "QuorvellCore/automation/provenance/WordLedger.h"

#include "QuorvellCore/safety/SafetyGuard.h"
#include "QuorvellCore/safety/places/JudgedAddress.h"
#include "QuorvellCore/text/LowerCase.h"
#include "QuorvellCore/text/TextMatch.h"
#include "QuorvellCore/text/web/SiteMatch.h"

#include <algorithm>
#include <array>

namespace quorvell {

namespace {

std::string normalizedWords(std::string_view text)
{
    return ' ' + TextMatch::normalized(text) + ' ';
}

bool isBlank(std::string_view words)
{
    return words.find_first_not_of(' ') == std::string_view::npos;
}

std::string replaced(std::string text, std::string_view word, std::string_view sign)
{
    for (auto found = text.find(word); found != std::string::npos; found = text.find(word, found + 1))
        text.replace(found, word.size(), sign);
    return text;
}

template <typename Piece> void append(std::vector<Piece>& pieces, const std::vector<Piece>& more)
{
    pieces.insert(pieces.end(), more.begin(), more.end());
}

/// With addresses that are spoken written out, "example dot com slash help" and "ann at example dot com".
WordPieces spokenPieces(const std::string& lower)
{
    const std::string web = replaced(replaced(lower, " dot ", "."), " slash ", "/");
    WordPieces pieces = WordPieces::of(lower);
    for (const std::string& written : {web, replaced(web, " at ", "@")}) {
        if (written == lower)
            continue;
        const WordPieces more = WordPieces::of(written);
        append(pieces.sites, more.sites);
        append(pieces.mails, more.mails);
    }
    return pieces;
}

template <typename Piece> bool holds(const std::vector<Piece>& pieces, const Piece& piece)
{
    return std::find(pieces.begin(), pieces.end(), piece) != pieces.end();
}

bool holdsNumber(const std::vector<std::string>& numbers, const std::string& number)
{
    return std::any_of(numbers.begin(), numbers.end(),
        [&](const std::string& other) { return other.find(number) != std::string::npos; });
}

bool holdsSite(const std::vector<NamedSite>& sites, std::string_view site)
{
    return std::any_of(sites.begin(), sites.end(), [&](const NamedSite& other) { return other.site == site; });
}

/// Also where one of them is a subdomain of the other.
bool holdsRelatedSite(const std::vector<NamedSite>& sites, std::string_view site)
{
    return std::any_of(sites.begin(), sites.end(), [&](const NamedSite& other) {
        return SiteMatch::sameSite(other.site, site) || SiteMatch::sameSite(site, other.site);
    });
}

/// Words that say in a box whom something goes to.
bool namesRecipient(std::string_view said)
{
    constexpr auto words = std::to_array<std::string_view>({" to ", " cc ", " bcc ", " recipient ", " recipients ",
        " send to ", " addressee ", " payee ", " beneficiary ", " phone number ", " email address ", " e mail address ",
        " email ", " e mail ", " contact ", " invitees ", " attendees ", " participants ", " share with ", " invite "});
    const std::string normalized = normalizedWords(said);
    const std::string_view all = normalized;
    // A lone "to" is the name of the box; within a sentence ("words to find") it is not.
    return all == words[0] || std::any_of(words.begin() + 1, words.end(), [&](std::string_view word) {
        return all.find(word) != std::string_view::npos;
    });
}

int hexDigit(char letter)
{
    if (letter >= '0' && letter <= '9')
        return letter - '0';
    const char lower = static_cast<char>(letter | 0x20);
    return lower >= 'a' && lower <= 'f' ? lower - 'a' + 10 : -1;
}

std::string decoded(std::string_view text)
{
    std::string plain;
    for (std::size_t index = 0; index < text.size(); ++index) {
        const int high = text[index] == '%' && index + 2 < text.size() ? hexDigit(text[index + 1]) : -1;
        const int low = high >= 0 ? hexDigit(text[index + 2]) : -1;
        if (low >= 0)
            index += 2;
        plain += low >= 0 ? static_cast<char>(high * 16 + low) : text[index] == '+' ? ' ' : text[index];
    }
    return plain;
}

/// What an address tells the site that it leads to, piece by piece: the values behind "?" and "#", and a path that is
/// too long for a name.
std::vector<std::string> dataOf(std::string_view address)
{
    constexpr std::size_t longestName = 64; // Bytes; titles of pages are rarely longer.
    const auto judged = JudgedAddress::read(address);
    if (!judged)
        return {};
    const std::string_view text = judged->text;
    const auto path = text.find_first_of("/?#", text.find("://") + 3);
    if (path == std::string_view::npos)
        return {};
    const auto query = std::min(text.find_first_of("?#", path), text.size());
    std::vector<std::string> data;
    if (query - path > longestName)
        data.push_back(decoded(text.substr(path, query - path)));
    for (std::size_t start = query; start < text.size();) {
        const std::size_t end = std::min(text.find_first_of("&;?#", start + 1), text.size());
        const std::string_view pair = text.substr(start + 1, end - start - 1);
        const auto sign = pair.find('=');
        if (!pair.empty())
            data.push_back(decoded(sign == std::string_view::npos ? pair : pair.substr(sign + 1)));
        start = end;
    }
    std::erase_if(data, [](const std::string& value) { return value.empty(); });
    return data;
}

} // namespace

void WordLedger::told(WordOrigin origin, std::string_view text)
{
    if (origin == WordOrigin::model)
        return;
    // Parts overlap, so that what a cut goes through is whole in one of them.
    constexpr std::size_t overlap = 1'024;
    for (std::size_t start = 0; start < text.size(); start += longestText - overlap) {
        remember(origin, text.substr(start, longestText));
        if (start + longestText >= text.size())
            break;
    }
}

void WordLedger::remember(WordOrigin origin, std::string_view part)
{
    std::string words = normalizedWords(part);
    const std::string lower = lowerCased(part);
    WordPieces pieces = origin == WordOrigin::user ? spokenPieces(lower) : WordPieces::of(lower);
    std::erase_if(m_texts, [&](const Remembered& old) {
        return old.origin == origin && old.words == words && old.pieces.sites == pieces.sites;
    });
    std::vector<std::uint64_t> runs;
    if (isOutside(origin)) {
        for (const std::string_view run : WordPieces::runsIn(words))
            runs.push_back(WordPieces::hashOf(run));
        std::sort(runs.begin(), runs.end());
    }
    m_texts.push_back({origin, std::move(words), std::move(pieces), std::move(runs)});
    forgetOldest(origin);
}

void WordLedger::forgetOldest(WordOrigin origin)
{
    std::size_t bytes = 0;
    std::size_t texts = 0;
    for (auto text = m_texts.rbegin(); text != m_texts.rend(); ++text) {
        if (text->origin != origin)
            continue;
        bytes += text->words.size();
        if (++texts > mostTexts || bytes > mostBytes) {
            m_texts.erase(std::next(text).base());
            return forgetOldest(origin);
        }
    }
}

void WordLedger::seen(const ScreenLook& look)
{
    std::string text =
        look.observation.app + '\n' + look.observation.window + '\n' + look.observation.page.value_or("");
    for (const AutomationCandidate& candidate : look.observation.candidates)
        ((text += '\n') += candidate.label + '\n') += candidate.value;
    for (const ScreenElement& element : look.elements) {
        ((text += '\n') += element.hint + '\n') += element.description + '\n' + element.address;
        for (const std::string& option : element.options)
            (text += '\n') += option;
    }
    told(WordOrigin::screen, text);
}

template <typename Holds> std::optional<WordOrigin> WordLedger::trustedWith(const Holds& holdsIt) const
{
    for (const WordOrigin origin : {WordOrigin::user, WordOrigin::notebook}) {
        if (std::any_of(m_texts.begin(), m_texts.end(),
                [&](const Remembered& text) { return text.origin == origin && holdsIt(text); }))
            return origin;
    }
    return std::nullopt;
}

template <typename Holds> std::optional<WordOrigin> WordLedger::outsideWith(const Holds& holdsIt) const
{
    for (const WordOrigin origin : {WordOrigin::web, WordOrigin::screen, WordOrigin::account}) {
        if (std::any_of(m_texts.begin(), m_texts.end(),
                [&](const Remembered& text) { return text.origin == origin && holdsIt(text); }))
            return origin;
    }
    return std::nullopt;
}

std::optional<WordOrigin> WordLedger::trustedWhole(std::string_view words) const
{
    if (isBlank(words))
        return std::nullopt;
    return trustedWith([&](const Remembered& text) { return text.words.find(words) != std::string::npos; });
}

/// However its digits are parted: "0171 23 45" is "0171-2345".
std::optional<WordOrigin> WordLedger::trustedNumber(std::string_view raw) const
{
    if (raw.find_first_not_of("0123456789 -./()+") != std::string_view::npos)
        return std::nullopt;
    const auto numbers = WordPieces::of(raw).numbers;
    if (numbers.size() != 1)
        return std::nullopt;
    return trustedWith([&](const Remembered& text) { return holds(text.pieces.numbers, numbers.front()); });
}

std::optional<WordOrigin> WordLedger::outsidePieces(const WordPieces& pieces) const
{
    const auto doubted = [&](const auto& holdsIt) {
        return trustedWith(holdsIt) ? std::optional<WordOrigin>() : outsideWith(holdsIt);
    };
    std::optional<WordOrigin> found;
    const auto add = [&](std::optional<WordOrigin> origin) { found = std::max(found, origin); };
    for (const NamedSite& site : pieces.sites)
        add(doubted([&](const Remembered& text) { return holds(text.pieces.sites, site); }));
    for (const std::string& mail : pieces.mails)
        add(doubted([&](const Remembered& text) { return holds(text.pieces.mails, mail); }));
    for (const std::string& path : pieces.paths)
        add(doubted([&](const Remembered& text) { return holds(text.pieces.paths, path); }));
    for (const std::string& number : pieces.numbers)
        add(doubted([&](const Remembered& text) { return holdsNumber(text.pieces.numbers, number); }));
    return found;
}

std::optional<WordOrigin> WordLedger::outsideRuns(std::string_view words) const
{
    for (const std::string_view run : WordPieces::runsIn(words)) {
        const std::uint64_t hash = WordPieces::hashOf(run);
        const auto origin = outsideWith(
            [&](const Remembered& text) { return std::binary_search(text.runs.begin(), text.runs.end(), hash); });
        if (origin && !trustedWhole(run))
            return origin;
    }
    return std::nullopt;
}

std::optional<WordOrigin> WordLedger::outsideIn(std::string_view raw, std::string_view words) const
{
    return std::max(outsidePieces(WordPieces::of(lowerCased(raw))), outsideRuns(words));
}

WordOrigin WordLedger::originOfWords(std::string_view raw, WordUse use) const
{
    const std::string words = normalizedWords(raw);
    const auto outside = outsideIn(raw, words);
    if (outside)
        return *outside;
    if (const auto trusted = trustedWhole(words))
        return *trusted;
    if (const auto trusted = trustedNumber(raw))
        return *trusted;
    // A word or two stand on any screen, but whom something goes to is no longer.
    constexpr std::size_t fewestLetters = 16; // With both spaces: three short words.
    const bool counts = !isBlank(words) && (use == WordUse::recipient || words.size() >= fewestLetters);
    const auto found = counts
        ? outsideWith([&](const Remembered& text) { return text.words.find(words) != std::string::npos; })
        : std::nullopt;
    return found.value_or(WordOrigin::model);
}

WordOrigin WordLedger::originOfAddress(std::string_view address) const
{
    const auto named = WordPieces::siteOf(address);
    if (!named)
        return originOfWords(address, WordUse::typedText);
    const auto whole = [&](const Remembered& text) { return holds(text.pieces.sites, *named); };
    if (const auto trusted = trustedWith(whole))
        return *trusted;
    const auto site = trustedWith([&](const Remembered& text) { return holdsSite(text.pieces.sites, named->site); });
    if (site && named->whole == named->site)
        return *site;
    if (const auto outside = outsideWith(whole))
        return *outside;
    if (site)
        return WordOrigin::model;
    const auto related =
        outsideWith([&](const Remembered& text) { return holdsRelatedSite(text.pieces.sites, named->site); });
    return related.value_or(WordOrigin::model);
}

/// The least trusted of its pieces; the whole address counts where the user gave it so.
WordOrigin WordLedger::originOfData(std::string_view address) const
{
    const auto named = WordPieces::siteOf(address);
    const auto whole = [&](const Remembered& text) { return named && holds(text.pieces.sites, *named); };
    if (const auto trusted = trustedWith(whole))
        return *trusted;
    WordOrigin least = WordOrigin::user;
    for (const std::string& value : dataOf(address))
        least = std::max(least, originOfWords(value, WordUse::typedText));
    return least;
}

WordOrigin WordLedger::originOf(std::string_view words, WordUse use) const
{
    switch (use) {
    case WordUse::typedText:
    case WordUse::recipient:
        return originOfWords(words, use);
    case WordUse::address:
        return originOfAddress(words);
    case WordUse::addressData:
        return originOfData(words);
    }
    return WordOrigin::web;
}

void WordLedger::addAddress(WordOrigins& origins, std::string_view address) const
{
    origins["address"] = originOfAddress(address);
    if (!dataOf(address).empty())
        origins["address_data"] = originOfData(address);
}

void WordLedger::addTyping(
    WordOrigins& origins, std::string_view target, std::string_view text, const ScreenLook& look) const
{
    const auto& candidates = look.observation.candidates;
    const auto found = std::find_if(candidates.begin(), candidates.end(),
        [&](const AutomationCandidate& candidate) { return candidate.id == target; });
    const ScreenElement* element = look.element(target);
    const std::string_view label = found == candidates.end() ? std::string_view() : std::string_view(found->label);
    if (SafetyGuard::isAddressBar(label) && !(element && element->isContent) && JudgedAddress::read(text))
        return addAddress(origins, text);
    const bool isRecipient =
        namesRecipient(label) || (element && (namesRecipient(element->hint) || namesRecipient(element->description)));
    origins[isRecipient ? "recipient" : "text"] =
        originOfWords(text, isRecipient ? WordUse::recipient : WordUse::typedText);
}

WordOrigins WordLedger::originsOf(const ScreenAction& action, const ScreenLook& look) const
{
    WordOrigins origins;
    if (const auto* typing = std::get_if<screen_action::ReplaceText>(&action))
        addTyping(origins, typing->target, typing->text, look);
    const auto* step = std::get_if<AutomationAction>(&action);
    if (step && step->tool == AutomationAction::Tool::typeText && step->text)
        addTyping(origins, step->target.value_or(""), *step->text, look);
    if (step && step->tool == AutomationAction::Tool::openWebsite && step->address)
        addAddress(origins, *step->address);
    return origins;
}

} // namespace quorvell
