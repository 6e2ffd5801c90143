// SPDX-License-Identifier: MIT
// Weather, news and money. The patterns read the words in lower case, without signs, contractions taken apart.
#include "Understanding/dialogue/reach/ReachMatters.h"
#include "Understanding/dialogue/reach/ReachReplies.h"

#include <string>

namespace quorvell {

namespace {

const std::string currency =
    "(?:dollars?|euros?|pounds?(?= "
    "|$)|quid|yen|rupees?|francs?|pesos?|usd|eur|gbp|inr|cad|yuan|krona|rubles?|dirhams?|lira|bitcoins?)";

} // namespace

std::span<const ReachMatter> ReachMatters::worldRows()
{
    using namespace reach_replies;
    static const ReachMatter table[] = {
        {"\\b(?:storms?|rain|snow|thunder\\w*|hail|fog|frost|heat ?wave|hurricane|tornado|(?<!baby )(?<!bridal "
         ")showers?)\\b "
         "(?:is |are |be )?(?:coming|expected|forecast|stop|start|arrive|going to|on the way)\\b|^(?:any |the "
         ")?chances? of "
         "(?:rain|snow|showers?|sun|storms?|a storm)|^(?:is|are|will) there (?:going to )?(?:be )?(?:an? |any |some "
         "|much |more "
         ")*(?:storms?|rain|snow|thunder\\w*|hail|fog|frost|wind|sun|sunshine|heat ?wave|hurricane|tornado)\\b"
         "|^(?:will|is) it (?:going to )?(?:be )?(?:get "
         ")?(?:nice|dry|wet|freez\\w*|pour\\w*|drizzl\\w*|thunder\\w*|hail\\w*|warm"
         "|cool|clear)\\b|^(?:the |current |outside |todays )*temperatures?(?: please| outside| today| now| tomorrow)*$"
         "|^(?:sunny|rainy|cloudy|windy|snowy|rain|snow)(?: (?:today|tomorrow|tonight|outside|now|later|on "
         "\\w+day|this "
         "\\w+))*$|^how many degrees\\b|\\bwhen will (?:the |it )?(?:rain|snow|storm|sun|wind)\\b",
            weather},
        {"^(?:give me |tell me |show me |read me |what is )?(?:the |all )*latest(?: (?:on|about|from|in|with) "
         "(?!(?:my|our)\\b).*)?$|\\b(?:top|breaking|main|lead) "
         "stor(?:y|ies)\\b|\\b(?:sports?|match|football|cricket|soccer"
         "|tennis|election|game|hockey|baseball) (?:results?|scores?)\\b|^did (?:the )?\\w+(?: \\w+)? "
         "(?:win|won|lose)\\b"
         "|^(?:recent|current|world|latest|todays) (?:events|affairs|happenings)$|^what is (?:new|trending)(?: today)?$"
         "|^(?:tell me )?what is new(?: in| with)?(?: the)?(?: world)?$|^(?:open|read)(?: me)? (?:the )?(?:\\w+ "
         "){0,3}(?:times"
         "|newspaper|news ?paper|paper|gazette|guardian)(?: please)?$",
            news},
        {"\\b(?:convert|exchange|change|swap) (?:\\w+ ){0,3}" + currency
                + "\\b(?!.*\\b(?:kg|kilos?|kilograms?|grams?|ounces?)\\b)|\\b" + currency
                + " (?:exchange )?(?:rate|price|value|worth|up|down|falling|rising|today|strong|weak)\\b"
                  "|\\b(?:rate|value|price|worth|cost) of (?:the |an? |one |1 )?(?:us |american |british |indian "
                  "|canadian "
                  ")?"
                + currency + "\\b|\\b(?:the|an?|one|1) " + currency + " (?:is )?(?:worth|trading|doing|up|down)\\b",
            rates},
        {"\\b(?:the )?(?:dow|ftse|dax|nikkei|sensex|nifty|s and p)\\b|\\bshould i (?:buy|sell|invest in) [a-z]+$"
         "|\\b(?:is|are) \\w+ stocks? (?:up|down)\\b",
            shares},
        {"\\b(?:weather|forecast|temperature (?:outside|today|tomorrow|in|now|for (?:today|tomorrow|tonight|the)|right "
         "now|going)|humidity"
         "|(?:need|take|bring|carry) (?:an |my |a )?(?:umbrella|raincoat|sunscreen))\\b|\\b(?:will|going to"
         "|does|is|did|it|when|if|chance of|any|expect) (?:it |be |to |it be |there be |going to "
         "|it going to )*(?:rain|raining|rainy|snow|snowing|snowy|sunny|cloudy|windy|hail|storm|stormy|foggy"
         "|hot|cold|warm|chilly|freezing|humid)\\b|\\bhow (?:hot|cold|warm) (?:is|will|was)\\b"
         "|\\bnext time it will\\b"
         "|^do i need (?:a |an |my )?(?:coat|jacket|scarf|hat|boots)\\b|\\bshould i (?:take|wear|bring|carry|put on) "
         "(?:an? |my )?(?:coat|jacket|umbrella|scarf|hat|raincoat|boots|sweater)\\b"
         "|\\b(?:is it|looking|hows it|does it look|is it like) (?:like )?outside\\b|\\b(?:pollen|uv index|air "
         "quality)\\b"
         "|\\bwhat (?:should|do|can) i wear\\b(?! to\\b| for\\b| at\\b)",
            weather},
        {"\\b(?:news|headlines?|current affairs|breaking news)\\b(?! (?:is|was|are|about (?:my|the|our))\\b)", news,
            ReachMatter::Ours::plain},
        {"\\b(?:who won|score of|scores?|match result|game result|league|world cup|standings)\\b"
         "|\\b(?:happening|going on|new|up) in (?:the world|the news|sports?|politics|the country)\\b|\\babout the "
         "(?:war|elections?)$",
            news},
        {"\\b(?:stocks?|shares?|share price|stock market|nasdaq|dow jones|bitcoin|crypto\\w*"
         "|trading at)\\b(?! (?:the|my|this|of|it|with|on|cupboard|pot|cubes?|up)\\b)",
            money, ReachMatter::Ours::plain},
        {"\\b(?:exchange rates?|currency|currencies)\\b|\\b(?:dollars?|euros?|pounds?|quid|yen|rupees?|francs?"
         "|pesos?|usd|eur|gbp|inr|cad|yuan|krona|rubles?)\\b.*\\b(?:to|in|into|versus|vs|against|worth|compare"
         "|equal)\\b.*\\b(?:dollars?|euros?|pounds?|yen|rupees?|francs?|pesos?|usd|eur|gbp|inr|cad|yuan|krona"
         "|rubles?)\\b|^how (?:much|strong) is (?:the|a|one|1) (?:\\w+ )?(?:dollar|euro|pound|yen|rupee|franc"
         "|peso)\\b|^current price of\\b|\\bprice of (?:gold|oil|gas|silver)\\b",
            money},
    };
    return table;
}

} // namespace quorvell
