// SPDX-License-Identifier: MIT
#include "Quorvell/app/notes/NotesMoving.h"

#include "Quorvell/app/program/ExitCode.h"
#include "Quorvell/app/program/WaitFor.h"
#include "Quorvell/desktop/QtScheduler.h"
#include "Quorvell/files/AtomicFile.h"
#include "Quorvell/files/Folder.h"
#include "Quorvell/handover/NotebookAccess.h"
#include "Quorvell/settings/ProgramEnvironment.h"
#include "QuorvellCore/text/Json.h"

#include <QCoreApplication>
#include <nlohmann/json.hpp>

#include <filesystem>
#include <memory>
#include <optional>
#include <ostream>

namespace quorvell {

namespace {

constexpr const char* settingsName = "settings.json";

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

/// The settings as they stand, an empty object where there are none. Nothing when they cannot be read: then they must
/// not be written either.
std::optional<Json> settings(const std::string& path)
{
    constexpr std::size_t largest = 64 * 1024;
    if (!FileStamp::ofFile(path))
        return Json::object();
    const auto text = readFile(path, largest);
    auto json = text ? parseJson(*text) : std::nullopt;
    return json && json->is_object() ? std::move(json) : std::nullopt;
}

} // namespace

int moveNotes(
    const NotesRequest& request, const ProgramEnvironment& environment, std::ostream& out, std::ostream& errors)
{
    const auto target = targetOf(request.words, environment);
    if (!target) {
        errors << "There is no folder here that a sync program keeps. Give the path of one instead.\n";
        return exit_code::couldNot;
    }
    const std::string path = environment.configFolder + "/" + settingsName;
    auto changed = settings(path);
    if (!changed) {
        errors << "The settings in " << path << " cannot be read, so the new place could not be entered there. Mend "
               << "them and try again.\n";
        return exit_code::couldNot;
    }
    const ApplicationWhereNeeded application;
    QtScheduler scheduler;
    const OpenedNotebook opened = openNotebook(environment, scheduler);
    const NotebookVerdict verdict = !opened.notebook ? NotebookVerdict{.isStored = false, .problem = opened.problem}
                                                     : waitFor<NotebookVerdict>([&](NotebookCallback told) {
                                                           opened.notebook->moveNotebook(*target, std::move(told));
                                                       });
    if (!verdict.isStored) {
        errors << verdict.problem << "\n";
        return exit_code::couldNot;
    }
    if (!verdict.remark.empty())
        errors << verdict.remark << "\n";
    (*changed)["notebook_folder"] = *target;
    FileProblem problem = makeFolder(environment.configFolder);
    if (problem == FileProblem::none)
        problem = writeFileDurably(environment.configFolder, settingsName, changed->dump(2) + "\n");
    if (problem != FileProblem::none) {
        errors << "The notebook is now in " << *target << ", but that could not be entered in " << path << ". "
               << problemSentence(problem, environment.configFolder) << " Until then enter it there by hand, as "
               << "\"notebook_folder\".\n";
        return exit_code::couldNot;
    }
    if (request.asJson)
        out << dumpJson({{"status", "moved"}, {"folder", *target}}) << "\n";
    else
        out << "The notebook is now in " << *target << ".\n";
    return exit_code::done;
}

} // namespace quorvell
