// SPDX-License-Identifier: MIT
// A live service as a session meets it on bad days: slow, forgetful, dropping calls, saying things twice. What the user
// wants is "request N", in writing or as sound whose samples carry the number; each is answered by one call of
// keep_note.
#pragma once

#include "Quorvell/loop/Scheduler.h"
#include "Quorvell/session/ports/LiveConnection.h"
#include "Quorvell/session/ports/LiveConnectionObserver.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <functional>
#include <map>
#include <memory>
#include <random>
#include <regex>
#include <set>
#include <string>
#include <vector>

namespace quorvell {

class SimulatedService {
public:
    // Numbers hide in samples too quiet to be heard: four bits in each of six.
    static constexpr std::size_t serialAt = 0; ///< The chunk's own.
    static constexpr std::size_t requestAt = 6;

    static void writeMark(Bytes& pcm, std::size_t sample, int value)
    {
        for (std::size_t part = 0; part < 6; ++part, value >>= 4) {
            pcm[2 * (sample + part)] = static_cast<std::uint8_t>(value & 15);
            pcm[2 * (sample + part) + 1] = 0;
        }
    }
    static int readMark(std::span<const std::uint8_t> pcm, std::size_t sample)
    {
        int value = 0;
        for (std::size_t part = 6; part-- > 0;)
            value = value << 4 | pcm[2 * (sample + part)];
        return value;
    }

    SimulatedService(Scheduler& clock, std::mt19937& source)
        : scheduler(clock)
        , random(source)
    {
    }

    std::unique_ptr<LiveConnection> connect(LiveConnectionObserver& observer)
    {
        auto made = std::make_unique<Connection>(*this, observer);
        connections.push_back(made.get());
        return made;
    }
    bool happens(int percent) { return static_cast<int>(random() % 100) < percent; }
    std::chrono::milliseconds someTime(int most) { return std::chrono::milliseconds(random() % most); }

    class Connection : public LiveConnection {
    public:
        Connection(SimulatedService& service, LiveConnectionObserver& observer)
            : m_service(service)
            , m_observer(observer)
            , m_id(++service.connectionsMade)
        {
        }
        ~Connection() override { std::erase(m_service.connections, this); }

