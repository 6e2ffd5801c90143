// SPDX-License-Identifier: MIT
// A table of patterns and what is written in place of what they match. Pure.
#pragma once

#include "QuorvellCore/text/Pattern.h"

#include <deque>
#include <initializer_list>
#include <string>
#include <string_view>

namespace quorvell {

class WordRewriting {
public:
    struct Row {
        std::string_view pattern; ///< Of any case.
        std::string_view with; ///< "$1" to "$9" stand for its groups.
    };

    WordRewriting(std::initializer_list<Row> rows);
    explicit WordRewriting(const std::deque<std::pair<std::string, std::string>>& rows);

    /// Every match of every row, the rows in their order. What stands between double quotes is somebody's own words,
    /// and stays.
    std::string outsideQuotes(std::string text) const;
    /// The first row that matches, once, wherever it does; nothing happens where none does.
    std::string first(const std::string& text) const;

private:
    struct Compiled {
        Compiled(std::string_view expression, std::string_view replacement);

        Pattern pattern;
        std::string with;
    };

    std::deque<Compiled> m_rows;
};

} // namespace quorvell
