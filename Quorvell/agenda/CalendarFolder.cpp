// SPDX-License-Identifier: MIT
#include "Quorvell/agenda/CalendarFolder.h"

#include "Quorvell/agenda/IcsLimits.h"
#include "Quorvell/files/AtomicFile.h"
#include "Quorvell/files/Folder.h"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <system_error>
#include <utility>

namespace quorvell {

namespace {

bool isCalendarFile(const std::string& name)
{
    return name.ends_with(".ics") && !name.starts_with(".");
}

bool isFolder(const std::string& path)
{
    struct stat status { };
    return ::stat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

AgendaVerdict failed(std::string problem)
{
    return {std::nullopt, std::move(problem)};
}

std::optional<CalendarEvent> occurrenceAt(
    Instant start, const EventID& series, const IcsCalendar& file, const Calendar& calendar)
{
    auto found = file.between(start, start + std::chrono::milliseconds(1), series.calendar, calendar);
    const auto same = std::find_if(
        found.begin(), found.end(), [&](const CalendarEvent& event) { return event.id.uid == series.uid; });
    return same != found.end() ? std::optional(std::move(*same)) : std::nullopt;
}

} // namespace

CalendarFolder::CalendarFolder(std::string folder)
    : m_folder(std::move(folder))
{
}

std::vector<std::string> CalendarFolder::folders() const
{
    std::vector<std::string> found{m_folder};
    for (const std::string& name : fileNamesIn(m_folder).value_or(std::vector<std::string>()))
        if (!name.starts_with(".") && found.size() < mostFolders && isFolder(m_folder + "/" + name))
            found.push_back(m_folder + "/" + name);
    return found;
}

/// The folder itself, unless its calendars lie in folders of their own; then the first of them.
std::string CalendarFolder::folderForNew() const
{
    const auto all = folders();
    const auto names = fileNamesIn(m_folder).value_or(std::vector<std::string>());
    const bool hasFiles = std::any_of(names.begin(), names.end(), isCalendarFile);
    return all.size() > 1 && !hasFiles ? all[1] : m_folder;
}

void CalendarFolder::eachFile(const std::function<bool(File&)>& visit, std::vector<std::string>* problems) const
{
    std::size_t count = 0;
    for (const std::string& folder : folders()) {
        for (const std::string& name : fileNamesIn(folder).value_or(std::vector<std::string>())) {
            if (!isCalendarFile(name))
                continue;
            if (++count > mostFiles) {
                if (problems)
                    problems->push_back("There are too many calendar files in " + m_folder + "; the first "
                        + std::to_string(mostFiles) + " count.");
                return;
            }
            auto text = readFile(folder + "/" + name, IcsLimits::longestText);
            auto calendar = text ? IcsCalendar::parse(*text) : std::nullopt;
            if (!calendar) {
                if (problems)
                    problems->push_back("The calendar file " + folder + "/" + name + " cannot be read.");
                continue;
            }
            File file{folder, name, *std::move(text), *std::move(calendar)};
            if (!visit(file))
                return;
        }
    }
}

AgendaReading CalendarFolder::read(Instant from, Instant to, const Calendar& calendar)
{
    AgendaReading reading;
    // One that was never made holds no events; a file in its place may hide many.
    if (std::error_code failure; !fileNamesIn(m_folder) && std::filesystem::exists(m_folder, failure))
        reading.problems.push_back(
            "The calendars in " + m_folder + " cannot be read. See that it is a folder that you may read.");
    eachFile(
        [&](File& file) {
            const auto found = file.calendar.between(from, to, letter(), calendar);
            reading.events.insert(reading.events.end(), found.begin(), found.end());
            return reading.events.size() < IcsLimits::mostOccurrences;
        },
        &reading.problems);
    std::stable_sort(reading.events.begin(), reading.events.end(),
        [](const CalendarEvent& left, const CalendarEvent& right) { return left.start < right.start; });
    return reading;
}

std::optional<CalendarFolder::File> CalendarFolder::fileWith(const std::string& uid) const
{
    std::optional<File> found;
    eachFile(
        [&](File& file) {
            if (file.calendar.has(uid))
                found = std::move(file);
            return !found;
        },
        nullptr);
    return found;
}

std::optional<CalendarEvent> CalendarFolder::find(const EventID& id, const Calendar& calendar)
{
    const auto file = fileWith(id.uid);
    return file ? file->calendar.find(id, calendar) : std::nullopt;
}

AgendaVerdict CalendarFolder::add(const EventDraft& draft, const Calendar& calendar, Instant now)
{
    const std::string folder = folderForNew();
    FileProblem problem = makeFolder(folder);
    const IcsCalendar file = IcsCalendar::withEvent(draft, calendar, now);
    AtomicFile written(folder);
    if (problem == FileProblem::none)
        problem = written.write(file.text());
    if (problem == FileProblem::none)
        problem = written.commit(draft.uid + ".ics", AtomicFile::Existing::keep);
    if (problem != FileProblem::none)
        return failed(problemSentence(problem, folder));
    return {file.find({letter(), draft.uid, {}}, calendar), ""};
}

/// Reads, changes and writes in one go, so that what another program wrote a moment ago is changed, not lost.
AgendaVerdict CalendarFolder::edit(
    const EventID& id, const Calendar& calendar, const std::function<std::string(IcsCalendar&)>& edit)
{
    auto file = fileWith(id.uid);
    if (!file)
        return failed(IcsCalendar::goneEvent);
    const auto before = file->calendar.find(id, calendar);
    if (std::string problem = edit(file->calendar); !problem.empty())
        return failed(std::move(problem));
    const std::string path = file->folder + "/" + file->name;
    if (readFile(path, IcsLimits::longestText) != file->text)
        return failed("Another program just changed that calendar file. Look at the event again and repeat it.");
    FileProblem problem = FileProblem::none;
    if (file->calendar.eventCount() > 0)
        problem = writeFileDurably(file->folder, file->name, file->calendar.text());
    else if (::unlink(path.c_str()) != 0)
        problem = fileProblem(errno);
    if (problem != FileProblem::none)
        return failed(problemSentence(problem, file->folder));
    const auto after = file->calendar.find(id, calendar);
    return {after ? after : before, ""};
}

AgendaVerdict CalendarFolder::change(
    const EventID& id, EventScope scope, const EventChange& change, const Calendar& calendar, Instant now)
{
    std::optional<CalendarEvent> moved;
    AgendaVerdict verdict = edit(id, calendar, [&](IcsCalendar& file) {
        std::string problem = file.change(id, scope, change, calendar, now);
        // A series that moved has other occurrences now.
        if (problem.empty() && scope == EventScope::series && change.start && !file.find(id, calendar))
            moved = occurrenceAt(*change.start, id, file, calendar);
        return problem;
    });
    if (verdict.event && moved)
        verdict.event = std::move(moved);
    return verdict;
}

AgendaVerdict CalendarFolder::remove(const EventID& id, EventScope scope, const Calendar& calendar, Instant now)
{
    return edit(id, calendar, [&](IcsCalendar& file) { return file.remove(id, scope, calendar, now); });
}

} // namespace quorvell
