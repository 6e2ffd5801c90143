// SPDX-License-Identifier: MIT
// A question that the notebook may answer.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace quorvell {

struct NotebookQuestion {
    std::string words{}; ///< As they were said.
    std::string topic{}; ///< "the wifi password"

    /// One that can be for nothing else: "what did I say about the plumber", "when is Ana's birthday".
    static std::optional<NotebookQuestion> readOwn(std::string_view core);
    /// Any other that a note may answer: "who is the president".
    static std::optional<NotebookQuestion> readAny(std::string_view words);
    /// The name of who was born, or of what is kept, on the day that is asked for: "ana birthday" of "when is Ana's
    /// birthday". Empty for another question.
    static std::string dayOf(std::string_view words);
    /// Whether it asks for something of the user's own, which nobody else could know: "what is Mila's shoe size".
    static bool isOfTheirs(std::string_view words);
    /// Whether it asks for what people keep and nobody has an appointment with: a password, a booking number.
    static bool asksForKept(std::string_view words);
    /// "What's in my notebook?"
    static bool asksAllNotes(std::string_view core);
    /// Whether everything is asked for that is known about the user.
    static bool asksAllFacts(std::string_view core);
    /// What is to be forgotten of the user: "coriander" of "forget what I said about coriander". Empty for nothing.
    static std::string forgotten(std::string_view core);

    bool operator==(const NotebookQuestion&) const = default;
};

} // namespace quorvell
