// SPDX-License-Identifier: MIT
// Whatever a practice file names has to be in it.
#pragma once

#include "Quorvell/practice/description/PracticeDescription.h"
#include "Quorvell/practice/file/PracticeMistakes.h"

namespace quorvell {

struct PracticeReferences {
    /// Of applications, windows, pages, elements and facts; and that no name stands for two.
    static void check(const PracticeDescription& description, PracticeMistakes& mistakes);
};

} // namespace quorvell
