// SPDX-License-Identifier: MIT
#include "Understanding/words/AssistantName.h"

#include "QuorvellCore/text/Characters.h"
#include "Understanding/words/WordRewriting.h"

#include <string_view>

namespace quorvell {

namespace {

const std::string greeting = "(?:hey there|hi there|hello there|hey|hiya|hi|hello|okay|ok|oi|yo|dear|psst|excuse me"
                             "|good (?:morning|afternoon|evening)|listen)";
/// Hardly anything else than an assistant.
const std::string name = "(?:alexa|siri|cortana|bixby|olly|jarvis|quorvell)";
/// As often somebody, something or the way into the web.
const std::string doubtful = "(?:(?:my |dear )?(?:computer|assistant|buddy|mate|bro|bruh|dude|pal|friend|man|boss|sir"
                             "|madam|honey|sweetie|darling|robot|bot|machine|pda))";
/// What a question begins with.
const std::string asks = "(?:what(?:['’]?s|\\b)|wats?\\b|when(?:['’]?s|\\b)|where(?:['’]?s|\\b)|who(?:['’]?s|\\b)"
                         "|which\\b|how(?:['’]?s|\\b)|do (?:i|we)\\b|did i\\b|am i\\b|have i\\b"
                         "|is (?:there|it|my|the|today|tomorrow|this|any|that)\\b|are (?:there|my|the|we|any)\\b)";
/// What a request begins with.
const std::string wishes =
    "(?:(?:please|pls|plz|kindly|hey|just|quickly|can|could|would|will "
    "(?:you|u|ya|i)|tell|show|give|gimme|read|open|add"
    "|append|include|put|set|make|create|start|begin|update|remind|reminder|delete|remove|cancel|clear|erase|wipe|take"
    "|turn|switch|wake|snooze|stop|skip|pause|do (?:not|you)|don['’]?t|lists?|find|check|note|write|jot|schedule"
    "|reschedule|book|block|move|push|shift|postpone|pencil|plan|organi[sz]e|i|i['’]?m|i['’]?ve|i['’]?d|we|mark|tick"
    "|cross|get|let|pull|bring|change|rename|save|store|record|remember|forget|drop|scrap|play|search|look|new|my"
    "|any|alarm|timer|appointment|meeting|event|shopping|grocery|need|repeat|say|undo|never ?mind|thanks?"
    "|calculate|convert|go ahead|why|not|all|keep|log|mute|throw)\\b)";

} // namespace

std::string AssistantName::removed(const std::string& words)
{
    const std::string sign = "\\s*[,.:;!?–-]+\\s*";
    const std::string request = "(?=" + asks + "|" + wishes + ")";
    static const WordRewriting names(std::deque<std::pair<std::string, std::string>>{
        // "Hey siri dentist on friday at 3", and not "hey Olly is coming".
        {"^" + greeting + "[,!.\\s]+" + name + "(?:" + sign + "|\\s+)(?=\\S)(?!(?:is|was|has|and|will|wants|needs) (?!"
                + request + "))",
            ""},
        {"^(?:" + greeting + "[,!.\\s]+)?(?:" + name + "|" + doubtful + ")(?:" + sign + "|\\s+)" + request, ""},
        {"^" + greeting + "[,!.\\s]+(?:u|you|google)(?:" + sign + "|\\s+)" + request, ""},
        {"^(?:yo|oi|hiya|heya|psst)[,!.\\s]+" + request, ""},
        // "Google how to ..." asks the web.
        {"^google,? (?=(?:add|put|set|create|make|remind|delete|remove|cancel|schedule|wake|turn"
         "|read|open|start|stop|what(?:['’]?s| is) (?:on )?my|do i)\\b)",
            ""},
        {"^" + name + sign + "(?=\\S)(?!\\S+(?:,| and\\b))", ""},
        // Anybody who is called before a question is no part of it; a time is.
        {"^(?!(?:today|tonight|tomorrow|\\w+day|now|next|this|on|at|in|well|so|and|before|after|from|until)\\b)"
         "[\\p{L}]{2,12}(?: [\\p{L}]{2,12})?,\\s*(?=(?:what|when|where|who|how|which)(?:['’]?s|s)?\\b)",
            ""},
        {"[,;]\\s*(?:hey |ok(?:ay)? )?(?:" + name + "|google|mate|bro|buddy|dude|pal|man)\\s*([.!?]*)$", "$1"},
    });
    std::string rest = words;
    for (std::string before; before != rest && !rest.empty();) {
        before = rest;
        rest = trimmed(names.first(rest));
    }
    return rest.empty() ? words : rest;
}

} // namespace quorvell
