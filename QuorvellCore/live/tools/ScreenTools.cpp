// SPDX-License-Identifier: MIT
// The tools that read the screen and act on it.
#include "QuorvellCore/live/tools/ToolDeclaration.h"
#include "QuorvellCore/live/tools/ToolDeclarations.h"
#include "QuorvellCore/live/tools/ToolSchema.h"

namespace quorvell::tool_declarations {

using namespace tool_schema;

namespace {

Json elementID()
{
    return text("Id of an element from the latest look at the screen.");
}

Json across(std::string_view what)
{
    return number(std::string(what) + ", from 0 (left edge of the latest image) to 1000 (right edge).");
}

Json down(std::string_view what)
{
    return number(std::string(what) + ", from 0 (top edge of the latest image) to 1000 (bottom edge).");
}

Json clicking()
{
    return Json::array({
        declaration("click",
            "Presses one element: a button, link, check box, tab, field or row. Answers with the fresh screen.",
            {required("element_id", elementID())}),
        declaration("type_text",
            "Types into a field. Adds at the end of what is there unless `replace` is true. For long writing give a "
            "few paragraphs per call, one call after another. Never for passwords, PINs, card numbers or codes. "
            "Answers with what the field holds now.",
            {required("element_id", elementID()),
                required("text", text("The exact text, with line breaks where they belong.")),
                optional("replace", flag("True empties the field first. Default false."))}),
        declaration("press_key",
            "Presses a key in the front application. For what other combinations do use choose_menu. Answers with the "
            "fresh screen.",
            {required("key",
                text("One of Return, Tab, space, Escape, Delete, Left, Right, Up, Down, Page_Up, Page_Down, Home, End, "
                     "ctrl+plus, ctrl+minus, ctrl+0, ctrl+f, ctrl+l, ctrl+t, ctrl+w, ctrl+r, ctrl+n. No other key."))}),
        declaration("scroll", "Scrolls by about one page. To read a page use read_page, to find words find_on_page.",
            {required("direction", choice("Which way to move through the content.", {"up", "down"})),
                optional("element_id", text("The list, page or area to scroll. Default: the one in front."))}),
        declaration("choose_menu",
            "Carries out a command of the front application's menus without opening them one by one.",
            {required("path",
                list("The names from the menu bar down to the command, such as \"File\", \"Save As…\".",
                    text("One name as it is written in the menu.")))}),
        declaration("choose_option", "Picks an entry of a pop-up menu, combo box, list or group of radio buttons.",
            {required("element_id", elementID()),
                required("option", text("The entry's name as it is written, or a clear part of it."))}),
    });
}

Json opening()
{
    return Json::array({
        declaration("open_app", "Opens an application or brings it to the front. Answers with the fresh screen.",
            {required("name", text("Its name as people say it, such as \"Firefox\" or \"Files\"."))}),
        declaration("open_website",
            "Opens an address in the default browser. Only addresses that the user gave or that you are sure of; "
            "otherwise look the right one up. Answers with the fresh screen.",
            {required("address", text("Such as \"example.com\" or \"https://example.com/help\"."))}),
    });
}

Json pointing()
{
    return Json::array({
        declaration("click_at_spot",
            "Clicks a place that has no element. Needs a look with include_image true just before; prefer click.",
            {required("x", across("Place to click")), required("y", down("Place to click"))}),
        declaration("drag",
            "Presses at one place, moves to another and lets go: sliders, selections, moving things. Needs a look with "
            "include_image true just before.",
            {required("x", across("Start")), required("y", down("Start")), required("to_x", across("End")),
                required("to_y", down("End"))}),
    });
}

Json reading()
{
    return Json::array({
        declaration("read_page",
            "Reads the text of the page or document in front, a long stretch at a time. The answer says where to go "
            "on.",
            {optional("from", integer("Where to go on, taken from the last answer. Default: the beginning."))}),
        declaration("find_on_page",
            "Finds words on the page or document in front, brings the first place into view and answers with the "
            "places.",
            {required("text", text("The words to find."))}),
        declaration("fill_form", "Fills in several fields in one go. Answers with what each field holds now.",
            {required("fields",
                list("The fields in order. Leave secrets to the user.",
                    object("One field.",
                        {required("element_id", elementID()), required("text", text("What it shall hold."))})))}),
        declaration("browser_control", "Works the browser itself.",
            {required(
                 "action", choice("What to do.", {"back", "forward", "reload", "new_tab", "close_tab", "switch_tab"})),
                optional("tab",
                    text("For switch_tab and close_tab: the tab's title or a clear part of it, as list_tabs gives it. "
                         "Default for close_tab: the one in front."))}),
        declaration("list_tabs", "Lists the open tabs of the browser with their titles and addresses."),
        declaration("wait_for_screen",
            "Waits until the screen settles or shows what you expect, then answers with the fresh screen. For pages, "
            "programs and downloads that take a moment.",
            {optional("expect", text("Words that will be on the screen once it is ready.")),
                optional("seconds", number("How long to wait at most, 1 to 30. Default 5."))}),
        declaration("look_at_screen",
            "Looks at the screen: the front application, its window and the elements in it with ids, names, values and "
            "states. Call it before the first action and whenever ids may be old.",
            {optional("include_image",
                 flag("True adds a picture; needed for coordinates and for what has no text. Default false.")),
                optional("include_menus", flag("True adds the application's menus. Default false.")),
                optional("fine_detail", flag("True makes the picture sharp enough for small print. Default false."))}),
    });
}

Json several()
{
    return Json::array({
        declaration("do_steps",
            "Carries out several sure steps in order without a round trip between them, and stops at the first one "
            "that fails or needs consent. Answers with each step's result and the fresh screen.",
            {required("steps",
                list("Two to ten steps.",
                    object("One step.",
                        {required("tool", text("Name of a tool that acts on the screen, such as \"click\".")),
                            required("arguments", stepArguments())})))}),
        declaration("quick_action",
            "Does an everyday thing of the computer without going through any window. Answers with the new state.",
            {required("name",
                 choice("What to do.",
                     {"volume", "mute", "unmute", "brightness", "play_pause", "next_track", "previous_track",
                         "do_not_disturb", "lock_screen", "screenshot", "show_desktop"})),
                optional("value",
                    text("For volume and brightness: \"0\" to \"100\", \"up\" or \"down\". For do_not_disturb: \"on\" "
                         "or \"off\"."))}),
    });
}

} // namespace

Json stepArguments()
{
    // Only the types: the tools themselves say what each argument means, and this object stands in a dozen places.
    const Json words{{"type", "STRING"}};
    const Json place{{"type", "NUMBER"}};
    return object("That tool's arguments, under the names that it declares; only those that it takes.",
        {optional("element_id", words), optional("text", words), optional("replace", Json{{"type", "BOOLEAN"}}),
            optional("key", words), optional("direction", words),
            optional("path", Json{{"type", "ARRAY"}, {"items", words}}), optional("option", words),
            optional("name", words), optional("address", words), optional("x", place), optional("y", place),
            optional("instruction", words), optional("expect", words)});
}

Json screenActions()
{
    Json all = Json::array();
    for (const Json& part : {clicking(), opening(), pointing(), reading(), several()})
        all.insert(all.end(), part.begin(), part.end());
    return all;
}

} // namespace quorvell::tool_declarations
