// SPDX-License-Identifier: MIT
// Everything the program takes from its surroundings, read once at start-up so that nothing else has to look.
#pragma once

#include "Quorvell/preferences/DeciderKeys.h"
#include "Quorvell/preferences/LiveKeys.h"
#include "Quorvell/preferences/WebProxy.h"
#include "Quorvell/settings/TerminalColour.h"

#include <optional>
#include <string>

namespace quorvell {

struct ProgramEnvironment {
    std::string programPath; ///< Absolute path of this program.
    std::string programFolder;
    std::string notebookFolder; ///< $XDG_DATA_HOME/Quorvell/Notebook
    std::string localNotebookFolder; ///< The same, whatever the settings say later.
    std::optional<std::string> syncedNotebookFolder; ///< In a folder that a sync program keeps, where there is one.
    std::string calendarFolder; ///< $XDG_DATA_HOME/Quorvell/Calendar
    std::string configFolder; ///< $XDG_CONFIG_HOME/Quorvell
    std::string stateFolder; ///< $XDG_STATE_HOME/Quorvell
    std::string runtimeFolder; ///< $XDG_RUNTIME_DIR, or empty.
    std::string timeZone; ///< IANA name, "Europe/Berlin".
    std::string locale; ///< "en_GB"; LC_ALL, LC_TIME, LANG in this order, "en_US" where none says.
    LiveKeys keys; ///< Of the variables that LiveBackendTraits names; empty counts as absent.
    DeciderKeys deciderKeys; ///< Likewise.
    WebProxy webProxy; ///< https_proxy, all_proxy and no_proxy, also in capitals.
    std::optional<std::string> liveHost; ///< QUORVELL_LIVE_HOST: "host", "host:port" or a wss/https address.
    std::optional<std::string> liveToken; ///< QUORVELL_LIVE_TOKEN: the key that clients of our own service must show.
    std::optional<std::string> editor; ///< VISUAL or EDITOR: a command that edits the file it is given.
    bool hasSessionBus = false; ///< A D-Bus session bus address is known.
    bool isInputTerminal = false;
    bool isOutputTerminal = false;
    bool movesCursor = false; ///< The output is a terminal that can draw over what it shows.
    bool allowsColour = false; ///< It knows colours too, and NO_COLOR does not forbid them.

    TerminalColour colour() const { return allowsColour ? TerminalColour::ansi : TerminalColour::none; }

    static ProgramEnvironment read(const char* programName);

    /// For the user, when `timeZone` is none that exists.
    std::string unknownTimeZone() const;
};

} // namespace quorvell
