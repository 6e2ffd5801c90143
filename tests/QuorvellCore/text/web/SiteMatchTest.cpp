// SPDX-License-Identifier: MIT
// Catches pages of another site taken for the same one.
#include "QuorvellCore/text/web/SiteMatch.h"

#include "QuorvellCore/text/web/WebAddress.h"

#include <gtest/gtest.h>

#include <tuple>

namespace quorvell {

TEST(WebAddress, takesApart)
{
    const std::pair<const char*, WebAddress> rows[] = {
        {"example.com:8080", {"https", "example.com", 8080, "", ""}},
        {" HTTP://User:pw@Example.COM/A/b?q=1#f ", {"http", "example.com", {}, "/A/b", "q=1"}},
        {"wss://127.0.0.1:65535/v1", {"wss", "127.0.0.1", 65535, "/v1", ""}},
        {"https://[::1]:80", {"https", "[::1]", 80, "", ""}},
        {"https://Bücher.example", {"https", "xn--bcher-kva.example", {}, "", ""}},
        {"https://ＥＸＡＭＰＬＥ.com", {"https", "example.com", {}, "", ""}},
        {"https://good.com:@evil.com/", {"https", "evil.com", {}, "/", ""}},
        {"https://example.com:", {"https", "example.com", {}, "", ""}},
        {"https://r3---sn_x.example.com", {"https", "r3---sn_x.example.com", {}, "", ""}},
        {"file:///etc", {"file", "", {}, "/etc", ""}},
        {"example.com?a=/b", {"https", "example.com", {}, "", "a=/b"}},
    };
    for (const auto& [text, address] : rows)
        EXPECT_EQ(WebAddress::parse(text), address) << text;
    for (const char* text : {"https://example.com:65536", "https://example.com:8a", "https://a b.com",
             "https://a%2eb.com", "https://evil.com\\@good.com", "1http://a.com", "a.com/?u=http://b.com",
             "https://a\nb.com", "https://xn--a.com", "https://[::1", "https://b]@:c@d:1:2", "https://℀.com"})
        EXPECT_EQ(WebAddress::parse(text), std::nullopt) << text;
    EXPECT_EQ(WebAddress::parse("a.com/" + std::string(70'000, 'a')), std::nullopt);
}

TEST(WebAddress, thisComputer)
{
    for (const char* text : {"localhost", "ws://127.1.2.3:5", "[::1]", "a.localhost"})
        EXPECT_TRUE(WebAddress::parse(text)->isLoopback()) << text;
    for (const char* text :
        {"127.evil.com", "localhost.com", "128.0.0.1", "[::2]", "notlocalhost", "0.0.0.0", "127.999", "127.999.1.1"})
        EXPECT_FALSE(WebAddress::parse(text)->isLoopback()) << text;
}

TEST(SiteMatch, hostsAndPaths)
{
    const std::tuple<const char*, std::optional<std::string>, std::string> rows[] = {
        {"WWW.Example.com/Shop", "example.com", "/shop"}, {"https://example.com/shop", "example.com", "/shop"},
        {"example.com/shop/", "example.com", "/shop/"}, {"www.m.example.com", "example.com", ""},
        {"m.www.example.com", "www.example.com", ""}, {"www.com/", "www.com", ""}, {"m.co", "m.co", ""},
        {"\n localhost:3000/x \t", "localhost", "/x"}, {"localhost.", "localhost.", ""},
        {"bücher.de/Stra%C3%9Fe%2F%3f", "xn--bcher-kva.de", "/straße%2f%3f"}, {"intranet/x", {}, "/x"},
        {"ftp://example.com/x", {}, "/x"}, {"exa mple.com", {}, ""}, {"", {}, ""}, {"https://", {}, ""},
        {"https://example.com:99999/x", {}, ""}};
    for (const auto& [address, host, path] : rows) {
        SCOPED_TRACE(address);
        EXPECT_EQ(SiteMatch::host(address), host);
        EXPECT_EQ(SiteMatch::path(address), path);
    }
}

TEST(SiteMatch, sameSiteIsOneSided)
{
    EXPECT_TRUE(SiteMatch::sameSite("example.com", "https://shop.example.com"));
    EXPECT_FALSE(SiteMatch::sameSite("https://shop.example.com", "example.com"));
    EXPECT_TRUE(SiteMatch::sameSite("https://www.example.com/a", "http://example.com:81/b"));
    EXPECT_FALSE(SiteMatch::sameSite("example.com", "notexample.com"));
    EXPECT_FALSE(SiteMatch::sameSite("word", "word"));
}

TEST(SiteMatch, alreadyShowing)
{
    const PageLocation shown{"shop.example.com", "https://shop.example.com/cart", "Cart", true};
    PageLocation noSite = shown;
    noSite.site.reset();
    PageLocation loading = shown;
    loading.loaded = false;
    PageLocation blank = loading;
    blank.title.clear();
    const std::tuple<const char*, const char*, PageLocation, bool> rows[] = {
        {"a subdomain of the wanted site", "example.com/cart", shown, true},
        {"another path", "example.com/", shown, false},
        {"another site", "example.org/cart", shown, false},
        {"a page without a site", "example.com/cart", noSite, false},
        {"still loading, but with a title", "example.com/cart", loading, true},
        {"still loading, nothing to see", "example.com/cart", blank, false},
        {"no address", "", shown, false},
    };
    for (const auto& [name, address, page, showing] : rows)
        EXPECT_EQ(SiteMatch::alreadyShowing(address, page), showing) << name;
}

} // namespace quorvell
