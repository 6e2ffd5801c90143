// SPDX-License-Identifier: MIT
#include "QuorvellCore/safety/places/FileKind.h"

#include "QuorvellCore/safety/words/OneOf.h"
#include "QuorvellCore/text/Characters.h"
#include "QuorvellCore/text/LowerCase.h"

#include <array>

namespace quorvell {

namespace {

constexpr auto documentEndings = std::to_array<std::string_view>(
    {"txt", "md", "rtf", "pdf", "epub", "djvu", "odt", "ods", "odp", "doc", "docx", "xls", "xlsx", "ppt", "pptx", "csv",
        "tsv", "ics", "vcf", "eml", "jpg", "jpeg", "png", "gif", "webp", "bmp", "tif", "tiff", "heic", "avif", "mp3",
        "ogg", "oga", "opus", "flac", "wav", "m4a", "aac", "mp4", "m4v", "mkv", "mov", "avi", "webm", "ogv"});

constexpr auto programEndings = std::to_array<std::string_view>({"exe", "msi", "msix", "com", "scr", "pif", "cpl",
    "dll", "app", "pkg", "mpkg", "dmg", "iso", "img", "vhd", "vhdx", "vmdk", "qcow2", "cdr", "toast", "deb", "rpm",
    "appimage", "flatpak", "flatpakref", "flatpakrepo", "snap", "run", "bin", "elf", "so", "out", "apk", "xapk", "ipa",
    "jar", "jnlp", "desktop", "service", "lnk", "url", "webloc", "crx", "xpi", "vsix", "mobileconfig", "reg", "inf"});

} // namespace

std::string_view fileNameOf(std::string_view path)
{
    const auto last = path.find_last_not_of('/');
    path = path.substr(0, last == std::string_view::npos ? 0 : last + 1);
    return path.substr(path.rfind('/') + 1);
}

FileKind fileKind(std::string_view path)
{
    // Other systems pass over dots and spaces at the end, and take the ending before them.
    const std::string name = asciiLowerCased(trimmed(fileNameOf(path), "."));
    const auto dot = name.rfind('.');
    const std::string ending = dot == std::string::npos ? "" : name.substr(dot + 1);
    if (isOneOf(programEndings, ending))
        return FileKind::program;
    return isOneOf(documentEndings, ending) ? FileKind::document : FileKind::other;
}

} // namespace quorvell
