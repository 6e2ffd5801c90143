// SPDX-License-Identifier: MIT
#include "Understanding/skills/notes/NotebookQuestion.h"

#include "QuorvellCore/text/Characters.h"
#include "QuorvellCore/text/Pattern.h"
#include "Understanding/words/RequestText.h"
#include "Understanding/words/RequestWords.h"

namespace quorvell {

namespace {

constexpr std::size_t longest = 200; ///< Bytes of a question.

/// What other skills know, or nobody here does.
bool isForOthers(const std::string& phrase)
{
    static const Pattern others(
        "\\b(?:weather|forecast|rain|raining|snow|snowing|news|headlines|song|songs|music|playlist|traffic|stocks?|"
        "exchange rate|"
        "alarms?|timers?|reminders?|meetings?|appointments?|events?|calendar|schedule|agenda|shopping "
        "list|lists?|emails?(?! address)|mails?|"
        "messages?|lights?|volume|podcasts?|radio|taxi|uber|trains?|flights?|restaurants? near|joke|time is it)\\b");
    return others.find(phrase).has_value();
}

/// What people write down to find it again.
const std::string kept = "(?:passwords?|passcode|pass code|codes?|pin|combination|phone number|number|telephone number"
                         "|mobile number|address|email address|shoe size|blood type|booking reference|reference"
                         "|licen[cs]e plate|number plate|iban|serial number)";

/// "What's for dinner": no event is called so.
const std::string meal = "^what (?:is|are we having) for (?:dinner|lunch|breakfast|supper|tea|dessert)\\b";

/// What is asked about, for the reply.
std::string topicOf(std::string_view words)
{
    static const Pattern lead(
        "^(?:(?:please|do you (?:remember|know)|can you (?:tell|remind) me|(?:tell|remind) "
        "me|what|where|who|when|which|how|why|whose|is|are|was|were|['’]s|do|"
        "does|did|have|has|had|i|we|you|say|said|write|wrote|note|noted|put|save|keep|kept|tell|told|know|to|about|"
        "down|for|my notes say|my notebook "
        "say|much|many|long|old|there|anything|something|everything|all|ever|once)\\b\\s*)+",
        Pattern::caseless);
    static const Pattern tail(
        "(?:\\s+(?:is|are|was|were|again|please|in my (?:notes|notebook)))+$|[?!.]+$", Pattern::caseless);
    const std::string core = tail.replaceAll(tail.replaceAll(trimmed(words), ""), "");
    static const Pattern question("^(?:what|where|who|when|which|how|why)['’]?s\\s+", Pattern::caseless);
    const std::string topic = trimmed(lead.replaceAll(question.replaceAll(core, ""), ""), ",;:\"“”");
    // "Where did I park": what was done is no thing.
    static const Pattern deed("\\b(?:did|have) (?:i|we) (?:ever |last |just )?\\w+$", Pattern::caseless);
    if (deed.find(core))
        return "that";
    static const Pattern thing("^(?:the|my|our|his|her|their|a|an|any) \\w|^\\w+['’]s? \\w|^\\w+$", Pattern::caseless);
    static const Pattern own("^(?:my|our)\\b", Pattern::caseless);
    return thing.find(topic) ? own.replaceAll(topic, "your") : "that";
}

NotebookQuestion asked(std::string_view words)
{
    return {.words = std::string(words), .topic = topicOf(words)};
}

} // namespace

std::optional<NotebookQuestion> NotebookQuestion::readOwn(std::string_view core)
{
    static const Pattern said(
        "^(?:please )?(?:tell me |show me |read me |remind me )?(?:what|where|when|who|which \\S+|how)(?: else)? "
        "(?:did|have|had|do) (?:i|we) (?:ever |once |last |just )?"
        "(?:say|said|write|written|note|noted|tell you|told you|mention|mentioned|jot|record|put down|write "
        "down|written down|put|leave|left|keep|kept|store|stored|hide|park|parked|lend|lent|save|saved)\\b(?! "
        "(?:on|in) (?:for|my calendar))"
        "|^(?:what|anything|what all) (?:do|does) (?:my|the) (?:notes?|notebook) say\\b"
        "|^(?:did|have) i (?:ever )?(?:say|said|write|written|note|noted|mention|mentioned|tell you|told you)\\b"
        "|^(?:do you )?(?:remember|know|recall) (?:what|where|when|who|which|how|whose) (?!time\\b)"
        "|^(?:remind|tell) me (?:again )?(?:what|where|who|when|which|how) (?!time\\b)"
        "|^(?:please )?tell me (?:again )?(?:something |everything |all |more )?(?:you know |i know |i "
        "(?:said|wrote|noted) )?about "
        "|^what (?:do (?:i|we|you) know|should i know|is there|did i tell you|have you got) about "
        "|^where (?:is|are|do i keep|do we keep|do i find|can i find|did i put|did we put) (?:my|our|the) "
        "(?:spare|old|extra|passports?|keys?|charger|glasses|wallet|torch|ladder|drill|toolbox|first aid|tools?)\\b");
    static const Pattern owned(
        "^(?:what|who|which|where|how)(?: is| are| was| were| do| does| did| much| many| old| big| tall| long| size)+ "
        "(?:the |my |our |his |her |their |\\w+ s |\\w+s )?.*?"
        "\\b(?:password|passcode|pass code|code|pin|combination|phone number|number|telephone number|mobile "
        "number|address|email address|birthday|size|shoe size|"
        "dentist|doctor|plumber|electrician|gp|vet|hairdresser|landlord|neighbou?r|accountant|account "
        "number|licen[cs]e plate|favou?rite \\w+|blood type|name)(?: again| number| called)?$"
        "|^(?:what|which) size \\w+ do (?:i|we) |^(?:do|am|did|was) i "
        "(?!have\\b|free\\b|busy\\b|(?:still "
        ")?need\\b|already\\b|meeting\\b|seeing\\b|available\\b|set\\b|add\\b|put\\b|schedule\\b|book\\b|"
        "make\\b|going\\b|doing\\b)\\w+"
        "|^how (?:do|can|did|should) (?:i|we) (?!feel|look|know)\\w+|^how to \\w+"
        "|"
        + meal
        + "|^what am i (?:allergic|called|afraid)|^where do (?:i|we) (?:live|work|keep|park)|^who am i$|^what is my "
          "name$");
    static const Pattern bare(
        "^(?:(?:my|our|the) )?(?:(?:(?!is |are |was |has |to |set |change |add |put |new |call |text |send |for "
        "|remove |delete |cancel |erase )\\w+ "
        "){1,3}(?:password|passcode|pin code|pin|phone number|telephone number|shoe size|birthday|door code|gate code)"
        "|(?:phone|telephone|mobile)? ?number (?:of|for) (?:the |my |our )?\\w+(?: "
        "\\w+)?|(?:password|code|address|pin) (?:of|for) (?:the |my |our )?\\w+(?: \\w+)?)$");
    const std::string phrase = core.size() <= longest ? RequestText::phrase(core) : std::string();
    if (phrase.empty() || isForOthers(phrase))
        return std::nullopt;
    static const Pattern ask("\\b(?:are|were|can|could|will) you\\b|\\byourself\\b|\\byour "
                             "(?:name|age|birthday|favou?rite)\\b|^(?:how (?:do|can) (?:i|we) "
                             "(?:say|spell|use you|talk|change you|get rid))|\\b(?:remind|wake) me to\\b");
    // "I forgot the wifi password", "show me the gate code"
    static const Pattern wanted("^(?:i (?:forgot|have forgotten|can not remember|cannot remember|cant remember|do not "
                                "remember|do not know|need)"
                                "|(?:please )?(?:show me|give me|get me|find me|find|look up|check))(?: what)? "
                                "(?:the|my|our|\\w+s|\\w+ s) (?:\\w+ ){0,3}"
                                "(?:password|passcode|code|pin|phone number|telephone number|mobile "
                                "number|address|birthday|shoe size)(?: is)?$");
    const bool isOwn =
        said.find(phrase) || owned.find(phrase) || wanted.find(phrase) || bare.find(phrase) || !dayOf(core).empty();
    return isOwn && !ask.find(phrase) ? std::optional(asked(core)) : std::nullopt;
}

std::optional<NotebookQuestion> NotebookQuestion::readAny(std::string_view words)
{
    static const Pattern question(
        "^(?:please )?(?:what|who|whom|whose|where|when|which|why|how|whats|does|do|did|has|have|tell me|give me)\\b");
    static const Pattern toUs("\\b(?:are|were|did|have|do|can|could|will|would|made|created|built) "
                              "you\\b|\\byourself\\b|^where am i$|\\byou (?:are|were|think|feel|like)\\b|\\byour\\b");
    static const Pattern empty("^what is (?:on|up|happening|going "
                               "on|left|planned)\\b|^(?:what|who|when|where|how|which|why|it|that|this|is|are|was|do|"
                               "does|did|the|there|one|i|now|so|on|about|else|more|next|up|going|a)(?: "
                               "(?:what|who|when|where|how|which|why|it|that|this|is|are|was|do|does|did|the|there|one|"
                               "i|now|so|on|about|else|more|next|up|going|a))*$");
    const std::string phrase = words.size() <= longest ? RequestText::phrase(words) : std::string();
    const bool isQuestion = question.find(phrase) && !toUs.find(phrase) && !empty.find(phrase) && !isForOthers(phrase);
    return isQuestion ? std::optional(asked(words)) : std::nullopt;
}

std::string NotebookQuestion::dayOf(std::string_view words)
{
    static const Pattern form("^(?:(?:tell me|do you (?:know|remember)) )?(?:(?:when|what day|what date|which "
                              "day|which date|on (?:what|which) (?:day|date)) (?:is|was|are|does|will|did)(?: "
                              "the)?|when) (.+?)(?: (?:will be|is|be|on|fall|falls|this year))*$");
    static const Pattern yearly("^(.*?)\\b(birthday|anniversary|wedding anniversary|name day|born)$");
    static const Pattern owner("\\b(?:my|our|the|s|is)\\b ?|(?:'s)\\b");
    static const Pattern possessive("['’]s?\\b(?= )");
    const auto match = words.size() <= longest
        ? form.find(RequestText::phrase(possessive.replaceAll(std::string(words), "")))
        : std::nullopt;
    const auto day = match ? yearly.find(match->texts[0]) : std::nullopt;
    if (!day)
        return {};
    const std::string who = trimmed(owner.replaceAll(day->texts[0], " "));
    return trimmed(who + " " + (day->texts[1] == "born" ? "birthday" : day->texts[1]));
}

bool NotebookQuestion::isOfTheirs(std::string_view words)
{
    static const Pattern own(
        "\\b(?:my|our|mine|notes?|notebook)\\b|\\b" + kept + "(?: again)?(?:$| (?:of|for|to) )|" + meal);
    static const Pattern person("\\b(?:i|we|me|us)\\b");
    static const Pattern way("^how (?:do|can|should|could|would|to)\\b");
    static const Pattern owner("\\b(?!(?:what|who|where|when|how|it|that|there|here|let|he|she|today|tomorrow"
                               "|yesterday)['’])\\w+['’]s? \\w",
        Pattern::caseless);
    const std::string phrase = words.size() <= longest ? RequestText::phrase(words) : std::string();
    const bool tellsOfThem = person.find(phrase) && !way.find(phrase) && readOwn(words);
    return own.find(phrase) || owner.find(words) || tellsOfThem;
}

bool NotebookQuestion::asksForKept(std::string_view words)
{
    static const Pattern form("^(?:what|which)(?: is| was| are| were)+ (?:(?:the|my|our|his|her|their|\\w+ s) "
                              "){0,2}(?:(?!(?:at|on|with|in|for|of)\\b)\\w+ ){0,3}"
        + kept + "(?: again)?$");
    static const Pattern keeper("^who(?: is| was| are) (?:my|our) (?:\\w+ )?\\w+$");
    const std::string phrase = words.size() <= longest ? RequestText::phrase(words) : std::string();
    static const Pattern eaten(meal);
    return form.find(phrase) || keeper.find(phrase) || eaten.find(phrase);
}

bool NotebookQuestion::asksAllNotes(std::string_view core)
{
    static const Pattern form("^(?:please )?(?:(?:tell|show|read) me )?(?:what(?: all)?(?: is| do i have| have i got)"
                              "|everything|all)(?: there| written| noted)?(?: down)? (?:in|inside) (?:my|the) "
                              "(?:notebook|notes)(?: now| right now| so far)?$"
                              "|^(?:what|which|how many) notes (?:do i have|have i got|have i written|have i made|are "
                              "there|did i (?:make|write|keep|take))(?: in my notebook| so far| now)?$"
                              "|^do i have any notes(?: in my notebook)?$");
    return core.size() <= longest && form.find(RequestText::phrase(core)).has_value();
}

bool NotebookQuestion::asksAllFacts(std::string_view core)
{
    static const Pattern form(
        "^(?:(?:please )?(?:tell|show) me )?(?:what|everything|all)(?: all| else)? (?:do )?(?:you|i told you|have i "
        "told you|did i tell you)(?: know| remember| have noted| learned)*(?: about)? (?:me|myself|us)$"
        "|^(?:list|show|read)(?: me)? (?:the |all |all the )?facts (?:about|of) me$|^who am i$|^what (?:did i tell "
        "you|have i told you) about (?:me|myself)$|^do you know (?:anything|something) about me$");
    return core.size() <= longest && form.find(RequestText::phrase(core)).has_value();
}

std::string NotebookQuestion::forgotten(std::string_view core)
{
    static const Pattern form("^(?:please )?(?:forget|unlearn|delete|remove|stop remembering)(?: about)? (?:what "
                              "(?:i|we) (?:said|told you|have told you|mentioned)|what you (?:know|remember)|the "
                              "facts?|everything you know|everything i (?:said|told you))(?: about| that| on)? (.+)$"
                              "|^(?:please )?(?:forget|unlearn|stop remembering|no longer remember) (?:that|the fact "
                              "that) ((?:i|my|we|our)\\b.+)$"
                              "|^(?:please )?forget (my (?:name|address|age|diet|job|birthday|phone number|\\w+ "
                              "size|favou?rite \\w+|allerg\\w+))$");
    static const Pattern me("^(?:me|myself|us|it|that|this)$");
    const auto match = core.size() <= longest ? form.find(RequestText::phrase(core)) : std::nullopt;
    if (!match)
        return {};
    const std::string what = match->texts[0] + match->texts[1] + match->texts[2]; // only one took part
    return me.find(what) ? std::string() : what;
}

} // namespace quorvell
