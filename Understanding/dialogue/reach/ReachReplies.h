// SPDX-License-Identifier: MIT
// What is said of what is not done here, where several rows say it.
#pragma once

#include "Understanding/dialogue/reach/ReachReply.h"

namespace quorvell::reach_replies {

inline constexpr ReachReply music{"I can't play music, radio, books or games.", true};
inline constexpr ReachReply games{"I can't play games.", true};
inline constexpr ReachReply books{"I can't play or read books.", true};
inline constexpr ReachReply volume{"I can't change the volume. The sound settings of this computer can.", true};
inline constexpr ReachReply house{"I can't control lights or other devices of the house.", true, true};
inline constexpr ReachReply lights{"I can't control lights.", true, true};
inline constexpr ReachReply coffee{"I can't make coffee.", true, true};
inline constexpr ReachReply cleaning{"I can't clean, nor start a vacuum cleaner.", true, true};
inline constexpr ReachReply weather{"I don't know the weather: that needs an online model."};
inline constexpr ReachReply news{"I don't know the news: that needs an online model."};
inline constexpr ReachReply money{"I don't know prices, shares and exchange rates: that needs an online model."};
inline constexpr ReachReply rates{"I don't know exchange rates: that needs an online model."};
inline constexpr ReachReply shares{"I don't know share prices: that needs an online model."};
inline constexpr ReachReply taxis{"I can't order taxis or rides.", true};
inline constexpr ReachReply traffic{"I can't see the traffic: that needs an online model."};
inline constexpr ReachReply travel{"I can't book or look up trips, tickets, trains or traffic."};
inline constexpr ReachReply booking{"I can't order taxis, and I can't book tickets, tables or trips.", true};
inline constexpr ReachReply mail{"I can't read or send mail and messages.", true};
inline constexpr ReachReply call{"I can't make calls.", true};
inline constexpr ReachReply sharing{"I can't send or share anything from here.", true};
inline constexpr ReachReply people{"I don't keep an address book.", true};
inline constexpr ReachReply social{"I can't read or post in social media.", true};
inline constexpr ReachReply food{"I can't order anything.", true};
inline constexpr ReachReply recipe{"I know no recipes: that needs an online model.", false, false, true};
inline constexpr ReachReply around{"I don't know what is around here: that needs an online model."};
inline constexpr ReachReply advice{"I can't recommend anything: that needs an online model.", false, false, true};
inline constexpr ReachReply power{"I can't switch this computer off, restart or lock it.", true, true};
inline constexpr ReachReply words{"I can't explain words or things: that needs an online model.", false, false, true};
inline constexpr ReachReply web{"I can't look things up on the web."};
inline constexpr ReachReply computer{"I can't change how this computer is set up.", true};
inline constexpr ReachReply moon{"I can't work out the moon, nor feasts like Diwali and Holi that go by it."};
inline constexpr ReachReply facts{"I don't know that: looking things up needs an online model.", false, false, true};
inline constexpr ReachReply body{"I don't measure steps, sleep or calories."};
inline constexpr ReachReply taste{
    "I can't play anything, and I don't keep what you like to hear unless you say \"remember\".", true};

} // namespace quorvell::reach_replies
