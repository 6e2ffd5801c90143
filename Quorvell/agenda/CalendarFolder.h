// SPDX-License-Identifier: MIT
// A folder of .ics files, or of folders of them, as other calendar and synchronising programs lay them out.
#pragma once

#include "Quorvell/agenda/CalendarSource.h"
#include "Quorvell/agenda/IcsCalendar.h"
#include "Quorvell/files/FileProblem.h"
#include "Quorvell/files/FileStamp.h"

#include <functional>
#include <string>

namespace quorvell {

/// Nothing is kept in memory: what another program writes counts at the next question. Blocks; one thread.
class CalendarFolder final : public CalendarSource {
public:
    static constexpr std::size_t mostFiles = 20'000;
    static constexpr std::size_t mostFolders = 64;
    static constexpr std::size_t mostProblems = 20; ///< That are told of one reading.

    explicit CalendarFolder(std::string folder);

    char letter() const override { return 'f'; }
    bool isThere() override { return true; } ///< Made when the first event is added.
    AgendaReading read(Instant from, Instant to, const Calendar& calendar) override;
    AgendaVerdict add(const EventDraft& draft, const Calendar& calendar, Instant now) override;
    AgendaVerdict change(
        const EventID& id, EventScope scope, const EventChange& change, const Calendar& calendar, Instant now) override;
    AgendaVerdict remove(const EventID& id, EventScope scope, const Calendar& calendar, Instant now) override;
    /// A file that nobody touched since is again, byte for byte, what it was; of another only the event is.
    AgendaVerdict takeBack(const EventTrace& trace, const Calendar& calendar) override;
    AgendaVerdict find(const EventID& id, const Calendar& calendar) override;

private:
    struct File {
        std::string folder;
        std::string name;
        FileStamp stamp; ///< Of what was read.
        IcsCalendar calendar;
        std::string text{}; ///< As it was read.

        std::string path() const { return folder + "/" + name; }
    };

    struct Found {
        std::optional<File> file;
        std::string problem; ///< Where there is none.
    };
    enum class Walk { whole, tooMany, broken }; ///< Broken: by the end of patience.

    std::vector<std::string> folders() const;
    std::string folderForNew() const;
    /// Until `visit` says that it has seen enough. Paths of what cannot be read are added to `unreadable`.
    Walk eachFile(const std::function<bool(File&)>& visit, std::vector<std::string>& unreadable) const;
    Found fileWith(const std::string& uid) const;
    static FileProblem write(const File& file); ///< Over what was read, or removes what has no event any more.
    static FileProblem writeText(const File& file, const std::string& text); ///< The same; an empty text removes it.
    /// What the file of the trace was, where it still is what the change made of it. Nothing where it is not.
    std::optional<FileProblem> takeBackFile(const EventTrace& trace) const;
    AgendaVerdict takeBackEvent(const EventTrace& trace, const Calendar& calendar);
    AgendaVerdict edit(
        const EventID& id, const Calendar& calendar, const std::function<std::string(IcsCalendar&)>& edit);

    std::string m_folder;
};

} // namespace quorvell
