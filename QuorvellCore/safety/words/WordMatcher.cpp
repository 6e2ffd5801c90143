// SPDX-License-Identifier: MIT
#include "QuorvellCore/safety/words/WordMatcher.h"

#include "QuorvellCore/safety/words/LookAlikes.h"
#include "QuorvellCore/text/CodePoints.h"

#include <unicode/uchar.h>

#include <algorithm>

namespace quorvell {

namespace {

/// Behind all white space that stands at `position`.
std::size_t behindSpace(std::string_view text, std::size_t position)
{
    for (std::size_t next = position; next < text.size(); position = next)
        if (!isWhiteSpace(nextCodePoint(text, next)))
            break;
    return position;
}

} // namespace

void WordMatcher::Tree::add(std::string_view word, std::size_t index)
{
    if (word.empty())
        return;
    std::uint32_t node = 0;
    for (const char letter : word) {
        std::uint32_t next = after(node, letter);
        if (next == 0) {
            next = static_cast<std::uint32_t>(nodes.size());
            nodes.push_back({.letter = letter, .sibling = nodes[node].child});
            nodes[node].child = next;
            if (node == 0)
                first[static_cast<unsigned char>(letter)] = next;
        }
        node = next;
    }
    nodes[node].word = std::min(nodes[node].word, index);
}

std::uint32_t WordMatcher::Tree::after(std::uint32_t node, char letter) const
{
    if (node == 0)
        return first[static_cast<unsigned char>(letter)];
    std::uint32_t next = nodes[node].child;
    while (next != 0 && nodes[next].letter != letter)
        next = nodes[next].sibling;
    return next;
}

WordMatcher::WordMatcher(
    std::span<const std::string_view> words, std::span<const std::string_view> endings, Bounds bounds)
    : m_bounds(bounds)
{
    m_looks.hasLooseMarks = true;
    for (std::size_t index = 0; index < words.size(); ++index) {
        m_written.add(words[index], index);
        m_looks.add(asItLooks(words[index]), index);
    }
    for (const std::string_view ending : endings) {
        m_written.endings.emplace_back(ending);
        m_looks.endings.push_back(asItLooks(ending));
    }
}

std::optional<std::size_t> WordMatcher::firstIn(const JudgedText& text) const
{
    const std::size_t best =
        std::min({search(m_written, text.lower()), search(m_written, text.plain()), search(m_looks, text.looks())});
    return best == none ? std::nullopt : std::optional(best);
}

std::optional<std::size_t> WordMatcher::firstInWritten(std::string_view lower) const
{
    const std::size_t best = search(m_written, lower);
    return best == none ? std::nullopt : std::optional(best);
}

std::size_t WordMatcher::search(const Tree& tree, std::string_view text) const
{
    std::size_t best = none;
    bool isInWord = false;
    for (std::size_t position = 0; position < text.size();) {
        if (!isInWord)
            best = searchFrom(tree, text, position, best);
        isInWord = isWithinWord(tree, nextCodePoint(text, position));
    }
    return best;
}

/// The better of `best` and what begins at `start`.
std::size_t WordMatcher::searchFrom(const Tree& tree, std::string_view text, std::size_t start, std::size_t best) const
{
    std::uint32_t node = 0;
    for (std::size_t position = start; position < text.size();) {
        std::size_t next = position;
        const bool isSpace = isWhiteSpace(nextCodePoint(text, next));
        node = tree.after(node, isSpace ? ' ' : text[position]);
        if (node
            == 0) // Before the run of white space is walked through, so that none is walked through again and again.
            break;
        position = isSpace ? behindSpace(text, next) : position + 1;
        if (tree.nodes[node].word < best && endsAt(tree, text, position))
            best = tree.nodes[node].word;
    }
    return best;
}

bool WordMatcher::endsAt(const Tree& tree, std::string_view text, std::size_t position) const
{
    return std::any_of(tree.endings.begin(), tree.endings.end(), [&](const std::string& ending) {
        std::size_t end = position + ending.size();
        return text.substr(position).starts_with(ending)
            && (end == text.size() || !isWithinWord(tree, nextCodePoint(text, end)));
    });
}

bool WordMatcher::isWithinWord(const Tree& tree, char32_t point) const
{
    if (m_bounds == Bounds::none)
        return false;
    const auto code = static_cast<UChar32>(point);
    const bool isMark = tree.hasLooseMarks && (U_MASK(u_charType(code)) & U_GC_M_MASK) != 0;
    return u_isalpha(code) || isMark || (m_bounds == Bounds::lettersAndDigits && u_isdigit(code));
}

} // namespace quorvell
