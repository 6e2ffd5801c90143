// SPDX-License-Identifier: MIT
#include "QuorvellCore/safety/places/DesktopPlace.h"

#include "QuorvellCore/safety/words/OneOf.h"
#include "QuorvellCore/text/Characters.h"
#include "QuorvellCore/text/LowerCase.h"
#include "QuorvellCore/text/OneLine.h"
#include "QuorvellCore/text/TextMatch.h"

#include <algorithm>
#include <array>
#include <string>
#include <unordered_map>
#include <vector>

namespace quorvell {

namespace {

using Text = std::string_view;

struct Known {
    DesktopPlace place;
    /// Names and identifiers in lower case, without ".desktop". One that ends in "*" is the beginning of several.
    std::vector<Text> names;
};

const std::vector<Known>& knownApplications()
{
    static const std::vector<Known> table{
        {DesktopPlace::terminal,
            {"terminal", "gnome terminal", "gnome-terminal*", "org.gnome.terminal", "console", "kgx",
                "org.gnome.console", "ptyxis", "org.gnome.ptyxis", "app.devsuite.ptyxis", "konsole", "org.kde.konsole",
                "yakuake", "org.kde.yakuake", "xfce4-terminal", "xfce terminal", "mate-terminal", "mate terminal",
                "lxterminal", "qterminal", "xterm", "uxterm", "urxvt*", "rxvt*", "alacritty", "kitty", "foot",
                "footclient", "org.codeberg.dnkl.foot", "wezterm", "wezterm-gui", "org.wezfurlong.wezterm", "tilix",
                "com.gexperts.tilix", "terminator", "guake", "tilda", "terminology", "sakura", "roxterm", "eterm", "st",
                "cool-retro-term", "deepin-terminal", "pantheon-terminal", "io.elementary.terminal", "blackbox",
                "com.raggesilver.blackbox", "ghostty", "com.mitchellh.ghostty", "contour", "rio", "warp", "hyper",
                "tabby", "cosmic-term", "com.system76.cosmicterm", "x-terminal-emulator", "bash", "sh", "zsh", "fish",
                "dash", "ksh", "tmux", "screen", "python", "python3", "perl", "ruby", "node", "sudo", "pkexec", "su",
                "env", "nohup", "xargs"}},
        {DesktopPlace::runDialog,
            {"krunner", "org.kde.krunner", "rofi", "wofi", "fuzzel", "dmenu", "bemenu", "tofi", "gmrun", "xfrun4",
                "xfce4-appfinder", "lxqt-runner", "lxsession-run", "ulauncher", "io.ulauncher.ulauncher", "albert",
                "synapse", "kupfer", "mate-run", "run command", "run application", "run program", "run"}},
        {DesktopPlace::authentication,
            {"polkit*", "org.kde.polkit*", "mate-polkit*", "lxqt-policykit-agent", "lxpolkit", "xfce-polkit",
                "policykit*", "cosmic-osd", "gcr-prompter", "gcr-prompter3", "org.gnome.gcr*", "pinentry*",
                "ksshaskpass", "ssh-askpass*", "x11-ssh-askpass", "lxqt-openssh-askpass", "kwalletd*",
                "org.kde.kwalletd*", "gnome-keyring*", "gksu", "gksudo", "kdesu*", "kdesudo", "lxqt-sudo", "swaylock",
                "hyprlock", "i3lock", "xscreensaver*", "light-locker", "gtklock", "kscreenlocker*",
                "gnome-screensaver*", "cinnamon-screensaver*", "mate-screensaver*", "xfce4-screensaver*"}},
        {DesktopPlace::passwordManager,
            {"keepassxc", "org.keepassxc.keepassxc", "keepass", "keepass2", "bitwarden", "com.bitwarden.desktop",
                "1password", "com.onepassword.onepassword", "passwords and keys", "seahorse", "org.gnome.seahorse*",
                "kwalletmanager*", "org.kde.kwalletmanager*", "kwallet manager", "kde wallet", "secrets",
                "org.gnome.world.secrets", "enpass", "dashlane", "lastpass", "proton pass", "nordpass", "buttercup",
                "qtpass", "org.ijhack.qtpass", "authenticator", "com.belmoussaoui.authenticator", "otpclient",
                "com.github.paolostivanin.otpclient", "keysmith", "org.kde.keysmith", "kleopatra", "org.kde.kleopatra",
                "password safe", "pwsafe", "passwordsafe", "figaro's password manager 2", "revelation", "passwords",
                "key rack", "app.drey.keyrack"}},
        {DesktopPlace::installer,
            {"software", "gnome-software", "gnome software", "org.gnome.software*", "discover", "plasma-discover",
                "org.kde.discover*", "synaptic", "synaptic package manager", "gdebi*", "qapt-deb-installer", "captain",
                "package installer", "pamac*", "org.manjaro.pamac*", "octopi*", "add/remove software", "apper", "muon",
                "dnfdragora", "org.mageia.dnfdragora", "yast2 sw*", "myrlyn", "mintinstall", "software manager",
                "mintupdate", "update manager", "update-manager", "software updater", "software-updater",
                "gnome-package*", "gpk-*", "packagekit*", "pop!_shop", "io.elementary.appcenter", "appcenter",
                "cosmic store", "com.system76.cosmicstore", "snap store", "snap-store*", "app center", "app-center",
                "ubuntu software", "bazaar", "io.github.kolunmi.bazaar", "bauh", "eos-installer", "calamares",
                "ubiquity", "warehouse", "io.github.flattool.warehouse", "gear lever", "it.mijorus.gearlever",
                "boutique", "software & updates", "software-properties*", "software sources", "mintsources"}},
        {DesktopPlace::systemTool,
            {"disks", "gnome-disks", "gnome-disk-utility", "org.gnome.diskutility", "gparted", "partitionmanager",
                "org.kde.partitionmanager", "kde partition manager", "blivet-gui", "usb-creator*", "mintstick",
                "balenaetcher", "etcher", "raspberry pi imager", "rpi-imager", "fedora media writer", "impression",
                "timeshift*", "grub-customizer", "boot-repair", "stacer", "bleachbit*", "org.bleachbit.bleachbit",
                "dconf-editor", "ca.desrt.dconf-editor", "dconf editor", "users-admin", "users and groups", "firewall",
                "firewall-config", "gufw*", "system-config*", "gnome-system-monitor", "org.gnome.systemmonitor",
                "system monitor", "plasma-systemmonitor", "org.kde.plasma-systemmonitor", "ksysguard",
                "xfce4-taskmanager", "task manager", "lxtask", "mate-system-monitor", "mission center",
                "io.missioncenter.missioncenter", "resources", "net.nokyan.resources", "services", "systemd-manager",
                "kjournald*", "sweeper", "org.kde.sweeper", "brasero", "k3b", "xfburn"}},
        {DesktopPlace::settings,
            {"com.apple.settings", "com.apple.systempreferences", "settings", "system settings", "control center",
                "org.gnome.settings", "gnome-control-center*", "gnome-tweaks", "org.gnome.tweaks", "tweaks",
                "systemsettings*", "org.kde.systemsettings", "kcmshell*", "org.kde.kcmshell*", "cinnamon-settings*",
                "mate-control-center", "mate-*-properties", "budgie-control-center",
                "org.buddiesofbudgie.budgiecontrolcenter", "xfce4-settings*", "xfce4-*-settings",
                "xfce4-power-manager-settings", "xfce4-session-settings", "xfce4-display-settings",
                "xfce4-keyboard-settings", "xfce4-mouse-settings", "lxqt-config*", "lxappearance",
                "unity-control-center", "com.system76.cosmicsettings", "cosmic-settings", "io.elementary.settings",
                "io.elementary.switchboard", "yast2", "yast", "nm-connection-editor", "network connections",
                "blueman-manager", "im-config", "drakconf", "deepin-control-center", "dde-control-center"}},
        {DesktopPlace::otherComputer,
            {"remmina", "org.remmina.remmina", "krdc", "org.kde.krdc", "vinagre", "connections",
                "org.gnome.connections", "xfreerdp*", "freerdp*", "rdesktop", "vncviewer", "tigervnc*",
                "tigervnc viewer", "gvncviewer", "nomachine", "nxplayer*", "x2goclient", "virt-viewer", "remote-viewer",
                "virt-manager", "virtual machine manager", "boxes", "gnome-boxes", "org.gnome.boxes", "virtualbox*",
                "virtualboxvm", "oracle vm virtualbox*", "vmware*", "vmplayer", "qemu*", "parsec", "parsecd",
                "moonlight", "com.moonlight_stream.moonlight", "spicy", "waydroid*", "barrier", "synergy",
                "input-leap"}},
        {DesktopPlace::letsOthersIn,
            {"teamviewer*", "com.teamviewer*", "anydesk*", "com.anydesk*", "rustdesk*", "com.rustdesk*", "krfb*",
                "org.kde.krfb*", "desktop sharing", "vino*", "gnome-remote-desktop*", "x11vnc", "x0vncserver", "wayvnc",
                "sunshine", "dev.lizardbyte.app.sunshine", "chrome-remote-desktop*", "dwservice", "meshagent",
                "hoptodesk", "getscreen", "splashtop*", "supremo*", "remoting_start_host"}},
        {DesktopPlace::shell,
            {"gnome-shell", "org.gnome.shell", "gnome shell", "plasmashell", "org.kde.plasmashell", "plasma",
                "xfce4-panel", "xfdesktop", "whiskermenu", "mate-panel", "cinnamon", "budgie-panel", "lxqt-panel",
                "lxpanel", "pcmanfm-desktop", "nemo-desktop", "plank", "latte-dock", "org.kde.latte-dock",
                "cosmic-panel", "cosmic-launcher", "cosmic-app-library", "cosmic-applibrary", "docky", "cairo-dock",
                "waybar", "wingpanel", "io.elementary.dock", "io.elementary.wingpanel", "dde-dock", "dde-launcher",
                "unity", "kickoff"}},
        {DesktopPlace::fileManager,
            {"files", "nautilus", "org.gnome.nautilus", "dolphin", "org.kde.dolphin", "thunar", "nemo", "caja",
                "pcmanfm", "pcmanfm-qt", "file manager", "cosmic files", "com.system76.cosmicfiles", "krusader",
                "org.kde.krusader", "double commander", "doublecmd", "spacefm", "io.elementary.files", "konqueror",
                "dde-file-manager", "desktop icons"}},
        {DesktopPlace::messenger,
            {"element", "im.riot.riot", "io.element.element", "fluffychat", "nheko", "fractal", "org.gnome.fractal",
                "neochat", "org.kde.neochat", "signal desktop", "org.signal.signal", "signal-desktop",
                "telegram desktop", "org.telegram.desktop", "telegram-desktop", "whatsapp web", "whatsapp for linux",
                "zapzap", "discord", "com.discordapp.discord", "discord canary", "vesktop", "dev.vencord.vesktop",
                "slack", "com.slack.slack", "teams for linux", "teams-for-linux", "mattermost", "zulip", "rocket.chat",
                "hexchat", "io.github.hexchat", "polari", "org.gnome.polari", "konversation", "org.kde.konversation",
                "quassel*", "dino", "im.dino.dino", "gajim", "org.gajim.gajim", "pidgin", "im.pidgin.pidgin*",
                "empathy", "kopete", "wire", "wire desktop", "session", "session desktop", "viber", "jami",
                "net.jami.jami", "linphone", "chatty", "sm.puri.chatty", "zoom", "us.zoom.zoom", "zoom workplace",
                "skypeforlinux", "threema", "kde connect sms", "google chat", "google messages", "facebook messenger",
                "caprine"}},
    };
    return table;
}

/// "mate-*-properties": both ends, whatever stands between.
bool isLike(Text name, Text pattern)
{
    const auto star = pattern.find('*');
    return name.size() + 1 >= pattern.size() && name.starts_with(pattern.substr(0, star))
        && name.ends_with(pattern.substr(star + 1));
}

struct Index {
    std::unordered_map<Text, DesktopPlace> whole;
    std::vector<std::pair<Text, DesktopPlace>> patterns;

