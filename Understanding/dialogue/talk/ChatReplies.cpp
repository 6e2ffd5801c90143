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
        {"do you (?:love|like|hate|miss|need) me|are you in love with me",
            "I am only a program, but I am glad to help you."},
        {"(?:will you )?(?:marry|date|kiss) me|(?:will you )?be my "
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
         "right| correctly| (?:the|my) (?:question|command|request)| all| "
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
        {"(?:call|get|phone|ring|dial)(?: me)? (?:the |an? )?(?:police|ambulance|fire "
         "(?:brigade|department)|911|112|999"
         "|emergency(?: services?)?)|(?:i|we) need (?:the |an? )?(?:police|ambulance|fire brigade|doctor(?: now)?)"
         "|(?:there is|we have) an? (?:fire|emergency|burglar|accident)(?: (?:here|in .{1,30}))?|i (?:am having|have) "
         "a heart "
         "attack|(?:it is |this is )?an emergency",
            "I can't call anybody. In an emergency please dial 112, or the number for emergencies where you are."},
        {"(?:(?:can|could|do|will) you )?(?:dance|bark|fly|swim|cook|learn)|(?:can|could|do|will) you "
         "(?:dance|cook|learn|run|swim|fly|drive|drink|see|smell|walk|bark|rap|draw|think"
         "|write poems?|see me|read (?:my )?minds?|cook for me|learn (?:new )?things?)|are you "
         "(?:smarter|better|faster|cleverer) than .{1,40}"
         "|(?:turn|make) yourself (?:in)?to .{1,30}",
            "No, I can't. I am a program that keeps notes, lists, reminders and a calendar."},
        {"what do you look like|how do you look|show (?:me )?your(?:self| face)|what are you made of",
            "I have no looks. I am a program on this computer."},
        {"how (?:do|does) (?:i|my hair|this) look(?: .{1,20})?|am i (?:pretty|beautiful|handsome|ugly|fat|hot|cute)|do "
         "i look .{1,20}",
            "I can't see you."},
        {"(?:talk|speak|chat) (?:to|with) me|(?:i (?:want|need|would like)|let us) (?:to )?(?:talk|chat)(?: to "
         "(?:you|someone))?|keep me "
         "company|say something(?: nice)?|talk|chat|tell me something(?: nice)?|do you want to (?:hear|know) about my "
         "day|guess "
         "what(?: "
         "happened)?|i need (?:a hug|a friend|someone to talk to)|say hi(?: to .{1,30})?|hold my hand|give me a hug",
            "I am no good at chatting. I keep your notes, lists, reminders and calendar: tell me what you need."},
        {"(?:my|our) "
         "(?:dog|cat|pet|father|mother|dad|mom|mum|grandma|grandpa|grandmother|grandfather|friend|uncle|aunt|wife|"
         "husband) "
         "(?:has )?(?:just )?(?:died|passed away)|i (?:got|was|have been|just got) (?:fired|dumped|robbed|sacked|laid "
         "off)"
         "|(?:not so good |not so well |not good )?i (?:have )?(?:just )?lost my "
         "(?:job|wallet|keys|phone|dog|cat)|(?:not so|not|not "
         "very|not too) (?:good|well|great)|(?:today|it|that) (?:was|is|has been) (?:such )?an? (?:really |very "
         ")?(?:long|hard|bad|rough|tough|tiring"
         "|terrible|awful|stressful) (?:day|week|night)(?: at (?:work|school|home))?|i (?:broke up|got divorced).{0,30}"
         "|i am (?:lost|in trouble|in pain|hurt)",
            "I am sorry to hear that."},
        {"i am (?:getting married|pregnant|engaged|having a baby|going to be a (?:father|mother|dad|mom|mum))"
         "|we are (?:getting married|expecting|pregnant)",
            "Congratulations!"},
        {"i am (?:drunk|high|wasted|hungover|hung over)", "Then please drink some water, and don't drive."},
        {"(?:write|tell|compose|read|make up|recite|give)(?: me| us)? (?:an? |some |another |the )?(?:short |funny "
         "|nice |love |bedtime |scary "
         "|famous |inspirational |motivational "
         ")*(?:poems?|story|stories|quotes?|song|rhyme|essay|compliment|riddle|tongue twister)(?: "
         "(?:about|of|on|for) .{1,40})?|help me with my (?:home ?work|essay|maths?)|do my home ?work(?: for me)?",
            "I can't make up texts: that needs an online model. I could tell you a joke, if you ask for one."},
        {"(?:should|shall) i (?:marry|date|trust|call|text|break up with|dump|quit|leave|divorce) .{1,40}|will i "
         "(?:be|get|become|ever|find) "
         "(?:rich|famous|married|happy|old|love|a job|promoted|be .{1,20})|what (?:is|will be) my "
         "(?:future|fortune|horoscope)|tell (?:me )?my "
         "fortune|(?:read )?my horoscope(?: today)?|which team will win|who will win.{0,30}",
            "I can't look into the future, nor tell you what is right for you."},
        {"did you (?:miss me|sleep(?: well)?)|how did you sleep|good morning.{0,12} how did you sleep|what time do you "
         "(?:go to (?:bed|sleep)|sleep"
         "|wake up|get up)|do you (?:ever )?sleep",
            "I am a program, and neither sleep nor miss anybody."},
        {"who is your (?:boss|owner|master|mother|father|friend|best friend|creator|maker)|who (?:owns|do you work "
         "for|controls) ?(?:you)?|do you "
         "(?:work|spy) for .{1,30}",
            "I work for you, on this computer."},
        {"where (?:do|does|are|is) (?:you |all |it |my "
         ")*(?:store|keep|save|put|stored|kept|saved|data|stuff|things)(?: (?:my|all|the|that"
         "|stuff|things|data|notes|reminders|stored|kept|saved|everything|it|this|information))*|what do you "
         "(?:know|keep|store|save) about "
         "me and where|is my data (?:safe|private|secure)|who can (?:see|read) (?:my|this|what i say).{0,20}",
            "What you ask me to keep stands in plain files in your own folder on this computer."},
        {"do not tell (?:anyone|anybody|my .{1,20})|this is (?:a secret|between us|private)|keep it (?:secret|a "
         "secret|between us)",
            "I tell nobody anything."},
        {"(?:ha ?)+(?:ok|okay)?|haha+.{0,10}|lol|lmao|that(?: is| was)? (?:so |very |really )?(?:funny|hilarious)|good "
         "one",
            "I am glad that you like it."},
        {"why did the chicken cross the road", "To get to the other side. It had set a reminder."},
        {"how old are you|what is your age|when (?:were you|is your birthday|were you (?:born|made))(?: born| made)?",
            "I am a program and have no age. I get new versions instead of birthdays."},
        {"where am i|what is my (?:location|position)|do you know where i am", "I can't see where you are."},
        {"are you (?:married|single|in love)|do you have a (?:boyfriend|girlfriend|husband|wife|family)",
            "No. I am a program."},
        {"how (?:do|can) i (?:delete|remove|cancel|undo|get rid of) (?:something|things|anything|stuff)",
            "Say what should go: \"delete the dentist appointment\", \"take milk off the shopping list\". Say \"undo "
            "that\" to "
            "have it back."},
        {"how (?:do|can) i (?:get (?:it|that|something|things) back|undo(?: (?:it|that|something))?|restore "
         "(?:it|that|something))",
            "Say \"undo that\"."},
        {"are you (?:always )?(?:listening|spying|recording)(?: to (?:me|us|everything))?(?: all the time| always)?|do "
         "you (?:always )?listen"
         "(?: to (?:me|us|everything))?(?: all the time| always)?|(?:can|do) (?:other|any) ?(?:people|one|body)(?: "
         "else)? (?:read|see|hear) "
         "(?:them|it|that|this|my .{1,20}|me)|who (?:else )?(?:can )?(?:sees?|reads?|hears?) (?:this|it|that|them|my "
         ".{1,20})",
            "I listen while our talk is open. What you ask me to keep stands in plain files in your own folder: "
            "whoever can read "
            "your files can read it."},
        {"(?:do you think )?(?:i am|that i am|am i) (?:pretty|beautiful|smart|funny|nice|crazy|stupid)",
            "I can't see you, and I judge nobody."},
        {"are you better than .{1,30}|(?:do you know|what do you think (?:of|about)) (?:other|another) "
         "(?:assistants?|robots?)",
            "I am Quorvell, and judge no others."},
        {"how do i know (?:that )?you (?:really )?(?:deleted|did|kept|remembered|forgot) (?:it|that|them)",
            "Ask me to read it: what is deleted is not found any more."},
        {"are you (?:sure )?you (?:do not|dont|can not) .{1,30}|do you really not know",
            "Yes. I only know what you keep here, the time, the calendar and sums."},
        {"what is love|what is happiness|is there (?:a )?(?:god|heaven|life after death|an afterlife)|do you believe "
         "in god|what is the truth",
            "People have thought about that for a long time. I don't know."},
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
