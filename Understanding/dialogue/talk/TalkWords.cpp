// SPDX-License-Identifier: MIT
#include "Understanding/dialogue/talk/TalkWords.h"

#include "QuorvellCore/text/Pattern.h"
#include "Understanding/words/RequestText.h"

#include <array>
#include <string>

namespace quorvell {

namespace {

struct TalkRow {
    TalkRow(TalkKind says, std::string_view keys, std::string_view others)
        : kind(says)
        , key("\\b(?:" + std::string(keys) + ")\\b")
        , around("^(?>(?:" + std::string(keys) + "|" + std::string(others) + "|" + std::string(polite)
              + ")(?: |$))++$") // Never tried in another way: it would take long to find that nothing fits.
    {
    }

    /// Words around anything that people say.
    static constexpr std::string_view polite =
        "please|pls|plz|can|could|would|will|may|you|u|your|i|we|me|my|us|it|its|that|this|is|was|the|a|an|of"
        "|to|for|so|just|really|very|quite|much|now|then|and|but|do|did|does|have|has|had|am|are|be|been|not|oh"
        "|ah|hm+|um+|uh+|well|ok|okay|yes|yeah|no|thank|thanks|think|guess|know|quorvell|sorry|hey|hi|hello"
        "|with|here|there|too|in|on|at|all|as|said|say|what|because|actually|honestly|dear|mate|buddy|pal|bro|dude|man|"
        "kindly|like|if"
        "|go|right now";

