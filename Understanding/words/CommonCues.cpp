// SPDX-License-Identifier: MIT
#include "Understanding/words/CommonCues.h"

namespace quorvell {

namespace {

using Cues = CommonCues;
constexpr auto head = CuePlace::head;
constexpr auto anywhere = CuePlace::anywhere;
constexpr auto end = CuePlace::end;

constexpr CueWords table[] = {
    {Cues::filler, head,
        "me|us|am|i am|it is|that "
        "is|some|please|quick|new|another|little|short|small|mental|out|aloud|loud|out loud|back|off|to me|"
        "for me|for us|up|again|just|else|is|are|am i|we|i|quickly|kindly|still|now|currently|so far|already|here|"
        "down|got|of|ever|yet|the words|one of|for later|might|could|would|can|may|should|will|love|dear|darling|mate|"
        "a bit of|a little|be able to|whether|if"},
    {Cues::filler, anywhere, "at all|any more$|anymore$|any longer$|after all$"},
    {Cues::indefinite, head, "a|an"},
    {Cues::all, head, "all|all of"},
    {Cues::definite, head, "the|my|our|that|this|those|these|your"},
    {Cues::pronoun, head,
        "it|them|it$|that$|this$|them$|that one$|this one$|that bit$|of that$|of it$|of this$|it to me$|"
        "it out$|it out loud$|it aloud$|it back$|that to me$|that out$|that one to me$|it again$|that back$"},
    {Cues::make, head,
        "make|put|set|set up|dictate|i would like|i would love|i want|stick|pop|get|start|give|give me|i "
        "need|need|want|take|insert|throw in|"
        "fill in|write in|put in|jot in|have|chuck|bung|drop in|get me"},
    {Cues::enter, head, "add|enter|create|insert|register|include|add in|note in|fit in with"},
    {Cues::find, head,
        "find|find out|look for|look up|look in|look through|look into|search|search for|search in|search through|"
        "hunt|hunt for|hunt down|dig out|dig up|dig through|track down|locate|go through|have a look for|have a look "
        "in|have a look through|have a look|take a look|check|check in|rummage|scan|look"},
    {Cues::read, head,
        "read|read out|read out loud|read back|read aloud|hear|let me hear|play back|recite|read through|go over"},
    {Cues::open, head, "open|open up|go to|turn to|jump to"},
    {Cues::show, head,
        "show|list|list out|display|let me see|see|run through|run me through|go through|bring up|pull up|get|"
        "get out|fetch|print|walk me through|talk me through|let me have|give me|recap"},
    {Cues::tell, head, "tell|tell me|let me know|say|shout|mention|ask me|call me|message me"},
    {Cues::cancel, head,
        "delete|cancel|remove|stop|get rid of|throw away|throw out|throw|bin|trash|scrap|erase|call "
        "off|drop|scratch|"
        "clear|wipe|lose|dismiss|turn off|switch off|disable|deactivate|forget|forget about|strike|ditch|chuck out|rub "
        "out|do away with|cross out"},
    {Cues::cancel, anywhere,
        "off my calendar|off the calendar|off my diary|out of my calendar|out of my diary|from my calendar|from my "
        "diary"},
    {Cues::move, head,
        "move|reschedule|shift|change|push|rearrange|switch|bump|slide|rebook|bring|"
        "alter|adjust|update|swap|correct"},
    {Cues::delay, head,
        "postpone|put off|put it off|put that off|put this off|push it back|push that back|move it back|put it back|"
        "push back|delay|put back|set back|push out|defer|hold off|hold off on|hold over|move back|hold|"
        "put|push off|shelve|leave"},
    {Cues::delay, anywhere, "off till|off until|back until|back till|off to|back to"},
    {Cues::what, head,
        "what|what is|what are|which|how|how is|how does|how do|what else is|what else|what was|what all"},
    {Cues::when, head,
        "when|what time|what times|which times|at what time|how soon|when is|what day|which day|which days|what days|"
        "what hours|which slots"},
    {Cues::have, head,
        "do i have|have i|have i got|i have|i have got|do we have|have we got|do i|does|do|does my|would i have|will i "
        "have|could i have|can i have|are we|will i be|will i|is|did i|have you got|do you have|have|got|am i"},
    {Cues::there, head, "is there|are there|there is|there are|will there be|is there still"},
    {Cues::any, head, "any|anything|something|things|stuff|any of|whatever|everything|anything at all"},
    {Cues::topic, head,
        "about|regarding|concerning|mentioning|mention|mentions|that mentions|which mentions|that mention|called|named|"
        "titled|entitled|to do with|talk about|talks about|that says"},
    {Cues::instead, end, "instead|instead of that|rather$"},
    {Cues::instead, head, "i would rather have|rather have|i would prefer|prefer"},
    {Cues::foreign, anywhere,
        "file|files|window|windows|tab|tabs|email|emails|mail|message|messages|app|apps|browser|volume|language|song|"
        "music|light|lights|picture|photo|photos|folder|screen|website|page|video|game|computer|television|tv|weather|"
        "keep quiet|keep silent|keep calm|keep "
        "still|news|radio|parking|flight|flights|hotel|restaurant|train|taxi|cab|table|ticket|tickets"},
};

} // namespace

std::span<const CueWords> CommonCues::rows()
{
    return table;
}

} // namespace quorvell
