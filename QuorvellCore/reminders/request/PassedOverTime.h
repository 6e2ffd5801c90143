// SPDX-License-Identifier: MIT
// A time in a request that was left over, and what it leaves open.
#pragma once

#include "QuorvellCore/text/Pattern.h"

namespace quorvell {

struct PassedOverTime {
    enum class About { day, clock, everything };

    About about = About::everything; ///< What it leaves open. The rest of the time is as clear as it was said.
    TextRange words; ///< In the lower-cased text.
    bool isOfTask = false; ///< Perhaps a time, perhaps none: the words stay in the task.
};

} // namespace quorvell