        void open(const LiveSetup&) override
        {
            if (m_service.isDown || m_service.happens(10))
                return later(m_service.someTime(3'000), [this] { drop(503); });
            later(m_service.someTime(1'500), [this] {
                isOpen = true;
                report(live_event::SetupComplete{"sess"});
            });
        }
        void sendAudio(std::span<const std::uint8_t> pcm) override
        {
            const int serial = readMark(pcm, serialAt);
            const auto [place, isNew] = m_service.chunkOwner.try_emplace(serial, m_id);
            if (!isNew && (place->second == m_id || !m_service.lost.count(place->second)))
                ++m_service.chunksTwice;
            place->second = m_id;
            if (const int number = readMark(pcm, requestAt))
                ++m_heard[number];
        }
        void sendAudioPause() override
        {
            for (const auto& [number, chunks] : std::exchange(m_heard, {}))
                if (chunks > 5)
                    later(m_service.someTime(1'500), [this, number = number] { understand(number); });
        }
        void sendMessage(const LiveMessageText& message) override
        {
            if (message.answer == LiveMessageText::Answer::notWanted)
                return;
            for (const int number : numbersIn(message.text, "reminder (\\d+)"))
                m_service.noteReminder(number, m_id);
            std::set<int> wanted = numbersIn(message.text, "request (\\d+)");
            for (const int done : numbersIn(message.text, "\"request (\\d+)"))
                wanted.erase(done); // A call for it was made before; only that is told.
            if (!wanted.empty())
                wanted.merge(std::exchange(m_forgotten, {}));
            for (const int number : wanted)
                act(number);
            if (wanted.empty())
                speakSoon("Done.");
        }
        void requestAnswer() override { }
        void sendVoiceInstructions(const std::string&) override { }
        void sendToolResponse(const LiveFunctionResponse&, LiveResponseScheduling) override
        {
            speakSoon("It is done, as you wished.");
        }
        void dropStale() override { }
        void close() override
        {
            isUnwanted = true;
            later(m_service.someTime(100), [this] { finish({}); });
        }

        void drop(int code = LiveClosure::abnormal)
        {
            m_service.lost.insert(m_id);
            finish({.code = code, .reason = "gone", .sentence = "Lost."});
        }
        void report(const LiveServerEvent& event)
        {
            if (!isClosed)
                m_observer.liveEventReceived(event);
        }

        bool isOpen = false;
        bool isClosed = false;
        bool isUnwanted = false; ///< It was told to close.

    private:
        static std::set<int> numbersIn(const std::string& text, const char* pattern)
        {
            const std::regex finder(pattern);
            std::set<int> numbers;
            for (std::sregex_iterator found(text.begin(), text.end(), finder), end; found != end; ++found)
                numbers.insert(std::stoi((*found)[1]));
            return numbers;
        }
        void later(std::chrono::milliseconds delay, std::function<void()> action)
        {
            m_timers.push_back(m_service.scheduler.after(delay, std::move(action)));
        }
        void understand(int number)
        {
            const bool isIdle = m_acting == 0 && m_toSay == 0;
            if (isIdle && m_service.happens(15)) {
                act(number, Words::late);
            } else {
                report(live_event::InputTranscript{"request " + std::to_string(number)});
                m_forgotten.insert(number);
                if (isIdle && m_service.happens(3))
                    return; // It comes back to it when something else is said.
            }
            for (const int wanted : std::exchange(m_forgotten, {}))
                act(wanted);
        }
        enum class Words { known, late };
        void act(int number, Words words = Words::known)
        {
            ++m_acting;
            later(m_service.someTime(2'000), [this, number, words] {
                if (m_service.happens(50))
                    report(live_event::Delegated{"d"});
                if (m_service.happens(30))
                    report(live_event::Thinking{"What to do? "});
                if (m_service.happens(20))
                    report(live_event::OutputTranscript{"One moment."});
                const live_event::ToolCall call{{{"call_" + std::to_string(++m_calls), "keep_note",
                    {{"title", "request " + std::to_string(number)}}}}};
                --m_acting;
                report(call);
                if (words == Words::late)
                    reportLate(number);
                if (m_service.happens(5))
                    report(call);
                if (m_service.happens(5))
                    report(live_event::ToolCallCancellation{{call.calls[0].id}});
                if (m_service.happens(8))
                    later(m_service.someTime(4'000), [this] { drop(); });
            });
        }
        /// In two pieces, behind what they led to.
        void reportLate(int number)
        {
            const auto wait = m_service.someTime(1'000);
            later(wait, [this] { report(live_event::InputTranscript{"request "}); });
            later(wait + std::chrono::milliseconds(200),
                [this, number] { report(live_event::InputTranscript{std::to_string(number)}); });
        }
        void speakSoon(const std::string& words)
        {
            ++m_toSay;
            later(m_service.someTime(1'000), [this, words] { speak(words); });
        }
        void speak(const std::string& words)
        {
            if (m_acting > 0) // One thing after the other.
                return later(std::chrono::milliseconds(500), [this, words] { speak(words); });
            report(live_event::BackendIdle{});
            later(std::chrono::seconds(5), [this] { --m_toSay; }); // It has sounded, too.
            report(live_event::OutputTranscript{words});
            for (int piece = 0; piece < 5; ++piece)
                later(std::chrono::milliseconds(100 * piece), [this] { report(live_event::Audio{Bytes(24'000)}); });
        }
        void finish(const LiveClosure& closure)
        {
            if (std::exchange(isClosed, true))
                return;
            isOpen = false;
            const auto timers = std::exchange(m_timers, {}); // Nothing else happens on it any more.
            m_observer.liveConnectionClosed(closure);
        }

        SimulatedService& m_service;
        LiveConnectionObserver& m_observer;
        int m_id;
        std::vector<TimerHandle> m_timers;
        std::map<int, int> m_heard; ///< Chunks by request.
        std::set<int> m_forgotten; ///< Requests that were heard, and are not worked on.
        int m_calls = 0;
        int m_toSay = 0; ///< Replies being made or heard.
        int m_acting = 0; ///< Requests it is thinking about.
    };

    /// Connections that the session has neither lost nor closed.
    std::ptrdiff_t inUse() const
    {
        return std::ranges::count_if(
            connections, [](const Connection* line) { return !line->isClosed && !line->isUnwanted; });
    }

    Scheduler& scheduler;
    std::mt19937& random;
    bool isDown = false;
    std::vector<Connection*> connections; ///< Those that the session has not let go; newest last.
    std::map<int, int> chunkOwner; ///< Which connection was sent which chunk last.
    std::set<int> lost; ///< Connections.
    std::map<int, int> reminderOwner; ///< Which connection was given which reminder last.
    std::function<void()> reminderGiven; ///< For the first time.
    int connectionsMade = 0;
    int chunksTwice = 0; ///< Sent again although nothing was lost.
    int remindersTwice = 0; ///< Likewise.

private:
    void noteReminder(int number, int connection)
    {
        const auto [place, isNew] = reminderOwner.try_emplace(number, connection);
        if (isNew)
            reminderGiven();
        else if (!lost.count(std::exchange(place->second, connection)))
            ++remindersTwice;
    }
};

} // namespace quorvell
