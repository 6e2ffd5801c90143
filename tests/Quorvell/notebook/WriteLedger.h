// SPDX-License-Identifier: MIT
// What was asked of a notebook while something went wrong, what it answered, and what is left of it.
#pragma once

#include "Quorvell/notebook/NoteVersion.h"
#include "QuorvellCore/notebook/Note.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <functional>
#include <map>
#include <string>
#include <vector>

namespace quorvell::test {

inline std::string idOf(int note)
{
    return "note" + std::to_string(note);
}

/// A text of up to 10 kB that says which version it is from its first to its last byte.
inline std::string bodyOf(int note, int version)
{
    const std::string piece = std::to_string(note) + "/" + std::to_string(version) + "\n";
    std::string body;
    for (int index = 0; index < 10 + (version * 377) % 1000; ++index)
        body += piece;
    return body;
}

/// Nothing when the note is not whole.
inline std::optional<int> versionOf(int number, const Note& note)
{
    const std::size_t slash = note.body.find('/');
    const int version = slash == std::string::npos ? 0 : std::atoi(note.body.c_str() + slash + 1);
    return note.body == bodyOf(number, version) ? std::optional(version) : std::nullopt;
}

class WriteLedger {
public:
    using History = std::function<std::vector<NoteVersion>(const std::string& id)>;

    int nextVersion(int note) { return ++m_asked[note]; }
    void asked(int note, int version) { m_asked[note] = version; }
    void confirmed(int note, int version)
    {
        ++m_writes;
        m_confirmed[note] = std::max(m_confirmed[note], version);
    }
    void refused(const std::string& sentence) { ++(sentence.empty() ? m_silent : m_told); }
    int confirmedWrites() const { return m_writes; }

    /// Prints a row and fails the test where something was mixed, lost or not told. What somebody else replaced counts
    /// as kept when it is in the history.
    void judge(const char* trouble, const std::vector<Note>& notes, const History& history = nullptr) const
    {
        std::map<std::string, const Note*> found;
        for (const Note& note : notes)
            found[note.id] = &note;
        int old = 0;
        int fresh = 0;
        int mixed = 0;
        int lost = 0;
        for (const auto& [number, asked] : m_asked) {
            const auto note = found.find(idOf(number));
            const auto version = note == found.end() ? std::optional(0) : versionOf(number, *note->second);
            mixed += !version;
            lost += version && !isKept(number, *version, history);
            ++(version.value_or(0) >= asked ? fresh : old);
        }
        std::printf(
            "%-46s %7d %6d %6d %6d %6d %6d\n", trouble, m_writes + m_told + m_silent, fresh, old, mixed, lost, m_told);
        std::fflush(stdout);
        EXPECT_EQ(mixed, 0) << trouble;
        EXPECT_EQ(lost, 0) << trouble;
        EXPECT_EQ(m_silent, 0) << trouble << ": refused without a reason";
    }

private:
    bool isKept(int number, int version, const History& history) const
    {
        const auto confirmed = m_confirmed.find(number);
        if (confirmed == m_confirmed.end() || (version >= confirmed->second && !history))
            return true;
        const std::string body = bodyOf(number, confirmed->second);
        bool isKept = version == confirmed->second;
        for (const NoteVersion& earlier : history ? history(idOf(number)) : std::vector<NoteVersion>{})
            isKept = isKept || earlier.body == body;
        return isKept;
    }

    std::map<int, int> m_asked; ///< By note: the last version that was to be stored.
    std::map<int, int> m_confirmed; ///< By note: the last version that was said to be stored.
    int m_writes = 0;
    int m_told = 0;
    int m_silent = 0;
};

} // namespace quorvell::test
