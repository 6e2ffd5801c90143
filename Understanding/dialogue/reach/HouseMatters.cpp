// SPDX-License-Identifier: MIT
// The lights, machines and rooms of a house. The patterns read the words in lower case, without signs, contractions
// taken apart.
#include "Understanding/dialogue/reach/ReachMatters.h"
#include "Understanding/dialogue/reach/ReachReplies.h"

#include <string>

namespace quorvell {

namespace {

const std::string wish = "^(?:(?:i|we|would like|would love|want|need|could|can|use|do "
                         "with|fancy|get|give|me|us|please|you|make|prepare|bring"
                         "|is|are|to|a|let there be|how about) )*";
const std::string device =
    "(?:lights?|lamps?|light ?bulbs?|bulbs?|(?:smart |power |wall )?(?:plugs?|sockets?|outlets?)|wemo"
    "|thermostat|heating|heater|radiators?|air ?con(?:ditioning|ditioner)?|ac|fans?|vacuum(?: cleaner)?|hoover"
    "|roomba|robot|coffee ?(?:machine|maker|pot)?|espresso(?: machine)?|kettle|oven|stove|dishwasher"
    "|washing machine|washer|dryer|blinds?|curtains?|shutters?|garage(?: door)?|front door|doors?|gate|tv"
    "|television|telly|projector|sprinklers?|fridge|humidifier|stereo|heat|(?:mood )?lighting)";
const std::string control = "(?:turn|switch|put|shut|dim|dimm|brighten|bright|lighten|darken|raise|lower"
                            "|increase|decrease|reduce|set|change|adjust|make|start|run|begin|activate"
                            "|deactivate|power|open|close|lock|unlock|kill|light|fade|blink|flash|down|up|heat"
                            "|cool|warm|stop|lessen|soften|intensify)";

} // namespace

std::span<const ReachMatter> ReachMatters::houseRows()
{
    using namespace reach_replies;
    static const ReachMatter table[] = {
        {"\\b(?:my |the )?(?:carpet|floors?|rug|house|room|kitchen|hall|hallway|living room|bedroom|sofa)\\b(?: is| "
         "are| "
         "looks?) (?:so |very |too |really )?(?:dirty|dusty|messy|filthy)\\b|^(?:tell |let |have )?(?:the |my "
         ")?(?:roomba"
         "|robot(?: vacuum| cleaner)?)(?: please)?(?: to)?(?: go| start| begin| clean| sweep| vacuum| mop)+\\b"
         "|^(?:start|begin|do|go)(?: the| some)? (?:cleaning|vacuuming|mopping|hoovering|sweeping)(?: up| now)?$"
         "|^(?:vacuum|hoover|mop|sweep)(?: up| now| here)?$",
            cleaning},
        {"^(?:(?:please|can|could|you|start|go|now) )*brew\\b|" + wish
                + "(?:an? |one |two |three |\\d |some |another |more |my |the )*"
                + "(?:big |large |small "
                  "|strong |hot |fresh |black |double |nice )*(?:cups? of |pot of |mug of "
                  ")?(?:coffees?|espresso|cappuccino"
                  "|lattes?|americano|mocha|macchiato)(?: (?:with|and) (?:an? |two |\\d |no |some |extra |little |lots "
                  "of "
                  ")*(?:milk|sugars?|cream|foam|honey|ice|syrup)\\b.*| ready| now| please| for me| going)*$",
            coffee},
        {"^(?:(?:i|we) (?:want|need|would like|would love|prefer|could use|like)|give (?:me|us)|let there be|can "
         "(?:i|we) "
         "have|how about) (?:an? |the |some |more |less |to have |better )*(?:(?!to\\b|new\\b)\\w+ "
         "){0,2}(?:lights?|lighting"
         "|illumination)(?: (?:on|off|here|now|please|down|up)\\b.*| (?:in|at) (?:the|my|this|our|here)\\b.*)?$"
         "|^(?:party|disco|night|reading|mood|romantic|full|low|bright|dim|soft|all|more|less) "
         "(?:lights?|lighting|mood)(?: (?:here|please|now|on|off|in (?:the|my|this) .*))*$|^(?:an? |some |a bit of "
         ")?(?:\\w+ )?lighting (?:here|in (?:the|my|this) .*)$|\\billuminate\\b"
         "|\\bset (?:a |the )?(?:\\w+ )?(?:mood|ambian?ce|atmosphere|scene)\\b|\\bmake it (?:\\w+ "
         ")?(?:cosy|cozy|romantic)\\b"
         "|^(?:turn|switch) everything (?:on|off)\\b(?!.*\\b(?:at|tomorrow|today|every)\\b)",
            lights},
        {"\\bhdmi\\b|^(?:disable|enable|unplug|plug in) (?:the |my |all )*" + device + "\\b", house},
        {"^(?!(?:buy|purchase|pick up|put up|take down|hang|hang up|replace|fix|repair|check)\\b).*\\b" + control
                + "\\b.*\\b" + device + "\\b(?! (?:saving|savings|bill|bills|money|appointment))",
            house},
        {"^(?:" + device + "|(?:less|more|no|dim|bright|darker|brighter|softer|lower|all|the) (?:the )?" + device
                + ")(?: (?:on|off|up|down|out|please|in|at|now|colou?r|change|power|level)\\b.*)?$",
            house},
        {"\\b(?:lights?|lamps?)\\b.*\\b(?:on(?! (?:\\w+day|the "
         "\\d))|off|out|brighter|darker|dimmer|blue|red|green|pink|purple|yellow"
         "|orange|white|warm|cold|percent|colou?rs?)\\b",
            house},
        {"^(?:it is )?(?:too |so |very )?(?:dark|bright|hot|cold|warm|chilly)(?: in)? here|^make it (?:a "
         "(?:bit|little) "
         ")?(?:warmer|cooler|hotter|colder|brighter|darker|dark|bright)$|^(?:dark|bright)er in "
         "here|\\b(?:brighten|darken"
         "|light up|dim)\\b|\\b(?:room|kitchen|bedroom|bathroom|hall|here)\\b.*\\b(?:brighter|darker|warmer"
         "|cooler|lighter)\\b",
            house},
        {"^(?!.*\\b(?:at|on|today|tonight|tomorrow|every|next|by|calendar|list|notebook|notes|done|finished)\\b)(?:(?:"
         "please"
         "|can|could|you|go|start|now) )*(?:(?:start|begin) )?(?:vacuum|vaccum|vacuuming|hoover|mop|sweep"
         "|clean) (?:up )?(?:the|my|our|this)\\b",
            house},
        {"\\b(?:make|brew|prepare|get|fix|pour) (?:me |us |some |more |another |a |an |the |my "
         "|up )*(?:cups? of |pot of |strong |hot |fresh )*(?:coffee|espresso|cappuccino|latte|tea|americano)\\b"
         "|^(?:i (?:would like|want|need) )?(?:an? |some |my |the )?(?:strong |hot |double |black "
         ")*(?:espresso|coffee|cappuccino|latte"
         "|americano)$",
            house},
        {"^(?:please )?(?:off|on) (?:all )?(?:the |my )?" + device + "\\b|^(?:is|are) (?:the |my |all )?(?:the )?"
                + device
                + "(?: still)? (?:on|off|open|closed|locked|unlocked|running|shut)\\b"
                  "|\\b(?:set|change|raise|lower|turn (?:up|down)|increase|decrease) (?:the |my )?(?:room |house "
                  ")?temperature\\b"
                  "|^charge (?:the|my) (?:car|phone|laptop|tablet)$|^(?:i want |i need |give me )(?:some |more |less "
                  ")*(?:light|lights|(?:\\w+ )?lighting|heat)$",
            house},
    };
    return table;
}

} // namespace quorvell
