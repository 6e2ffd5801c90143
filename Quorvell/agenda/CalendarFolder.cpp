// SPDX-License-Identifier: MIT
#include "Quorvell/agenda/CalendarFolder.h"

#include "Quorvell/agenda/CalendarRescue.h"
#include "Quorvell/agenda/IcsLimits.h"
#include "Quorvell/files/AtomicFile.h"
#include "Quorvell/files/Folder.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <algorithm>
#include <filesystem>
#include <iterator>
#include <map>
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

constexpr const char* emptyCalendar = "BEGIN:VCALENDAR\r\nVERSION:2.0\r\nEND:VCALENDAR\r\n";

/// What a trace keeps of a file: all of it, so that it can be written again byte for byte, or of a large one the event.
std::string keptOf(const std::string& uid, const std::string& text)
{
    constexpr std::size_t longest = 64 * 1024; ///< Bytes; a trace has two texts, and up to 200 calls are kept.
    const auto file = text.size() > longest ? IcsCalendar::parse(text) : std::nullopt;
    if (!file)
        return text;
    IcsCalendar event = *IcsCalendar::parse(emptyCalendar);
    event.takeOver(uid, *file);
    return event.text();
}

std::optional<CalendarEvent> occurrenceAt(
    Instant start, const EventID& series, const IcsCalendar& file, const Calendar& calendar)
{
    auto found = file.between(start, start + std::chrono::milliseconds(1), series.calendar, calendar).events;
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

CalendarFolder::Walk CalendarFolder::eachFile(
    const std::function<bool(File&)>& visit, std::vector<std::string>& unreadable) const
{
    std::size_t count = 0;
    for (const std::string& folder : folders()) {
        for (const std::string& name : fileNamesIn(folder).value_or(std::vector<std::string>())) {
            if (!isCalendarFile(name))
                continue;
            if (++count > mostFiles)
                return Walk::tooMany;
            if (patience().isOver())
                return Walk::broken;
            const auto read = readStampedFile(AT_FDCWD, folder + "/" + name, IcsLimits::longestText);
            auto calendar = read ? IcsCalendar::parse(read->text) : std::nullopt;
            if (!calendar) {
                unreadable.push_back(folder + "/" + name);
                continue;
            }
            File file{folder, name, read->stamp, *std::move(calendar), read->text};
            if (!visit(file))
                return Walk::whole;
        }
    }
    return Walk::whole;
}

AgendaReading CalendarFolder::read(Instant from, Instant to, const Calendar& calendar)
{
    AgendaReading reading;
    std::vector<std::string>& problems = reading.problems;
    // One that was never made holds no events; a file in its place may hide many.
    if (std::error_code failure; !fileNamesIn(m_folder) && std::filesystem::exists(m_folder, failure))
        problems.push_back(
            "The calendars in " + m_folder + " cannot be read. See that it is a folder that you may read.");
    IcsOmissions missing; // Told once of the whole folder.
    std::vector<std::string> unreadable;
    const Walk walk = eachFile(
        [&](File& file) {
            IcsReading found = file.calendar.between(from, to, letter(), calendar, patience());
            missing.time |= std::exchange(found.omissions.time, false);
            missing.amount |= std::exchange(found.omissions.amount, false);
            std::move(found.events.begin(), found.events.end(), std::back_inserter(reading.events));
            for (std::string& problem : found.omissions.sentences("The calendar file " + file.folder + "/" + file.name))
                problems.push_back(std::move(problem));
            missing.amount |= reading.events.size() > IcsLimits::mostOccurrences;
            return !missing.amount && !missing.time;
        },
        unreadable);
    for (const std::string& path : unreadable)
        problems.push_back("The calendar file " + path + " cannot be read.");
    if (walk == Walk::tooMany)
        problems.push_back("There are too many calendar files in " + m_folder + "; the first "
            + std::to_string(mostFiles) + " count.");
    missing.time |= walk == Walk::broken;
    if (problems.size() > mostProblems) {
        const std::size_t others = problems.size() - mostProblems;
        problems.resize(mostProblems);
        problems.push_back("There are " + std::to_string(others) + " more problems like these.");
    }
    for (std::string& sentence : missing.sentences("The calendar folder " + m_folder))
        problems.push_back(std::move(sentence));
    reading.isWhole = !missing.time && !missing.amount && walk == Walk::whole;
    std::stable_sort(reading.events.begin(), reading.events.end(),
        [](const CalendarEvent& left, const CalendarEvent& right) { return left.start < right.start; });
    if (reading.events.size() > IcsLimits::mostOccurrences)
        reading.events.resize(IcsLimits::mostOccurrences);
    return reading;
}

CalendarFolder::Found CalendarFolder::fileWith(const std::string& uid) const
{
    Found found;
    std::vector<std::string> unreadable;
    const Walk walk = eachFile(
        [&](File& file) {
            if (file.calendar.has(uid))
                found.file = std::move(file);
            return !found.file;
        },
        unreadable);
    if (!found.file)
        found.problem = walk == Walk::broken
            ? "The calendars in " + m_folder + " took too long to read, so nothing was done. Say so."
            : IcsCalendar::goneEvent;
    return found;
}

AgendaVerdict CalendarFolder::find(const EventID& id, const Calendar& calendar)
{
    const Found found = fileWith(id.uid);
    if (!found.file)
        return failed(found.problem);
    auto event = found.file->calendar.find(id, calendar);
    return {event, event ? "" : IcsCalendar::goneEvent};
}

AgendaVerdict CalendarFolder::add(const EventDraft& draft, const Calendar& calendar, Instant now)
{
    const std::string folder = folderForNew();
    FileProblem problem = makeFolder(folder);
    CalendarRescue::keepWhatWasLeft(folder);
    const IcsCalendar file = IcsCalendar::withEvent(draft, calendar, now);
    AtomicFile written(folder);
    if (problem == FileProblem::none)
        problem = written.write(file.text());
    if (problem == FileProblem::none)
        problem = written.commit(draft.uid + ".ics", AtomicFile::Existing::keep);
    if (problem != FileProblem::none)
        return failed(problemSentence(problem, folder));
    const EventID id{letter(), draft.uid, {}};
    return {file.find(id, calendar), "", EventTrace{id, folder + "/" + draft.uid + ".ics", "", file.text()}};
}

FileProblem CalendarFolder::write(const File& file)
{
    return writeText(file, file.calendar.eventCount() == 0 ? "" : file.calendar.text());
}

FileProblem CalendarFolder::writeText(const File& file, const std::string& text)
{
    if (text.empty())
        return removeFileExpected(file.folder, file.name, file.stamp);
    AtomicFile written(file.folder);
    const FileProblem problem = written.write(text);
    return problem == FileProblem::none ? written.commitOver(file.name, file.stamp) : problem;
}

/// Reads, changes and writes in one go, so that what another program wrote a moment ago is changed, not lost.
AgendaVerdict CalendarFolder::edit(
    const EventID& id, const Calendar& calendar, const std::function<std::string(IcsCalendar&)>& edit)
{
    Found found = fileWith(id.uid);
    auto& file = found.file;
    if (!file)
        return failed(std::move(found.problem));
    const auto before = file->calendar.find(id, calendar);
    if (std::string problem = edit(file->calendar); !problem.empty())
        return failed(std::move(problem));
    CalendarRescue::keepWhatWasLeft(file->folder);
    const FileProblem problem = write(*file);
    if (problem == FileProblem::changedMeanwhile)
        return failed("Another program just changed that calendar file. Look at the event again and repeat it.");
    if (problem != FileProblem::none)
        return failed(problemSentence(problem, file->folder));
    const auto after = file->calendar.find(id, calendar);
    const std::string text = file->calendar.eventCount() == 0 ? "" : file->calendar.text();
    return {after ? after : before, "",
        EventTrace{{letter(), id.uid, {}}, file->path(), keptOf(id.uid, file->text), keptOf(id.uid, text)}};
}

std::optional<FileProblem> CalendarFolder::takeBackFile(const EventTrace& trace) const
{
    const std::filesystem::path path(trace.place);
    const std::string folder = path.parent_path();
    const std::string name = path.filename();
    const auto read = readStampedFile(AT_FDCWD, trace.place, IcsLimits::longestText);
    if ((read ? read->text : "") != trace.after)
        return std::nullopt;
    if (!read && fileWith(trace.id.uid).file) // Somebody put it back, elsewhere.
        return std::nullopt;
    CalendarRescue::keepWhatWasLeft(folder);
    AtomicFile written(folder);
    if (read && trace.before.empty())
        return removeFileExpected(folder, name, read->stamp);
    if (const FileProblem problem = written.write(trace.before); problem != FileProblem::none)
        return problem;
    return read ? written.commitOver(name, read->stamp) : written.commit(name, AtomicFile::Existing::keep);
}

/// Of a file that has more events now, or lies elsewhere.
AgendaVerdict CalendarFolder::takeBackEvent(const EventTrace& trace, const Calendar& calendar)
{
    const auto before = IcsCalendar::parse(trace.before);
    const auto after = IcsCalendar::parse(trace.after);
    Found now = fileWith(trace.id.uid);
    if (!now.file && now.problem != IcsCalendar::goneEvent)
        return failed(std::move(now.problem));
    using Parts = std::map<std::string, std::string>;
    const auto partsOf = [&](const IcsCalendar* file) { return file ? file->parts(trace.id.uid, calendar) : Parts(); };
    if (partsOf(now.file ? &now.file->calendar : nullptr) != partsOf(after ? &*after : nullptr))
        return failed(changedSince);
    if (!now.file) // It was removed from a file with others, which is there still.
        if (auto read = readStampedFile(AT_FDCWD, trace.place, IcsLimits::longestText))
            if (auto others = IcsCalendar::parse(read->text))
                now.file = File{std::filesystem::path(trace.place).parent_path(),
                    std::filesystem::path(trace.place).filename(), read->stamp, *std::move(others), read->text};
    if (!now.file)
        return failed(changedSince);
    static const IcsCalendar none = *IcsCalendar::parse(emptyCalendar);
    now.file->calendar.takeOver(trace.id.uid, before ? *before : none);
    const FileProblem problem = write(*now.file);
    if (problem != FileProblem::none)
        return failed(
            problem == FileProblem::changedMeanwhile ? changedSince : problemSentence(problem, now.file->folder));
    return {};
}

AgendaVerdict CalendarFolder::takeBack(const EventTrace& trace, const Calendar& calendar)
{
    const auto problem = takeBackFile(trace);
    if (!problem || *problem == FileProblem::changedMeanwhile || *problem == FileProblem::nameTaken)
        return takeBackEvent(trace, calendar);
    if (*problem != FileProblem::none)
        return failed(problemSentence(*problem, std::filesystem::path(trace.place).parent_path()));
    return {};
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