    TalkKind kind;
    Pattern key;
    Pattern around;
};

const std::array<TalkRow, 14>& rows()
{
    static const std::array<TalkRow, 14> table{{
        {TalkKind::quit,
            "how (?:do|can|could|would|should|to) (?:i |we |one |you "
            ")?(?:turn|switch|shut|close|quit|exit|stop|end|leave"
            "|get out|log off|power)",
            "turn|switch|shut|close|quit|exit|stop|end|leave|get|out|off|down|this|program|thing|conversation|app"
            "|window|session|assistant|computer voice|from|here|one|power|tell|again|completely|show"},
        {TalkKind::wait,
            "let me (?:think|see|check|look|have a think)|(?:just|give me) (?:a|one) (?:moment|minute|second|sec)|one "
            "moment"
            "|hold on|hang on|wait|bear with me|thinking|u+h*m+|u+h+|hm+|erm+",
            "think|see|check|look|have|about|moment|minute|second|sec|one|half|more|still|need|time|give|let|get"
            "|something|little|while|sure|yet"},
        {TalkKind::startAgain,
            "start (?:again|over|anew|from scratch|all over)|begin (?:again|anew)|from the (?:beginning|start"
            "|top)|let us restart|back to (?:the )?start",
            "let|let us|again|over|from|new|begin|start"},
        {TalkKind::goodbye,
            "bye|goodbye|good bye|bye bye|good night|goodnight|see you|see ya|farewell|(?:talk"
            "|speak) to you (?:later|soon)|take care|so long|until (?:tomorrow|next time)|catch you later",
            "later|soon|tomorrow|again|day|evening|night|nice|good|great|lovely|next|time|week|everybody"
            "|everyone|all right|must|got|leave|talk|help|lot|appreciate|later on|that is all|off"},
        {TalkKind::howAreYou,
            "how (?:are|is|do|have|were|was) (?:you|things|everything|life|your (?:day|morning|evening))"
            "|how is it going|what is up|whats up|how do you do|are you (?:okay|ok|well|fine|happy|tired|busy)",
            "going|doing|today|been|day|feel|feeling|going so far|far|tonight|things|life|everything"},
        {TalkKind::whoAreYou,
            "who (?:are|owns) you|what are you(?! (?:doing|up|thinking))|your name|are you (?:a |an )?(?:real|robot"
            "|human|person|machine|computer|program|bot|alive|man|woman|male|female|real person|assistant)"
            "|how (?:old|smart|clever|intelligent) are you|where (?:are|do) you (?:live|from|come from)|introduce "
            "yourself|about yourself"
            "|your (?:age|job|purpose)|are you (?:there|smart|intelligent)",
            "tell|called|call|exactly|who|how|where|from|really|who is this"},
        {TalkKind::wrong,
            "wrong|wrongly|incorrect|incorrectly|mistake|mistaken|misunderstood|misheard|misunderstand"
            "|not (?:quite |really |at all )?(?:correct|correctly|right|it|what i)|you (?:do|did|have"
            ") not (?:quite |really )?(?:understand|understood|get|got|hear|heard)(?: (?:me|this|that|it"
            "|my \\w+))?(?: (?:right|correctly|properly))?|did not (?:ask|mean|say|want|request|order)|no good"
            "|not good|nonsense|not (?:exactly|quite|true|that one)|untrue|something else|(?:did|do) not "
            "(?:follow|obey)"
            "|not at all|(?:a )?bad (?:answer|response|reply)|makes no sense",
            "command|response|request|answer|reply|correct|right|got|get|meant|mean|wanted|want|asked|ask|made"
            "|make|done|doing|seems|seem|believe|afraid|something|completely|totally|exactly|properly|quite"
            "|understand|heard|hear|instruction|question|again|any|anything|words|thing|one|result|task|at "
            "all|exactly|way|fix|true|follow|orders?|way off"
            "|answered|else"
            "|isn|was not|wasn"},
        {TalkKind::repeatSlowly, "slower|slowly|more clearly|slow down",
            "repeat|again|more|speak|talk|tell|once|one|time|say|louder|bit|little|down|clearly|read|slow"},
        {TalkKind::repeat,
            "repeat|again|replay|once more|one more time|another time|rephrase|restate|pardon|come again|(?:did"
            "|could|can) not (?:quite |really )?(?:hear|catch|get|follow)|what did you (?:just )?(?:say|tell)"
            "|huh|what was that|(?:go|run) (?:over |through )?(?:that|it|this)(?: by me)?|what were you saying|play "
            "(?:it|that) back|what you (?:just )?said|say what|missed (?:that|it|what)",
            "speak|talk|tell|give|let|let us|try|once|one|more|time|last|previous|latest|utterance|sentence"
            "|words|word|answer|response|statement|message|reply|hear|catch|get|missed|part|loud|aloud|back"
            "|question|bit|come|need|want|sentences|thing|things|louder|what|just|go|run|by|over|through|were|saying|"
            "play|still"},
        {TalkKind::explain,
            "explain|explanation|elaborate|clarify|clearer|what do you mean|(?:do|did) not understand|(?:am|got) "
            "confused|why|how "
            "come|more information"
            "|how so|be (?:more )?(?:specific|precise)|(?:do not|dont) (?:get|follow|understand)|describe"
            "|make (?:it|that|this) (?:simple\\w*|clear\\w*|easy|easier|understandable)|simplify|in (?:more )?detail"
            "|what does that mean|more details?|tell me more|in (?:other|simple|plain) words|expand on",
            "further|more|detail|details|about|mean|meaning|understand|it to me|give|bit|little|what|better"
            "|clearer|make|by|get|follow|clarify|specific|precise|simple|simpler|easy|easier|once|again|need|some|tell|"
            "last|response|answer|point|topic|want"},
        {TalkKind::indifference,
            "(?:do|would|could|will|does) not (?:really |even )?(?:care|mind|matter|bother)|not care|not mind"
            "|unimportant|not (?:so |that |very |really )?important|no matter|whatever|whichever|either|any one"
            "|anyone|any (?:of them|will do|is fine)|up to you|your choice|no preference|all the same"
            "|you (?:choose|decide|pick)|your (?:pick|call|decision)|anything (?:is fine|will do|goes|works)|makes no "
            "difference|not bothered|immaterial|irrelevant"
            "|anything is (?:ok|okay|good|all right|alright)|not make (?:a|any|much) difference|pick any|nothing "
            "special"
            "|as you (?:wish|like|please|want|prefer|think)|am easy|fine (?:with|by)|any (?:would|can|one will) do|who "
            "cares"
            "|the same (?:for|to) me|both are (?:fine|ok|okay|good)|whatever you \\w+|could not care less"
            "|doesn t matter|dont (?:care|mind)|not (?:a )?big deal|no big deal",
            "select|choose|pick|any|anything|fine|works|work|care|mind|matter|matters|important|difference|one"
            "|either way|way|less|do|decide|option|options|about|doesnt|bothered|to "
            "me|who|let|want|everything|both|either|them|by|same|wish|please|prefer|special|nothing|make"},
        {TalkKind::praise,
            "excellent|amazing|awesome|fantastic|brilliant|wonderful|superb|cool|clever|impressive|bravo"
            "|fabulous|magnificent|outstanding|terrific|genius|marvell?ous|splendid|good (?:job|work|one|girl"
            "|boy|answer)|great (?:job|work|one|answer)|nice(?: (?:job|work|one))?|well done|(?:are"
            "|is) (?:the best|great|good|lovely|smart|so helpful|perfect)|love (?:you|it|that)|(?:nice|amazing"
            "|great|good|excellent|lovely|fine) job|appreciate (?:it|that|you)|perfect|wow|(?:you )?rock|helpful|did "
            "(?:so |very |really |quite )?well|nicely|greatest|like (?:your|the) (?:answer|reply|work)"
            "|(?:great|big|such a|good) help|(?:was|is|are) (?:quick|fast|great|nice|good|useful|funny|al(?:l "
            ")?right)|proud of|so "
            "(?:smart|kind|nice|sweet|clever|good)|legend",
            "job|work|one|assistant|answer|response|absolutely|truly|such|simply|best|great|good|love|helpful"
            "|help|appreciate|lot|done|way|keep|up|everything|super|smart|wow|yay|amazingly|always|how|girl|boy"
            "|perfectly|for "
            "doing|right|correct|correctly|well|did|helping|out|answer|reply|been|big|good|nice|quick|fast|great|"
            "useful"},
        {TalkKind::agreement,
            "(?:correc\\w*|right|exactly|precisely|of course|indeed|understood|affirmative|absolutely|definitely"
            "|yep|yeap|yup|right on|spot on|got it|that is it|what i (?:wanted|meant|asked for|was looking for))",
            "got|get|command|perfectly|rightly|understand|heard|all|sure|totally|answer|response|request"
            "|correct|exact|done|got the|what|wanted|want|meant|asked|ask|agree|one|true"},
        {TalkKind::stop,
            "stop|abort|power down|shut (?:up|off|down|it)|be (?:quiet|silent)|quiet|silence|(?:turn|switch|power) "
            "yourself "
            "off|enough|quit|exit|hush|go (?:away|to sleep)|leave me alone|(?:that is|that will be"
            "|this is) all|end (?:it|this|the (?:conversation|session|call))|finish(?:ed)?|cease|halt|no more"
            "|hang up|sh+u*sh*|end|never ?mind|forget (?:it|that|about it)|that will do",
            "off|up|down|it|talking|speaking|yourself|immediately|conversation|session|later|talk|right|enough"
            "|all|doing|what|everything|need|needed|cancel|never mind|listening|action|program|nothing|else"
            "|that is"},
    }};
    return table;
}

/// "Tell me a joke about cats."
bool asksForJoke(const std::string& phrase)
{
    static const Pattern joke(
        "^(?:(?:can|could|do|please|pls|let|i|we|would|want|wanna|like|need|to|you|us|know|have|got|any|hear"
        "|tell|say|give|share|crack|make|read|me|us|what|whats|is|some|a|an|the|another|one|more|your|my|really"
        "|funny|funniest|silly|good|best|bad|great|stupid|dumb|dad|clean|short|new|favou?rite|knock|nice|random"
        "|kids?|hilarious|dirty|of|now|that|s|did) )*jokes?(?: (?:about|on|of|with|for|to) .{1,60}| please| you (?:know"
        "|have|got)| today| now| again| that| for)*$|^(?:(?:can|could|please|you) )*(?:make me (?:laugh|smile)"
        "|cheer me up|(?:say|tell me) something (?:funny|silly)(?: about .{1,40})?|entertain me|amuse me|knock "
        "knock|(?:tell|give|say) (?:me |us )?(?:something|anything) (?:that will |to |that )?(?:makes? )?(?:me |us "
        ")?(?:laugh|giggle|smile)"
        "|(?:got|have|know|do you have|do you know) (?:any |a )?(?:good|funny) ones?(?: for me)?|(?:i|we) "
        "(?:need|could use|want) (?:a "
        "(?:good )?laugh|cheering up)|be funny|crack (?:me|us) up|tell me (?:a riddle"
        "|something to laugh about))(?: please| now)?$");
    return joke.find(phrase).has_value();
}

} // namespace

std::optional<TalkKind> talkOf(std::string_view core)
{
    constexpr std::size_t longest = 160; ///< Bytes; nobody says so in more.
    if (core.empty() || core.size() > longest)
        return std::nullopt;
    const std::string phrase = RequestText::phrase(core);
    if (asksForJoke(phrase))
        return TalkKind::joke;
    for (const TalkRow& row : rows()) {
        if (row.key.find(phrase) && row.around.find(phrase))
            return row.kind;
    }
    return std::nullopt;
}

} // namespace quorvell
