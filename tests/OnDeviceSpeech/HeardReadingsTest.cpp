#include "OnDeviceSpeech/HeardReadings.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>

namespace quorvell {

namespace {

/// Words of a tenth of a second each. "_" is one that nothing was heard in, "=" makes the word before it longer.
std::vector<HeardWord> heard(const std::string& text)
{
    constexpr std::chrono::milliseconds length{100};
    std::vector<HeardWord> words;
    std::istringstream stream(text);
    std::chrono::milliseconds start{};
    for (std::string word; stream >> word; start += length) {
        if (word == "=") {
            words.back().end += length;
        } else if (word != "_") {
            words.push_back({word, start, start + length});
        }
    }
    return words;
}

std::string joined(const std::vector<HeardWord>& words)
{
    std::string text;
    for (const HeardWord& word : words) {
        text += (text.empty() ? "" : " ") + word.text;
    }
    return text;
}

struct Row {
    const char* name;
    const char* trigram;
    const char* grammar;
    const char* open;
    bool isCommand;
    const char* merged;
};

TEST(HeardReadings, putsTogetherWhatEachModelKnowsBest)
{
    const Row rows[] = {
        {"free words from the open model", "remind me at@ nine@ to call the dentist",
            "remind me at@ nine@ to~ call~ the~ tent~", "remind me at nine to call the dennis", true,
            "remind me at nine to call the dennis"},
        {"the time from the trigram, which the grammar confirms", "remind me at@ nine@ to call anna",
            "remind me at@ nine@ to~ call~ anna~", "remind me at night to call hannah", true,
            "remind me at nine to call hannah"},
        {"two against the trigram", "remind me in@ fifty@ minutes@ to rest",
            "remind me in@ fifteen@ minutes@ to~ rest~", "remind me in fifteen minutes to rest", true,
            "remind me in fifteen minutes to rest"},
        {"each alone: the trigram knows times best", "remind me in@ fifty@ minutes@ to rest",
            "remind me in@ five@ minutes@ to~ rest~", "remind me in fifth minutes to rest", true,
            "remind me in fifty minutes to rest"},
        {"the beginning that both commands models heard", "remind me to pay the rent today@",
            "remind me pay~ = the~ rent~ today@", "remains me to pay the rent today", true,
            "remind me to pay the rent today"},
        {"other word lengths in the open model", "remind me at@ nine@ = to call anna",
            "remind me at@ nine@ = to~ call~ anna~", "remind me of = nine to call anna", true,
            "remind me at nine to call anna"},
        {"nothing in the open model", "yes", "yes", "", true, "yes"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        const HeardReadings readings{heard(row.trigram), heard(row.grammar), heard(row.open)};
        EXPECT_EQ(readings.isCommand(), row.isCommand);
        EXPECT_EQ(joined(readings.merged()), row.merged);
    }
}

TEST(HeardReadings, isNoCommandWithoutAgreement)
{
    const Row rows[] = {
        {"nothing heard", "", "", "", false, nullptr},
        {"the grammar passed it as any words", "remind me at@ five@", "bring~ nine~ meat~ five~", "", false, nullptr},
        {"the grammar heard nothing", "remind me at@ five@", "", "", false, nullptr},
        {"different requests", "find my note about paint", "set a reminder paint~", "", false, nullptr},
        {"the same words at another time", "_ _ _ never mind", "never mind", "", false, nullptr},
        {"barely half the same", "remind me today@ at@", "remind me by@ six@ ", "", false, nullptr},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_FALSE((HeardReadings{heard(row.trigram), heard(row.grammar), {}}).isCommand());
    }
}

} // namespace

} // namespace quorvell
