// SPDX-License-Identifier: MIT
#include "Quorvell/app/notes/WithNotebook.h"

#include "Quorvell/app/program/ExitCode.h"
#include "Quorvell/app/program/WaitFor.h"
#include "Quorvell/desktop/QtScheduler.h"
#include "Quorvell/handover/NotebookAccess.h"
#include "Quorvell/settings/ProgramEnvironment.h"

#include <ostream>

namespace quorvell {

int withNotebook(
    const ProgramEnvironment& environment, std::ostream& errors, const std::function<int(FullNotebook&)>& use)
{
    const ApplicationWhereNeeded application;
    QtScheduler scheduler;
    const OpenedNotebook opened = openNotebook(environment, scheduler);
    if (opened.notebook)
        return use(*opened.notebook);
    errors << opened.problem << "\n";
    return exit_code::couldNot;
}

} // namespace quorvell
