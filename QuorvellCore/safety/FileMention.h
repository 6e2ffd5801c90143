// SPDX-License-Identifier: MIT
// Who named a file that is to be opened.
#pragma once

namespace quorvell {

enum class FileMention {
    byUser, ///< In their own words.
    byOthers, ///< A page, a message, the model.
};

} // namespace quorvell
