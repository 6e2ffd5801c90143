// SPDX-License-Identifier: MIT
// Shows things to the user outside of any conversation.
#pragma once

#include <functional>
#include <string>
#include <vector>

namespace quorvell {

/// Something to be shown.
struct Notice {
    struct Action {
        std::string key;
        std::string label;

        bool operator==(const Action&) const = default;
    };

    std::string key; ///< One of the same key takes the place of an earlier one.
    std::string title;
    std::string body;
    std::vector<Action> actions; ///< Shown as buttons, in this order.
    bool isUrgent = false; ///< Something rings: it stays until it is taken away, also where the desktop keeps quiet.

    /// As it may be shown: texts come from notes, which other programs write, too. Keys stay as they are.
    Notice printable() const;

    bool operator==(const Notice&) const = default;
};

/// Shows notices and tells which button was pressed. Main thread.
class Notifier {
public:
    struct Reports {
        std::function<void(const std::string& key, const std::string& action)> actionTaken = nullptr;
        std::function<void(const std::string& key)> shown = nullptr; ///< Each time that it is.
        std::function<void(const Notice& notice)> couldNotShow =
            nullptr; ///< Nobody is there who shows notices. Later it may be.
    };

    virtual ~Notifier() = default;

    virtual void setReports(Reports reports) = 0;
    /// Reports come later, never inside this call.
    virtual void show(const Notice& notice) = 0;
    virtual void withdraw(const std::string& key) = 0;
};

} // namespace quorvell
