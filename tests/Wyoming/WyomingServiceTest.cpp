// SPDX-License-Identifier: MIT
// Catches a speech service that is believed when it fails, waited for when it is gone, or never let go.
#include "SpeechServer.h"
#include "Wyoming/WyomingRecogniser.h"
#include "Wyoming/WyomingVoice.h"

#include <gtest/gtest.h>

#include <vector>

namespace quorvell {

namespace {

using std::chrono::milliseconds;
using test::SpeechServer;

constexpr milliseconds patience{400};

std::string transcript(const std::string& json)
{
    return "{\"type\":\"transcript\",\"data\":" + json + "}\n";
}

std::string many(const std::string& message, int count)
{
    std::string all;
    for (int index = 0; index < count; ++index)
        all += message;
    return all;
}

std::string chunk(int rateHz, int channels, std::size_t samples)
{
    WyomingEvent event = WyomingEvent::audioChunk(rateHz, std::vector<std::int16_t>(samples, 7));
    event.data["channels"] = channels;
    return event.bytes();
}

} // namespace

TEST(WyomingRecogniser, givesTheWordsOrNothing)
{
    struct Row {
        const char* name;
        std::string answer;
        const char* words; ///< "-" for a failure.
    };
    const Row rows[] = {
        {"words", transcript("{\"text\":\" Set an alarm.\\n\"}"), "Set an alarm."},
        {"no words", transcript("{\"text\":\"\"}"), ""},
        {"other messages before", "{\"type\":\"voice-started\"}\n" + transcript("{\"text\":\"hi\"}"), "hi"},
        {"signs of a terminal", transcript("{\"text\":\"a\\u001b[2Jb\"}"), "a[2Jb"},
        {"silence", "", "-"},
        {"an error", "{\"type\":\"error\",\"data\":{\"text\":\"no\"}}\n", "-"},
        {"garbage", "HTTP/1.1 400 Bad Request\r\n\r\n", "-"},
        {"no text", transcript("{\"text\":7}"), "-"},
        {"messages without end", many("{\"type\":\"ping\"}\n", 200'000), "-"},
        {"a line without end", std::string(3'000'000, 'a'), "-"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        const SpeechServer server(SpeechServer::whenAsked(row.answer));
        WyomingRecogniser recogniser(server.address(), patience);
        recogniser.begin();
        recogniser.feed(std::vector<std::int16_t>(16000));
        EXPECT_EQ(recogniser.finish().value_or("-"), row.words);
        EXPECT_EQ(recogniser.hasJustFailed(), std::string_view(row.words) == "-");
    }
}

TEST(WyomingRecogniser, leavesAloneWhatFailed)
{
    const SpeechServer server([](const std::string&) { return SpeechServer::Answer{{}, true}; });
    WyomingRecogniser recogniser(server.address(), patience);
    recogniser.begin();
    EXPECT_FALSE(recogniser.finish());
    EXPECT_TRUE(recogniser.hasJustFailed());
    recogniser.begin();
    recogniser.feed(std::vector<std::int16_t>(160));
    EXPECT_FALSE(recogniser.finish());
    EXPECT_FALSE(recogniser.hasJustFailed()) << "told once";
    EXPECT_EQ(server.connections(), 1);

    WyomingRecogniser gone({"127.0.0.1", 1}, patience);
    const auto begun = std::chrono::steady_clock::now();
    gone.begin();
    EXPECT_FALSE(gone.finish());
    EXPECT_LT(std::chrono::steady_clock::now() - begun, patience) << "nobody there needs no patience";
}

TEST(WyomingRecogniser, takesNoMoreThanItsBoundFromAServiceThatDoesNotListen)
{
    const SpeechServer server([](const std::string&) {
        std::this_thread::sleep_for(milliseconds(500));
        return SpeechServer::Answer{};
    });
    WyomingRecogniser recogniser(server.address(), patience);
    recogniser.begin();
    for (int second = 0; second < 600; ++second)
        recogniser.feed(std::vector<std::int16_t>(16000));
    EXPECT_FALSE(recogniser.finish());
}

TEST(WyomingVoice, speaksOrFails)
{
    using Verdict = WyomingVoice::Verdict;
    const std::string stop = WyomingEvent::audioStop().bytes();
    struct Row {
        const char* name;
        std::string answer;
        Verdict verdict;
        std::size_t samples;
    };
    const Row rows[] = {
        {"a sentence", WyomingEvent::audioStart(22050).bytes() + many(chunk(22050, 1, 100), 3) + stop, Verdict::spoken,
            300},
        {"two channels", chunk(22050, 2, 100) + stop, Verdict::spoken, 50},
        {"no sound", stop, Verdict::failed, 0},
        {"broken off", chunk(22050, 1, 100), Verdict::failed, 100},
        {"another width", "{\"type\":\"audio-chunk\",\"data\":{\"rate\":22050,\"width\":4,\"channels\":1}}\n" + stop,
            Verdict::failed, 0},
        {"a rate that no voice has", chunk(1, 1, 100) + stop, Verdict::failed, 0},
        {"no channels", chunk(22050, 0, 100) + stop, Verdict::failed, 0},
        {"sound without end", many(chunk(8000, 1, 8000), 200) + stop, Verdict::failed, 120 * 8000},
        {"garbage", "hello\n", Verdict::failed, 0},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        const SpeechServer server(SpeechServer::whenAsked(row.answer));
        WyomingVoice voice(server.address(), patience);
        std::size_t samples = 0;
        const auto sink = [&](std::span<const std::int16_t> piece, int) { samples += piece.size(); };
        EXPECT_EQ(voice.speak("Hello.", sink, {}), row.verdict);
        EXPECT_EQ(samples, row.samples);
    }
}

TEST(WyomingVoice, stopsInTheMiddle)
{
    const SpeechServer server(SpeechServer::whenAsked(chunk(22050, 1, 100)));
    WyomingVoice voice(server.address(), std::chrono::minutes(1));
    std::stop_source stop;
    const auto begun = std::chrono::steady_clock::now();
    const auto sink = [&](std::span<const std::int16_t>, int) {
        std::jthread([&stop] { stop.request_stop(); }).detach();
    };
    EXPECT_EQ(voice.speak("Hello.", sink, stop.get_token()), WyomingVoice::Verdict::stopped);
    EXPECT_LT(std::chrono::steady_clock::now() - begun, std::chrono::seconds(10));
}

} // namespace quorvell
