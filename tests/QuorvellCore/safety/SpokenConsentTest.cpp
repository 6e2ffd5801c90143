#include "QuorvellCore/safety/SpokenConsent.h"

#include <gtest/gtest.h>

namespace quorvell {

TEST(SpokenConsent, onlyAClearYesIsOne)
{
    struct Row {
        const char* answer;
        bool isYes;
        bool hesitates;
    };
    const Row rows[] = {
        {"okay", true, false},
        {"Yes.", true, false},
        {"yes please send it", true, false},
        {"uh okay, go ahead", true, false},
        {"Oh, well — yeah, sure!", true, false},
        {"All right then", true, false},
        {"of course", true, false},
        {"that’s fine", true, false},
        {"THAT'S RIGHT", true, false},
        {"hmm yes", true, false},
        {"send the email now", true, false},
        {"please delete it", true, false},
        {"go on then, thank you", true, false},

        {"", false, false},
        {" ... ", false, false},
        {"hmm", false, false},
        {"um and so", false, false},
        {"it", false, false},
        {"delete it", false, false},
        {"yes the blue one", false, false},
        {"yes yesterday", false, false},
        {"oküy", false, false},
        {"yes но", false, false},
        {"yes but wait", false, true},
        {"no", false, true},
        {"okay, not yet", false, true},
        {"don’t", false, true},
        {"of course not", false, true},
        {"Hold on.", false, true},
        {"yes hold on", false, true},
        {"sure, in a minute", false, true},
        {"go away", false, true},
        {"yes then again", false, true},
        {"go ahead if you can", false, true},
        {"send it?", false, true},
        {"okay then what", false, true},
        {"maybe", false, true},
        {"I guess so", false, true},
        {"never mind", false, true},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(SpokenConsent::isAffirmative(row.answer), row.isYes) << row.answer;
        EXPECT_EQ(SpokenConsent::hesitates(row.answer), row.hesitates) << row.answer;
    }
}

} // namespace quorvell
