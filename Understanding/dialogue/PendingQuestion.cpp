// SPDX-License-Identifier: MIT
#include "Understanding/dialogue/PendingQuestion.h"

#include "Understanding/dialogue/QuestionKind.h"

namespace quorvell {

bool PendingQuestion::isYesOrNo() const
{
    return kind && !kind->answer;
}

} // namespace quorvell
