// SPDX-License-Identifier: MIT
#include "Understanding/words/WordJoints.h"

#include "Understanding/words/WordRewriting.h"

#include <deque>
#include <utility>

namespace quorvell {

std::string WordJoints::settled(const std::string& words)
{
    static const std::string verb =
        "(set|add|create|make|delete|remove|cancel|show|open|read|put|stop|start|schedule|book)";
    static const std::string thing =
        "(alarms?|reminders?|events?|meetings?|appointments?|(?:my)?lists?|timers?|calendar)";
    static const std::string day = "(today|tonight|tomorrow|(?:mon|tues|wednes|thurs|fri|satur|sun)day)";
    static const WordRewriting joints(std::deque<std::pair<std::string, std::string>>{
        {"\\b" + verb + "(?:(an?|my|the|new|me))?" + thing + "\\b", "$1 $2 $3"},
        {"\\b(remind|wake|tell|show|give|call)(me|us)(up|to|at)?\\b", "$1 $2 $3"},
        {"\\b(to|in|on|from|into)(my|the)?(lists?|calendar|groceries)\\b", "$1 $2 $3"},
        {"\\b(at|by|for|from|till|until)(\\d{1,2}(?:[:.]\\d\\d)?(?:\\s?[ap]\\.?m)?)\\b(?![/\\d-])", "$1 $2"},
        {"(\\d\\s?[ap]m)" + day + "\\b", "$1 $2"},
        {"\\b" + day + "(at|for|by|on|morning|evening|night|afternoon)(?=\\s|$|\\d)", "$1 $2"},
        {"\\b(alarms?|reminder|timer|meeting|event|appointment)(for|at|on|to|tomorrow)\\b", "$1 $2"},
        {"\\b(in|for) ?(\\d+)(min|mins|minutes|hours?|hrs?)\\b", "$1 $2 $3"},
        {"\\b(whats|what's|what is)(on|my|the|in)\\b", "$1 $2"},
        {"\\b(to|week|after|mid) (morrow|night|end|noon|day)(?= |[.!?]*$)(?<=to morrow|to night|week end)", "$1$2"},
        {"\\s{2,}", " "},
        // Typed twice: nobody means these twice.
        {"\\b(an?|the|my|to|at|on|in|for|of|and|is|set|add|put|create|make|delete|remove|cancel|remind|me|show|please|"
         "list"
         "|alarm|reminder|meeting|event|what|calendar|tomorrow|today) \\1\\b(?!['’-]|.?do\\b)",
            "$1"},
        // By sound.
        {"\\b(remind (?:me|us)|need|want|going|have|forget|able|like) too "
         "(?=[a-z])(?!(?:many|much|late|early|things"
         "|people|more|of|alarms|reminders|events|meetings|lists)\\b)",
            "$1 to "},
        {"\\b((?:add|put|move|change|set|include|append)\\b[^.,]{1,60}) (?:too|two) "
         "(?=(?:my|the|our)\\b|\\d|(?:mon|tues"
         "|wednes|thurs|fri|satur|sun)day\\b|next\\b|tomorrow\\b)",
            "$1 to "},
        {"\\b(next|this|every|last|per|coming|following|whole) weak\\b", "$1 week"},
        {"\\b(next|few|two|three|\\d) weaks\\b", "$1 weeks"},
        {"\\b(half an|in an|an|every|each) our\\b", "$1 hour"},
        {"\\b(\\d|two|three|few|four) ours\\b", "$1 hours"},
        {"\\b(remind me to|need to|have to|want to|to|going to) by "
         "(?=(?!(?:the|then|and|now|next|this|end|noon|half|\\w+day|tomorrow)\\b)[a-z])",
            "$1 buy "},
        {"\\b(\\d{1,2}) ?a'?clock\\b", "$1 o'clock"},
        {"\\b(\\d{1,2}) (?:oclock|o clock|o,clock|0'clock)\\b", "$1 o'clock"},
        {"\\b(alarm|reminder|meeting|appointment|event) fore? (?=\\d)", "$1 for "},
        {"\\b(in the|tomorrow|this|every) mourning\\b", "$1 morning"},
        {"\\bwake (?:up me|me app|me upp)\\b", "wake me up"},
        {"\\s{2,}", " "},
    });
    return joints.outsideQuotes(words);
}

} // namespace quorvell
