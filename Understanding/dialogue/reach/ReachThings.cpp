// SPDX-License-Identifier: MIT
#include "Understanding/dialogue/reach/ReachThings.h"

#include "QuorvellCore/text/Pattern.h"
#include "Understanding/dialogue/reach/ReachReplies.h"

#include <span>

namespace quorvell {

namespace {

struct ReachThing {
    ReachThing(const ReachReply& matter, std::string_view words, std::string_view says)
        : of(matter.reply)
        , pattern("\\b(?:" + std::string(words) + ")\\b")
        , reply(says)
    {
    }

    std::string_view of; ///< The reply of several things.
    Pattern pattern;
    std::string_view reply;
};

std::span<const ReachThing> reachThings()
{
    using namespace reach_replies;
    static const ReachThing table[] = {
        {house, "alarm system|security|cameras?|(?:burglar|house|car|fire|smoke) alarm|smoke detector",
            "I can't control alarm systems."},
        {house, "coffee|espresso|latte|cappuccino|americano|tea|kettle", "I can't make coffee or tea."},
        {house, "vacuum\\w*|vaccum|hoover|roomba|mop|sweep|clean\\w*|robot", cleaning.reply},
        {house, "plugs?|sockets?|outlets?|wemo", "I can't switch plugs and sockets."},
        {house, "lights?|lamps?|bulbs?|lighting|dim|bright\\w*|dark\\w*", lights.reply},
        {house,
            "thermostat|heat\\w*|radiators?|air ?con\\w*|ac|fans?|warm\\w*|cool\\w*|cold\\w*|hot|hotter|chilly|"
            "temperature",
            "I can't control the heating or the air."},
        {house, "doors?|gate|garage|lock|unlock|blinds?|curtains?|shutters?", "I can't open, close or lock anything."},
        {house, "tv|television|telly|projector|stereo|hdmi", "I can't control a television."},
        {music, "podcasts?|episodes?", "I can't play podcasts."},
        {music, "audio ?books?|chapters?|books?", books.reply},
        {music, "radio|stations?|fm|broadcasts?|channel", "I can't play radio."},
        {music, "games?|quiz|trivia|chess|checkers|hangman", games.reply},
        {music, "songs?|music|playlists?|albums?|tracks?|tunes?|listen to", "I can't play music."},
        {travel, "traffic|commute", traffic.reply},
        {travel, "tickets?|fares?", "I can't look up or buy tickets."},
        {travel, "trains?|bus|buses|subway|metro|tram|tube|ferry|flights?|plane",
            "I can't look up trains, buses or flights: that needs an online model."},
        {travel, "directions?|routes?|navigat\\w*|get to|map|gps|far|drive|guide|take me",
            "I can't show ways or directions: that needs an online model."},
        {booking, "taxi|cab|uber|lyft|ride ?share|limo|ride|lift|transport\\w*", taxis.reply},
        {booking, "table|reservations?", "I can't reserve tables."},
        {booking, "tickets?|flights?|seats?|pass|card", "I can't buy or book tickets."},
        {booking, "hotels?|rooms?", "I can't book hotels."},
        {money, "stocks?|shares?|share price|market|nasdaq|dow jones|trading at", shares.reply},
        {money,
            "currency|currencies|exchange|dollars?|euros?|pounds?|quid|yen|rupees?|francs?|pesos?|usd|eur|gbp|inr|cad",
            rates.reply},
        {news, "who won|scores?|results?|league|world cup|standings|match|did .* (?:win|won|lose)",
            "I don't know how matches and elections end: that needs an online model."},
        {food,
            "pizzas?|burgers?|sushi|noodles|food|take ?away|takeout|lunch|dinner|meal|chinese|indian|thai|"
            "restaurant|deliver\\w*",
            "I can't order food."},
        {around, "restaurants?|cafes?|bars?|pubs?|pizza|eat|dinner|lunch|drink",
            "I don't know places to eat around here: that needs an online model."},
        {around, "films?|movies?|cinemas?|theat\\w+|show ?times?|released",
            "I don't know what films and shows are on: that needs an online model."},
        {around, "events?|concerts?|festivals?|going on|happening",
            "I don't know what is on around here: that needs an online model."},
        {words, "translat\\w+", "I can't translate: that needs an online model."},
        {words, "spell|pronounce", "I can't spell or pronounce words for you: that needs an online model."},
    };
    return table;
}

} // namespace

ReachReply ReachThings::named(const ReachReply& matter, const std::string& phrase)
{
    ReachReply precise = matter;
    for (const ReachThing& thing : reachThings()) {
        if (thing.of == matter.reply && thing.pattern.find(phrase)) {
            precise.reply = thing.reply;
            break;
        }
    }
    return precise;
}

} // namespace quorvell
