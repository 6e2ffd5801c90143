// SPDX-License-Identifier: MIT
// The patterns read the words in lower case, without signs, contractions taken apart.
#include "Understanding/dialogue/talk/OutOfReach.h"

#include "QuorvellCore/text/Pattern.h"
#include "Understanding/dialogue/talk/OurMatters.h"
#include "Understanding/words/RequestText.h"

#include <span>
#include <string>

namespace quorvell {

namespace {

/// Words of ours that leave a request to the skills: any of them, only those that can mean nothing else, or none at
/// all.
enum class Ours { any, plain, none };

struct Matter {
    Matter(std::string_view words, OutOfReach says, Ours ofOurs = Ours::any)
        : pattern(words)
        , says(says)
        , ours(ofOurs)
    {
    }

    Pattern pattern;
    OutOfReach says;
    Ours ours;
};

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
const std::string places =
    "(?:near me|nearby|near here|around (?:me|here)|close by|in (?:my|this|the) (?:area|city|town"
    "|neighbou?rhood|vicinity)|in town|next to me|closest|nearest|locally)";

constexpr OutOfReach music{"I can't play music, radio, books or games.", true};
constexpr OutOfReach volume{"I can't change the volume. The sound settings of this computer can.", true};
constexpr OutOfReach house{"I can't control lights or other devices of the house.", true, true};
constexpr OutOfReach weather{"I don't know the weather: that needs an online model."};
constexpr OutOfReach news{"I don't know the news: that needs an online model."};
constexpr OutOfReach money{"I don't know prices, shares and exchange rates: that needs an online model."};
constexpr OutOfReach travel{"I can't book or look up trips, tickets, trains or traffic."};
constexpr OutOfReach booking{"I can't order taxis, and I can't book tickets, tables or trips.", true};
constexpr OutOfReach mail{"I can't read or send mail and messages.", true};
constexpr OutOfReach call{"I can't make calls.", true};
constexpr OutOfReach sharing{"I can't send or share anything from here.", true};
constexpr OutOfReach people{"I don't keep an address book.", true};
constexpr OutOfReach social{"I can't read or post in social media.", true};
constexpr OutOfReach food{"I can't order anything.", true};
constexpr OutOfReach recipe{"I know no recipes: that needs an online model.", false, false, true};
constexpr OutOfReach around{"I don't know what is around here: that needs an online model."};
constexpr OutOfReach advice{"I can't recommend anything: that needs an online model.", false, false, true};
constexpr OutOfReach power{"I can't switch this computer off, restart or lock it.", true, true};
constexpr OutOfReach words{"I can't explain or translate words: that needs an online model.", false, false, true};
constexpr OutOfReach web{"I can't look things up on the web."};
constexpr OutOfReach computer{"I can't change how this computer is set up.", true};
constexpr OutOfReach moon{"I can't work out the moon, nor feasts like Diwali and Holi that go by it."};
constexpr OutOfReach facts{{}, false, false, true}; // What can be done instead is told.
constexpr OutOfReach body{"I don't measure steps, sleep or calories."};
constexpr OutOfReach taste{
    "I can't play anything, and I don't keep what you like to hear unless you say \"remember\".", true};

std::span<const Matter> matters()
{
    static const std::string start =
        "^(?:(?:and|then|also|next|now|can|could|you|please|i|we|want|would|like|love|need|to|let|me|us|hear"
        "|just|kindly|go|ahead|help|start|begin|will) )*";
    static const Matter table[] = {
        // What a list, a meeting or an alarm in the words does not make ours
        {"^(?:e ?mail|forward) (?!(?:address|about|from|is|was|meeting|call|list|reminders?)\\b)\\w|^reply to\\b"
         "|^(?:write|send|compose|draft) (?:\\w+ ){0,3}e ?mails?\\b"
         "|^(?:any|do i have|have i got|did i get|are there)(?: any)?(?: new| unread)? (?:e "
         "?mails?|mails?|messages?)\\b",
            mail, Ours::none},
        {"^(?:share|send|text) (?:(?!me\\b|us\\b)\\w+ )?(?:my|the|our|this|that) "
         "(?!.*\\b(?:me|myself)\\b)(?!.*\\b(?:to|on|in"
         "|into|onto) (?:my|the|our) (?:\\w+ )?(?:list|calend[ae]r|agenda|schedule|diary|notebook|notes)\\b).*"
         "\\b(?:lists?|notes?|notebook|calend[ae]r|agenda|schedule|events?|appointments?|meeting|invitation|reminders?)"
         "\\b",
            sharing, Ours::none},
        {"^(?:turn|switch|arm|disarm|activate|deactivate|enable|disable|set|put) .*\\b(?:alarm system|security "
         "(?:system"
         "|alarm|cameras?)|(?:burglar|house|car|fire|smoke) alarm|smoke detector)\\b(?!.*\\b(?:list|calend[ae]r)\\b)",
            house, Ours::none},
        {"^(?:set|turn|switch|dim|fade)(?: on| off| up| down)?(?: all)?(?: the| my| our)?(?: \\w+)? "
         "(?:lights?|lamps?)\\b"
         "(?! (?:reminder|alarm|timer|list|bulbs?|bills?|show|festival)\\b)(?!.*\\b(?:list|calend[ae]r|remind\\w*)\\b)",
            house, Ours::none},
        {"^(?:(?:what|how) is |tell me |show me |give me )?(?:the )?weather\\b|^(?:will|is) it (?:going to |be "
         ")*(?:rain|raining"
         "|rainy|snow|snowing|sunny|cloudy|windy|stormy|foggy|hot|cold|warm|humid|freezing)\\b",
            weather, Ours::none},
        {"^sing\\b", {"I can't sing.", true, true}, Ours::none},
        {"^(?:(?:do|can|could|will) you )?(?:speak|talk|understand|know)(?: in)? "
         "(?!english)\\w+(?:ish|ese|man|ench|ian|utch|indi"
         "|amil|elugu|rabic|reek|reole|engali)$|^(?:speak|talk|answer|reply)(?: to me)? in (?!english)\\w+$"
         "|^(?:set|change|switch) (?:the |your |my )?language\\b",
            {"I only understand and speak English."}, Ours::none},
        {"^(?:did|has|have) (?!i\\b|we\\b|you\\b)(?:my |the |our )?\\w+ (?:(?:e "
         "?mail|text|message|answer|reply|write)(?:ed)?"
         "|replied|written|texted)(?: (?:me|us|back|to me|to us|yet|today|already))*$"
         "|^(?:did|have) i (?:get|got|receive|received) (?:an? |any |new )*(?:e ?mails?|mails?|messages?|texts?)\\b",
            mail, Ours::none},
        {"^(?:tell|give|read|show|get|play)(?: me)?(?: the| some| any| latest| todays| today s| top)* news\\b", news,
            Ours::none},
        {"^(?:share|post|tweet) (?:on|to|that)\\b|^update my (?:\\w+ )?status\\b", social, Ours::none},
        {"^(?:record|start recording|make a recording)(?: a| an| my| the| this| some)*(?: voice| audio| video| sound| "
         "call"
         "| screen| conversation)*(?: memos?| notes?| messages?| recording| clip)?$|^(?:print|scan) ",
            {"I can't record, print or scan anything.", true, true}, Ours::none},
        {"^(?:clear|delete|erase|remove) (?:my |the )?(?:browsing|browser|search|web) "
         "(?:history|data|cache)\\b|\\bcookies$",
            computer, Ours::none},
        {"^(?:set|change|adjust|correct|fix) (?:the |my |your |this )?(?:computer |system |current )?(?:clock|time "
         "zone|timezone"
         "|date and time)\\b(?! (?:radio|alarm))|^change (?:the )?(?:date|time)$",
            computer, Ours::none},
        {"^(?:what is |how is |how much |is )?(?:my |the |your )?(?:phone s |laptop s |laptop |phone )?battery(?: "
         "level| status"
         "| life| percentage| left| charge| do i have(?: left)?| full| low| is left)*$",
            {"I can't see how this computer or another device is doing."}, Ours::none},
        {"^(?:what|when|which|where)\\b.*\\b(?:last|next|first) "
         "(?:tube|coach|underground|metro|subway|bus|train|tram|ferry)\\b",
            travel, Ours::none},
        {"^(?:shut ?down|(?:turn|switch) off|restart|reboot|lock|suspend|hibernate) (?:the |this |my |your "
         ")?(?:computer|pc"
         "|laptop|machine|screen)$|^(?:shut ?down|reboot|log (?:me )?(?:out|off))$",
            power, Ours::none},
        // Devices
        {"^(?!(?:buy|purchase|pick up)\\b).*\\b" + control + "\\b.*\\b" + device
                + "\\b(?! (?:saving|savings|bill|bills|money|appointment))",
            house},
        {"^(?:" + device + "|(?:less|more|no|dim|bright|darker|brighter|softer|lower|all|the) (?:the )?" + device
                + ")(?: (?:on|off|up|down|out|please|in|at|now|colou?r|change|power|level)\\b.*)?$",
            house},
        {"\\b(?:lights?|lamps?)\\b.*\\b(?:on|off|out|brighter|darker|dimmer|blue|red|green|pink|purple|yellow"
         "|orange|white|warm|cold|percent|colou?rs?)\\b",
            house},
        {"^(?:it is )?(?:too |so |very )?(?:dark|bright|hot|cold|warm|chilly)(?: in)? here|^make it (?:a "
         "(?:bit|little) "
         ")?(?:warmer|cooler|hotter|colder|brighter|darker|dark|bright)$|^(?:dark|bright)er in "
         "here|\\b(?:brighten|darken"
         "|light up|dim)\\b|\\b(?:room|kitchen|bedroom|bathroom|hall|here)\\b.*\\b(?:brighter|darker|warmer"
         "|cooler|lighter)\\b",
            house},
        {"^(?!.*\\b(?:at|on|today|tonight|tomorrow|every|next|by|calendar|list|notebook|notes)\\b)(?:(?:please"
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
        // Sound
        {"\\b(?:volume|mute|unmute|loudness)\\b|\\b(?:louder|quieter|softer)$|^(?:(?:turn|make|set"
         "|put) )?(?:(?:it|this|that|the (?:sound|music|speakers?|audio)|sound|music"
         "|speakers?) )?(?:(?:a (?:bit|little)|much|way|more) )?(?:louder|quieter|softer)\\b|\\b(?:turn|crank|pump) "
         "(?:up|down) (?:the "
         "|your )?(?:sound|audio|speakers?|it|this|that)\\b|\\b(?:turn|crank"
         "|pump) (?:it|this|that|the (?:sound|speakers?|audio)|sound|your voice) (?:up|down)\\b|\\b(?:raise"
         "|lower|increase|decrease|silence|adjust) (?:the |your |my )?(?:speakers?|sound|audio)\\b|^(?:it is |that is "
         "|you are )?(?:too|so) (?:loud"
         "|quiet)\\b",
            volume},
        {start
                + "(?:play|(?:shuffle|resume|replay|unpause|skip(?!.* (?:\\w+days?|today|tomorrow|tonight|this "
                  "time|this week)$)|rewind|fast forward)(?! "
                  "(?:it|that|this|them|all)\\b)(?= \\w))\\b(?! (?:back|date|dates"
                  "|with|time|tennis|football|golf|chess|cards|group|area|ground)\\b)(?!.*\\b(?:rehearsal"
                  "|practice)\\b)",
            music, Ours::plain},
        {"^(?!.*\\bdo i\\b)(?!(?:buy|pick|fix|repair|return|bring|sell|clean) "
         ").*\\b(?:songs?|playlists?|podcasts?|audio ?books?|radio|broadcasts?|soundtracks?"
         "|albums?|tunes?|music)\\b(?!.*\\b(?:lesson|lessons|class|teacher|school|shop|store|festival|practice"
         "|book|concert|party)\\b)",
            music},
        {"\\b(?:next|previous|last|new|latest) (?:episode|track|chapter|station|channel)\\b|\\bchannel \\d"
         "|\\bi want to hear\\b|\\blistening to (?!me\\b|us\\b|you\\b)|^put on (?:some )?(?!my\\b|an?\\b|the\\b|hold\\b"
         "|weight\\b|your\\b)\\w+(?: \\w+)?$|^skip (?:this|that)$|^play (?:chess|cards|checkers|hangman) "
         "(?:with|against) me"
         "|^(?:hear|listen to) (?!me\\b|us\\b|my |this$|what\\b)|^(?:stop|quit) (?:playing|the "
         "playback)\\b|\\b(?:change|switch) (?:the )?(?:station|channel)\\b",
            music},
        {"\\b(?:i am|we are) into [a-z0-9 ]*music\\b|\\bmy favou?rite (?:song|band|singer|music|album"
         "|artist)\\b(?!.* is )|\\bi (?:really )?(?:like|love|enjoy|hate|dislike) (?:this|that|the) (?:song"
         "|band|singer|music|track|tune|album)\\b",
            taste},
        // Weather, news, money
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
            Ours::plain},
        {"\\b(?:who won|score of|scores?|match result|game result|league|world cup|standings)\\b"
         "|\\b(?:happening|going on|new|up) in (?:the world|the news|sports?|politics|the country)\\b|\\babout the "
         "(?:war|elections?)$",
            news},
        {"\\b(?:stocks?|shares?|share price|stock market|nasdaq|dow jones|bitcoin|crypto\\w*"
         "|trading at)\\b(?! (?:the|my|this|of|it|with|on|cupboard|pot|cubes?|up)\\b)",
            money, Ours::plain},
        {"\\b(?:exchange rates?|currency|currencies)\\b|\\b(?:dollars?|euros?|pounds?|quid|yen|rupees?|francs?"
         "|pesos?|usd|eur|gbp|inr|cad|yuan|krona|rubles?)\\b.*\\b(?:to|in|into|versus|vs|against|worth|compare"
         "|equal)\\b.*\\b(?:dollars?|euros?|pounds?|yen|rupees?|francs?|pesos?|usd|eur|gbp|inr|cad|yuan|krona"
         "|rubles?)\\b|^how (?:much|strong) is (?:the|a|one|1) (?:\\w+ )?(?:dollar|euro|pound|yen|rupee|franc"
         "|peso)\\b|^current price of\\b|\\bprice of (?:gold|oil|gas|silver)\\b",
            money},
        // Getting about
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
        // Mail, calls, people, posts
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
            people, Ours::plain},
        {"\\b(?:facebook|twitter|tweets?|instagram|snapchat|tiktok|linkedin|whatsapp|reddit|social media"
         "|social network\\w*|hashtags?|retweet|followers?)\\b|\\b(?:post|share) (?:this|that|it)\\b(?! letter)",
            social, Ours::plain},
        // Things to eat and to buy
        {"^(?:track|where is) (?:my|the|our) (?:order|package|parcel|delivery|shipment)\\b",
            {"I can't see orders and deliveries."}},
        {"\\bdeliver(?:ed|s)?$|\\bre ?order\\b|\\b(?:get|bring|fetch) (?:me |us |some )+(?:[a-z]+ ){0,3}(?:food|from "
         "(?:the )?(?:usual"
         "|restaurant|\\w+ place))\\b|^get (?:some )?food from\\b|\\bhungry order\\b"
         "|\\b(?:take ?away|takeout|take out (?:order|food)|home delivery)\\b"
         "|\\b(?:buy|get|order|purchase|sell) .+ (?:on|from|at|via|through) (?:amazon|ebay|etsy)\\b|"
                + start
                + "order (?!of\\b|from\\b.*\\blist\\b)(?:me |us |some |a |an |the |another |my )*\\w+"
                  "|\\bto order (?:me|us|some)\\b",
            food},
        {"\\b(?:a|an|some|any) (?:[a-z]+ ){0,3}recipes?\\b|\\bsubstitutes? for\\b|\\btemperature (?:for|to) (?:\\w+ "
         "){0,2}(?:roast\\w*|bak\\w+|cook\\w*|turkey|chicken|beef|pork|cake|bread)\\b"
         "|^(?!(?:find|search|look|show|read|open|where|did|do i)\\b)(?!.*\\bmy (?:\\w+ "
         ")?recipes?\\b).*\\brecipes?\\b|\\bhow (?:do|can"
         "|should) (?:i|you|we) (?:cook|bake|fry|boil|roast|grill|prepare)\\b|\\bhow to (?:cook|bake|fry|boil"
         "|roast|grill)\\b|\\bwhat (?:can|should|could) i cook\\b|\\bingredients (?:of|for|in)\\b"
         "|\\bhow long (?:do|does|should|to) [a-z ]*(?:cook|bake|boil|roast|fry)\\b|\\bcalories (?:in|of)\\b",
            recipe},
        {"\\bcalories did i\\b|\\b(?:my|many) (?:steps|heart ?rate|pulse|blood pressure|calories)\\b"
         "|\\bhow (?:long|well) did i sleep\\b",
            body, Ours::plain},
        // Places
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
            around, Ours::plain},
        {"^what (?:should|could|shall|can) (?:i|we) (?:wear (?:to|for|at)|eat|have for|watch|read|cook)\\b", advice},
        {"\\b(?:recommend|recommendations?|suggest)\\b(?! (?:an? |some )?(?:good )?(?:times?|dates?|days?|slots?)\\b)",
            advice},
        // Words, facts, the web
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
         "|pongal|raksha bandhan|ganesh chaturthi|vesak)\\b",
            moon},
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
        // What is in front
        {"^(?:take|make) (?:a |me a )?(?:picture|photo|selfie|screenshot|screen shot|video)\\b",
            {"I can't take pictures.", true}},
        {"\\b(?:flip|toss) (?:a )?coins?\\b|\\broll (?:a |the |some )?(?:dice|die)\\b|^pick a (?:random )?number\\b",
            {"I can't toss coins or draw lots.", true, true}},
        {"\\b(?:play|start) (?:a |the )?(?:game|quiz|trivia)\\b|^let us play\\b", music},
    };
    return table;
}

} // namespace

std::optional<OutOfReach> OutOfReach::of(std::string_view core)
{
    constexpr std::size_t longest = 300; ///< Bytes; longer words tell a story.
    if (core.size() > longest)
        return std::nullopt;
    static const Pattern gonna("\\bgonna\\b");
    const std::string phrase = gonna.replaceAll(RequestText::phrase(core), "going to");
    const bool isOurs = OurMatters::areNamed(phrase);
    const bool mayBeOurs = isOurs || OurMatters::mayBeNamed(phrase);
    for (const Matter& matter : matters()) {
        const bool isLeft = matter.ours == Ours::any ? mayBeOurs : matter.ours == Ours::plain && isOurs;
        if (!isLeft && matter.pattern.find(phrase))
            return matter.says;
    }
    return std::nullopt;
}

} // namespace quorvell
