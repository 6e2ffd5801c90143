// SPDX-License-Identifier: MIT
// Which notes are lists.
#pragma once

#include "QuorvellCore/notebook/Note.h"

namespace quorvell {

struct ListNote {
    /// A note that the assistant may see, and no reminder, whose body is nothing but check boxes, or whose title says
    /// that it is a list and whose body has some, or is empty. A text in which a few boxes stand is none.
    static bool isList(const Note& note);
};

} // namespace quorvell