    Index()
    {
        for (const Known& known : knownApplications()) {
            for (const Text name : known.names) {
                if (name.find('*') == Text::npos)
                    whole.emplace(name, known.place);
                else
                    patterns.emplace_back(name, known.place);
            }
        }
    }

    DesktopPlace find(Text name) const
    {
        if (const auto found = whole.find(name); found != whole.end())
            return found->second;
        const auto like = std::find_if(
            patterns.begin(), patterns.end(), [&](const auto& pattern) { return isLike(name, pattern.first); });
        return like == patterns.end() ? DesktopPlace::ordinary : like->second;
    }
};

/// As a program's name is compared: "/usr/bin/xterm", "XTerm.desktop" and "xterm" are one.
std::string comparedProgram(Text name)
{
    std::string lower = onOneLine(trimmed(lowerCased(name)));
    for (const Text ending : {".desktop", ".app"}) {
        if (lower.ends_with(ending))
            lower.erase(lower.size() - ending.size());
    }
    return lower.substr(lower.rfind('/') + 1);
}

bool saysRun(Text title)
{
    constexpr auto titles = std::to_array<Text>(
        {"run", "run a command", "run command", "run program", "run application", "enter a command", "run or raise"});
    return isOneOf(titles, TextMatch::normalized(title));
}

/// "ann@garden: ~/letters", as shells name their windows.
bool looksLikePrompt(Text title)
{
    const auto sign = title.find('@');
    const auto colon = sign == Text::npos ? Text::npos : title.find(':', sign);
    const auto place = colon == Text::npos ? Text::npos : title.find_first_not_of(' ', colon + 1);
    return place != Text::npos && (title[place] == '~' || title[place] == '/');
}

} // namespace

DesktopPlace desktopPlaceOfApp(std::string_view name)
{
    static const Index index;
    constexpr std::size_t longest = 1'000; // No program is called more; a whole page may call itself one.
    const std::string program = comparedProgram(name.substr(0, longest));
    DesktopPlace place = index.find(program);
    // "xterm -e ls" is a program with what is handed to it, "Terminal velocity" a name.
    if (const auto space = program.find(' '); place == DesktopPlace::ordinary && space != std::string::npos) {
        const Text all = program;
        const DesktopPlace first = index.find(all.substr(0, space));
        const bool isCommand = all.find_first_of("-/~.$|;&", space) != Text::npos || all.starts_with("sudo ");
        if (first == DesktopPlace::letsOthersIn || (first == DesktopPlace::terminal && isCommand))
            place = first;
    }
    return place;
}

bool asksToAuthenticate(std::string_view title)
{
    constexpr auto phrases = std::to_array<Text>({"authentication required", "authentication is required",
        "authentication needed", "authenticate as", "unlock keyring", "unlock login keyring", "login keyring",
        "keyring password", "kde wallet", "password required", "password is required", "passphrase", "sudo password",
        "administrator password", "openssh authentication", "enter pin for"});
    constexpr std::size_t longest = 1'000; // A heading; what is longer is text.
    const std::string words = ' ' + TextMatch::normalized(title.substr(0, longest)) + ' ';
    return std::any_of(phrases.begin(), phrases.end(),
        [&](Text phrase) { return words.find(' ' + std::string(phrase) + ' ') != std::string::npos; });
}

DesktopPlace desktopPlace(std::string_view app, std::string_view identifier, std::string_view windowTitle)
{
    if (asksToAuthenticate(windowTitle))
        return DesktopPlace::authentication;
    const DesktopPlace known = desktopPlaceOfApp(identifier);
    const DesktopPlace named = known == DesktopPlace::ordinary ? desktopPlaceOfApp(app) : known;
    if ((named == DesktopPlace::ordinary || named == DesktopPlace::shell) && saysRun(windowTitle))
        return DesktopPlace::runDialog;
    const bool isUnknown = trimmed(app).empty() && trimmed(identifier).empty();
    return isUnknown && looksLikePrompt(windowTitle) ? DesktopPlace::terminal : named;
}

} // namespace quorvell
