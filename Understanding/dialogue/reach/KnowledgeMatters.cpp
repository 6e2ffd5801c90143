// SPDX-License-Identifier: MIT
// Places, advice, words, facts and the web. The patterns read the words in lower case, without signs, contractions
// taken apart.
#include "Understanding/dialogue/reach/ReachMatters.h"
#include "Understanding/dialogue/reach/ReachReplies.h"

#include <string>

namespace quorvell {

namespace {

const std::string places =
    "(?:near me|nearby|near here|around (?:me|here)|close by|in (?:my|this|the) (?:area|city|town"
    "|neighbou?rhood|vicinity)|in town|next to me|closest|nearest|locally)";

} // namespace

std::span<const ReachMatter> ReachMatters::knowledgeRows()
{
    using namespace reach_replies;
    static const ReachMatter table[] = {
        {"^where (?:can|could|should) (?:i|we) (?:get|buy|eat|drink|watch|stay|go for) "
         "(?!(?:my|our|it|that|this)\\b)|^(?:i am|we are) (?:looking|searching) for an? "
         "(?!.*\\b(?:my|note|time|slot|date|day)\\b)"
         "|\\bmovie (?:show)?times\\b|\\bshow ?times?\\b|\\b(?:film|movie|album|season|episode|sequel)s? (?:come "
         "|coming |be |is "
         ")?(?:out|released)\\b|^(?:find|suggest|look for|search for)(?: me| us)? (?:something|anything|things) (?:fun "
         "|nice |good |interesting )?to "
         "(?:do|see|eat|watch)\\b",
            around},
        {"^(?:explain|describe|elaborate on|define|dictionary|look up(?: the word)?) "
         "(?!(?:it|that|this|yourself|my|our|your|again|further|more|please|better|the "
         "(?:last|answer|reply|result)|why|what|how you|in|to me|me|"
         "us|a (?:bit|little)|things?|everything|for)\\b)\\w+(?: \\w+){0,3}(?: to me| please)?$|^dictionary$",
            words},
        {"^(?:give me |tell me |i want |i need |show me |find )?(?:some |a few |more |any |the |an? "
         ")*(?:biography|bio|facts?|information"
         "|info|trivia) (?:of|about|on|regarding) (?!(?:my|our|the|me|us|it|that|this|today|tomorrow)\\b)\\w+",
            facts},
        {"\\b(?:restaurants?|cafes?|bars?|pubs?|shops?|stores?|theat(?:re|er)s?|cinemas?|museums?|hotels?"
         "|pharmac(?:y|ies)|gyms?|banks?|atms?|hospitals?|gas stations?|petrol stations?|parks?|places?|pizza"
         "|movies?|concerts?|shows?)\\b.*\\b(?:near|nearby|around|close|between|open|closest|nearest|showing"
         "|playing|in (?:my|this|the) (?:area|city|town)|in town|rated)\\b",
            around},
        {"\\b" + places
                + "\\b|^(?:find|look for|search for|show)(?: me| us)? (?:an? |some |the best |good )+(?:\\w+ "
                  "){0,2}(?:restaurants?|cafes?|hotels?|bars?|pubs?|place to eat|doctors?|dentists?|plumbers?)\\b",
            around},
        {"\\b(?:what|which|any) (?:good |new )?(?:films?|movies?|shows?) (?:is|are) (?:on|out|showing|playing)\\b"
         "|\\bwhat is on (?:tv|television|the telly|at the (?:cinema|movies))\\b",
            around},
        {"\\b(?:what|which|any|are there|find|is there)\\b.*\\b(?:events?|concerts?|festivals?|things to do"
         "|shows?|movies?|activities|exhibitions?)\\b.*\\b(?:going on|happening|on|to do|to see"
         "|playing)\\b.* (?:in|at|around) (?!my|our|the calendar|the diary|the (?:morning|afternoon|evening)"
         "|january|february|march|april|may|june|july|august|september|october|november|december|\\d)\\w+",
            around, ReachMatter::Ours::plain},
        {"^what (?:should|could|shall|can) (?:i|we) (?:wear (?:to|for|at)|eat|have for|watch|read|cook)\\b", advice},
        {"\\b(?:recommend|recommendations?|suggest)\\b(?! (?:an? |some )?(?:good )?(?:times?|dates?|days?|slots?)\\b)",
            advice},
        {"\\b(?:define|definition|meaning(?! of life)|synonyms?|antonyms?|translate|translation)\\b|^what (?:does"
         "|do) (?!(?:my|the|our|i|this) )[\\w ]{1,40} mean$|^how do you (?:spell|say|pronounce)\\b"
         "|\\bspell (?:the|this|that|it)\\b|^spell \\w+$",
            words},
        {"^(?:google|wikipedia|bing|search (?:the )?(?:web|internet|net|online|google|for .{1,60} (?:online"
         "|on the (?:web|internet))))\\b|\\b(?:on|in|from) the (?:internet|web)\\b|\\bwikipedia\\b|\\bonline$"
         "|\\bbrowse\\b|\\bseo\\b"
         "|^show (?:me )?(?:some |a )?(?:pictures?|photos?|images?|videos?) of\\b",
            web},
        {"^(?:the )?(?:capital|population|currency|president|prime minister|inventor|founder|history|height|age) of "
         "(?!(?:my|our)\\b)\\w|^distance (?:from|between|to) "
         "|^(?:who (?:is|was) the (?:president|king|queen|prime minister|inventor|author|ceo|founder|mayor|pope"
         "|first|best|richest|tallest|oldest)\\b|what is the (?:capital|population|currency|tallest|biggest"
         "|largest|longest|highest|fastest|smallest|speed|height|distance|language)\\b|how (?:tall|high|deep"
         "|big|large|heavy|old|fast) (?:is|are|was) (?:the|mount|lake|a|an) )",
            facts},
        {"^(?:why (?:do|does|is|are|did|people|was|were) (?!(?:i|my|you|we|it|there|our|that|this)\\b)"
         "|what happens (?:when|if) (?:we|people|you|one)|tell me (?:what happens|why|a story|a fact"
         "|something interesting)|sing\\b|give me advice|recent advice)",
            facts},
        {"^when (?:is|are|will be)(?: the)?(?: next)? (?:full|new|blood|blue) moon\\b"
         "|^(?:(?:when|what day|what date)(?: is| does| will)+(?: it)?|is it|date of) "
         "(?:diwali|deepavali|holi|navratri|dussehra|onam"
         "|pongal|raksha bandhan|ganesh chaturthi|vesak)\\b(?! (?:\\w+ "
         ")?(?:party|dinner|event|lunch|celebration|meeting|holidays?|show)\\b)",
            moon},
    };
    return table;
}

} // namespace quorvell
