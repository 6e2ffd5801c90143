// SPDX-License-Identifier: MIT
#include "Understanding/skills/reminders/ReminderCues.h"

namespace quorvell {

namespace {

using Cues = ReminderCues;
constexpr auto start = CuePlace::start;
constexpr auto head = CuePlace::head;
constexpr auto anywhere = CuePlace::anywhere;

constexpr CueWords table[] = {
    {Cues::remind, head,
        "remind|remind me|remind us|nudge me|nag me|pester me|bug me|chase me|hassle me|ping me|alert me|prompt "
        "me|notify me|buzz me|poke me|shout at me|"
        "give me a nudge|give me a shout|give me a ping|give me a poke|give me a buzz|jog my memory|"
        "make sure i|make sure that i|make sure we|see to it that i|see that i|"
        "get me to|be reminded|give me a heads up|drop me a hint|let me know when i should"},
    {Cues::remind, start, "reminder to|reminder for|reminder about|a reminder to|a reminder for|new reminder|reminder"},
    {Cues::remind, head,
        "be sure to remind me|be sure you remind me|make sure to remind me|make sure you remind me|remember to remind "
        "me|"
        "try to remind me|do remind me|do not forget to remind me|never forget to remind me|send me a reminder|"
        "shoot me a reminder|drop me a reminder|leave me a reminder|appreciate a reminder|i would appreciate a "
        "reminder|"
        "would appreciate a reminder|remindme|remember me|reminding me|turn on your reminders|turn on reminders|"
        "turn on a reminder|activate a reminder|flag up|put me down a reminder|i could use a reminder|"
        "could use a reminder|it would be great to be reminded|it would be nice to be reminded"},
    {Cues::wake, head, "wake me|wake me up|get me up|get me out of bed|get up"},
    {Cues::later, head,
        "later|i can not do it now|i can not do that now|i will do it|i will do that|not this minute|not today|not "
        "tomorrow|not this morning|not tonight|not "
        "now|not yet|not right now|snooze|later on|in a "
        "bit|in a while|maybe later|another time|"
        "remind me again|remind me later$|remind me again later|remind me about it|remind me about that|"
        "remind me about it again|remind me about that again|remind me once more|ask me again|ask me later|"
        "tell me again|tell me later|nudge me again|ping me again|i will do it later|i will do that later|"
        "i can not right now|a bit later|a little later|give me another|give me a few more|give me some more|not just "
        "now|try me again|"
        "i am busy|come back to me|do it later"},
    {Cues::done, anywhere,
        "done|finished|completed|complete|sorted|handled|taken care of|dealt with|ticked off|crossed off|checked off|"
        "tick off|tick|cross off|check off|over and done with|out of the way|over with|off my list|off the list|"
        "as done|as finished|as complete|as completed|i did|i already did|i have already done|sorted out|all done|"
        "did that|did it|been done|wrapped up|is history"},
    {Cues::later, anywhere,
        "can wait|wait till|wait until|will have to wait|has to wait|have to wait|must wait|will wait|could wait"},
    {Cues::stop, head,
        "no need to remind me|no need to remind me of|no need to remind me about|do not remind me|do not remind me "
        "about|"
        "stop reminding me|stop reminding me about|you need not remind me|i do not need|do not need|no longer need|"
        "no more|no further|enough of|that is enough of|i am over with|"
        "never mind about|never mind the"},
    {Cues::done, head, "cross|tick|consider|mark|mark off|finish|strike off|i have done|i am through with"},
    {Cues::reminder, anywhere, "reminder"},
    {Cues::reminders, anywhere,
        "reminders|jobs|errands|to-do|to-do list|to-dos|to do|to dos|todos|todo|to do list|todo list|task "
        "list|tasks|list of things "
        "to do|chores"},
    {Cues::pending, anywhere,
        "was i meant to remember|was i meant to do|meant to remember|meant to do|was i supposed to do|was i supposed "
        "to remember|"
        "have i forgotten anything|did i forget anything|am i forgetting anything|have i missed anything|left "
        "for|left$|"
        "did i ask you to remind me of|did i ask you to remind me about|do you have to remind me of|"
        "do you have to remind me about|will you remind me of|are you reminding me of|you are supposed to remind me of|"
        "you have to remind me of|you need to remind me of|you should remind me of|is left|to remember|to do "
        "still|left to do|still to do|need to do|need to remember|must i do|should i do|must i not "
        "forget|should i not forget|have to do|got to do|got to remember|have to remember|pending|outstanding|due|"
        "on my plate|on my list|on the list|do i need to do|do i have to do|do i need to remember|am i supposed to do|"
        "am i supposed to remember|must i remember|should i remember|on my to do list|on my to-do list|on the to do "
        "list|left to do|"
        "waiting for me|had to do|i had to do|i had to remember|had to remember|supposed to do|open tasks|do i still "
        "have to do|am i meant to do|am i meant to remember"},
};

} // namespace

std::span<const CueWords> ReminderCues::rows()
{
    return table;
}

} // namespace quorvell
