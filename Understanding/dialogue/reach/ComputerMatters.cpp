// SPDX-License-Identifier: MIT
// Payments, this computer, its applications and devices. The patterns read the words in lower case, without signs,
// contractions taken apart.
#include "Understanding/dialogue/reach/ReachMatters.h"
#include "Understanding/dialogue/reach/ReachReplies.h"

#include <string>

namespace quorvell {

std::span<const ReachMatter> ReachMatters::computerRows()
{
    using namespace reach_replies;
    static const ReachMatter table[] = {
        {"^(?:turn|switch|shut|power) (?:(?:it|this|that|everything) )?off$",
            {"I can turn off alarms and timers. Of anything else I have no switch."}},
        {"\\bbrightness\\b", {"I can't change brightness, neither of lights nor of the screen.", true}},
        {"^(?:set|change|put) (?:the )?time (?:to|at) \\d", {"I can't set the clock of this computer."}},
        {"^(?:pay|transfer|wire) (?:my|the|our|\\d+|an?|some|off|for)\\b|\\b(?:bank|account|credit card|my) balance\\b"
         "|^how much (?:money )?(?:do i have|is) in my (?:\\w+ )?account\\b",
            {"I can't pay anything, and I don't see any account.", true}},
        {"^(?:(?:turn|switch) (?:on|off)|connect(?: me)? to|disconnect(?: from)?|enable|disable|activate|toggle) "
         "(?:the |my "
         ")?(?:wi ?fi|bluetooth|hotspot|vpn|internet|network|airplane mode|flight mode|dark mode|night mode|do not "
         "disturb"
         "|location|gps)\\b|\\b(?:screen )?brightness\\b|\\bbrightness "
         "of\\b|^(?:update|upgrade|install|uninstall|download) (?!my "
         "(?:calendar|list|schedule|reminders?|notes?))(?:the |my |an? |some |all "
         ")?(?:app|apps|software|system|program|yourself|drivers?"
         "|windows|linux|firmware|\\w+ app)\\b|^(?:change|set) (?:the |my )?(?:wallpaper|background|screen "
         "?saver|volume"
         "|keyboard)\\b|^change your (?:voice|name|accent|gender)\\b",
            computer},
        {"^(?:open|launch|start|run|close|go to)(?: up)? (?:the |my "
         ")?(?:youtube|netflix|browser|chrome|firefox|camera|calculator"
         "|maps?|photos?|gallery|(?:web ?)?site|settings|app store|\\w+ (?:app|website)|apps?|\\w+ (?:dot )?com)$",
            {"I can't open applications or web pages.", true}},
        {"^(?:find|locate|ring|where is) (?:my|the) (?:(?:cell|mobile|smart) "
         "?)?(?:phone|mobile|tablet|laptop|watch|earbuds|airpods"
         "|remote)$",
            {"I can't look for phones or other devices."}},
        {"^(?:take|make) (?:a |me a )?(?:picture|photo|selfie|screenshot|screen shot|video)\\b",
            {"I can't take pictures.", true}},
        {"\\b(?:flip|toss) (?:a )?coins?\\b|\\broll (?:a |the |some )?(?:dice|die)\\b|^pick a (?:random )?number\\b",
            {"I can't toss coins or draw lots.", true, true}},
    };
    return table;
}

} // namespace quorvell
