// SPDX-License-Identifier: MIT
// The known ways as a file that can be read and edited by hand: docs/formats/macros.md.
#pragma once

#include "QuorvellCore/automation/engine/macros/MacroBook.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quorvell {

struct MacroFile {
    static constexpr std::size_t longest = 4 * 1024 * 1024; ///< Bytes.
    static constexpr int version = 1;

    MacroBook book{};
    std::vector<std::string> problems{}; ///< Sentences about what was passed over.

    /// Nothing where the text is not such a file: it is then left as it is and not written over.
    static std::optional<MacroFile> read(std::string_view text);
    static std::string write(const MacroBook& book);
};

} // namespace quorvell
