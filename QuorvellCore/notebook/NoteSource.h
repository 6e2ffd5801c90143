// SPDX-License-Identifier: MIT
// Where a clip was taken from.
#pragma once

#include <optional>
#include <string>

namespace quorvell {

struct NoteSource {
    std::optional<std::string> app{};
    std::optional<std::string> site{}; ///< Host shown to the person.
    std::optional<std::string> address{};
    std::optional<std::string> title{};

    /// The short origin text that is shown and searched: the site without a leading "www.", else the app, else none.
    std::optional<std::string> label() const;

    bool operator==(const NoteSource&) const = default;
};

} // namespace quorvell
