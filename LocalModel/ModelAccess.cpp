// SPDX-License-Identifier: MIT
#include "LocalModel/ModelAccess.h"

namespace quorvell {

std::optional<ServiceAddress> ModelAccess::addressOf(std::string_view host)
{
    auto address = ServiceAddress::create(host);
    if (address && address->isThisComputer() && host.find("://") == std::string_view::npos)
        address->security = ServiceAddress::Security::none;
    return address;
}

std::string ModelAccess::title() const
{
    return address.isThisComputer() ? "the model on this computer" : "the model at " + address.host;
}

} // namespace quorvell
