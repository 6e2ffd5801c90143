#pragma once

#include "Quorvell/session/SessionObserver.h"
#include "QuorvellCore/text/Json.h"

#include <functional>
#include <iosfwd>
#include <string>
#include <string_view>

namespace quorvell {

/// A conversation for people: replies as they are, tools dimmed, problems on the error stream.
class ConversationText : public SessionObserver {
public:
    enum class Colour { none, ansi };
    enum class Speakers { unnamed, named }; ///< Named where both sides appear: "You: ...".

    static constexpr std::size_t longestNote = 160; ///< User-perceived characters of a line about a tool.

    struct Style {
        Colour colour = Colour::none;
        Speakers speakers = Speakers::unnamed;
        /// Makes room for what is printed, where something else shares the terminal.
        std::function<void(const std::function<void()>& print)> aside{};
    };

    /// The streams are borrowed.
    ConversationText(std::ostream& out, std::ostream& errors, Style style);

    void restChanged(Doze doze) override;
    void helpModeChanged(HelpMode mode) override;
    void userSaid(const std::string& text, Words words) override;
    void assistantSaid(const std::string& text) override;
    void planChanged(const TaskPlan& plan) override;
    void toolCalled(const LiveFunctionCall& call) override;
    void toolAnswered(const LiveFunctionResponse& response) override;
    void problemArose(const std::string& sentence) override;
    void turnCompleted(TurnOutcome outcome) override;
    void conversationEnded(const SessionEnd& end) override;

    /// The values of a JSON object in a short line: `when: Sunday, has_time: true`.
    static std::string summary(const Json& object);
    /// Without control characters, which could move the cursor or change the terminal. Line breaks and tabs stay.
    static std::string printable(std::string_view text);

private:
    void print(std::ostream& stream, const std::string& line);
    void dimmed(const std::string& line);

    std::ostream& m_out;
    std::ostream& m_errors;
    Style m_style;
};

} // namespace quorvell
