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

} // namespace

std::string WordSigns::settled(std::string_view words)
{
    static const WordRewriting quotes({
        {"[“”„‟«»＂]", "\""},
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
        {"[!?]*\\?[!?]+", "?"},
        {"!+(?=\\s+[a-z])", ","},
        {"!{2,}", "!"},
        {",(?:\\s*,)+", ","},
        {"\\s+,", ","},
        {"(?:\\s*[-–—,;]+|\\.{2,}|…)+\\s*$", ""},
        {"\\s{2,}", " "},
    });
    const std::string plain = signs.outsideQuotes(withoutStrayQuote(quotes.outsideQuotes(trimmed(words))));
    return plain.empty() ? std::string(words) : plain;
}

} // namespace quorvell
