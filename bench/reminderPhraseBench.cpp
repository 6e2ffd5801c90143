// SPDX-License-Identifier: MIT
// How many reminder phrases a second are understood and how many requests are read, one a line in the file given; and
// how long those take that were written to be slow. Prints one JSON object.
#include "QuorvellCore/reminders/phrase/ReminderPhrase.h"
#include "QuorvellCore/reminders/request/ReminderRequest.h"

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <string>
#include <string_view>
#include <vector>

using quorvell::Calendar;
using quorvell::Instant;
using quorvell::ReminderPhrase;
using quorvell::ReminderRequest;

namespace {

std::vector<std::string> readLines(const char* path)
{
    std::vector<std::string> lines;
    std::ifstream file(path);
    for (std::string line; std::getline(file, line);) {
        if (!line.empty())
            lines.push_back(line);
    }
    return lines;
}

/// What the phrases are read with.
struct Reader {
    Instant now;
    Calendar calendar;

    bool isPhrase(const std::string& words) const { return ReminderPhrase::parse(words, now, calendar).has_value(); }
    bool isRequest(const std::string& words) const
    {
        return ReminderRequest::fromWords(words, now, calendar).verdict == ReminderRequest::Verdict::ready;
    }
};

struct Measurement {
    double understood = 0; ///< The share of them.
    double perSecond = 0;
};

template <typename Understands>
Measurement measured(const std::vector<std::string>& phrases, int rounds, const Understands& understands)
{
    const auto count = [&] { return std::count_if(phrases.begin(), phrases.end(), understands); };
    std::ptrdiff_t understood = count(); // Warms up, and compiles the patterns.
    understood = 0;
    const auto started = std::chrono::steady_clock::now();
    for (int round = 0; round < rounds; ++round)
        understood += count();
    const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - started;
    const double total = static_cast<double>(phrases.size()) * rounds;
    return {static_cast<double>(understood) / total, total / taken.count()};
}

std::string repeated(std::string_view part, int count)
{
    std::string text;
    for (int index = 0; index < count; ++index)
        text += part;
    return text;
}

/// Of the slowest of some requests that nobody means well with.
double slowestMilliseconds(const Reader& reader)
{
    const std::string requests[] = {"remind me" + repeated(" ", 1900) + "tomorrow at 5 pm", repeated(" ", 1900),
        repeated("5 ", 1000), repeated("a", 2000), repeated("at 99 ", 400), repeated("2 pm tickets ", 200),
        repeated("\"", 2000), repeated("yesterday , ", 200)};
    double slowest = 0;
    for (const std::string& request : requests) {
        constexpr double tries = 10;
        const auto taken =
            measured({request}, static_cast<int>(tries), [&](const auto& words) { return reader.isRequest(words); });
        slowest = std::max(slowest, 1000 / taken.perSecond);
    }
    return slowest;
}

} // namespace

int main(int argumentCount, char** arguments)
{
    const auto phrases = argumentCount > 1 ? readLines(arguments[1]) : std::vector<std::string>();
    const int rounds = argumentCount > 2 ? std::atoi(arguments[2]) : 5000;
    const auto calendar = Calendar::create("Europe/Berlin", "en_GB");
    if (phrases.empty() || rounds <= 0 || !calendar) {
        std::fprintf(stderr, "usage: %s PHRASES.txt [ROUNDS]\n", arguments[0]);
        return 2;
    }

    const Instant now = std::chrono::sys_days(std::chrono::year(2026) / 11 / 21) + std::chrono::hours(8);
    const Reader reader{now, *calendar};
    const auto asPhrases = measured(phrases, rounds, [&](const auto& words) { return reader.isPhrase(words); });
    const auto asRequests = measured(phrases, rounds, [&](const auto& words) { return reader.isRequest(words); });
    std::printf("{\"phrases\":%zu,\"understood\":%.4f,\"phrases_per_second\":%.0f,\"requests_ready\":%.4f,"
                "\"requests_per_second\":%.0f,\"slowest_request_ms\":%.3f}\n",
        phrases.size() * static_cast<std::size_t>(rounds), asPhrases.understood, asPhrases.perSecond,
        asRequests.understood, asRequests.perSecond, slowestMilliseconds(reader));
    return 0;
}
