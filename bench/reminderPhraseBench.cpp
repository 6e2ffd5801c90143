// SPDX-License-Identifier: MIT
// How many reminder phrases a second are understood, the phrases one a line in the file given. Prints one JSON object.
#include "QuorvellCore/reminders/ReminderPhrase.h"

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <string>
#include <vector>

using quorvell::Calendar;
using quorvell::Instant;
using quorvell::ReminderPhrase;

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

std::size_t countUnderstood(const std::vector<std::string>& phrases, Instant now, const Calendar& calendar)
{
    std::size_t understood = 0;
    for (const std::string& phrase : phrases)
        understood += ReminderPhrase::parse(phrase, now, calendar).has_value() ? 1 : 0;
    return understood;
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
    std::size_t understood = countUnderstood(phrases, now, *calendar); // Warms up, and compiles the patterns.
    understood = 0;
    const auto started = std::chrono::steady_clock::now();
    for (int round = 0; round < rounds; ++round)
        understood += countUnderstood(phrases, now, *calendar);
    const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - started;

    const std::size_t total = phrases.size() * static_cast<std::size_t>(rounds);
    std::printf("{\"phrases\":%zu,\"understood\":%.4f,\"phrases_per_second\":%.0f}\n", total,
        static_cast<double>(understood) / static_cast<double>(total), static_cast<double>(total) / taken.count());
    return 0;
}
