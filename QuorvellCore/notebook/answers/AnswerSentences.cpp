// SPDX-License-Identifier: MIT
#include "QuorvellCore/notebook/answers/AnswerSentences.h"

#include "QuorvellCore/text/Characters.h"
#include "QuorvellCore/text/LowerCase.h"
#include "QuorvellCore/text/OneLine.h"
#include "QuorvellCore/text/TextMatch.h"

#include <algorithm>
#include <array>
#include <optional>
#include <string_view>

namespace quorvell {

namespace {

using Asks = QuestionWords::Asks;

constexpr double enoughToBeNear = 0.5; ///< Of the terms.
constexpr double asGood = 0.8; ///< Of the best score: another candidate.

bool isSpace(char letter)
{
    return letter == ' ' || letter == '\t' || letter == '\r' || letter == '\n';
}

/// "Dr." and the like end no sentence.
bool isShortForm(std::string_view text, std::size_t dot)
{
    constexpr auto forms = std::to_array<std::string_view>(
        {"dr", "mr", "mrs", "ms", "st", "no", "tel", "prof", "approx", "ca", "nr", "vs", "etc", "e.g", "i.e"});
    std::size_t start = dot;
    while (start > 0 && !isSpace(text[start - 1]))
        --start;
    const std::string word = lowerCased(text.substr(start, dot - start));
    return std::ranges::find(forms, word) != forms.end();
}

bool endsSentence(std::string_view line, std::size_t place)
{
    const bool isEnd = line[place] == '.' || line[place] == '!' || line[place] == '?';
    return isEnd && (place + 1 == line.size() || isSpace(line[place + 1]))
        && !(line[place] == '.' && isShortForm(line, place));
}

/// Without the signs that lists, headings and check boxes begin with.
std::string_view withoutMarks(std::string_view line)
{
    const auto skip = [&line](std::string_view letters) {
        const std::size_t start = line.find_first_not_of(letters);
        line = start == std::string_view::npos ? std::string_view() : line.substr(start);
    };
    skip(" \t");
    if (line.starts_with("- ") || line.starts_with("* ") || line.starts_with("+ "))
        line.remove_prefix(2);
    else if (line.starts_with('#') || line.starts_with('>'))
        skip("#> ");
    for (const std::string_view box : {"[ ] ", "[x] ", "[X] "}) {
        if (line.starts_with(box))
            line.remove_prefix(box.size());
    }
    skip(" \t");
    return line;
}

struct Sentence {
    std::string text;
    std::string heading; ///< That it stands under.
};

std::vector<Sentence> sentencesOf(std::string_view text)
{
    std::vector<Sentence> sentences;
    std::string heading;
    for (std::size_t start = 0; start < text.size();) {
        const std::size_t end = std::min(text.find('\n', start), text.size());
        const std::string_view raw = text.substr(start, end - start);
        const std::string_view line = withoutMarks(raw);
        if (raw.starts_with('#'))
            heading = std::string(line);
        std::size_t from = 0;
        for (std::size_t place = 0; place < line.size(); ++place) {
            if (!endsSentence(line, place) && place + 1 != line.size())
                continue;
            std::string said = trimmed(line.substr(from, place + 1 - from));
            if (!said.empty() && !raw.starts_with('#'))
                sentences.push_back({std::move(said), heading});
            from = place + 1;
        }
        start = end + 1;
    }
    return sentences;
}

/// Whether one slip of the finger makes one of the other: a letter too many, too few, or another one. Of short words
/// that would be another word.
bool isNearly(std::string_view left, std::string_view right)
{
    constexpr std::size_t shortest = 6;
    if (left.size() > right.size())
        std::swap(left, right);
    if (left.size() < shortest || right.size() - left.size() > 1)
        return false;
    const auto start = static_cast<std::size_t>(std::ranges::mismatch(left, right).in1 - left.begin());
    const std::size_t skipped = left.size() == right.size() ? start + 1 : start;
    return start == left.size() || left.substr(skipped) == right.substr(start + 1);
}

bool holds(const std::vector<std::string>& stems, const std::string& wanted)
{
    return std::ranges::any_of(
        stems, [&](const std::string& stem) { return stem == wanted || isNearly(stem, wanted); });
}

bool hasDigits(std::string_view text, std::ptrdiff_t enough = 2)
{
    return std::ranges::count_if(text, [](char letter) { return letter >= '0' && letter <= '9'; }) >= enough;
}

bool holds(const std::vector<std::string>& stems, const QuestionWords::Term& term)
{
    return std::ranges::any_of(term.stems, [&](const std::string& stem) { return holds(stems, stem); });
}

bool namesSomebody(std::string_view text)
{
    for (std::size_t place = 1; place < text.size(); ++place) {
        if (isSpace(text[place - 1]) && text[place] >= 'A' && text[place] <= 'Z'
            && !(text[place] == 'I' && (place + 1 == text.size() || isSpace(text[place + 1]))))
            return true;
    }
    return false;
}

bool namesPlace(const std::vector<std::string>& stems)
{
    constexpr auto links = std::to_array<std::string_view>({"in", "on", "under", "behind", "at", "next", "inside",
        "near", "by", "below", "above", "between", "beside", "with", "to"});
    return std::ranges::any_of(
        stems, [&](const std::string& stem) { return std::ranges::find(links, stem) != links.end(); });
}

/// How well it fits the kind of question.
double fitness(
    const QuestionWords& question, std::string_view text, const std::vector<std::string>& stems, const Note& note)
{
    constexpr double fits = 0.3;
    switch (question.asks) {
    case Asks::when:
        return hasDigits(text) || note.remindAt || note.when ? fits : 0;
    case Asks::where:
        return namesPlace(stems) ? fits : 0;
    case Asks::who:
        return namesSomebody(text) ? fits : 0;
    case Asks::how:
        return note.kind == NoteKind::howTo ? fits : 0;
    case Asks::anything:
        break;
    }
    const bool isNumber = std::ranges::any_of(question.terms,
        [text](const QuestionWords::Term& term) { return term.leastDigits > 0 && hasDigits(text, term.leastDigits); });
    return isNumber ? fits : 0;
}

struct Coverage {
    double all = 0; ///< Share of the terms that are there, by its title and heading too.
    double own = 0; ///< By the sentence itself.
    bool isNamed = false; ///< Whether anything of it is more than "number", "size" and the like.
    int byDigits = 0; ///< Terms for which there are only digits: they may be those of anything.
};

Coverage coverageOf(const QuestionWords& question, const std::vector<std::string>& own,
    const std::vector<std::string>& around, std::string_view text)
{
    bool isAnyNamed = false;
    int byDigits = 0;
    std::size_t inText = 0;
    std::size_t found = 0;
    for (const QuestionWords::Term& term : question.terms) {
        const bool isOwn = holds(own, term);
        const bool isNamed = isOwn || holds(around, term);
        const bool isNumber = !isNamed && term.leastDigits > 0 && hasDigits(text, term.leastDigits);
        isAnyNamed = isAnyNamed || (isNamed && term.leastDigits == 0);
        byDigits += isNumber ? 1 : 0;
        inText += isOwn || isNumber ? 1U : 0U;
        found += isNamed || isNumber ? 1U : 0U;
    }
    const auto count = static_cast<double>(question.terms.size());
    return {static_cast<double>(found) / count, static_cast<double>(inText) / count, isAnyNamed, byDigits};
}

/// Of one or two terms all; of more all but one.
double enoughFor(const QuestionWords& question)
{
    constexpr std::size_t few = 2;
    const std::size_t count = question.terms.size();
    return count <= few ? 1.0 : static_cast<double>(count - 1) / static_cast<double>(count);
}

/// What answers "how do I ...": the sentence and what follows it.
std::string withFollowing(const std::vector<Sentence>& sentences, std::size_t index)
{
    std::string text = sentences[index].text;
    for (std::size_t next = index + 1; next < sentences.size(); ++next) {
        const std::string longer = text
            + (std::string_view(".!?:,").find(text.back()) == std::string_view::npos ? ". " : " ")
            + sentences[next].text;
        if (characterCount(longer) > AnswerSentences::longestSentence)
            break;
        text = longer;
    }
    return text;
}

/// Whether it says it of somebody else than the one who is asked about.
bool isOfAnother(const QuestionWords& question, std::string_view text, std::string_view title,
    const std::vector<std::string>& own, const std::vector<std::string>& around)
{
    const bool lacksOwner = std::ranges::any_of(question.terms,
        [&](const QuestionWords::Term& term) { return term.isOwner && !holds(own, term) && !holds(around, term); });
    return lacksOwner || question.isOfSomebodyElse(text) || question.isOfSomebodyElse(title);
}

struct Candidate {
    std::optional<AnswerSentence> best;
    double near = 0;
};

Candidate lookThrough(const QuestionWords& question, const Note& note, std::size_t number)
{
    const std::string whole = note.plainText();
    auto sentences = sentencesOf(std::string_view(whole).substr(0, AnswerSentences::longestNote));
    // A fact or a reminder is its title; so is a note of one line.
    if (sentences.empty())
        sentences.push_back({note.title, ""});
    const std::vector<std::string> title =
        QuestionWords::stems(note.title + " " + note.question.value_or("") + " " + note.goal.value_or(""));
    Candidate candidate;
    for (std::size_t index = 0; index < sentences.size(); ++index) {
        const std::string text = sentences[index].text;
        const auto own = QuestionWords::stems(text);
        auto around = title;
        const auto heading = QuestionWords::stems(sentences[index].heading);
        around.insert(around.end(), heading.begin(), heading.end());
        if (isOfAnother(question, text, note.title, own, around))
            continue;
        const Coverage coverage = coverageOf(question, own, around, text);
        if (coverage.isNamed)
            candidate.near = std::max(candidate.near, coverage.all);
        constexpr double ownWeight = 0.5;
        constexpr double forEarly = 0.1; // where only the title speaks of it, the first sentence says it
        constexpr double forDigits = 0.7; // less than what a word of the sentence is worth
        const double score = -forDigits * coverage.byDigits + coverage.all + ownWeight * coverage.own
            + fitness(question, text, own, note) + (index == 0 ? forEarly : 0);
        if (coverage.all + 1e-9 < enoughFor(question) || (candidate.best && candidate.best->score >= score))
            continue;
        const std::string said = question.asks == Asks::how ? withFollowing(sentences, index) : text;
        candidate.best = AnswerSentence{
            number, firstCharacters(onOneLine(repairUtf8(said)), AnswerSentences::longestSentence), score};
    }
    return candidate;
}

} // namespace

AnswersFound AnswerSentences::find(const QuestionWords& question, const std::vector<Note>& notes)
{
    AnswersFound found;
    if (question.terms.empty())
        return found;
    std::vector<std::pair<double, std::size_t>> near;
    for (std::size_t number = 0; number < notes.size(); ++number) {
        Candidate candidate = lookThrough(question, notes[number], number);
        if (candidate.best)
            found.sentences.push_back(*std::move(candidate.best));
        else if (candidate.near >= enoughToBeNear)
            near.emplace_back(candidate.near, number);
    }
    std::ranges::stable_sort(found.sentences, std::ranges::greater(), &AnswerSentence::score);
    if (!found.sentences.empty()) {
        const double least = asGood * found.sentences.front().score;
        std::erase_if(found.sentences, [least](const AnswerSentence& sentence) { return sentence.score < least; });
    }
    found.sentences.resize(std::min(found.sentences.size(), mostSentences));
    if (!found.sentences.empty())
        return found;
    std::ranges::stable_sort(near, [](const auto& left, const auto& right) { return left.first > right.first; });
    for (const auto& [share, number] : near) {
        if (found.near.size() < mostNear)
            found.near.push_back(number);
    }
    return found;
}

} // namespace quorvell
