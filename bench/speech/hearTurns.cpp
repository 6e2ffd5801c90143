// SPDX-License-Identifier: MIT
// Tells how recordings are cut into turns, one line of JSON each: how many, what was heard in them, how long after the
// last loud sample each ended, and how long the words took after that. Sound is taken as fast as it can be, so that
// many recordings are looked at in minutes; what the rules would answer, and how they judge a pause, is as in a
// session.
#include "LiveService/speech/OnDeviceSpeechPort.h"
#include "LiveService/turns/TurnDetector.h"
#include "Understanding/requests/HeardRules.h"
#include "Understanding/requests/UtteranceShape.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <ctime>
#include <fstream>
#include <iostream>
#include <iterator>
#include <span>
#include <string>
#include <variant>
#include <vector>

using namespace quorvell;

namespace {

using std::chrono::milliseconds;

constexpr int loudSample = 600; ///< Of 32768: the last one above it ends the speech of a recording without noise.

/// 16 kHz, mono, 16 bits, without a header; a second of quiet around it.
std::vector<std::int16_t> samplesOf(const char* path)
{
    std::ifstream file(path, std::ios::binary);
    const std::string bytes{std::istreambuf_iterator<char>(file), {}};
    constexpr std::size_t quiet = SpeechPort::sampleRateHz;
    std::vector<std::int16_t> samples(quiet + bytes.size() / 2 + 3 * quiet);
    std::copy_n(bytes.data(), bytes.size() / 2 * 2, reinterpret_cast<char*>(samples.data() + quiet));
    return samples;
}

RuleSurroundings surroundings()
{
    const auto calendar = Calendar::create("Europe/Berlin", "en_US");
    const std::chrono::sys_days day = std::chrono::year(2026) / 11 / 21;
    return {{day + std::chrono::hours(9), calendar.value()},
        {"set_reminder", "keep_note", "find_in_notebook", "read_note", "whats_on", "find_free_time", "add_event",
            "change_event", "remember_about_them", "forget_about_them"}};
}

std::string shown(const RuleStep& step)
{
    const auto* call = std::get_if<ToolRequest>(&step.answer);
    return call ? call->name + " " + call->arguments : std::get<std::string>(step.answer);
}

/// One recording as a session takes it.
class Listener {
public:
    Listener(SpeechPort& port, const RuleSurroundings& around)
        : m_port(port)
        , m_around(around)
    {
    }

    nlohmann::json hear(std::span<const std::int16_t> samples)
    {
        constexpr std::size_t chunk = SpeechPort::sampleRateHz / 25; // as they come from a microphone
        for (; !samples.empty(); samples = samples.subspan(std::min(chunk, samples.size()))) {
            const auto piece = samples.first(std::min(chunk, samples.size()));
            m_now += milliseconds(piece.size() * 1000 / SpeechPort::sampleRateHz);
            const auto isLoud = [](std::int16_t sample) { return std::abs(sample) > loudSample; };
            const auto last = std::find_if(piece.rbegin(), piece.rend(), isLoud);
            take(m_detector.take(piece, m_now));
            if (last != piece.rend())
                m_lastLoud = m_now - milliseconds((last - piece.rbegin()) * 1000 / SpeechPort::sampleRateHz);
        }
        return m_turns;
    }

private:
    void take(const std::vector<TurnEvent>& events)
    {
        for (const TurnEvent& event : events) {
            switch (event.kind) {
            case TurnEvent::Kind::began:
                m_port.begin();
                break;
            case TurnEvent::Kind::heard:
                m_port.feed(event.samples);
                break;
            case TurnEvent::Kind::paused:
                judge(event.pause);
                break;
            case TurnEvent::Kind::ended:
                end();
                break;
            }
        }
    }
    void judge(int pause)
    {
        const std::string words = m_port.heardSoFar();
        const auto shape = words.empty() ? std::nullopt : std::optional(shapeOf(words, {}, m_around));
        if (shape == UtteranceShape::whole)
            m_port.expectEnd();
        take(m_detector.judge(pause, shape));
    }
    void end()
    {
        const auto start = std::chrono::steady_clock::now();
        const HeardTurn heard = m_port.finish();
        const std::chrono::duration<double, std::milli> work = std::chrono::steady_clock::now() - start;
        m_turns.push_back({{"text", heard.text}, {"waited_ms", (m_now - m_lastLoud).count()}, {"work_ms", work.count()},
            {"or_else", heard.doubts.orElse}, {"names", heard.doubts.faintNames},
            {"trouble", static_cast<int>(heard.doubts.trouble)},
            {"step", shown(HeardRules::answer(heard.text, heard.doubts, {}, m_around))}});
    }

    SpeechPort& m_port;
    const RuleSurroundings& m_around;
    TurnDetector m_detector{SpeechPort::sampleRateHz};
    milliseconds m_now{};
    milliseconds m_lastLoud{};
    nlohmann::json m_turns = nlohmann::json::array();
};

} // namespace

int main(int argumentCount, char** arguments)
{
    if (argumentCount < 3) {
        std::cerr << "Usage: hear_turns FOLDER_OF_THE_PROGRAM RECORDING.raw ...\n";
        return 2;
    }
    const RuleSurroundings around = surroundings();
    OnDeviceSpeechPort port(SpeechModels::find(arguments[1]), "slt");
    port.expectSpeech();
    for (const char* path : std::span(arguments, static_cast<std::size_t>(argumentCount)).subspan(2)) {
        const nlohmann::json turns = Listener(port, around).hear(samplesOf(path));
        std::cout << nlohmann::json{{"recording", path}, {"turns", turns}}.dump() << std::endl;
    }
    return 0;
}
