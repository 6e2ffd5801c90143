// SPDX-License-Identifier: MIT
// What is asked back about alarms and timers.
#pragma once

#include "Understanding/dialogue/QuestionKind.h"

namespace quorvell {

struct AlarmQuestions {
    static const QuestionKind whichTime; ///< Which of the choices.
    static const QuestionKind when; ///< For what time an alarm; its name is the task.
    static const QuestionKind
        howOften; ///< By which rule the alarm at `text` of the arguments rings; its name is the task.
    static const QuestionKind length; ///< For how long a timer; its name is the task.
    static const QuestionKind whichOne; ///< Of the found ones: the call is to be made again with its id.
    static const QuestionKind occurrences; ///< The next one, or all: the call is to be made again with `series`.
    static const QuestionKind newName; ///< What the one with that id is called from now on: the call waits for `task`.
    static const QuestionKind newTime; ///< To what time the one with that id is moved: the call waits for `later`.
};

} // namespace quorvell
