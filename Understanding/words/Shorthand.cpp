// SPDX-License-Identifier: MIT
#include "Understanding/words/Shorthand.h"

#include "QuorvellCore/text/Pattern.h"
#include "Understanding/words/WordRewriting.h"

namespace quorvell {

std::string Shorthand::ofFrames(const std::string& words)
{
    static const WordRewriting frames({
        {"(?<![\\w'’-])(?:pl[szx]|plss+|plse|plez|pleez|plese|pleas)(?![\\w'’-])", "please"},
        {"(?<![\\w'’-])(can|could|cud|would|wud|will|if|do|did|have|are|thank|when|want|need|like) "
         "(?:u|ya|yu)(?![\\w'’-])",
            "$1 you"},
        {"(?<![\\w'’-])(remind me|remind us|need|want|have|going|able|forget) 2 "
         "(?=[a-z])(?!(?:hours?|hrs?|minutes?|mins?|days?|weeks?|months?)\\b)",
            "$1 to "},
        {"(?<![\\w'’-])please\\s*(?:n|&|and)\\s*(?:thx|thanks|thank you|ty)[.!]*$", "please"},
        {"^(?:u|yu) (can|could|should|need)\\b", "you $1"},
        {"(?<![\\w'’-])cud you\\b", "could you"},
        {"(?<![\\w'’-])wud you\\b", "would you"},
        {"(?<![\\w'’-])(?:thx|thnx|tnx|tysm|ty|thanx)([.!]*)$", "thanks$1"},
    });
    return frames.outsideQuotes(words);
}

std::string Shorthand::spelledOut(const std::string& words)
{
    static const WordRewriting everywhere({
        {"(?<![\\w-])(?:tmrw|tmr|tmw|tmro|tmrrw|tmoro|tmorrow|2mor?row|2moro|2mrw|tomo|tomoz|tomoro|tommorow"
         "|tommorrow|tomorow|tomorro|tomarrow|tomm?orrows?(?=$))(?![\\w-])",
            "tomorrow"},
        {"(?<![\\w-])(?:2nite|tonite|2night|tonit)(?![\\w'’-])", "tonight"},
        {"(?<![\\w-])(?:2day|tdy)(?![\\w-])", "today"},
        {"(?<![\\w'’-])(?:wknd|wkend)(?![\\w-])", "weekend"},
        {"(?<![\\w'’-])nxt(?![\\w-])", "next"},
        {"(?<=\\b(?:this|next|last|every|a|per|the|each|one) )wk(?![\\w-])", "week"},
        {"(?<=\\d )wks(?![\\w-])", "weeks"},
        {"(?<=\\b(?:this|next|last|every|a|per|the|each) )mth(?![\\w-])", "month"},
        {"(?<=\\d )hrs?(?![\\w-])", "hours"},
        {"(?<=\\b(?:an|a|half an|one|1|the|per|every|each|in an) )hour[s](?![\\w-])", "hour"},
        {"(?<=\\b(?:an|one|per|every|each) )hr(?![\\w-])", "hour"},
        {"(?<![\\w'’-])weds(?![\\w-])", "wednesday"},
        // A full stop of an abbreviation ends no sentence.
        {"(?<![\\w'’-])(mon|tues?|wed|thurs?|thu|fri|sat|sun|jan|feb|mar|apr|jun|jul|aug|sept?|oct|nov|dec)\\.(?=\\s|$"
         ")",
            "$1"},
        {"(?<=^|\\s)@\\s*(?=\\d)", "at "},
        {"(?<=^|\\s)@\\s+(?=\\w)", "at "},
        {"(?<=\\s)w/o\\s+(?=\\w)", "without "},
        {"(?<=\\s)w/\\s*(?=\\w)", "with "},
        {"(?<![\\w'’-])abt(?![\\w-])", "about"},
        {"(?<![\\w'’-])(?:cuz|coz|bcoz|bcz|bc)(?= (?:i|we|he|she|it|they|my|the|of)\\b)", "because"},
        {"(?<![\\w'’-])4 (me|us)(?![\\w-])", "for $1"},
        {"(?<=[a-z]) 4 (?=\\d{1,2}(?:[:.]\\d\\d|\\s?[ap]\\.?m))", " for "},
        {"\\b(list|note|alarm|reminder|timer|event) 4 (?=[a-z])(?!items|things)", "$1 for "},
        {"(?<![\\w'’-])outta(?![\\w'’-])", "out of"},
        {"(?<![\\w'’-])frm(?![\\w'’-])", "from"},
        {"(?<![\\w'’-])2 (me|us)(?![\\w-])", "to $1"},
        {"(?<![\\w'’-])(i|we|you)(?:['’]?ve)? gotta(?![\\w-])", "$1 have to"},
        {"(?<![\\w'’-])b4(?![\\w-])", "before"},
        {"(?<![\\w'’-])ur(?![\\w-])", "your"},
        {"^((?:hey |ok |please )*(?:what|when|where|who|how|which)\\b[^,.]{0,80}?) r (?=\\w)", "$1 are "},
        {"^((?:what|when|where|who|how|which)) r (?=\\w)", "$1 are "},
        {"(?<![\\w'’-])r there\\b", "are there"},
        // A list of things to buy; the well-known pairs are one thing.
        {"(?<!\\b(?:mac|rock|fish|pick|drum|surf|bed|salt|sweet|cookies|half|black|johnson|marks|ben|head|b|r|m|h|d|q))"
         "(?<=\\w)\\s+(?:n|&)\\s+"
         "(?=\\w.*\\b(?:lists?|groceries|grocery|shopping|supplies)\\b)",
            " and "},
    });
    return everywhere.outsideQuotes(words);
}

} // namespace quorvell
