// SPDX-License-Identifier: MIT
#include "QuorvellCore/automation/provenance/WordPieces.h"

#include "QuorvellCore/safety/places/JudgedAddress.h"
#include "QuorvellCore/text/CodePoints.h"
#include "QuorvellCore/text/LowerCase.h"
#include "QuorvellCore/text/web/SiteMatch.h"

#include <algorithm>
#include <unordered_set>

namespace quorvell {

namespace {

constexpr std::string_view separators = " \t\n\r\v\f<>\"'()[]{},;|*`";
constexpr std::string_view closingSigns = ".:!?/";

/// "https://example.com/a." in a sentence is "https://example.com/a".
std::string_view withoutClosingSigns(std::string_view token)
{
    const auto last = token.find_last_not_of(closingSigns);
    return token.substr(0, last == std::string_view::npos ? 0 : last + 1);
}

bool isPlainWord(std::string_view token)
{
    return token.find_first_of("@./") == std::string_view::npos;
}

void addToken(WordPieces& pieces, std::string_view token)
{
    if (token.find('@') != std::string_view::npos && token.size() > 1) {
        pieces.mails.emplace_back(token.starts_with("mailto:") ? token.substr(7) : token);
        return;
    }
    const bool isPath = token.starts_with('/') || token.starts_with("~/") || token.starts_with("./");
    if (isPath && token.size() > 2)
        pieces.paths.emplace_back(token);
    else if (token.find('.') != std::string_view::npos || token.find("://") != std::string_view::npos)
        if (auto site = WordPieces::siteOf(token))
            pieces.sites.push_back(std::move(*site));
}

/// One number goes on over spaces, hyphens and the like: "0171 23-45".
void addNumbers(WordPieces& pieces, std::string_view text)
{
    std::string digits;
    const auto end = [&] {
        if (digits.size() >= WordPieces::fewestDigits)
            pieces.numbers.push_back(digits);
        digits.clear();
    };
    for (const char letter : text) {
        if (letter >= '0' && letter <= '9')
            digits += letter;
        else if (!digits.empty() && std::string_view(" -./()+").find(letter) == std::string_view::npos)
            end();
    }
    end();
}

} // namespace

std::optional<NamedSite> WordPieces::siteOf(std::string_view address)
{
    const auto judged = JudgedAddress::read(address);
    if (!judged)
        return std::nullopt;
    NamedSite named{judged->site, judged->site};
    // As it is written behind the host, since letters of either case may lead to different places.
    const auto host = judged->text.find("://");
    const auto rest = judged->text.find_first_of("/?#", host == std::string::npos ? 0 : host + 3);
    std::string behind = rest == std::string::npos ? std::string() : judged->text.substr(rest);
    while (behind.ends_with('/'))
        behind.pop_back();
    named.whole += lowerCased(behind);
    return named;
}

WordPieces WordPieces::of(std::string_view text)
{
    WordPieces pieces;
    std::unordered_set<std::string_view> seen; // A page repeats its links.
    for (std::size_t start = text.find_first_not_of(separators); start != std::string_view::npos;) {
        const std::size_t end = std::min(text.find_first_of(separators, start), text.size());
        const std::string_view token = withoutClosingSigns(text.substr(start, end - start));
        if (!isPlainWord(token) && seen.insert(token).second)
            addToken(pieces, token);
        start = text.find_first_not_of(separators, end);
    }
    addNumbers(pieces, text);
    return pieces;
}

std::vector<std::string_view> WordPieces::runsIn(std::string_view words)
{
    std::vector<std::size_t> spaces;
    for (auto space = words.find(' '); space != std::string_view::npos; space = words.find(' ', space + 1))
        spaces.push_back(space);
    std::vector<std::string_view> runs;
    for (std::size_t index = 0; index + runLength < spaces.size(); ++index)
        runs.push_back(words.substr(spaces[index], spaces[index + runLength] - spaces[index] + 1));
    return runs;
}

/// FNV-1a.
std::uint64_t WordPieces::hashOf(std::string_view run)
{
    std::uint64_t hash = 14695981039346656037U;
    for (const char letter : run)
        hash = (hash ^ static_cast<unsigned char>(letter)) * 1099511628211U;
    return hash;
}

} // namespace quorvell
