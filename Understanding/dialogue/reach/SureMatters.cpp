// SPDX-License-Identifier: MIT
// What nothing of ours in the words makes ours. The patterns read the words in lower case, without signs, contractions
// taken apart.
#include "Understanding/dialogue/reach/ReachMatters.h"
#include "Understanding/dialogue/reach/ReachReplies.h"

#include <string>

namespace quorvell {

std::span<const ReachMatter> ReachMatters::sureRows()
{
    using namespace reach_replies;
    static const ReachMatter table[] = {
        {"^(?:local|nearby) events\\b|\\bevents (?:near|around) (?:me|here|us|my)\\b|^(?:a |the )?list of (?:the "
         ")?(?:good |best |nice "
         ")?(?:restaurants|hotels|cafes|bars|shops|stores|museums|movies|films|cinemas|doctors) "
         "(?:in|near|around|at)\\b",
            around, ReachMatter::Ours::none},
        {"^(?:e ?mail|forward) (?!(?:address|about|from|is|was|meeting|call|list|reminders?)\\b)\\w|^reply to\\b"
         "|^(?:write|send|compose|draft) (?:\\w+ ){0,3}e ?mails?\\b"
         "|^(?:any|do i have|have i got|did i get|are there)(?: any)?(?: new| unread)? (?:e "
         "?mails?|mails?|messages?)\\b",
            mail, ReachMatter::Ours::none},
        {"^(?:share|send|text) (?:(?!me\\b|us\\b)\\w+ )?(?:my|the|our|this|that) "
         "(?!.*\\b(?:me|myself)\\b)(?!.*\\b(?:to|on|in"
         "|into|onto) (?:my|the|our) (?:\\w+ )?(?:list|calend[ae]r|agenda|schedule|diary|notebook|notes)\\b).*"
         "\\b(?:lists?|notes?|notebook|calend[ae]r|agenda|schedule|events?|appointments?|meeting|invitation|reminders?)"
         "\\b",
            sharing, ReachMatter::Ours::none},
        {"^(?:turn|switch|arm|disarm|activate|deactivate|enable|disable|set|put) .*\\b(?:alarm system|security "
         "(?:system"
         "|alarm|cameras?)|(?:burglar|house|car|fire|smoke) alarm|smoke detector)\\b(?!.*\\b(?:list|calend[ae]r)\\b)",
            house, ReachMatter::Ours::none},
        {"^(?:set|turn|switch|dim|fade)(?: on| off| up| down)?(?: all)?(?: the| my| our)?(?: \\w+)? "
         "(?:lights?|lamps?)\\b"
         "(?! (?:reminder|alarm|timer|list|bulbs?|bills?|show|festival)\\b)(?!.*\\b(?:list|calend[ae]r|remind\\w*)\\b)",
            house, ReachMatter::Ours::none},
        {"^(?:(?:what|how) is |tell me |show me |give me )?(?:the )?weather\\b|^(?:will|is) it (?:going to |be "
         ")*(?:rain|raining"
         "|rainy|snow|snowing|sunny|cloudy|windy|stormy|foggy|hot|cold|warm|humid|freezing)\\b",
            weather, ReachMatter::Ours::none},
        {"^sing\\b", {"I can't sing.", true, true}, ReachMatter::Ours::none},
        {"^(?:(?:do|can|could|will) you )?(?:speak|talk|understand|know)(?: in)? "
         "(?!english)\\w+(?:ish|ese|man|ench|ian|utch|indi"
         "|amil|elugu|rabic|reek|reole|engali)$|^(?:speak|talk|answer|reply)(?: to me)? in (?!english)\\w+$"
         "|^(?:set|change|switch) (?:the |your |my )?language\\b",
            {"I only understand and speak English."}, ReachMatter::Ours::none},
        {"^(?:did|has|have) (?!i\\b|we\\b|you\\b)(?:my |the |our )?\\w+ (?:(?:e "
         "?mail|text|message|answer|reply|write)(?:ed)?"
         "|replied|written|texted)(?: (?:me|us|back|to me|to us|yet|today|already))*$"
         "|^(?:did|have) i (?:get|got|receive|received) (?:an? |any |new )*(?:e ?mails?|mails?|messages?|texts?)\\b",
            mail, ReachMatter::Ours::none},
        {"^(?:tell|give|read|show|get|play)(?: me)?(?: the| some| any| latest| todays| today s| top)* news\\b", news,
            ReachMatter::Ours::none},
        {"^(?:share|post|tweet) (?:on|to|that)\\b|^update my (?:\\w+ )?status\\b", social, ReachMatter::Ours::none},
        {"^(?:record|start recording|make a recording)(?: a| an| my| the| this| some)*(?: voice| audio| video| sound| "
         "call"
         "| screen| conversation)*(?: memos?| notes?| messages?| recording| clip)?$|^(?:print|scan) ",
            {"I can't record, print or scan anything.", true, true}, ReachMatter::Ours::none},
        {"^(?:clear|delete|erase|remove) (?:my |the )?(?:browsing|browser|search|web) "
         "(?:history|data|cache)\\b|\\bcookies$",
            computer, ReachMatter::Ours::none},
        {"^(?:set|change|adjust|correct|fix) (?:the |my |your |this )?(?:computer |system |current )?(?:clock|time "
         "zone|timezone"
         "|date and time)\\b(?! (?:radio|alarm))|^change (?:the )?(?:date|time)$",
            computer, ReachMatter::Ours::none},
        {"^(?:what is |how is |how much |is )?(?:my |the |your )?(?:phone s |laptop s |laptop |phone )?battery(?: "
         "level| status"
         "| life| percentage| left| charge| do i have(?: left)?| full| low| is left)*$",
            {"I can't see how this computer or another device is doing."}, ReachMatter::Ours::none},
        {"^(?:what|when|which|where)\\b.*\\b(?:last|next|first) "
         "(?:tube|coach|underground|metro|subway|bus|train|tram|ferry)\\b",
            travel, ReachMatter::Ours::none},
        {"^(?:shut ?down|(?:turn|switch) off|restart|reboot|lock|suspend|hibernate) (?:the |this |my |your "
         ")?(?:computer|pc"
         "|laptop|machine|screen)$|^(?:shut ?down|reboot|log (?:me )?(?:out|off))$",
            power, ReachMatter::Ours::none},
    };
    return table;
}

} // namespace quorvell
