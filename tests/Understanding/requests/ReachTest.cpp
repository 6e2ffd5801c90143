// SPDX-License-Identifier: MIT
// Catches what is claimed to be done or known though it is not, requests that are refused though they are ours, and
// talk that is taken for a request.
#include "RuleBench.h"
#include "Understanding/dialogue/reach/OutOfReach.h"
#include "Understanding/dialogue/talk/ChatReplies.h"
#include "Understanding/dialogue/talk/TalkWords.h"
#include "Understanding/words/CueSpelling.h"
#include "Understanding/words/RequestText.h"

#include <gtest/gtest.h>

namespace quorvell {

TEST(Reach, saysWhatIsNotDoneHere)
{
    struct Row {
        const char* reply;
        std::vector<const char*> words;
    };
    const Row rows[] = {
        {"I can't control lights",
            {"turn off the hall lamp", "lights out", "could you dim the lights a bit?", "make the kitchen brighter",
                "switch on the lights in the meeting room", "please off the light", "a bit of soft lighting here",
                "make it cosy in here"}},
        {"I can't switch plugs", {"switch the plug on", "disable the socket by the door"}},
        {"I can't clean",
            {"start the vacuum cleaner", "vacuum the stairs", "the rug is dusty", "roomba start", "hoover now"}},
        {"I can't make coffee", {"brew me a coffee", "an espresso please", "I could do with a latte", "brew a cup"}},
        {"I can't control the heating", {"turn the heating down", "it's chilly in here"}},
        {"I can't open, close or lock", {"lock the front door", "is the garage door open"}},
        {"I can't control alarm systems", {"turn the burglar alarm on"}},
        {"I can't change the volume",
            {"louder", "turn it up", "mute", "set the volume to 5", "make it a bit softer", "that is too loud",
                "silent mode", "turn the sound off"}},
        {"I can't play",
            {"play some swing", "put on the radio", "next track", "I'd like to listen to Brahms", "let's play a game",
                "what song was that", "skip this song", "go on with my audiobook", "turn to channel 4", "stop playing",
                "lets play checkers", "poker please", "keep reading Oliver Twist", "save this singer as favourite",
                "read me a book", "put on the cooking show"}},
        {"I don't know the weather",
            {"how's the weather", "will it rain on friday", "do I need an umbrella tomorrow", "is it cold outside",
                "how warm is it in Rome", "any snow this weekend", "will it be warm on my birthday",
                "the weather for our meeting", "do I need a scarf", "is it gonna snow tomorrow",
                "how's it looking outside", "is there a storm coming", "rainy tomorrow?"}},
        {"I can't change how this computer", {"turn on bluetooth", "update the app"}},
        {"I can't change brightness", {"make the brightness of the screen higher"}},
        {"I can't pay anything", {"transfer 20 euros to Ana", "my bank balance"}},
        {"I only understand", {"can you speak french", "set language to german"}},
        {"I don't know the news", {"what's in the news", "read me the headlines", "latest on the strike"}},
        {"I don't know how matches", {"who won yesterday", "did the sharks win", "football results"}},
        {"I don't know share prices", {"how's the stock market"}},
        {"I don't know exchange rates",
            {"what's a euro in dollars to the pound", "exchange rate of the yen", "convert ten francs"}},
        {"I don't know prices", {"price of gold"}},
        {"I can't order taxis",
            {"get me a cab", "find a ride home", "pick me up at the theatre", "schedule a ride with lyft for 6"}},
        {"I can't reserve tables", {"reserve a table for two"}},
        {"I can't buy or book tickets", {"buy two train tickets to Lyon"}},
        {"I can't look up trains", {"when does the next bus go", "I want to go to Bath by train"}},
        {"I can't see the traffic", {"how's the traffic", "any accidents on the M4", "is the bridge closed"}},
        {"I can't show ways", {"directions to the station", "guide me to the nearest hotel"}},
        {"I can't read or send mail",
            {"any new mail", "read my emails", "text Ana that I'm late", "write a message to Bob",
                "email my shopping list to Tom", "send Ana an email about the meeting", "any mail about the event",
                "did Ana reply to me", "write to my boss that I am ill", "tell Ana that I am late",
                "let Tom know I can't come"}},
        {"I can't send or share", {"share my calendar with Tom", "send my wife the to do list"}},
        {"I can't recommend", {"suggest a nice book", "recommend me a phone"}},
        {"I can't switch this computer off", {"shut down the pc", "restart the computer", "lock my screen"}},
        {"I can't toss coins", {"flip a coin", "roll the dice"}},
        {"I can't make calls", {"call Ana", "ring the doctor"}},
        {"I can't read or post in social",
            {"what's new on facebook", "share this on instagram", "write on my wall", "any friend requests"}},
        {"I can't order food",
            {"order a pizza", "order me some noodles", "my last takeaway order", "where is my food order",
                "I'd like a large pizza"}},
        {"I know no recipes", {"a recipe for bread", "how do I bake a cake", "how long should I boil rice"}},
        {"I don't know", // what is around, on or known
            {"a good pub near me", "find a bakery nearby", "is there a museum close by",
                "which films are showing in this town", "what movies are on tonight", "where can I get a haircut",
                "how tall is the tower of Pisa", "why do cats purr", "give me facts about owls"}},
        {"I can't explain words", {"what does ennui mean", "define entropy", "describe a geyser"}},
        {"I can't translate", {"translate cat"}},
        {"I can't make up texts", {"tell me a story", "write me a poem"}},
    };
    for (const Row& row : rows) {
        for (const char* words : row.words) {
            const std::string reply = shown(RequestRules::answerWords(words, {}, withCalendar()));
            EXPECT_TRUE(reply.starts_with(row.reply)) << words << ": " << reply;
        }
    }
}

TEST(Reach, leavesWhatIsOursToTheSkills)
{
    for (const char* words :
        {"remind me to play the piano at 5 pm", "add coffee to my shopping list", "put the concert in my calendar",
            "what did I say about the taxi", "call mum tomorrow at 5 pm", "take out the bins tomorrow",
            "where did I put my umbrella", "when is my flight to Rome", "what's Ana's email address",
            "find my recipe for soup", "how do I reset the boiler", "buy milk", "play date with Tom on saturday",
            "clean the kitchen tomorrow at 5 pm", "the news is good", "turn off the 7 am alarm", "stop the timer",
            "do I have a meeting about the weather", "I like coffee", "what music do I like",
            "send me a reminder to call Tom", "where did I leave my phone", "change the location of the concert",
            "skip standup on thursday", "buy light bulbs", "put flight LH 438 to Dallas on 5 dec departing 10:05",
            "send that to my shopping list", "what's in my cake recipe", "suggest a time for lunch", "fix the radio",
            "forward meeting on friday at 2", "turn off the light reminder", "add set of lamps to the list",
            "email reminders are on", "lock the shed at 6 pm", "can you hear me", "stock up on flour",
            "what time is it in london", "anything going on on friday", "skip yoga", "when is Diwali party",
            "cancel lunch", "take away anything on sunday", "two pizzas", "coffee with Ana", "where do I go on friday",
            "post the letter", "let me know", "resume the reminders"})
        EXPECT_FALSE(OutOfReach::of(words)) << words;
}

TEST(Reach, offersAReminderForADeedAtATime)
{
    checkConversations("reach.txt", withCalendar());
}

TEST(Talk, isKnownInAnyOrderAndIsNoRequest)
{
    struct Row {
        TalkKind kind;
        std::vector<const char*> words;
    };
    const Row rows[] = {
        {TalkKind::joke,
            {"tell me a joke", "I could use a laugh", "do you know any good jokes about cats", "make me laugh"}},
        {TalkKind::goodbye, {"thank you, goodbye", "bye for now", "I'll talk to you later", "good night then"}},
        {TalkKind::wrong,
            {"no, that's wrong", "you did not understand me", "I think you got that wrong",
                "that is not what I asked for", "this answer is not correct", "not exactly", "I said something else"}},
        {TalkKind::repeat, {"could you say that once more", "repeat your last answer", "I didn't hear you"}},
        {TalkKind::repeatSlowly, {"say that again slower"}},
        {TalkKind::praise, {"well done, quorvell", "that was a really great job", "you're awesome"}},
        {TalkKind::indifference,
            {"I don't care", "either is fine", "it doesn't really matter", "whatever", "as you wish",
                "any one will do"}},
        {TalkKind::agreement, {"yes, that's exactly right", "you understood me correctly"}},
        {TalkKind::stop, {"stop talking", "that will be all", "please be quiet now"}},
        {TalkKind::startAgain, {"let's start over", "start again from the beginning"}},
    };
    for (const Row& row : rows) {
        for (const char* words : row.words)
            EXPECT_EQ(talkOf(RequestText::withoutOpening(words)), row.kind) << words;
    }
    for (const char* words :
        {"stop the alarm", "the meeting is wrong", "remind me again in an hour", "any time on friday", "read it again",
            "enough milk", "start the timer again", "what is good for a cold", "cancel it", "bye bye party",
            "how is the garden", "find my note about jokes", "good morning message to Ana", "right turn at the church"})
        EXPECT_FALSE(talkOf(words)) << words;
}

/// A line of nothing but polite words is read at once, however long.
TEST(Talk, isReadQuickly)
{
    std::string words = "it is not correct";
    while (words.size() < 140)
        words += " i do not think so";
    EXPECT_FALSE(talkOf(words + " anyhow"));
}

TEST(Talk, hasAReplyForMoodsAndNoneForRequests)
{
    for (const char* words : {"i'm bored", "I had a rotten day at work", "do you love me", "you're useless",
             "merry christmas", "my cat died", "keep me company", "how do I get it back", "is anyone there",
             "who made you", "what's your favourite color"})
        EXPECT_TRUE(ChatReplies::to(words)) << words;
    for (const char* words :
        {"i am going to the dentist tomorrow", "do you know my shoe size", "call me at 5", "are you free on friday",
            "i left the keys with Tom", "happy birthday card on my list", "do you have my wifi password"})
        EXPECT_FALSE(ChatReplies::to(words)) << words;
}

TEST(CueSpelling, mendsCommandsAndLeavesNamesAndTasks)
{
    struct Row {
        const char* typed;
        const char* read;
    };
    const Row rows[] = {
        {"whats on my shedule", "whats on my schedule"},
        {"put lunch in my calander", "put lunch in my calendar"},
        {"remnd me to call Evert", "remind me to call Evert"},
        {"please delet the meetting", "please delete the meeting"},
        {"set an alram", "set an alarm"},
        {"my apointments tomorrow", "my appointments tomorrow"},
        {"add tea to the grosery list", "add tea to the grocery list"},
        {"crate a new lsit", "create a new list"},
        {"waht tiem is it", "what time is it"},
        {"plz shwo my events", "please show my events"},
        {"turn of the kitchen timer", "turn off the kitchen timer"},
        {"wak me upp at 7", "wake me up at 7"},
        {"turn of the century ball", "turn of the century ball"},
        {"put a crate of beer on my list", "put a crate of beer on my list"},
        {"note that teh hve lsit", "note that teh hve lsit"},
        {"visit Wat Arun", "visit Wat Arun"},
        {"put melting ice in my calendar", "put melting ice in my calendar"},
        {"note buy a calander for mum", "note buy a calander for mum"},
        {"remind me to shedule it", "remind me to shedule it"},
        {"delete the remainder", "delete the remainder"},
        {"lunch with evant", "lunch with evant"},
        {"call Calander tomorrow", "call Calander tomorrow"},
        {"", ""},
    };
    for (const Row& row : rows)
        EXPECT_EQ(CueSpelling::repaired(row.typed), row.read);
}

} // namespace quorvell
