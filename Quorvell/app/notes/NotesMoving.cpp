// SPDX-License-Identifier: MIT
#include "Quorvell/app/notes/NotesMoving.h"

#include "Quorvell/app/program/ExitCode.h"
#include "Quorvell/app/program/WaitFor.h"
#include "Quorvell/desktop/QtScheduler.h"
#include "Quorvell/files/AtomicFile.h"
#include "Quorvell/files/FileTarget.h"
#include "Quorvell/files/Folder.h"
#include "Quorvell/handover/NotebookAccess.h"
#include "Quorvell/settings/ProgramEnvironment.h"
#include "Quorvell/settings/UserSettings.h"
#include "QuorvellCore/text/Characters.h"
#include "QuorvellCore/text/Json.h"
#include "QuorvellCore/text/PrintableText.h"

#include <QCoreApplication>
#include <fcntl.h>
#include <nlohmann/json.hpp>

#include <filesystem>
#include <memory>
#include <optional>
#include <ostream>
#include <utility>

namespace quorvell {

namespace {

std::optional<std::string> targetOf(const std::string& words, const ProgramEnvironment& environment)
{
    if (words == "local")
        return environment.localNotebookFolder;
    if (words == "synced")
        return environment.syncedNotebookFolder;
    std::error_code failure;
    const auto path = std::filesystem::absolute(words, failure);
    return failure ? std::nullopt : std::optional(path.lexically_normal().string());
}

/// The settings with the notebook's new folder in them, ready before anything is moved: all that is left to be done
/// once it is moved is to give a written file its name.
class NewSettings {
public:
    explicit NewSettings(const ProgramEnvironment& environment)
        : m_folder(environment.configFolder)
        , m_path(m_folder + "/settings.json")
    {
    }

    /// Empty, or why the new folder cannot be entered.
    std::string prepare(const std::string& notebookFolder)
    {
        FileProblem problem = makeFolder(m_folder);
        m_target = FileTarget::of(m_path);
        if (problem == FileProblem::none && !m_target.problem.empty())
            return m_target.problem;
        const auto json = present();
        if (!json)
            return "The settings in " + m_path + " cannot be read, so the new place could not be entered there. Mend "
                + "them and try again.";
        Json changed = *json;
        changed["notebook_folder"] = repairUtf8(notebookFolder);
        const std::string text = changed.dump(2) + "\n";
        // As the next program will read it.
        const auto read = UserSettings::parsed(text, m_path).settings.notebookFolder;
        if (!read || read->path != notebookFolder)
            return "That folder cannot be entered in the settings: its path must be UTF-8, at most "
                + std::to_string(UserSettings::longestText)
                + " characters long and end in no blank. Choose another one.";
        if (problem == FileProblem::none)
            problem = m_file.emplace(m_target.folder).write(text);
        return problemSentence(problem, m_folder);
    }

    /// Empty, or why it could not be entered after all.
    std::string enter()
    {
        const FileProblem problem = m_before ? m_file->commitOver(m_target.name, *m_before)
                                             : m_file->commit(m_target.name, AtomicFile::Existing::keep);
        if (problem == FileProblem::none)
            return "";
        return "The notebook stays where it is, because its new place could not be entered in " + m_path + ". "
            + problemSentence(problem, m_folder) + " A copy of the notebook lies in the new place.";
    }

private:
    /// An empty object where there are none. Nothing when they cannot be read: then they must not be written either.
    std::optional<Json> present()
    {
        if (!FileStamp::ofFile(m_path))
            return Json::object();
        const auto file = readStampedFile(AT_FDCWD, m_path, UserSettings::longestFile);
        auto json = file ? parseJson(file->text) : std::nullopt;
        if (!json || !json->is_object())
            return std::nullopt;
        m_before = file->stamp;
        return json;
    }

    std::string m_folder;
    std::string m_path;
    FileTarget m_target;
    std::optional<FileStamp> m_before; ///< Of the settings as they were read.
    std::optional<AtomicFile> m_file;
};

} // namespace

int moveNotes(
    const NotesRequest& request, const ProgramEnvironment& environment, std::ostream& out, std::ostream& errors)
{
    const auto fail = [&errors](const std::string& problem) {
        errors << printableLine(problem) << "\n";
        return exit_code::couldNot;
    };
    if (request.words.empty())
        return fail("No folder is named there. Give the path of one.");
    const auto target = targetOf(request.words, environment);
    if (!target)
        return fail("There is no folder here that a sync program keeps. Give the path of one instead.");
    NewSettings settings(environment);
    if (const std::string problem = settings.prepare(*target); !problem.empty())
        return fail(problem);
    const ApplicationWhereNeeded application;
    QtScheduler scheduler;
    const OpenedNotebook opened = openNotebook(environment, scheduler);
    if (!opened.notebook)
        return fail(opened.problem);
    const auto verdict = waitFor<NotebookVerdict>([&](NotebookCallback told) {
        opened.notebook->moveNotebook(
            *target, [&settings] { return settings.enter(); }, std::move(told));
    });
    if (!verdict.isStored)
        return fail(verdict.problem);
    if (!verdict.remark.empty())
        errors << verdict.remark << "\n";
    if (request.asJson)
        out << dumpJson({{"status", "moved"}, {"folder", *target}}) << "\n";
    else
        out << "The notebook is now in " << printableLine(*target) << ".\n";
    return exit_code::done;
}

} // namespace quorvell
