// SPDX-License-Identifier: MIT
// The session bus as programs that share a notebook use it: who owns the folder is found under a name, and changes are
// handed over by a few methods. Everything that comes from the bus is bounded and decoded as a file would be.
#pragma once

#include <QDBusConnection>

#include <chrono>
#include <cstddef>
#include <optional>
#include <string>

namespace quorvell {

/// Names and words of the wire.
struct NotebookWire {
    static constexpr const char* path = "/org/quorvell/Notebook1";
    static constexpr const char* interface = "org.quorvell.Notebook1";

    /// Every method answers (s outcome, ay note, s problem). Notes travel as the text of their files.
    static constexpr const char* add = "Add"; ///< (ay note)
    static constexpr const char* update = "Update"; ///< (ay note, s `updated` of the version that was changed)
    static constexpr const char* edit = "Edit"; ///< As Update, for what the person changed by hand.
    static constexpr const char* delete_ = "Delete"; ///< (s id)
    static constexpr const char* forgetAll = "ForgetAll"; ///< ()
    static constexpr const char* savePicture = "SavePicture"; ///< (s id, ay picture in any common format)

    static constexpr std::size_t maximumPictureBytes = 32 * 1024 * 1024;

    static constexpr const char* stored = "stored"; ///< `note` is as it was stored.
    static constexpr const char* changed = "changed"; ///< Somebody else was first; `note` is as it stands now.
    static constexpr const char* refused = "refused"; ///< `problem` says why.

    /// Long enough for a busy disk, short enough for a conversation.
    static constexpr std::chrono::milliseconds timeOut{1500};
};

/// A connection of its own to the session bus, under whose names the owner of one notebook folder is found. Names go
/// with the connection. Main thread, with a QCoreApplication.
class NotebookBus {
public:
    enum class Claim { granted, heldElsewhere, noAnswer };

    /// Nothing when there is no bus to be reached.
    static std::optional<NotebookBus> connect(const std::string& folder);
    ~NotebookBus();
    NotebookBus(NotebookBus&& other) noexcept;
    NotebookBus& operator=(NotebookBus&&) = delete;

    const QDBusConnection& connection() const { return m_connection; }
    const QString& name() const { return m_name; }

    /// Both wait for the bus, at most for the time-out.
    Claim claimName() const;
    bool hasOwner() const;

private:
    NotebookBus(QDBusConnection connection, QString connectionName, QString name);

    QDBusConnection m_connection;
    QString m_connectionName; ///< Empty once moved from.
    QString m_name;
};

} // namespace quorvell
