// SPDX-License-Identifier: MIT
#include "Quorvell/deciders/http/CurlAddress.h"

#include "QuorvellCore/text/LowerCase.h"
#include "QuorvellCore/text/web/LoopbackAddress.h"

namespace quorvell {

namespace {

std::string partOf(CURLU* url, CURLUPart part)
{
    char* text = nullptr;
    if (curl_url_get(url, part, &text, CURLU_DEFAULT_PORT) != CURLUE_OK || text == nullptr)
        return {};
    std::string copy = text;
    curl_free(text);
    return copy;
}

} // namespace

std::optional<CurlAddress> CurlAddress::parse(const std::string& url)
{
    CurlAddress address;
    address.m_url.reset(curl_url());
    CURLU* const parts = address.m_url.get();
    if (parts == nullptr || curl_url_set(parts, CURLUPART_URL, url.c_str(), CURLU_DISALLOW_USER) != CURLUE_OK)
        return std::nullopt;
    const std::string scheme = partOf(parts, CURLUPART_SCHEME);
    address.m_host = lowerCased(partOf(parts, CURLUPART_HOST));
    address.m_origin = scheme + "://" + address.m_host + ":" + partOf(parts, CURLUPART_PORT);
    if (scheme != "https" && !(scheme == "http" && address.isThisComputer()))
        return std::nullopt;
    return address;
}

bool CurlAddress::isThisComputer() const
{
    return m_host == "localhost" || m_host == "[::1]" || isLoopbackAddress(m_host);
}

} // namespace quorvell
