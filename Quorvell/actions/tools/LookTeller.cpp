// SPDX-License-Identifier: MIT
#include "Quorvell/actions/tools/LookTeller.h"

#include <utility>

namespace quorvell {

LookTeller::LookTeller(Ports ports)
    : m_ports(std::move(ports))
{
}

std::string LookTeller::tell(const ScreenLook& look, LookText::Extent extent, Picture picture)
{
    m_shown = look;
    m_shown->image.reset();
    m_picture = picture;
    if (m_ports.seen)
        m_ports.seen(look);
    return fenced(LookText::of(look, extent));
}

void LookTeller::forget()
{
    m_shown.reset();
    m_picture = Picture::none;
}

} // namespace quorvell
