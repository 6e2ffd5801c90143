// SPDX-License-Identifier: MIT
// A list inside a note: the lines of Markdown that begin with a check box. Every other line stays as it is, byte for
// byte.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quorvell {

struct CheckListItem {
    std::string text; ///< On one line, never empty.
    bool isTicked = false;

    bool operator==(const CheckListItem&) const = default;
};

/// A box is "- [ ] Milk", "* [x] Eggs" or "2. [ ] Bread", at any depth, outside of fenced code. One without words is
/// no item: it keeps a list a list while nothing is on it, and the next item takes its place. Items are counted from 0
/// in the order of their lines.
class CheckList {
public:
    static constexpr std::size_t longestItem = 500; ///< Characters: nobody reads out more.
    static constexpr std::size_t mostItems = 1000; ///< So that a note stays one that can be read.
    static constexpr std::size_t mostBoxes = 10'000; ///< What others wrote; beyond, a text is data, and no list.
    static constexpr std::string_view emptyBody = "- [ ]";

    explicit CheckList(std::string_view body);

    /// As an item is written: on one line. Nothing where there are no words, or too many.
    static std::optional<std::string> itemText(std::string_view text);

    const std::vector<CheckListItem>& items() const { return m_items; }
    std::size_t openItems() const;
    bool hasBoxes() const { return !m_boxes.empty(); }
    bool isTooLong() const { return m_boxes.size() > mostBoxes; }
    /// Whether there is nothing besides boxes but headings, blank lines and what belongs to a box.
    bool isNothingElse() const { return m_isNothingElse; }
    std::string body() const;

    /// Behind the last box, in its form. The texts are those of `itemText`.
    void add(const CheckListItem& item);
    void setTicked(std::size_t item, bool isTicked);
    void setText(std::size_t item, std::string_view text);
    /// With the lines that belong to them. In any order, each once.
    void remove(const std::vector<std::size_t>& items);

private:
    struct Box {
        std::size_t line = 0; ///< Counted from 0.
        std::size_t indent = 0; ///< Bytes before the marker.
        std::size_t mark = 0; ///< Where the blank or the x stands, in bytes of the line.
        bool hasItem = false;
    };

    static std::optional<Box> boxIn(std::string_view line);
    void read();
    static bool belongsTo(const Box& box, std::string_view line);
    std::size_t endOfBox(const Box& box) const;
    std::string newLine(const CheckListItem& item) const;

    std::vector<std::string> m_lines; ///< With their ends.
    std::vector<Box> m_boxes; ///< Those without words too.
    std::vector<CheckListItem> m_items;
    std::vector<std::size_t> m_boxOfItem; ///< Its place among the boxes.
    std::size_t m_textEnd = 0; ///< Number of lines before code that nothing closes: what follows it is code, too.
    bool m_isNothingElse = true;
};

} // namespace quorvell
