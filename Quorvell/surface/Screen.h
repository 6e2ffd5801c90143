// SPDX-License-Identifier: MIT
// The applications in front of the user as a port: looked at, worked, pointed at. Behind it stands a real desktop, or a
// small world to practise in.
#pragma once

#include "QuorvellCore/automation/ActionCancellation.h"
#include "QuorvellCore/automation/surface/ScreenAction.h"
#include "QuorvellCore/automation/surface/ScreenLook.h"

#include <chrono>
#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace quorvell {

/// A sentence for the user that says what is wrong with the screen, and what to do.
struct ScreenProblem {
    std::string sentence;
    bool operator==(const ScreenProblem&) const = default;
};

struct LookWish {
    enum class Image { none, overview, fine };
    enum class Menus { left, listed };
    enum class Wait {
        none,
        settled, ///< Until what the last action set off has come to rest, or a moment has passed.
    };

    Image image = Image::none;
    Menus menus = Menus::left;
    Wait wait = Wait::none;
};

/// How carrying out an action ended; whether it had its effect shows the next look.
struct ScreenOutcome {
    enum class Kind {
        done, ///< It was handed to the application.
        failed, ///< It could not be; nothing was done.
        stopped, ///< It was cancelled on the way.
        unknown, ///< The application did not answer: it may be done or not.
    };
    Kind kind = Kind::done;
    std::string problem{}; ///< One sentence for the model, unless it is done.

    bool operator==(const ScreenOutcome&) const = default;
};

struct ScreenText {
    std::string text; ///< A stretch of what the page or document says.
    std::optional<std::size_t> next; ///< Where to go on; absent at the end.
    bool operator==(const ScreenText&) const = default;
};

struct ScreenTab {
    std::string title;
    std::string address;
    bool isFront = false;
    bool operator==(const ScreenTab&) const = default;
};

/// Main thread. Every answer comes exactly once, later, never from inside the call; within the time that the
/// implementation sets itself, 30 s at most. What it tells is untrusted and kept within ObservationBounds.
class Screen {
public:
    template <typename Value> using Answer = std::function<void(std::variant<Value, ScreenProblem>)>;

    virtual ~Screen() = default;

    virtual void look(const LookWish& wish, Answer<ScreenLook> answer) = 0;
    /// Nothing is judged here any more. The action is one for the look of this revision; where the screen has moved on
    /// so that its element is another, it fails. Stops between its sub-steps once it is cancelled.
    virtual void act(const ScreenAction& action, std::int64_t revision,
        std::shared_ptr<const ActionCancellation> cancellation, std::function<void(ScreenOutcome)> answer) = 0;
    /// Of the page or document in front, from this place on.
    virtual void read(std::size_t from, Answer<ScreenText> answer) = 0;
    /// The places where these words stand, each with a few words around; the first is brought into view.
    virtual void find(const std::string& words, Answer<std::vector<std::string>> answer) = 0;
    virtual void listTabs(Answer<std::vector<ScreenTab>> answer) = 0;
    /// Highlights an element, or a place, for the user; one at a time.
    virtual void point(const std::string& target, std::function<void(ScreenOutcome)> answer) = 0;
    virtual void pointAtSpot(double x, double y, std::function<void(ScreenOutcome)> answer) = 0;
    virtual void clearPointer() = 0;
};

} // namespace quorvell
