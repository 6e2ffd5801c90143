// SPDX-License-Identifier: MIT
// Taxis, tickets, trains, ways and traffic. The patterns read the words in lower case, without signs, contractions
// taken apart.
#include "Understanding/dialogue/reach/ReachMatters.h"
#include "Understanding/dialogue/reach/ReachReplies.h"

#include <string>

namespace quorvell {

namespace {

const std::string rideWish = "^(?:(?:i|we|would|will|want|need|like|can|could|you|please|get|find|request|order|book|"
                             "call|hail|arrange|reserve|look for"
                             "|have|to|asap|give) )+";

} // namespace

std::span<const ReachMatter> ReachMatters::travelRows()
{
    using namespace reach_replies;
    static const ReachMatter table[] = {
        {"\\b(?:ride|car|cab|auto|pickup) (?:with|from|by|via|on|through) (?:uber|lyft|ola|bolt|grab)\\b"
         "|^(?!.*\\b(?:my|add|put|list|calendar|remind\\w*)\\b)(?:please )?(?:schedule|arrange|book|order|set "
         "up|get|reserve) .*\\b(?:taxi|cab|uber"
         "|lyft)\\b",
            taxis, ReachMatter::Ours::plain},
        {rideWish
                + "(?:me |us )?(?:an? |the |some |my )?(?:quick |cheap |free "
                  ")?(?:ride|lift|driver|chauffeur|taxi|cab)(?: (?:home|to|from|for|now|please|at|back"
                  "|tomorrow|today|tonight|asap|in|around)\\b.*)?$|^pick (?:me|us) up "
                  "(?:at|from|in|now|outside|here|near|by)\\b"
                  "|^(?:send|get|bring)(?: me| us)? a car (?:to|for|at|now|please|from)\\b|^(?:get|send)(?: me| us)? a "
                  "car$",
            taxis},
        {"\\b(?:traffic jams?|road ?works?|road closures?|closed roads|congest\\w+|detours?|rush "
         "hour)\\b|\\baccidents? "
         "(?:on|near|along|in|at|ahead)\\b|^(?:any|are there|is there)(?: any| an)? "
         "accidents?\\b|\\b(?:highway|motorway"
         "|freeway|roads?|street|bridge|interstate)\\b.*\\b(?:jammed|blocked|closed|busy|clear|free)\\b",
            traffic},
        {"\\b(?:go|travel|get) to \\w+(?: \\w+)? by (?:train|bus|plane|car|ferry|metro)\\b|^guide (?:me|us) "
         "(?:to|from)\\b"
         "|^(?:take|bring|navigate|drive|lead) (?:me|us) (?:to|home)\\b(?!.*\\b(?:list|note|calendar|settings)\\b)",
            travel},
        {"^(?:buy|get|book|renew|order)(?: me| us)? (?:an? |the |my )?(?:bus|train|metro|travel|rail|subway) "
         "(?:pass|card)$",
            booking},
        {"^(?:i|we) need a (?:ride|lift)\\b|\\b(?:taxi|cab|uber|lyft|ride ?share|limo)\\b(?! "
         "(?:receipt|number|money|firm))|\\b(?:order|book|call|get"
         "|hail) (?:me |us )?a (?:ride|car|lift)\\b|\\btransport(?:ation)? to\\b",
            booking},
        {"\\b(?:book|reserve|buy|get|bring|order|purchase|find|need|want) (?:me |us |a |an |the |some |one |my "
         "|cheapest |two |three |2 |3 |return |round trip )*(?:(?:train|bus|plane|flight|air|movie|concert"
         "|cinema|theatre|theater|ferry|metro) )?(?:tickets?|flights?|seats?|hotels?|rooms?|table"
         "|reservations?)\\b",
            booking},
        {"^(?!(?:put|add|enter|schedule) )(?!(?:train|flight|bus|ferry|plane) "
         ".*\\d).*\\b(?:train|trains|bus|buses|subway|metro|tram|flight|flights|ferry|plane)\\b.*\\b(?:schedule"
         "|timetable|times?|departures?|depart|departs|arrivals?|arrive|arrives|leave|leaves|prices?|tickets?"
         "|next|to|from|cost|station|late|delayed|running)\\b|\\b(?:next|last|first|when|which|any) (?:is "
         "|does |the |next |are |there )*(?:train|bus|subway|metro|tram|ferry|plane|flight)s?\\b",
            travel},
        {"\\btraffic\\b|\\bfares? (?:to|from)\\b|\\bdirections? (?:to|from|for)\\b|\\bhow (?:do|can) i get "
         "to\\b|\\b(?:route|navigate"
         "|navigation)\\b|\\bhow (?:far|long)(?: \\w+){1,6} (?:drive|walk|get|fly|travel|from)\\b|\\bgps\\b"
         "|\\bmap of\\b|\\bcommute\\b",
            travel},
    };
    return table;
}

} // namespace quorvell
