// SPDX-License-Identifier: MIT
#include "Understanding/words/WordSigns.h"

#include "QuorvellCore/text/Characters.h"
#include "QuorvellCore/text/Pattern.h"
#include "Understanding/words/WordRewriting.h"

#include <algorithm>

namespace quorvell {

namespace {

/// One that opens nothing and closes nothing. Behind a digit it is inches.
std::string withoutStrayQuote(std::string text)
{
    static const Pattern inches("\\d\"");
    if (std::ranges::count(text, '"') % 2 == 0 || inches.find(text))
        return text;
    const std::size_t place = text.starts_with('"') && !text.ends_with('"') ? 0 : text.rfind('"');
    return text.erase(place, 1);
}

/// Of a request that stands between quotes as a whole.
std::string withoutQuotesAround(const std::string& text)
{
    constexpr std::size_t shortest = 4;
    const bool isWhole = text.size() >= shortest && text.front() == '"' && text.back() == '"'
        && text.find('"', 1) + 1 == text.size() && text.find(' ') != std::string::npos;
    return isWhole ? text.substr(1, text.size() - 2) : text;
}

} // namespace

std::string WordSigns::settled(std::string_view words)
{
    static const WordRewriting doubled({{"[“”„‟«»＂]", "\""}});
    static const WordRewriting single({
        // Single ones around words, and not the apostrophes of "the kids' mum's".
        {"(?<=^|\\s)[‘'‚‛`](?=\\w)([^'’`\"]{2,80})(?<=\\w|[.!?])['’`](?=$|[\\s,.;:!?])", "\"$1\""},
    });
    static const WordRewriting signs({
        {"\\s*[\\[({<]\\s*(?:date|time|day|when|hour|place|location|where|title|name|event)\\s*:\\s*([^\\])}>]*?)\\s*["
         "\\])}>]",
            " $1"},
        {"^(?:[\\p{So}\\x{1F3FB}-\\x{1F3FF}\\x{FE0F}\\x{200D}*~>•]\\s*)+", ""},
        {"(?:\\s*[\\p{So}\\x{1F3FB}-\\x{1F3FF}\\x{FE0F}\\x{200D}*~])+\\s*$", ""},
        {"(?:\\s+(?::[-']?[()DPp]|;[-']?\\)|<3|\\^\\^|x{2,}|lol|haha+|lmao))+\\s*$", ""},
        // A time in brackets, or behind a dash that is no "until".
        {"\\s*[(\\[]([^()\\[\\]]*(?:day|tomorrow|tonight|\\d ?[ap]\\.?m|\\d:\\d\\d)[^()\\[\\]]*)[)\\]]", " $1"},
        {"(?<!\\d)(?<![ap]m)\\s+[-–—]+\\s+(?=(?:on |at "
         ")?(?:(?:mon|tues|wednes|thurs|fri|satur|sun)day|today|tomorrow|tonight"
         "|next|\\d{1,2}(?::\\d\\d)? ?[ap]\\.?m|\\d{1,2}:\\d\\d)\\b)",
            " "},
        {"[!?]*\\?[!?]+", "?"},
        {"!+(?=\\s+[a-z])", ","},
        {"!{2,}", "!"},
        {",(?:\\s*,)+", ","},
        {"\\s+,", ","},
        {"(?:\\s*[-–—,;]+|\\.{2,}|…)+\\s*$", ""},
        {"\\s{2,}", " "},
    });
    const std::string text = withoutQuotesAround(doubled.outsideQuotes(trimmed(words)));
    const std::string plain = signs.outsideQuotes(withoutStrayQuote(single.outsideQuotes(text)));
    return plain.empty() ? std::string(words) : plain;
}

} // namespace quorvell
