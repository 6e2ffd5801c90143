// SPDX-License-Identifier: MIT
#include "Quorvell/app/chat/ChatWord.h"

#include "Quorvell/app/program/NearestWord.h"
#include "QuorvellCore/text/Characters.h"

#include <algorithm>
#include <array>
#include <utility>
#include <vector>

namespace quorvell {

namespace {

struct Known {
    const char* word;
    ChatWord::Kind kind;
    const char* meaning; ///< Empty for a second name.
};
constexpr std::array knownWords{
    Known{"help", ChatWord::Kind::help, "/help                  this list"},
    Known{"mode", ChatWord::Kind::mode, "/mode [guide|auto|do]  how much Quorvell does by itself"},
    Known{"mute", ChatWord::Kind::mute, "/mute                  voice or microphone off, and on again"},
    Known{"usage", ChatWord::Kind::usage, "/usage                 minutes spoken, and what this conversation used"},
    Known{"quit", ChatWord::Kind::quit, "/quit                  leave (so does Ctrl+D, and Ctrl+C twice)"},
    Known{"exit", ChatWord::Kind::quit, ""},
};

constexpr std::string_view hint = "A line that begins with a space is always for the assistant.";

bool isWordLetter(char letter)
{
    return letter >= 'a' && letter <= 'z';
}

} // namespace

std::optional<ChatWord> ChatWord::read(const TypedMessage& message)
{
    const std::string text = message.text();
    if (message.hasPaste() || !text.starts_with('/'))
        return std::nullopt;
    const auto end = std::find_if_not(text.begin() + 1, text.end(), isWordLetter);
    const bool isWord = end != text.begin() + 1 && (end == text.end() || *end == ' ' || *end == '\t');
    if (!isWord)
        return std::nullopt; // A path, or a slash alone.
    ChatWord read{Kind::unknown, std::string(text.begin() + 1, end), trimmed(std::string(end, text.end()))};
    for (const Known& known : knownWords)
        if (read.word == known.word)
            read.kind = known.kind;
    return read;
}

std::string ChatWord::overview()
{
    std::string lines;
    for (const Known& known : knownWords)
        if (*known.meaning != '\0')
            lines += std::string("  ") + known.meaning + "\n";
    return lines + "  " + std::string(hint);
}

std::string ChatWord::unknownText(const std::string& word)
{
    std::vector<std::string> words;
    words.reserve(knownWords.size());
    for (const Known& known : knownWords)
        words.push_back(std::string("/") + known.word);
    const std::string nearest = nearestWord("/" + word, words);
    return "There is no /" + word
        + (nearest.empty() ? "; /help lists what there is." : ". Did you mean " + nearest + "?") + " "
        + std::string(hint);
}

} // namespace quorvell
