// SPDX-License-Identifier: MIT
// What is asked about a reminder, and how the answers are taken.
#pragma once

#include "Understanding/dialogue/QuestionKind.h"

#include <string>
#include <vector>

namespace quorvell {

struct ReminderQuestions {
    static const QuestionKind whichTime; ///< Which of the choices.
    static const QuestionKind when;
    static const QuestionKind task; ///< What the reminder at `date` is for.
    static const QuestionKind whole; ///< Neither task nor time is known.
    static const QuestionKind whichReminder; ///< Of the found ones: the call is to be made again with its id.

    /// "Do you mean 5 in the morning or 5 in the afternoon?"
    static std::string wordedChoices(const std::vector<TimeChoice>& choices);
};

} // namespace quorvell
