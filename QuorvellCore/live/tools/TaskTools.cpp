// SPDX-License-Identifier: MIT
// The tools for whole tasks, for consent and safety, and for showing instead of doing.
#include "QuorvellCore/live/tools/ToolDeclaration.h"
#include "QuorvellCore/live/tools/ToolDeclarations.h"
#include "QuorvellCore/live/tools/ToolSchema.h"

namespace quorvell::tool_declarations {

using namespace tool_schema;

namespace {

Json stepTexts(std::string_view description)
{
    return list(description, text("One step in a few words."));
}

Json doneWhen()
{
    return text("What will be seen on the screen when the task is finished.");
}

Json tasks()
{
    return Json::array({
        declaration("do_task",
            "Hands a whole goal inside one application or site to the engine on this computer, which chooses the "
            "ordinary steps by itself. Answers when it is done, needs you, or gave up, with the reason and the fresh "
            "screen.",
            {required("goal", text("One clear goal with every detail that is needed, in one or two sentences."))}),
        declaration("start_task",
            "Begins a plan for a task of more than about four steps. Replaces a plan that is still open.",
            {required("goal", text("What the user wants to have at the end, in their words.")),
                required("steps", stepTexts("The steps in order, at most twenty.")),
                required("done_when", doneWhen())}),
        declaration("update_plan",
            "Changes the open plan. To mark steps and keep facts while acting, use plan_update on the action instead.",
            {optional("steps", stepTexts("The whole new list of steps, if they change.")),
                optional("done", list("Numbers of the steps that are done, from 1.", integer("Number of a step."))),
                optional("facts", list("Facts to keep for later.", text("One fact."))),
                optional("done_when", doneWhen())}),
        declaration("task_finished",
            "Ends the open plan. Refused when the evidence doesn't show that the task is finished.",
            {required("summary", text("What was achieved, in one sentence.")),
                required("evidence", text("What the screen shows now that proves it."))}),
    });
}

Json consentAndPointing()
{
    return Json::array({
        declaration("confirm_action",
            "Carries out the action that waits for consent, after the user has clearly said yes to the question. "
            "Refused when no clear yes was heard."),
        declaration("point_at",
            "Guide mode: highlights one element and says one instruction to the user. An app event follows when they "
            "have done it, or something else.",
            {required("element_id", text("Id of an element from the latest look at the screen.")),
                required(
                    "instruction", text("One short instruction in everyday words, such as \"Click on Settings\".")),
                optional("expect", text("What the screen will show once they have done it."))}),
        declaration("point_at_spot",
            "Guide mode: as point_at, for a place that has no element. Needs a look with include_image true just "
            "before.",
            {required("x", number("From 0 (left edge of the latest image) to 1000 (right edge).")),
                required("y", number("From 0 (top edge of the latest image) to 1000 (bottom edge).")),
                required("instruction", text("One short instruction in everyday words.")),
                optional("expect", text("What the screen will show once they have done it."))}),
        declaration("clear_pointer", "Takes the highlight off the screen."),
    });
}

Json safetyAndModes()
{
    return Json::array({
        declaration("flag_scam",
            "Marks what is going on as a likely scam, and tells the user's trusted helper if one is set up. Call it as "
            "soon as you suspect one.",
            {optional("reason", text("What you saw, in one sentence, without private details."))}),
        declaration("set_mode",
            "Switches how much is done for the user. Only after their own words asked for it; otherwise refused.",
            {required("mode",
                choice("guide: show them where to click. auto: do the harmless steps. do: carry the task out.",
                    {"guide", "auto", "do"}))}),
    });
}

} // namespace

Json tasksAndModes()
{
    Json all = Json::array();
    for (const Json& part : {tasks(), consentAndPointing(), safetyAndModes()})
        all.insert(all.end(), part.begin(), part.end());
    return all;
}

} // namespace quorvell::tool_declarations
