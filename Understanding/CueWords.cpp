// SPDX-License-Identifier: MIT
#include "Understanding/CueWords.h"

namespace quorvell {

namespace {

using enum Cue;
constexpr auto start = CuePlace::start;
constexpr auto head = CuePlace::head;
constexpr auto anywhere = CuePlace::anywhere;
constexpr auto end = CuePlace::end;

constexpr CueWords rows[] = {
    {filler, head,
        "me|us|am|i am|it is|that "
        "is|some|please|quick|new|another|little|short|small|mental|out|aloud|loud|out loud|back|off|to me|"
        "for me|for us|up|again|just|else|is|are|am i|we|i|quickly|kindly|still|now|currently|so far|already|here|"
        "down|got|of|ever|yet|the words|one of|for later|might|could|would|can|may|should|will|love|dear|darling|mate|"
        "a bit of|a little|be able to|whether|if"},
    {filler, anywhere, "at all|any more$|anymore$|any longer$|after all$"},
    {indefinite, head, "a|an"},
    {all, head, "all|all of"},
    {definite, head, "the|my|our|that|this|those|these|your"},
    {pronoun, head,
        "it|them|it$|that$|this$|them$|that one$|this one$|that bit$|of that$|of it$|of this$|it to me$|"
        "it out$|it out loud$|it aloud$|it back$|that to me$|that out$|that one to me$|it again$|that back$"},

    {remind, head,
        "remind|remind me|remind us|nudge me|nag me|pester me|bug me|chase me|hassle me|ping me|alert me|prompt "
        "me|notify me|buzz me|poke me|shout at me|"
        "give me a nudge|give me a shout|give me a ping|give me a poke|give me a buzz|jog my memory|set an alarm|"
        "set me an alarm|set a timer|make sure i|make sure that i|make sure we|see to it that i|see that i|"
        "get me to|be reminded|give me a heads up|drop me a hint|let me know when i should"},
    {remind, start, "reminder to|reminder for|reminder about|a reminder to|a reminder for|new reminder|reminder"},
    {wake, head, "wake me|wake me up|get me up|get me out of bed"},
    {remember, head,
        "remember|do not you forget|do not you ever forget|make sure you remember|be sure to remember|be aware|for the "
        "record|for future reference|do not "
        "forget|do not ever forget|never forget|do not let me "
        "forget|let me not forget|"
        "make sure i do not forget|make sure that i do not forget|make sure i remember|must not forget|"
        "i must not forget|i should not forget|i can not forget|i cannot forget|do not want to forget|"
        "i do not want to forget|not forget|must remember|i must remember|i have to remember|i need to remember|"
        "i should remember|i ought to remember|help me remember|help me to remember|keep in mind|bear in mind|"
        "do not let it slip my mind|do not let me miss"},
    {know, head,
        "know|you should know|i want you to know|for your information|"
        "learn|remember about me|remember this about me|remember something about me|know this about me|"
        "know something about me|note about me|keep in mind about me|save about me"},
    {keep, head,
        "get this written down|get that written down|file this|file that|file it|keep a "
        "record|keep|save|store|record|note down|jot|jot down|jot this down|jot "
        "that down|jot it down|write|"
        "write down|write this down|write that down|write it down|write up|scribble|scribble down|scribble this down|"
        "put this on paper|put that on paper|put it on paper|put on paper|scrawl|put down|put this down|put that "
        "down|put it down|get this down|get that down|take down|take this down|"
        "take that down|take it down|make note|log|log that|note this|note it down|note this down|note that down|pop "
        "down|commit to paper|memorise|memorize|type up|type out|leave a note"},
    {keep, start, "note|memo|note to self|new note|for my records|for our records|for my files|for the files"},
    {make, head,
        "make|put|set|set up|dictate|i would like|i would love|i want|stick|pop|get|start|give|give me|i "
        "need|need|want|take|insert|throw in|"
        "fill in|write in|put in|put down|jot in|have|chuck|bung|drop in|get me"},
    {enter, head, "add|enter|create|insert|register|include|add in|note in|fit in with"},
    {enter, start, "new"},
    {own, start, "i have|i have got|we have|we have got|there is|i am having|i am meeting|i am seeing|i am going to"},
    {schedule, head,
        "schedule|book|book in|book me|book me in|book me in for|book us in for|put me down for|sign me up for|pencil "
        "in|"
        "pencil me in|pencil me in for|pencil|block out|block off|block|plan|arrange|slot in|fix up|diarise|set aside|"
        "reserve|organise|mark down|put me in for|log me in for|enter me for|set me up with"},
    {find, head,
        "find|find out|look for|look up|look in|look through|look into|search|search for|search in|search through|"
        "hunt|hunt for|hunt down|dig out|dig up|dig through|track down|locate|go through|have a look for|have a look "
        "in|have a look through|have a look|take a look|check|check in|rummage|scan|look"},
    {read, head,
        "read|read out|read out loud|read back|read aloud|hear|let me hear|play back|recite|read through|go over"},
    {open, head, "open|open up|go to|turn to|jump to"},
    {show, head,
        "show|list|list out|display|let me see|see|run through|run me through|go through|bring up|pull up|get|"
        "get out|fetch|print|walk me through|talk me through|let me have|give me|recap"},
    {tell, head, "tell|tell me|let me know|say|shout|mention|ask me|call me|message me"},
    {cancel, head,
        "delete|cancel|remove|stop|get rid of|throw away|throw out|throw|bin|trash|scrap|erase|call "
        "off|drop|scratch|"
        "clear|wipe|lose|dismiss|turn off|forget|forget about|strike|ditch|chuck out|rub out|do away with|cross out"},
    {cancel, anywhere,
        "off my calendar|off the calendar|off my diary|out of my calendar|out of my diary|from my calendar|from my "
        "diary"},
    {move, head,
        "move|reschedule|shift|change|push|rearrange|switch|bump|slide|rebook|bring|"
        "alter|adjust|update|swap|correct"},
    {unable, start,
        "i can not do|i can not make|i can not manage|i can not get to|i can not go to|i can not come to|i can not "
        "attend|i cannot do|i cannot make|i cannot manage|i cannot get to|i cannot go to|i cannot come to|i cannot "
        "attend|i will not make|i will not manage|i will not be able to make|i am not able to do|i am not able to "
        "make|i am unable to make|we can not do|we can not make|we can not manage|i will have to miss|i have to miss|"
        "i must miss|i have no time for|i do not have time for|i have not got time for"},
    {unable, anywhere,
        "does not work for|does not work for me|does not work|does not suit me|does not suit|is no good for|is no good "
        "for me|is no good|will not work for|will not work"},
    {earlier, anywhere, "forward|earlier|sooner"},
    {earlier, head, "bring forward|pull forward|move forward|move up|bring up to"},
    {delay, head,
        "postpone|put off|put it off|put that off|put this off|push it back|push that back|move it back|put it back|"
        "push back|delay|put back|set back|push out|defer|hold off|hold off on|hold over|move back|hold|"
        "put|push off|shelve|leave"},
    {delay, anywhere, "off till|off until|back until|back till|off to|back to"},
    {later, head,
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
    {done, anywhere,
        "done|finished|completed|complete|sorted|handled|taken care of|dealt with|ticked off|crossed off|checked off|"
        "tick off|tick|cross off|check off|over and done with|out of the way|over with|off my list|off the list|"
        "as done|as finished|as complete|as completed|i did|i already did|i have already done|sorted out|all done|"
        "did that|did it|been done|wrapped up|is history"},
    {later, anywhere,
        "can wait|wait till|wait until|will have to wait|has to wait|have to wait|must wait|will wait|could wait"},
    {done, head,
        "no need to remind me|no need to remind me of|no need to remind me about|do not remind me|do not remind me "
        "about|"
        "stop reminding me|stop reminding me about|you need not remind me|i do not need|do not need|no longer need|"
        "no more|no further|enough of|that is enough of|i am over with|"
        "never mind about|never mind the"},
    {done, head, "cross|tick|consider|mark|mark off|finish|strike off|cross out|i have done|i am through with|scratch"},
    {also, start, "also|as well|too"},

    {what, head, "what|what is|what are|which|how|how is|how does|how do|what else is|what else|what was|what all"},
    {when, head,
        "when|what time|what times|which times|at what time|how soon|when is|what day|which day|which days|what days|"
        "what hours|which slots"},
    {where, head, "where|whereabouts|where is|where are|where was|where do i find|where can i find|where have i got"},
    {have, head,
        "do i have|have i|have i got|i have|i have got|do we have|have we got|do i|does|do|does my|would i have|will i "
        "have|could i have|can i have|are we|will i be|will i|is|did i|have you got|do you have|have|got|am i"},
    {there, head, "is there|are there|there is|there are|will there be|is there still"},
    {any, head, "any|anything|something|things|stuff|any of|whatever|everything|anything at all"},
    {wrote, head,
        "did i write|did i write down|did i note|did i note down|did i say|did i save|did i keep|did i put|did i jot "
        "down|did i put down|did i record|did i store|have i written|have i written down|have i noted|have i noted "
        "down|have i saved|have i kept|have i recorded|have i put|have i put down|i wrote|i wrote down|i said|i "
        "noted|i noted down|i saved|i put down|i kept|i put|i have written|i have written down|i have noted|i have "
        "saved|i jotted|i jotted down|i told you|did i tell you|have i told you|have i said|i recorded|written|written "
        "down|noted|noted down|mentioned|did i mention|have i mentioned|do i know|did i scribble|did i scribble down"},
    {say, anywhere, "say|says|it say|contain"},
    {topic, head,
        "about|regarding|concerning|mentioning|mention|mentions|that mentions|which mentions|that mention|called|named|"
        "titled|entitled|to do with|talk about|talks about|that says"},

    {note, anywhere, "note|memo|jotting|entry about"},
    {notes, anywhere, "notes|memos|jottings"},
    {newest, head,
        "last note|latest note|newest note|most recent note|last thing i wrote|last thing i wrote down|last memo|last "
        "thing i noted|last thing i saved"},
    {notebook, anywhere, "notebook|note book"},
    {reminder, anywhere, "reminder|alarm"},
    {reminders, anywhere,
        "reminders|jobs|errands|to-do|to-do list|to-dos|to do|to dos|todos|todo|to do list|todo list|task "
        "list|tasks|list of things "
        "to do|chores|alarms"},
    {calendar, anywhere,
        "calendar|diary|agenda|planner|timetable|my schedule|the schedule|our schedule|appointments|events|meetings|"
        "plans|engagements|commitments|bookings"},
    {day, anywhere,
        "my day|my week|my weekend|my morning|my afternoon|my evening|my month|the day ahead|the week ahead|"
        "my whole day"},
    {event, head, "event|calendar entry|entry|calendar event|event called|event for|date for"},
    {occasion, anywhere,
        "meeting|appointment|lunch|dinner|breakfast|party|a visit|a call|phone call|video "
        "call|interview|lesson|class|brunch|haircut|checkup|"
        "coffee|drinks|session|practice|rehearsal|birthday|wedding|concert|trip|tea|supper|conference|training"},
    {free, anywhere,
        "room for|a window of|window of|free|available|availability|gap|gaps|slot|slots|spare time|spare hour|spare "
        "moment|squeeze in|squeeze|fit "
        "in|fit|opening|"
        "openings|free time|free slot|free slots|unbooked|nothing on|open slot|open slots"},
    {once, anywhere,
        "this time|that time|only this time|just this time|this one time|this time only|this once|only this once|just "
        "this once|just once|only once"},
    {time, anywhere, "time|times"},
    {busy, head,
        "anything else|on|going on|happening|coming up|planned|scheduled|doing|am i doing|up to|am i up "
        "to|busy|look|look "
        "like|looking|"
        "looking like|in store|lined up|on the cards|booked|is on|is happening|is coming up|is going on|is planned|"
        "is scheduled|is in store|is lined up|do i have on|have i got on|have i on|got on|am i supposed to be|"
        "am i meeting|am i seeing|is up"},
    {busy, anywhere, "look like|looking like|coming up|lined up|going on"},
    {next, anywhere,
        "what is next$|what comes next$|next on|next in|is next on|is next in|next up|up next|coming up next|comes "
        "next|next appointment|next event|next meeting|next thing|my next|my next appointment|my next meeting|my next "
        "event|next engagement|next$"},
    {next, head, "what time is my|what time is the|when is my|when is the|when does my|when am i seeing|when do i see"},
    {further, anywhere,
        "after that|after it|after this|after this one|after that one|afterwards|and then$|what then$|next after that"},
    {pending, anywhere,
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
    {instead, end, "instead|instead of that|rather$"},
    {instead, head, "i would rather have|rather have|i would prefer|prefer"},
    {foreign, anywhere,
        "file|files|window|windows|tab|tabs|email|emails|mail|message|messages|app|apps|browser|volume|language|song|"
        "music|light|lights|picture|photo|photos|folder|screen|website|page|video|game|computer|television|tv|weather|"
        "news|radio|parking|flight|flights|hotel|restaurant|train|taxi|cab|table|ticket|tickets"},
};

} // namespace

std::span<const CueWords> CueWords::all()
{
    return rows;
}

} // namespace quorvell
