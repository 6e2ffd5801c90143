// SPDX-License-Identifier: MIT
// Music, radio, books, games, and how loud they are. The patterns read the words in lower case, without signs,
// contractions taken apart.
#include "Understanding/dialogue/reach/ReachMatters.h"
#include "Understanding/dialogue/reach/ReachReplies.h"

#include <string>

namespace quorvell {

namespace {

const std::string playing =
    "^(?!(?:do|did|have) "
    "(?:i|we)\\b)(?:(?:can|could|would|you|please|i|we|want|like|love|need|to|let|lets|us|me|play|start|open|"
    "launch|do|have|begin|run|load"
    "|continue|a bit of|get|give|put on|hear|listen to|bored|am|in the mood for) )*";
/// Names of games that people ask for by nothing but the name.
const std::string gameNames = "(?:chess|checkers|draughts|backgammon|solitaire|tetris|sudoku|minecraft|candy crush(?: "
                              "saga)?|\\w+ saga|(?:super )?mario(?: kart"
                              "| bros)?|pac ?man|fifa(?: \\d+)?|angry "
                              "birds|fortnite|roblox|poker|blackjack|monopoly|scrabble|trivia|a quiz|hangman|tic tac "
                              "toe|crosswords?|bingo|ludo|twenty questions|20 questions|rock paper "
                              "scissors|cards|temple run|pok[eé]mon(?: go)?|minesweeper"
                              "|connect four|wordle|call of duty|subway surfers)";
const std::string genres = "(?:jazz|rock|pop|hip ?hop|rap|blues|classical|country music|country|heavy "
                           "metal|metal|techno|reggae|folk|soul|disco|edm|k ?pop"
                           "|opera|punk|house music|swing|salsa|bollywood|\\d0s(?: music| hits)?)";

} // namespace

std::span<const ReachMatter> ReachMatters::mediaRows()
{
    using namespace reach_replies;
    static const std::string start =
        "^(?:(?:and|then|also|next|now|can|could|you|please|i|we|want|would|like|love|need|to|let|me|us|hear"
        "|just|kindly|go|ahead|help|start|begin|will) )*";
    static const ReachMatter table[] = {
        {"^i (?:really |just )?(?:love|like|hate|enjoy|prefer|am into|am a fan of) (?:listening to )?(?:some )?"
                + genres + "$",
            taste},
        {"\\b(?:silent|mute|quiet|vibrate|vibration) mode\\b|^(?:go|be|stay) (?:silent|mute)\\b"
         "|\\b(?:turn|switch|put|set) (?:the |your |my )?(?:sounds?|audio|speakers?|voice)\\b(?! (?:alarm|reminder))"
         "|\\b(?:turn|switch) (?:on|off) (?:the |your |my )?(?:sounds?|audio|speakers?)$|\\b(?:lower|raise) "
         "(?:your|the) voice\\b"
         "|^(?:i )?(?:can not|could not) hear (?:you|anything).*\\b(?:louder|up)\\b",
            volume},
        {"^pause(?: (?:it|this|that|the (?:music|song|playback)))?$", {"Nothing is playing that I could pause."}},
        {playing + "(?:a |an |the |some |my |this |new |another |quick |game of |round of |match of )*" + gameNames
                + "(?: (?:game|puzzle|online|please|now|again|against me|with me|for me))*$"
                  "|\\b(?:open|start|play|launch|do|have|begin) (?:me |us )?(?:a |an |the |some |another )?(?:\\w+ "
                  ")?(?:quiz|trivia|video ?game|games?|puzzle)(?: (?:game|please|with me|now))*$",
            games},
        {"^(?:launch|load|boot up|fire up) (?!.*\\b(?:at|on|tomorrow|today)\\b)\\w+(?: \\w+){0,2}$",
            {"I can't open applications or web pages.", true}},
        {playing + "(?:some |a bit of |a little |more |smooth |good |old |new |classic )*" + genres
                + "(?: (?:music|song|songs|playlist|please|now|hits))*$|^put on (?:the |a |an |some )?(?:\\w+ "
                  "){1,4}(?:show|station|channel|band|album|playlist|mix)$|^what (?:is|song is|track is)(?: currently| "
                  "now)? "
                  "(?:playing|this song|on now)|\\bto dance to\\b|\\b(?:singer|artist|band|song|track|tune)\\b.*"
                  "\\b(?:favou?rites?|sings?|sang|singing|stars?|thumbs)\\b|\\b(?:favou?rites?|rate|like|who "
                  "sings)\\b.*\\bthis "
                  "(?:singer|artist|band|song|track|tune)\\b|^(?:the )?latest joe \\w+$",
            music},
        {"^read (?:me |us )?(?:an? |some |another |one |the next )(?:\\w+ "
         ")?(?:books?|story|stories|novel|poem|chapter|fairy "
         "tale)\\b|\\b(?:go|jump|skip|back|forward) to (?:the )?(?:\\w+ )?chapter\\b|^read (?:the )?next chapter\\b"
         "|\\bwhere i (?:left off|stopped|was)\\b.*\\b(?:in|with)\\b|^(?:start|begin|restart) "
         "(?!.*\\b(?:over|again|list)\\b)\\w+.*"
         "\\bfrom the (?:beginning|start|first)\\b|^(?:continue|keep|go on|carry on|resume)(?: with)? "
         "(?:reading|listening)\\b"
         "|^go back to "
         "(?!(?:the|my|our|your|that|this|sleep|bed|work|school|what|it|where|a|start|normal|before)\\b)\\w+(?: "
         "\\w+){1,3}$|^(?:continue|resume)(?: with)? (?!(?:the|my|our|that|this|it)\\b)\\w+(?: \\w+){1,3}$",
            books},
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
                + "(?:play|(?:shuffle|resume|replay|unpause|skip(?= (?:to |this |that |the |a |\\d )*"
                  "(?:next|previous|songs?|tracks?|episodes?|chapters?|tunes?|forward|back|ahead|intro|ads?)\\b)|"
                  "rewind|fast forward)(?! "
                  "(?:it|that|this|them|all)\\b)(?= \\w))\\b(?! (?:back|date|dates"
                  "|with|time|tennis|football|golf|chess|cards|group|area|ground)\\b)(?!.*\\b(?:rehearsal"
                  "|practice)\\b)",
            music, ReachMatter::Ours::plain},
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
        {"\\b(?:play|start) (?:a |the )?(?:game|quiz|trivia)\\b|^let us play\\b", music},
    };
    return table;
}

} // namespace quorvell
