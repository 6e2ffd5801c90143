// SPDX-License-Identifier: MIT
// Catches frames that are misread, taken though they break the protocol, or hoarded.
#include "QuorvellCore/live/wire/transport/WebSocketReader.h"

#include <gtest/gtest.h>

namespace quorvell {

using Kind = WebSocketFrame::Kind;
using Piece = WebSocketReader::Piece;

constexpr WebSocketFrame::Mask anyMask{0x37, 0xFA, 0x21, 0x3D};

std::string masked(Kind kind, std::string_view payload)
{
    return WebSocketFrame::bytes(kind, payload, anyMask);
}

/// The frame is not the last of its message.
std::string unfinished(std::string frame)
{
    frame[0] = static_cast<char>(frame[0] & 0x7F);
    return frame;
}

TEST(WebSocketReader, readsWhatARFCShows)
{
    WebSocketReader fromServer(WebSocketReader::From::server, 100);
    WebSocketReader fromClient(WebSocketReader::From::client, 100);
    EXPECT_EQ(fromServer.add("\x81\x05Hello"), (std::vector<Piece>{{Kind::text, "Hello"}}));
    EXPECT_EQ(
        fromClient.add("\x81\x85\x37\xfa\x21\x3d\x7f\x9f\x4d\x51\x58"), (std::vector<Piece>{{Kind::text, "Hello"}}));
}

TEST(WebSocketReader, readsMessagesHoweverTheyAreCut)
{
    const std::string long16(300, 'a'), long64(70'000, 'b');
    const std::string all = masked(Kind::text, "one") + unfinished(masked(Kind::text, "tw")) + masked(Kind::ping, "?")
        + unfinished(masked(Kind::continuation, "")) + masked(Kind::continuation, "o") + masked(Kind::binary, long16)
        + masked(Kind::text, "") + unfinished(masked(Kind::text, "caf\xC3")) + masked(Kind::continuation, "\xA9")
        + masked(Kind::text, long64) + masked(Kind::close, WebSocketFrame::closePayload(1001, "away"))
        + masked(Kind::text, "not read any more");
    const std::vector<Piece> expected{{Kind::text, "one"}, {Kind::ping, "?"}, {Kind::text, "two"},
        {Kind::binary, long16}, {Kind::text, ""}, {Kind::text, "café"}, {Kind::text, long64},
        {Kind::close, "away", 1001}};
    for (const std::size_t step : {std::size_t{1}, std::size_t{3}, std::size_t{1000}, all.size()}) {
        WebSocketReader reader(WebSocketReader::From::client, 70'000);
        std::vector<Piece> pieces;
        for (std::size_t at = 0; at < all.size(); at += step)
            for (Piece& piece : reader.add(std::string_view(all).substr(at, step)))
                pieces.push_back(std::move(piece));
        EXPECT_EQ(pieces, expected) << step;
        EXPECT_EQ(reader.problem(), 0);
    }
}

TEST(WebSocketReader, refusesWhatBreaksTheProtocolOrABound)
{
    const std::string longControl(126, 'a');
    struct Row {
        const char* name;
        std::string bytes;
        int problem;
    };
    const Row rows[] = {
        {"a client's frame without a mask", WebSocketFrame::bytes(Kind::text, "x"), 1002},
        {"an extension nobody agreed on", "\xC1\x80....", 1002},
        {"a kind that is none", "\x83\x80....", 1002},
        {"a ping that is too long", masked(Kind::ping, longControl), 1002},
        {"a ping in pieces", unfinished(masked(Kind::ping, "a")), 1002},
        {"a continuation of nothing", masked(Kind::continuation, "a"), 1002},
        {"a message within a message", unfinished(masked(Kind::text, "a")) + masked(Kind::text, "b"), 1002},
        {"a message that is too long", masked(Kind::text, std::string(101, 'a')), 1009},
        {"one that says it is as long as can be", std::string("\x81\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF....", 14),
            1009},
        {"a text that is no UTF-8", masked(Kind::text, "caf\xE9"), 1007},
        {"a letter that its pieces cut, and never end",
            unfinished(masked(Kind::text, "caf\xC3")) + masked(Kind::continuation, ""), 1007},
        {"a close with half a code", masked(Kind::close, "\x03"), 1002},
        {"a close with a code that is never sent", masked(Kind::close, WebSocketFrame::closePayload(1006, "")), 1002},
        {"a close with a code of nobody", masked(Kind::close, WebSocketFrame::closePayload(2999, "")), 1002},
        {"a close whose reason is no UTF-8", masked(Kind::close, "\x03\xE8\xFF"), 1007},
        {"too long in pieces", unfinished(masked(Kind::text, longControl.substr(26))) + masked(Kind::continuation, "b"),
            1009},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        WebSocketReader reader(WebSocketReader::From::client, 100);
        EXPECT_TRUE(reader.add(row.bytes).empty());
        EXPECT_EQ(reader.problem(), row.problem);
        EXPECT_TRUE(reader.add(masked(Kind::text, "after it")).empty());
    }
    WebSocketReader reader(WebSocketReader::From::server, 100);
    EXPECT_TRUE(reader.add(masked(Kind::text, "x")).empty());
    EXPECT_EQ(reader.problem(), 1002) << "a server's frame with a mask";
}

TEST(WebSocketReader, aReasonIsCutToWhatFits)
{
    std::string accents;
    for (int count = 0; count < 100; ++count)
        accents += "é";
    EXPECT_EQ(WebSocketFrame::closePayload(1000, accents).size(), 2u + 122u);
    EXPECT_EQ(WebSocketFrame::closePayload(1009, "no"), "\x03\xF1no");
}

} // namespace quorvell
