// SPDX-License-Identifier: MIT
#include "Quorvell/tools/agenda/EventUndo.h"

#include <memory>
#include <utility>

namespace quorvell {

namespace {

struct TakingBack {
    Agenda& agenda;
    Calendar calendar;
    EventUndo::Deed deed;
    ToolReply reply;
    std::size_t done = 0;
};

/// One after the other; what cannot be taken back ends it, and says how far it came.
void takeBackNext(const std::shared_ptr<TakingBack>& back)
{
    if (back->deed.traces.empty())
        return back->reply.answer(ToolResult(ToolStatus::undone).add("what", back->deed.what));
    const EventTrace trace = std::move(back->deed.traces.back());
    back->deed.traces.pop_back();
    back->agenda.takeBack(trace, back->calendar, [back](const AgendaVerdict& verdict) {
        if (verdict.problem.empty()) {
            ++back->done;
            return takeBackNext(back);
        }
        const std::size_t missing = back->deed.traces.size() + 1;
        back->reply.fail(back->done == 0
                ? verdict.problem
                : verdict.problem + " " + std::to_string(back->done) + (back->done == 1 ? " event was" : " events were")
                    + " put back, " + std::to_string(missing) + (missing == 1 ? " was" : " were") + " not.");
    });
}

} // namespace

void EventUndo::offer(ToolResult& result, UndoBook* book, Agenda& agenda, const Calendar& calendar, Deed deed)
{
    if (!book || deed.traces.empty())
        return;
    result.add("undo", book->add([&agenda, calendar, deed = std::move(deed)](ToolReply reply) {
        takeBackNext(std::make_shared<TakingBack>(TakingBack{agenda, calendar, deed, std::move(reply)}));
    }));
}

} // namespace quorvell
