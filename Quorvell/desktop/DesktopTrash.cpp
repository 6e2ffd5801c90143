// SPDX-License-Identifier: MIT
#include "Quorvell/desktop/DesktopTrash.h"

#include <gio/gio.h>

#include <memory>

namespace quorvell {

bool DesktopTrash::put(const std::string& path)
{
    const std::unique_ptr<GFile, void (*)(gpointer)> file(g_file_new_for_path(path.c_str()), g_object_unref);
    return g_file_trash(file.get(), nullptr, nullptr) != FALSE;
}

} // namespace quorvell
