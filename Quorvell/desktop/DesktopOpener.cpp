// SPDX-License-Identifier: MIT
#include "Quorvell/desktop/DesktopOpener.h"

#include <gio/gio.h>

#include <cstdlib>
#include <memory>

namespace quorvell {

std::string showOnDesktop(const std::string& path)
{
    if (!std::getenv("DISPLAY") && !std::getenv("WAYLAND_DISPLAY"))
        return "There is no screen to show it on here. It is in " + path + ".";
    const std::unique_ptr<GFile, void (*)(gpointer)> file(g_file_new_for_path(path.c_str()), g_object_unref);
    const std::unique_ptr<char, void (*)(gpointer)> address(g_file_get_uri(file.get()), g_free);
    GError* failure = nullptr;
    if (g_app_info_launch_default_for_uri(address.get(), nullptr, &failure))
        return "";
    g_clear_error(&failure);
    return "No program is set up to show " + path + ". Choose one in the desktop's settings, or open it by hand.";
}

} // namespace quorvell
