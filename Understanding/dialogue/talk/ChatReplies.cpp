// SPDX-License-Identifier: MIT
// The patterns read whole utterances in lower case, without signs, contractions taken apart.
#include "Understanding/dialogue/talk/ChatReplies.h"

#include "QuorvellCore/text/Pattern.h"
#include "Understanding/words/RequestText.h"

#include <span>
#include <string>

namespace quorvell {

namespace {

struct Reply {
    Reply(std::string_view words, std::string_view text)
        : pattern("^(?:" + std::string(words)
            + ")(?: (?:today|tonight|now|right now|really|again|at all|so "
              "much|though|buddy|pal|mate|man|friend|dude|bro"
              "|quorvell|please|at the moment|anymore|any more))*$")
        , says(text)
    {
    }

    Pattern pattern;
    std::string_view says;
};

std::span<const Reply> replies()
{
    static const std::string feeling =
        "(?:i am|i feel|i am feeling|feeling|i have been feeling) "
        "(?:(?:so|very|really|a bit|a little|quite|pretty|kind of|just|feeling|too|super|rather) )*";
    static const Reply table[] = {
        {feeling
                + "(?:sad|down|low|blue|depressed|lonely|unhappy|upset|stressed(?: "
                  "out)?|anxious|worried|sick|ill|unwell"
                  "|exhausted|tired|sleepy|angry|mad|heartbroken|scared|afraid|nervous|frustrated|overwhelmed|bad|awful"
                  "|terrible|miserable|not (?:so |very )?(?:well|good|happy|great))"
                  "|(?:i|we) (?:had|have had|am having|are having) (?:an? |such an? |the )?(?:really |very |pretty "
                  ")?(?:bad|rotten"
                  "|terrible|awful|rough|hard|tough|horrible|lousy|stressful|difficult|worst|crazy) "
                  "(?:day|week|time|night|morning)(?: at (?:work|school|home|the office)| ever)?",
            "I am sorry to hear that."},
        {feeling
                + "(?:happy|great|good|excited|well|fine|wonderful|fantastic|better|amazing|awesome|over the "
                  "moon|proud)"
                  "|(?:i|we) (?:had|have had|am having|are having) (?:an? |such an? |the )?(?:really |very |pretty "
                  ")?(?:good|great"
                  "|lovely|nice|wonderful|amazing|fantastic|best|fun) (?:day|week|time|night|morning)(?: at "
                  "(?:work|school"
                  "|home|the office)| ever)?",
            "I am glad to hear that."},
        {feeling + "(?:bored|bored (?:out of my mind|to death))", "I could tell you a joke, if you ask for one."},
        {feeling + "(?:hungry|thirsty|starving)",
            "I can't order anything, but I can put something on your shopping list."},
        {"i am (?:back|home|back home|at home)|i just got home", "Welcome back."},
        {"i am (?:leaving|off|going (?:out|home|to work|now)|heading (?:out|home))(?: to work| for work)?",
            "See you later."},
        {"i am (?:going|off|heading) to (?:bed|sleep)", "Sleep well."},
        {"do you (?:love|like|hate|miss|need) me|(?:will you )?(?:marry|date|kiss) me|(?:will you )?be my "
         "(?:girlfriend|boyfriend|wife|husband|friend|valentine)|are you my friend|can we be friends|i (?:miss|adore"
         "|like) you|you are (?:hot|sexy|cute|beautiful|funny)",
            "That is kind of you. I am only a program."},
        {"you (?:are|r) (?:(?:so|really|such|a|an|just|very|the|pretty) "
         ")*(?:useless|stupid|dumb|idiots?|bad|terrible|awful"
         "|annoying|slow|worthless|crap|horrible|fired|worst|no help|not helpful|not very "
         "(?:smart|helpful|bright)|rubbish"
         "|wrong|boring|creepy|pathetic)(?: assistant| thing| machine| program)?|you (?:suck|stink)|i hate "
         "(?:you|this|it)"
         "|(?:this|it) is (?:so |really |just |completely "
         ")?(?:stupid|useless|crap|rubbish|garbage|terrible|annoying|ridiculous"
         "|frustrating|a joke)|what an idiot|shame on you|damn(?: it| you)?|screw you|(?:you "
         ")?(?:idiot|moron|dummy)|bad "
         "(?:assistant|robot|bot)",
            "I am sorry that I was no help. Please tell me in other words what you need."},
        {"(?:(?:can|do|could) you )?(?:still )?hear me(?: okay| ok| now)*|are you (?:still "
         ")?(?:there|listening|awake|on|here|working"
         "|alive|ready|available|online)|(?:hello )?is (?:anyone|anybody|someone|somebody) "
         "(?:there|here|home|listening)"
         "|anyone there|anybody home|you there",
            "Yes, I am here. What can I do for you?"},
        {"are you (?:really |quite |absolutely )?(?:sure|certain|positive|serious|kidding(?: me)?)(?: about "
         "(?:that|this|it))?"
         "|is that (?:really )?(?:right|true|correct|so)|really|seriously|no way",
            "I go by what stands in your notebook and your calendar, and by the clock of this computer."},
        {"(?:do|did|have|can) you (?:understand|understood|get|got|hear|heard|follow|catch|caught)(?: me| that| it| "
         "this|"
         " all that| what i (?:said|mean|want|just said))*|(?:am i|was that|is that) clear",
            "You see it by my answer. Where it does not fit, please say it once more in other words."},
        {"(?:(?:can|do|will|could) you )?(?:keep|hold|tell me) (?:a|my|any|some) secrets?|do you record "
         "(?:me|everything)|do you "
         "(?:spy on|listen to) me|are you (?:recording|spying on)(?: me)?",
            "I only keep what you ask me to keep."},
        {"(?:a |have a |wish you a )?(?:very )?(?:merry|happy) (?:christmas|xmas|new year|easter|holidays?|thanksgiving"
         "|halloween|diwali|hanukkah|eid|valentines day|weekend|birthday)(?: to (?:you|me|all|everyone))?|merry xmas",
            "Thank you, and the same to you."},
        {"(?:it is|today is) my birthday", "Happy birthday!"},
        {"i (?:got|have got|found) (?:the|a new|a) (?:job|promotion|raise)|i (?:passed|won)(?: (?:my|the) \\w+(?: "
         "\\w+)?)?|we won|i "
         "got (?:promoted|engaged|married)",
            "Congratulations!"},
        {"who (?:made|built|created|programmed|designed|developed|invented|wrote) (?:you|quorvell)"
         "|(?:who|what) (?:company|people) (?:made|built|created|makes) you|where were you (?:made|born|built|created)",
            "I am Quorvell, a program on this computer. More about where I come from I don't know."},
        {"are you (?!sure|going|able|free|coming|done|finished|ok|okay|busy|well|fine|happy|tired|human|alive|real"
         "|smart|intelligent|there|here|open|ready|online)[a-z]{4,10}|do you know "
         "(?!how|what|why|when|where|who|that|this|it|me|if)[a-z]{4,8}",
            "I am Quorvell, a program on this computer, and know nothing about that."},
        {"do you (?:sleep|eat|dream|breathe|drink|dance|cry|exercise|get (?:tired|bored|lonely|angry)|have (?:any "
         ")?(?:feelings|a "
         "(?:family|dog|cat|pet|boyfriend|girlfriend|body|brain|soul|mother|heart)|friends|kids|children|emotions|"
         "siblings"
         "|parents))|are you (?:married|single|hungry|sleepy|in love|lonely|bored|drunk)",
            "No. I am a program."},
        {"(?:what|who|which) (?:is|are) your (?:favou?rite|best|fav) .{1,40}|what (?:do|would) you "
         "(?:like|love|think|believe|want"
         "|prefer)(?: to (?:do|eat|watch|be))?(?: (?:about|of|in) .{1,40})?|do you (?:like|love|believe in|hate) "
         ".{1,40}",
            "I am a program and have no liking of my own."},
        {"what (?:are you|you) (?:doing|up to|thinking(?: about)?|working on)|what have you been (?:doing|up to)"
         "|what did you do(?: today| yesterday)",
            "I wait for what you want to have done."},
        {"what is (?:the )?(?:meaning|purpose|point|secret) of (?:life|it all|everything|existence)|why (?:are we|am "
         "i) here",
            "People have thought about that for a long time. I don't know."},
        {"call me "
         "(?!at\\b|on\\b|in\\b|an?\\b|back\\b|when\\b|if\\b|later\\b|tomorrow\\b|up\\b|to\\b|for\\b|the\\b|next\\b)"
         "[a-z]{2,15}",
            "If you say \"remember that my name is\" and the name, I will keep it."},
        {"(?:can i|could i|may i|i want to|let me) (?:call you|give you a (?:new )?name|rename you|change your "
         "name).{0,30}"
         "|change your name.{0,30}",
            "My name stays Quorvell."},
    };
    return table;
}

} // namespace

std::optional<std::string_view> ChatReplies::to(std::string_view core)
{
    constexpr std::size_t longest = 100; ///< Bytes; nobody says so in more.
    if (core.empty() || core.size() > longest)
        return std::nullopt;
    const std::string phrase = RequestText::phrase(core);
    for (const Reply& reply : replies()) {
        if (reply.pattern.find(phrase))
            return reply.says;
    }
    return std::nullopt;
}

} // namespace quorvell
