// SPDX-License-Identifier: MIT
#include "Understanding/skills/calendar/reading/AgendaCues.h"

namespace quorvell {

namespace {

using Cues = AgendaCues;
constexpr auto start = CuePlace::start;
constexpr auto head = CuePlace::head;
constexpr auto anywhere = CuePlace::anywhere;

constexpr CueWords table[] = {
    {Cues::own, start,
        "i have|i have got|we have|we have got|there is|i am having|i am meeting|i am seeing|i am going to"},
    {Cues::schedule, head,
        "schedule|book|book in|book me|book me in|book me in for|book us in for|put me down for|sign me up for|pencil "
        "in|"
        "pencil me in|pencil me in for|pencil|block out|block off|block|plan|arrange|slot in|fix up|diarise|set aside|"
        "reserve|organise|mark down|put me in for|log me in for|enter me for|set me up with"},
    {Cues::unable, start,
        "i can not do|i can not make|i can not manage|i can not get to|i can not go to|i can not come to|i can not "
        "attend|i cannot do|i cannot make|i cannot manage|i cannot get to|i cannot go to|i cannot come to|i cannot "
        "attend|i will not make|i will not manage|i will not be able to make|i am not able to do|i am not able to "
        "make|i am unable to make|we can not do|we can not make|we can not manage|i will have to miss|i have to miss|"
        "i must miss|i have no time for|i do not have time for|i have not got time for"},
    {Cues::unable, anywhere,
        "does not work for|does not work for me|does not work|does not suit me|does not suit|is no good for|is no good "
        "for me|is no good|will not work for|will not work"},
    {Cues::earlier, anywhere, "forward|earlier|sooner"},
    {Cues::earlier, head, "bring forward|pull forward|move forward|move up|bring up to"},
    {Cues::calendar, anywhere,
        "calendar|diary|agenda|planner|timetable|my schedule|the schedule|our schedule|appointments|events|meetings|"
        "plans|engagements|commitments|bookings"},
    {Cues::day, anywhere,
        "my day|my week|my weekend|my morning|my afternoon|my evening|my month|the day ahead|the week ahead|"
        "my whole day"},
    {Cues::event, head, "event|calendar entry|entry|calendar event|event called|event for|date for"},
    {Cues::occasion, anywhere,
        "meeting|appointment|lunch|dinner|breakfast|party|a visit|a call|phone call|video "
        "call|interview|lesson|class|brunch|haircut|checkup|"
        "coffee|drinks|session|practice|rehearsal|birthday|wedding|concert|trip|tea|supper|conference|training"},
    {Cues::free, anywhere,
        "room for|a window of|window of|free|available|availability|gap|gaps|slot|slots|spare time|spare hour|spare "
        "moment|squeeze in|squeeze|fit "
        "in|fit|opening|"
        "openings|free time|free slot|free slots|unbooked|nothing on|open slot|open slots"},
    {Cues::once, anywhere,
        "this time|that time|only this time|just this time|this one time|this time only|this once|only this once|just "
        "this once|just once|only once"},
    {Cues::time, anywhere, "time|times"},
    {Cues::busy, head,
        "anything else|on|going on|happening|coming up|planned|scheduled|doing|am i doing|up to|am i up "
        "to|busy|look "
        "like|looking|"
        "looking like|in store|lined up|on the cards|booked|is on|is happening|is coming up|is going on|is planned|"
        "is scheduled|is in store|is lined up|do i have on|have i got on|have i on|got on|am i supposed to be|"
        "am i meeting|am i seeing|is up"},
    {Cues::busy, anywhere, "look like|looking like|coming up|lined up|going on"},
    {Cues::next, anywhere,
        "what is next$|what comes next$|next on|next in|is next on|is next in|next up|up next|coming up next|comes "
        "next|next appointment|next event|next meeting|next thing|my next|my next appointment|my next meeting|my next "
        "event|next engagement|next$"},
    {Cues::next, head,
        "what time is my|what time is the|when is my|when is the|when does my|when am i seeing|when do i see"},
    {Cues::further, anywhere,
        "after that|after it|after this|after this one|after that one|afterwards|and then$|what then$|next after that"},
};

} // namespace

std::span<const CueWords> AgendaCues::rows()
{
    return table;
}

} // namespace quorvell
