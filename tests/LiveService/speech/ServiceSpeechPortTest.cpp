// SPDX-License-Identifier: MIT
// Catches a failing speech service that costs the user their words or the answer.
#include "LiveService/speech/ServiceSpeechPort.h"

#include "SpeechServer.h"

#include <gtest/gtest.h>

namespace quorvell {

namespace {

/// This computer's own, which hears how much it was fed and speaks a tenth of a second.
class OwnSpeech : public SpeechPort {
public:
    void expectSpeech() override { }
    void begin() override { m_samples = 0; }
    void feed(std::span<const std::int16_t> samples) override { m_samples += samples.size(); }
    HeardTurn finish() override { return {.text = "own " + std::to_string(m_samples)}; }
    void speak(std::string_view, std::string_view, const Sink& sink, std::stop_token) override
    {
        sink(std::vector<std::int16_t>(1600, 1));
    }

private:
    std::size_t m_samples = 0;
};

HeardTurn hear(ServiceSpeechPort& port)
{
    port.begin();
    for (int piece = 0; piece < 10; ++piece)
        port.feed(std::vector<std::int16_t>(800));
    return port.finish();
}

std::size_t speak(ServiceSpeechPort& port)
{
    std::size_t samples = 0;
    port.speak({}, "Hello.", [&](std::span<const std::int16_t> piece) { samples += piece.size(); }, {});
    return samples;
}

ServiceSpeechPort portAt(const WyomingAddress& address)
{
    return {std::make_unique<OwnSpeech>(), {address, address}};
}

} // namespace

TEST(ServiceSpeechPort, takesTheServicesWordsAndVoice)
{
    for (const auto& [given, heard] : {std::pair{"Set a timer for 5 minutes.", "Set a timer for 5 minutes."},
             std::pair{"set a timer for five minutes", "set a timer for 5 minutes"}, std::pair{"", ""}}) {
        const test::SpeechServer hearing(
            test::SpeechServer::whenAsked(dumpJson(Json{{"type", "transcript"}, {"data", {{"text", given}}}}) + "\n"));
        auto port = portAt(hearing.address());
        EXPECT_EQ(hear(port), (HeardTurn{.text = heard}));
    }
    const std::vector<std::int16_t> second(22050, 100);
    const test::SpeechServer speaking(test::SpeechServer::whenAsked(
        WyomingEvent::audioChunk(22050, second).bytes() + WyomingEvent::audioStop().bytes()));
    auto port = portAt(speaking.address());
    EXPECT_NEAR(static_cast<double>(speak(port)), 16000, 20) << "at the rate of the port";
}

TEST(ServiceSpeechPort, standsInAtOnceAndSaysSoOnce)
{
    const std::pair<const char*, test::SpeechServer::Answering> rows[] = {
        {"gone",
            [](const std::string&) {
                return test::SpeechServer::Answer{{}, true};
            }},
        {"garbage", test::SpeechServer::whenAsked("hello\n")},
        {"half a sentence",
            test::SpeechServer::whenAsked(
                WyomingEvent::audioChunk(16000, std::vector<std::int16_t>(100)).bytes(), true)},
    };
    for (const auto& [name, answering] : rows) {
        SCOPED_TRACE(name);
        const test::SpeechServer server(answering);
        auto port = portAt(server.address());
        const HeardTurn first = hear(port);
        EXPECT_EQ(first.text, "own 8000") << "none of the sound is lost";
        EXPECT_EQ(first.notice,
            "The speech recogniser at " + server.address().text() + " does not answer, so I listen by myself for now.");
        EXPECT_EQ(hear(port), (HeardTurn{.text = "own 8000"}));
        EXPECT_GE(speak(port), 1600u) << "all of the sentence";
        EXPECT_EQ(hear(port).notice,
            "The voice at " + server.address().text() + " does not answer, so I speak with my own for now.");
        speak(port);
        EXPECT_EQ(hear(port).notice, "");
    }
}

} // namespace quorvell
