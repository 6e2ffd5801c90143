// SPDX-License-Identifier: MIT
// What is asked about a reminder, and how the answers are taken.
#pragma once

#include "Understanding/dialogue/QuestionKind.h"

#include <string>
#include <string_view>
#include <vector>

namespace quorvell {

struct ReminderQuestions {
    static const QuestionKind whichTime; ///< Which of the choices.
    static const QuestionKind when;
    static const QuestionKind task; ///< What the reminder at `date` is for.
    static const QuestionKind whole; ///< Neither task nor time is known.
    static const QuestionKind whatThatIs; ///< That "them" stands for; its verb and its time are known.
    static const QuestionKind occurrences; ///< The next one, or all: the call is to be made again with `series`.
    static const QuestionKind whichReminder; ///< Of the found ones: the call is to be made again with its id.

    /// "I am not sure what you mean by \"tomorow\". On which day should I remind you to call mum at 5 PM?"
    static std::string wordedDoubt(std::string_view unclear, const SettledTime& settled, const std::string& remindYou);
    /// "Do you mean 5 in the morning or 5 in the afternoon?"
    static std::string wordedChoices(const std::vector<TimeChoice>& choices);
};

} // namespace quorvell
