#include "Quorvell/app/WithNotebook.h"

#include "Quorvell/app/NotebookAccess.h"
#include "Quorvell/app/ProgramEnvironment.h"
#include "Quorvell/app/QtScheduler.h"
#include "Quorvell/app/WaitFor.h"

#include <ostream>

namespace quorvell {

int withNotebook(
    const ProgramEnvironment& environment, std::ostream& errors, const std::function<int(FullNotebook&)>& use)
{
    constexpr int couldNot = 1;
    const ApplicationWhereNeeded application;
    QtScheduler scheduler;
    const OpenedNotebook opened = openNotebook(environment, scheduler);
    if (opened.notebook)
        return use(*opened.notebook);
    errors << opened.problem << "\n";
    return couldNot;
}

} // namespace quorvell
