// SPDX-License-Identifier: MIT
#include "Understanding/skills/screen/ScreenWish.h"

#include "QuorvellCore/text/Pattern.h"

#include <array>
#include <string>

namespace quorvell {

bool ScreenWish::isOne(std::string_view core)
{
    // By what is done: something is opened, pressed, chosen, moved through, typed, closed.
    static const std::array<Pattern, 6> forms{
        Pattern("^(?:open|launch|start(?: up)?|fire up|bring up|pull up|switch to|go to|visit|take me to) (?:up )?\\S",
            Pattern::caseless),
        Pattern("^(?:click|double[- ]click|press|tap|hit|push|choose|select|pick|tick|untick|uncheck"
                "|(?:turn|switch) (?:on|off)|enable|disable|dismiss|expand|collapse)(?: on)? \\S",
            Pattern::caseless),
        Pattern("^(?:(?:scroll|page)(?: (?:up|down)\\b.*)?"
                "|(?:go|take me|navigate) (?:back|forward|up|down)\\b.*|(?:back|forward)"
                "|(?:reload|refresh)(?: (?:it|this|the page|this page))?)$",
            Pattern::caseless),
        Pattern("^(?:type|fill in|fill out|enter|replace) \\S", Pattern::caseless),
        Pattern("^(?:close|minimi[sz]e|maximi[sz]e|quit|exit) \\S", Pattern::caseless),
        Pattern("^(?:copy|paste|cut|save|print|export|download|zoom) (?:(?:in|out)$|\\S)", Pattern::caseless),
    };
    const std::string words(core);
    for (const Pattern& form : forms) {
        if (form.find(words))
            return true;
    }
    return false;
}

} // namespace quorvell
