// SPDX-License-Identifier: MIT
// Catches speech of a session that comes late, in the wrong rate, or after it was stopped.
#include "LiveService/speech/SpeechWorkerPool.h"

#include <gtest/gtest.h>

#include <condition_variable>
#include <mutex>

namespace quorvell {

namespace {

/// What the port was made to do, seen from the test's thread.
struct Log {
    void add(std::string text)
    {
        const std::lock_guard lock(mutex);
        texts.push_back(std::move(text));
        changed.notify_all();
    }
    bool waitFor(std::string_view text)
    {
        std::unique_lock lock(mutex);
        return changed.wait_for(
            lock, std::chrono::seconds(5), [&] { return std::find(texts.begin(), texts.end(), text) != texts.end(); });
    }

    std::mutex mutex;
    std::condition_variable changed;
    std::vector<std::string> texts;
};

class FakePort : public SpeechPort {
public:
    explicit FakePort(Log& log)
        : m_log(log)
    {
        m_log.add("made");
    }
    ~FakePort() override { m_log.add("destroyed"); }
    void expectSpeech() override { m_log.add("loaded"); }
    void begin() override { m_samples = 0; }
    void feed(std::span<const std::int16_t> samples) override { m_samples += samples.size(); }
    HeardTurn finish() override { return {.text = std::to_string(m_samples)}; }
    void speak(std::string_view voice, std::string_view text, const Sink& sink, std::stop_token stop) override
    {
        m_log.add("speaks " + std::string(text) + " as " + std::string(voice));
        if (text == "For ever")
            while (!stop.stop_requested())
                std::this_thread::yield();
        else
            sink(std::vector<std::int16_t>(1600, 1));
    }

private:
    Log& m_log;
    std::size_t m_samples = 0;
};

SpeechWorker::MakePort makePort(Log& log)
{
    return [&log] { return std::make_unique<FakePort>(log); };
}

} // namespace

TEST(SpeechWorker, convertsRatesBothWays)
{
    Log log;
    std::size_t voiced = 0;
    {
        SpeechWorker worker(makePort(log));
        worker.prepare(24000, 24000, "slt");
        worker.beginListening();
        worker.listen(
            std::vector<std::int16_t>(std::size_t{24000} * SpeechWorker::longestBacklogSeconds + 1)); // Unheard.
        for (int count = 0; count < 10; ++count)
            worker.listen(std::vector<std::int16_t>(2400, 5));
        worker.finishListening([&](const HeardTurn& turn) { log.add("heard " + turn.text); });
        EXPECT_TRUE(log.waitFor("heard 16000"));
        worker.speak(7, {"One.", "Two."}, [&](const VoicePiece& piece) {
            EXPECT_EQ(piece.reply, 7);
            voiced += piece.samples.size();
            log.add(piece.kind == VoicePiece::Kind::sentenceBegan ? "begins " + piece.sentence : "");
            if (piece.kind == VoicePiece::Kind::replyEnded)
                log.add("ended");
        });
        EXPECT_TRUE(log.waitFor("ended"));
        EXPECT_TRUE(log.waitFor("begins Two."));
        EXPECT_TRUE(log.waitFor("speaks Two. as slt"));
    }
    EXPECT_EQ(voiced, 2u * 2400u);
    EXPECT_EQ(log.texts.back(), "destroyed");
}

TEST(SpeechWorker, stopsSpeakingAtOnceAndForgetsWhatWaits)
{
    Log log;
    SpeechWorkerPool pool(makePort(log), SpeechWorkerPool::Readiness::whenSpeechComes);
    auto worker = pool.take();
    worker->prepare(16000, 16000, "slt");
    worker->speak(1, {"For ever", "Never"}, [](const VoicePiece&) {});
    ASSERT_TRUE(log.waitFor("speaks For ever as slt"));
    worker->speak(2, {"Nor this"}, [](const VoicePiece&) {});
    worker->stopSpeaking();
    worker->speak(3, {"But this"}, [](const VoicePiece&) {});
    EXPECT_TRUE(log.waitFor("speaks But this as slt"));

    worker->speak(4, {"For ever"}, [](const VoicePiece&) {});
    pool.giveBack(std::move(worker));
    auto second = pool.take();
    second->prepare(16000, 16000, "awb");
    second->speak(1, {"Here"}, [](const VoicePiece&) {});
    EXPECT_TRUE(log.waitFor("speaks Here as awb")) << "the worker serves the next session";
    pool.giveBack(std::move(second));
    pool.letGo();
    EXPECT_TRUE(log.waitFor("destroyed"));
    const std::lock_guard lock(log.mutex);
    EXPECT_EQ(std::count(log.texts.begin(), log.texts.end(), "made"), 1);
    for (const char* never : {"speaks Never as slt", "speaks Nor this as slt", "loaded"})
        EXPECT_EQ(std::count(log.texts.begin(), log.texts.end(), never), 0) << never;
}

TEST(SpeechWorker, isReadyToHearBeforeItIsTakenWhereSpeechIsExpected)
{
    Log log;
    const SpeechWorkerPool pool(makePort(log), SpeechWorkerPool::Readiness::always);
    EXPECT_TRUE(log.waitFor("loaded"));
}

} // namespace quorvell
