// SPDX-License-Identifier: MIT
// Gives up root's rights for a while, since root writes through permissions.
#pragma once

#include <unistd.h>

namespace quorvell::test {

/// `folder` becomes the ordinary user's.
class OrdinaryUser {
public:
    explicit OrdinaryUser(const char* folder)
        : m_wasRoot(::geteuid() == 0)
    {
        constexpr uid_t nobody = 65534;
        if (m_wasRoot && (::chown(folder, nobody, nobody) != 0 || ::seteuid(nobody) != 0))
            m_isOrdinary = false;
    }
    ~OrdinaryUser()
    {
        if (m_wasRoot)
            (void)!::seteuid(0);
    }
    OrdinaryUser(const OrdinaryUser&) = delete;
    OrdinaryUser& operator=(const OrdinaryUser&) = delete;

    bool isOrdinary() const { return m_isOrdinary; }

private:
    bool m_wasRoot;
    bool m_isOrdinary = true;
};

} // namespace quorvell::test
