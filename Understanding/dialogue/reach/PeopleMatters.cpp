// SPDX-License-Identifier: MIT
// Mail, calls, contacts and what is posted. The patterns read the words in lower case, without signs, contractions
// taken apart.
#include "Understanding/dialogue/reach/ReachMatters.h"
#include "Understanding/dialogue/reach/ReachReplies.h"

#include <string>

namespace quorvell {

std::span<const ReachMatter> ReachMatters::peopleRows()
{
    using namespace reach_replies;
    static const ReachMatter table[] = {
        {"\\bcontacts\\b|\\b(?:address|phone) ?book\\b", people, ReachMatter::Ours::plain},
        {"^(?:write|reply|respond|answer)(?: back)? to (?!(?:my|the|a|our)? "
         "?(?:self|notes?|list|notebook|calendar|diary|do)\\b)(?:my |the |our "
         ")?\\w+(?: \\w+)?(?: (?:that|about|saying|to|and|with|if|i|we|how)\\b.*)?$"
         "|^(?:tell|inform) (?!me\\b|us\\b|them\\b|it\\b|that\\b|the "
         "(?:time|date)|jokes?\\b|time\\b|another\\b|more\\b|again\\b|date\\b|an?\\b|all\\b|what\\b"
         "|everything\\b|about\\b|your\\b)(?:my |our |the )?\\w+ (?:(?:that|about) "
         "(?:i|we|the|my|our)|i|we|happy|hi|hello|by (?:e ?mail|text))\\b"
         "|^let (?!me\\b|us\\b)(?:my |our |the )?\\w+ know\\b|\\bspam\\b|\\b(?:e ?mailed|messaged|texted|mailed) "
         "(?:me|us)\\b"
         "|^(?:did|has|have) (?:my |the |our )?\\w+ (?:e ?mail|mail|text|message)(?:ed)? (?:me|us)\\b"
         "|^check (?:if|whether) (?:my |the )?\\w+ (?:wrote|replied|answered|texted|mailed)\\b",
            mail},
        {"\\bfriend requests?\\b|\\bmy (?:news ?)?feed\\b|\\b(?:on|of) my wall\\b|^(?:who |did "
         "(?:any(?:one|body)|\\w+) |has "
         "any(?:one|body) )?(?:likes?|liked|comment|comments|commented|commented on|comment on|comments on) (?:on "
         ")?(?:my|the|his|her"
         "|this|that|\\w+ s|\\w+) (?:\\w+ )?(?:posts?|photos?|pictures?|videos?|status|comment)\\b|^tag \\w+ "
         "(?:in|on)\\b"
         "|^upload (?:my|an?|the|this|that|some) (?:\\w+ )?(?:photos?|pictures?|videos?|pics?|selfie)\\b"
         "|^post (?!office|box|man|code|card|it note|(?:the|an?|my|our|this|some) (?:\\w+ "
         ")?(?:letters?|parcels?|packages?"
         "|cards?|forms?|invitations?|bill|reminder|note)\\b)\\w+|^complain (?:to|about)\\b"
         "|^(?:any|do i have any|what are my|check|show me my|read my)(?: new| my)? notifications?$",
            social},
        {"\\b(?:e ?mails?|inbox|gmail|outlook)\\b(?! address(?:es)?\\b)(?! (?:on|at|by|tomorrow|today|this"
         "|in) )|\\b(?:send|forward|write|compose|reply|draft|read|check|show|any|new"
         "|unread) (?:[a-z]+ ){0,4}(?:e ?mails?|mails?|messages?|texts?|sms)\\b|^(?:new|unread|any|my) (?:new "
         "|unread )?(?:mails?|messages?|texts?)$|^(?:text|message|e ?mail|mail) (?!(?:about|from|is|was|on"
         "|at)\\b)\\w+",
            mail},
        {"\\bsend (?:a |an |the |this |my )?[a-z ]*\\bto [a-z ]+@|\\b\\w+@\\w+", mail},
        {"^(?!.*\\b(?:at|on|in|by|today|tonight|tomorrow|every|next|before|after)\\b)(?:call|phone|ring|dial"
         "|telephone|video call) (?!(?:me|us|off|it|that|this|them|for|in|at|on|my list)\\b)\\w+(?: \\w+){0,3}$"
         "|\\b(?:make|place) a (?:phone |video )?call\\b|\\bredial\\b|\\banswer the (?:phone|call)\\b"
         "|\\b(?:missed|voice ?)(?: ?mails?| calls?)\\b",
            call},
        {"\\bcontacts\\b|\\bcontact (?:info\\w*|details?|number|list|card|book|for|of)\\b|\\bnew contact\\b"
         "|\\b(?:address|phone) ?book\\b",
            people, ReachMatter::Ours::plain},
        {"\\b(?:facebook|twitter|tweets?|instagram|snapchat|tiktok|linkedin|whatsapp|reddit|social media"
         "|social network\\w*|hashtags?|retweet|followers?)\\b|\\b(?:post|share) (?:this|that|it)\\b(?! letter)",
            social, ReachMatter::Ours::plain},
    };
    return table;
}

} // namespace quorvell
