// SPDX-License-Identifier: MIT
// Catches turns that begin too late, end too early, or are found in noise.
#include "LiveService/turns/TurnDetector.h"

#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <limits>
#include <random>
#include <string>
#include <tuple>

namespace quorvell {

namespace {

using std::chrono::milliseconds;

constexpr int rate = 24000;
constexpr double pause = std::numeric_limits<double>::quiet_NaN();

/// What a client sends: stretches of sound, in chunks of 40 ms as time goes by.
struct Stretch {
    double level; ///< Root mean square, 0 to 1. Negative: nothing is sent. NaN: the client says that it pauses.
    milliseconds length;
};

using Shape = std::optional<UtteranceShape>;

/// "began", "ended" and the time at which each came, in ms. Whenever they fall silent, `shape` is what they said so
/// far.
std::string eventsFor(const std::vector<Stretch>& stretches, Shape shape = {}, milliseconds* heard = nullptr)
{
    TurnDetector detector(rate);
    std::mt19937 random(1);
    std::normal_distribution<double> noise;
    std::string shown;
    milliseconds now{};
    const std::function<void(const std::vector<TurnEvent>&)> show = [&](const std::vector<TurnEvent>& events) {
        for (const TurnEvent& event : events) {
            if (event.kind == TurnEvent::Kind::paused) {
                show(detector.judge(event.pause, shape));
                continue;
            }
            if (event.kind == TurnEvent::Kind::heard && heard)
                *heard += milliseconds(event.samples.size() * 1000 / rate);
            if (event.kind != TurnEvent::Kind::heard)
                shown +=
                    (event.kind == TurnEvent::Kind::began ? "began " : "ended ") + std::to_string(now.count()) + " ";
        }
    };
    for (const Stretch& stretch : stretches) {
        for (milliseconds sent{}; sent < stretch.length; sent += milliseconds(40)) {
            now += milliseconds(40);
            if (std::isnan(stretch.level)) {
                show(detector.finish());
                continue;
            }
            if (stretch.level < 0) {
                show(detector.look(now));
                continue;
            }
            std::vector<std::int16_t> chunk(rate * 40 / 1000);
            for (auto& sample : chunk)
                sample =
                    static_cast<std::int16_t>(std::clamp(noise(random) * stretch.level * 32768, -32768.0, 32767.0));
            show(detector.take(chunk, now));
        }
    }
    return shown;
}

} // namespace

TEST(TurnDetector, findsTurns)
{
    const auto ms = [](int count) { return milliseconds(count); };
    const std::tuple<const char*, std::vector<Stretch>, const char*> rows[] = {
        {"silence", {{0, ms(3000)}}, ""},
        {"speech in silence", {{0, ms(400)}, {0.1, ms(1000)}, {0, ms(1000)}}, "began 480 ended 1920 "},
        {"a pause within a sentence", {{0.1, ms(800)}, {0, ms(440)}, {0.1, ms(800)}, {0, ms(1000)}},
            "began 80 ended 2560 "},
        {"a click", {{0, ms(400)}, {0.5, ms(40)}, {0, ms(1000)}}, ""},
        {"a key is held, and once more", {{0, ms(400)}, {0.1, ms(800)}, {-1, ms(2000)}, {0.1, ms(800)}, {-1, ms(1000)}},
            "began 480 ended 2120 began 3280 ended 4360 "},
        {"a client says that it pauses", {{0.1, ms(800)}, {0, ms(200)}, {pause, ms(40)}, {0.1, ms(800)}, {0, ms(1000)}},
            "began 80 ended 1040 began 1120 ended 2360 "},
        {"a sound too short, a pause, and another one", {{0.5, ms(40)}, {pause, ms(40)}, {0.5, ms(40)}, {0, ms(400)}},
            ""},
        {"sound is held up", {{0.1, ms(800)}, {-1, ms(800)}, {0.1, ms(400)}, {0, ms(1000)}}, "began 80 ended 2520 "},
        {"sound is held up for too long, and again",
            {{0, ms(400)}, {0.1, ms(800)}, {-1, ms(1000)}, {0.1, ms(400)}, {-1, ms(800)}, {0.1, ms(400)},
                {0, ms(1000)}},
            "began 480 ended 2120 began 2280 ended 4320 "},
        {"a noisy room", {{0.02, ms(2000)}, {0.15, ms(1000)}, {0.02, ms(1000)}},
            "began 80 ended 1040 began 2080 ended 3520 "},
        {"noise grows louder and stays", {{0.001, ms(2000)}, {0.012, ms(4000)}}, "began 2080 ended 4520 "},
        {"one long noise", {{0.1, ms(31000)}}, "began 80 ended 30000 "},
        {"two turns", {{0.1, ms(400)}, {0, ms(800)}, {0.1, ms(400)}, {0, ms(800)}},
            "began 80 ended 920 began 1280 ended 2120 "},
    };
    for (const auto& [name, stretches, expected] : rows)
        EXPECT_EQ(eventsFor(stretches), expected) << name;
}

TEST(TurnDetector, waitsForWhatHangsInTheAirAndNotForWhatIsWhole)
{
    const auto ms = [](int count) { return milliseconds(count); };
    const std::vector<Stretch> once{{0, ms(400)}, {0.1, ms(1000)}, {0, ms(2800)}};
    const std::vector<Stretch> pausing{{0, ms(400)}, {0.1, ms(600)}, {0, ms(700)}, {0.1, ms(600)}, {0, ms(2800)}};
    const std::vector<Stretch> slow{{0, ms(400)}, {0.1, ms(600)}, {0, ms(1160)}, {0.1, ms(600)}, {0, ms(2800)}};
    const std::vector<Stretch> cutOff{{0, ms(400)}, {0.1, ms(600)}, {0, ms(400)}, {0.1, ms(600)}, {0, ms(2800)}};
    const std::tuple<const char*, std::vector<Stretch>, Shape, const char*> rows[] = {
        {"whole", once, UtteranceShape::whole, "began 480 ended 1640 "},
        {"nobody can tell", once, {}, "began 480 ended 1920 "},
        {"may go on", once, UtteranceShape::open, "began 480 ended 2360 "},
        {"hangs in the air", once, UtteranceShape::hanging, "began 480 ended 2600 "},
        {"a pause of 700 ms", pausing, UtteranceShape::open, "began 480 ended 3280 "},
        {"a longer one makes patient", slow, UtteranceShape::hanging, "began 480 ended 4520 "},
        {"who was cut off is waited for", cutOff, UtteranceShape::whole, "began 480 ended 1240 began 1480 ended 2520 "},
    };
    for (const auto& [name, stretches, shape, expected] : rows)
        EXPECT_EQ(eventsFor(stretches, shape), expected) << name;
}

TEST(TurnDetector, takesNoAnswerAboutAPauseThatIsOver)
{
    TurnDetector detector(rate);
    const std::vector<std::int16_t> loud(rate, 5000);
    const std::vector<std::int16_t> quiet(rate * 7 / 50); // 140 ms: asked with the last of it.
    detector.take(std::vector<std::int16_t>(rate), milliseconds(1000));
    detector.take(loud, milliseconds(2000));
    ASSERT_EQ(detector.take(quiet, milliseconds(2140)).back().pause, 1);
    detector.take(loud, milliseconds(3200));
    EXPECT_TRUE(detector.judge(1, UtteranceShape::whole).empty()) << "they speak again";
    detector.take(quiet, milliseconds(3400));
    EXPECT_TRUE(detector.judge(1, UtteranceShape::whole).empty()) << "another pause";
    EXPECT_TRUE(detector.isOpen());
}

TEST(TurnDetector, hearsTheTurnFromBeforeItsOnset)
{
    milliseconds heard{};
    eventsFor({{0, milliseconds(1000)}, {0.1, milliseconds(1000)}, {-1, milliseconds(1000)}}, {}, &heard);
    EXPECT_EQ(heard, milliseconds(1000) + milliseconds(240));
}

} // namespace quorvell
