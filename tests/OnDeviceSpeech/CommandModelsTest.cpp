// SPDX-License-Identifier: MIT
// Catches models of spoken requests that lack wordings, differ between builds, or do not add up.
#include "OnDeviceSpeech/models/Pronunciation.h"
#include "OnDeviceSpeech/models/TemplateGrammar.h"
#include "OnDeviceSpeech/models/TrigramModel.h"

#include <gtest/gtest.h>

#include <cmath>

namespace quorvell {

namespace {

using Sentence = std::vector<std::string>;

constexpr const char* requests = R"(#JSGF V1.0;
grammar requests; // with a comment
<request> = /9/ [ please ] ( remind | call ) me <when> | /1/ note <task>;
<when> = at ( one | two ) | tomorrow;
<task> = buy milk;
)";

TemplateGrammar read(const char* text)
{
    TemplateGrammar grammar;
    EXPECT_EQ(grammar.add(text, "requests"), "");
    EXPECT_EQ(grammar.check(), "");
    return grammar;
}

TEST(TemplateGrammar, namesTheMistake)
{
    const std::pair<const char*, const char*> rows[] = {
        {"<a> = b;", "x, line 1: \"grammar\" is missing"},
        {"grammar g;\n<a> = b", "x, line 3: \";\" is missing"},
        {"grammar g;\na = b;", "x, line 2: a rule's <name> was expected"},
        {"grammar g;\n<a> = b | ;", "x, line 2: an alternative is empty"},
        {"grammar g;\n\n<a> = ( b ;", "x, line 3: \")\" is missing"},
        {"grammar g;\n<a> = /x/ b;", "x, line 2: a weight is a number above 0 between slashes"},
        {"grammar g;\n<a> = /-1/ b;", "x, line 2: a weight is a number above 0 between slashes"},
        {"grammar g;\n<a> = b;\n<a> = c;", "x, line 3: the rule <a> exists already"},
        {"grammar g;\n<a> = b;\npublic <a> = c;", "x, line 3: the rule <a> exists already"},
        {"grammar g;\npublic <a> = b;\n<a> = c;", "x, line 3: the rule <a> exists already"},
        {"grammar g;\npublic a = b;", "x, line 2: a rule's <name> was expected"},
    };
    for (const auto& [text, problem] : rows)
        EXPECT_EQ(TemplateGrammar().add(text, "x"), problem);
    TemplateGrammar open;
    EXPECT_EQ(open.add("grammar g; <a> = <b>;", "x"), "");
    EXPECT_EQ(open.check(), "the rule <b> does not exist");
    TemplateGrammar round;
    EXPECT_EQ(round.add("grammar g; <a> = x <b>; <b> = y | <a>;", "x"), "");
    EXPECT_EQ(round.check(), "the rule <a> contains itself");
}

TEST(TemplateGrammar, drawsEveryWordingAndTheSameEveryTime)
{
    const TemplateGrammar grammar = read(requests);
    RepeatableRandom random{7};
    RepeatableRandom again{7};
    std::set<Sentence> drawn;
    for (int i = 0; i < 200; ++i) {
        Sentence sentence;
        Sentence second;
        grammar.draw("request", random, sentence);
        grammar.draw("request", again, second);
        EXPECT_EQ(sentence, second);
        drawn.insert(sentence);
    }
    EXPECT_EQ(drawn.size(), 13u); // (2 x 2 x 3) and the note
    EXPECT_TRUE(drawn.contains({"please", "call", "me", "at", "two"}));
    EXPECT_TRUE(drawn.contains({"note", "buy", "milk"}));
    EXPECT_EQ(grammar.words().size(), 11u);
}

TEST(TemplateGrammar, drawsAPublicRuleFromAllFilesByTheirWeights)
{
    TemplateGrammar grammar;
    EXPECT_EQ(grammar.add("grammar a; public <request> = /1/ call | /2/ <note>; <note> = note;", "a"), "");
    EXPECT_EQ(grammar.add("grammar b; public <request> = /7/ open;", "b"), "");
    EXPECT_EQ(grammar.check(), "");
    RepeatableRandom random{7};
    std::map<Sentence, int> drawn;
    for (int i = 0; i < 10'000; ++i) {
        Sentence sentence;
        grammar.draw("request", random, sentence);
        ++drawn[sentence];
    }
    EXPECT_EQ(drawn.size(), 3U);
    EXPECT_NEAR(drawn[{"call"}], 1000, 100);
    EXPECT_NEAR(drawn[{"note"}], 2000, 100);
    EXPECT_NEAR(drawn[{"open"}], 7000, 150);
}

TEST(TrigramModel, probabilitiesOfEveryHistoryAddUpToOne)
{
    TrigramModel model(2);
    for (const Sentence& sentence :
        {Sentence{"a", "b", "c"}, {"a", "b"}, {"b", "c", "a", "b"}, {"a"}, {"a", "b", "c"}}) {
        model.add(sentence);
    }
    const Sentence histories[] = {{"<s>"}, {"<s>", "a"}, {"a", "b"}, {"b"}, {"c", "c"}, {"c"}, {"never"}};
    for (const Sentence& history : histories) {
        double sum = 0;
        for (const char* word : {"a", "b", "c", "</s>"})
            sum += std::pow(10, model.log10Probability(history, word));
        EXPECT_NEAR(sum, 1, 1e-9);
    }
    EXPECT_GT(model.log10Probability({"a", "b"}, "c"), model.log10Probability({"a", "b"}, "a"));
    EXPECT_GT(model.log10Probability({"a", "b"}, "a"), -99);
    EXPECT_EQ(model.log10Probability({"a"}, "unknown"), -99);
    const std::string written = model.written();
    EXPECT_NE(written.find("ngram 1=5\n"), std::string::npos);
    EXPECT_NE(written.find("\n-99.0000 <s> "), std::string::npos);
}

TEST(Pronunciation, saysWordsThatNoDictionaryHas)
{
    EXPECT_EQ(guessedPronunciation("timesheet"), "T AY M SH IY T");
    EXPECT_EQ(guessedPronunciation(""), "");
    EXPECT_FALSE(ownPronunciations("quorvell").empty());
}

} // namespace

} // namespace quorvell
