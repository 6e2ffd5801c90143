// SPDX-License-Identifier: MIT
// What is ordered, cooked and counted of the body. The patterns read the words in lower case, without signs,
// contractions taken apart.
#include "Understanding/dialogue/reach/ReachMatters.h"
#include "Understanding/dialogue/reach/ReachReplies.h"

#include <string>

namespace quorvell {

namespace {

const std::string dish =
    "(?:pizzas?|burgers?|sushi|noodles|curry|kebabs?|burritos?|tacos?|sandwich(?:es)?|fries|chicken "
    "tikka|biryani|dumplings|ramen|steak"
    "|(?:chinese|indian|thai|mexican|italian|japanese|fast|take ?away) (?:food|takeaway|takeout)|take "
    "?away|takeout|big mac|happy "
    "meal|food)";
const std::string meal = "(?:lunch|dinner|breakfast|supper|something to eat|chinese|indian|thai|a snack)";

} // namespace

std::span<const ReachMatter> ReachMatters::ordersRows()
{
    using namespace reach_replies;
    static const std::string start =
        "^(?:(?:and|then|also|next|now|can|could|you|please|i|we|want|would|like|love|need|to|let|me|us|hear"
        "|just|kindly|go|ahead|help|start|begin|will) )*";
    static const ReachMatter table[] = {
        {"\\bplace an? (?:\\w+ )?order\\b|\\bfood (?:delivery|order)\\b|^where is (?:my|our|the) "
         "(?:food|pizza|burger|sushi|dinner"
         "|lunch|take ?away|meal)\\b|\\bmy (?:\\w+ )?(?:food|pizza|take ?away|delivery|order) (?:arrives?|get "
         "here|gets here|ready|coming"
         "|here|status)\\b|\\bstatus of my (?:food |pizza )?(?:order|delivery|package|parcel)\\b"
         "|^(?:buy|get|bring|fetch|order|grab) (?:me|us) (?:(?:an?|some|two|three|\\d) )?(?:\\w+ ){0,3}"
                + dish
                + "\\b"
                  "|^(?:get|bring|fetch) (?:me|us) (?:an?|some|two|three|\\d) "
                  "(?!list|reminder|note|break|minute|moment|hand|summary|few|bit|quick)\\w+$|"
                + "^(?:an? |one |two |three |\\d )?(?:large|medium|small|big) (?:\\w+ )?" + dish
                + "\\b|^(?:(?:i|we) "
                  "(?:want|would like|need|fancy) |can i (?:get|have) |order )(?:an? |some |the |one |two |three |\\d "
                  ")*(?:\\w+ )?"
                + dish + "(?: (?:please|now))*$|\\b" + dish
                + " (?:delivered|delivery|from (?:the )?\\w+(?: \\w+)?)$|^(?:buy|get|bring|fetch"
                  "|order|grab) (?:me|us) (?:an? |some |the )?(?:\\w+ )?"
                + meal
                + "(?: (?:please|now|from \\w+(?: \\w+)?))*$|\\b(?:i am|am|so|very) "
                  "hungry\\b.*\\b(?:get|order|bring|find)\\b",
            food},
        {"^(?:cook|bake) (?:something|a meal|dinner|lunch) (?:with|from|using|out "
         "of)\\b|^(?:show|teach|tell|help|guide) (?:me|us)(?: (?:how|on how|in))?(?: to)? "
         "(?:make|making|cook|cooking|bake|baking|prepare"
         "|preparing|fry|boil|roast|grill)\\b|^(?:i|we) (?:want|would like|need) to "
         "(?:cook|bake)\\b|^(?:steps|instructions"
         "|directions|guide|a guide) (?:to|for|on) (?:make|making|prepare|preparing|cook\\w*|bak\\w*)\\b|^can "
         "(?:i|you|we) "
         "(?:freeze|microwave|reheat|bake|fry|boil|grill|eat) (?!(?:it|that|this|out)\\b)\\w+(?: \\w+){0,2}$|\\bhow "
         "many calories "
         "(?:are|is|does|do|has)\\b",
            recipe},
        {"^(?:track|where is) (?:my|the|our) (?:order|package|parcel|delivery|shipment)\\b",
            {"I can't see orders and deliveries."}},
        {"\\bdeliver(?:ed|s)?$|\\bre ?order\\b|\\b(?:get|bring|fetch) (?:me |us |some )+(?:[a-z]+ ){0,3}(?:food|from "
         "(?:the )?(?:usual"
         "|restaurant|\\w+ place))\\b|^get (?:some )?food from\\b|\\bhungry order\\b"
         "|\\b(?:take ?away(?! (?:anything|everything|all|the|my|our|that|this|it|any|from|every)\\b)|takeout|take out "
         "(?:order|food)|home delivery)\\b"
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
            body, ReachMatter::Ours::plain},
    };
    return table;
}

} // namespace quorvell
