// SPDX-License-Identifier: MIT
// Catches a request whose dress is read as its matter, and words of the user's own that were rewritten.
#include "Understanding/words/PlainWording.h"

#include <gtest/gtest.h>

#include <string_view>

namespace quorvell {

namespace {

struct Row {
    std::string_view said;
    std::string_view plain;
};

void check(std::initializer_list<Row> rows)
{
    for (const auto& [said, plain] : rows)
        EXPECT_EQ(PlainWording::of(said), plain) << said;
}

} // namespace

TEST(PlainWording, undressesWhatSurroundsARequest)
{
    check({
        {"Alexa, what's on my list", "what's on my list"},
        {"hey bixby dentist friday 3pm", "dentist friday 3pm"},
        {"dear assistant, whats on 2moro", "whats on tomorrow"},
        {"mate, what's on my shopping list", "what's on my shopping list"},
        {"please be adding atta and dal to my list", "please add atta and dal to my list"},
        {"would you mind creating a list?", "please create a list?"},
        {"do add milk to the list, kindly", "add milk to the list"},
        {"remind me tmrw @ 5 to ring bob w/ ana asap", "remind me tomorrow at 5 to ring bob with ana"},
        {"wat appts r there nxt tusday", "what appointments are there next tuesday"},
        {"cancle my vet apointment on wensday", "cancel my vet appointment on wednesday"},
        {"wake me at 6 fourty five on saterday", "wake me at 6 forty five on saturday"},
        {"lunch [date : friday] at 8!!! 🎉", "lunch friday at 8!"},
        {"add “milk to my list", "add milk to my list"},
        {"put cheese n ham & eggs on the shopping list", "put cheese and ham and eggs on the shopping list"},
        {"schedule manicure (saturday, 2 pm)", "schedule manicure saturday, 2 pm"},
        {"movie night - friday - 8pm", "movie night friday 8pm"},
        {"remind me 2 call john plz n thx", "remind me to call john please"},
        {"“add ‘renew passport’ to my to do list”", "add \"renew passport\" to my to do list"},
        {"get rid of the standup, I quit", "get rid of the standup"},
        {"cancel dinner tomorrow, John has covid", "cancel dinner tomorrow"},
        {"call off the staff meeting please, half of us are ill", "call off the staff meeting"},
        {"delete the yoga class because I moved", "delete the yoga class"},
    });
}

TEST(PlainWording, takesApartWhatRanTogetherAndWhatSoundsAlike)
{
    check({
        {"setalarm for7am", "set alarm for 7am"},
        {"add milk tomylist", "add milk to my list"},
        {"remindme to call bob tomorrowat 5pmtoday", "remind me to call bob tomorrow at 5pm today"},
        {"set set an alarm at at 6", "set an alarm at 6"},
        {"remind me too by milk next weak", "remind me to buy milk next week"},
        {"add eggs two my list", "add eggs to my list"},
        // What only looks like it.
        {"task: water the plants, add to to-do", "add water the plants to to-do"},
        {"do I have two hours free", "do I have two hours free"},
        {"add \"to to\" to my list", "add \"to to\" to my list"},
        {"remind me to by monday finish it", "remind me to by monday finish it"},
    });
}

TEST(PlainWording, putsTheWishInFront)
{
    check({
        {"we are out of coffee put it on the list", "add coffee to the list"},
        {"I'm running low on dish soap, can you add it to the groceries?", "add dish soap to the groceries"},
        {"I need to buy a new phone charger, add that to my shopping list",
            "add new phone charger to my shopping list"},
        {"i've got to call the vet, pop it on my jobs list", "add call the vet to my jobs list"},
        {"task: water the plants, add to to-do", "add water the plants to to-do"},
        {"I forgot to put sugar on the list, do it for me", "put sugar on the list"},
        {"Rahul's wedding is on 12 december, save it", "Rahul's wedding is on 12 december, put that in my calendar"},
        {"i will be on leave from 1st to 5th december kindly mark the same",
            "leave from 1st to 5th december, put that in my calendar"},
        {"school closed on friday put it in calendar all day",
            "school closed on friday all day, put that in my calendar"},
        {"I changed my mind about the shoes, remove them", "remove the shoes"},
        {"I won't need the 6:30 alarm, delete it", "remove the 6:30 alarm"},
        {"need bananas n apples on the shopping list", "add bananas and apples to the shopping list"},
        {"I can't make it to yoga, take it off my calendar", "remove yoga from my calendar"},
    });
}

TEST(PlainWording, leavesTheirOwnWordsAsTheyAre)
{
    constexpr std::string_view own[] = {"Olly is coming to dinner on friday", "Alexa, Tom and Ben to the guest list",
        "computer science exam on monday at 9", "google how to tie a tie", "friday, what's on",
        "add nail appt to thursday at 2", "add \"tmrw w/ u\" to my reading list", "add a sundae to the list",
        "note that ur cat is lost tmrw, thanks in advance", "add mac n cheese to the list", "remember that im out asap",
        "add lunch with Ana on friday at 1 in my calendar", "do it for me", "the plumber was here on friday, save it",
        "buy 27\" monitor", "cancel dinner, make it lunch instead", "delete milk, eggs and bread", "who is that",
        "we want you to put bread on the list", "add black & decker drill to the shopping list",
        "call at 10:30 - 11:15", "invite the kids' teachers to mum's party", "the alamo is lost", "thanks a lot",
        "is that ok?"};
    for (const std::string_view words : own)
        EXPECT_EQ(PlainWording::of(words), words);
}

} // namespace quorvell
