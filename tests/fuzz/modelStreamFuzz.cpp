// SPDX-License-Identifier: MIT
// A model's answer of any bytes, cut anywhere, reads the same and within its bounds; its calls are checked and its
// words cut into sentences that can be shown. The first byte chooses the cut.
#include "LocalModel/ModelSentences.h"
#include "LocalModel/ModelStream.h"
#include "LocalModel/ModelTools.h"
#include "QuorvellCore/live/tools/ToolCatalogue.h"
#include "QuorvellCore/text/Characters.h"
#include "QuorvellCore/text/PrintableText.h"
#include "fuzzing.h"

#include <algorithm>

using namespace quorvell;

namespace {

struct Reading {
    ModelStream stream;
    std::string text;
    bool operator==(const Reading&) const = default;
};

Reading readInPieces(std::string_view sent, std::size_t size)
{
    Reading all;
    for (; !sent.empty(); sent.remove_prefix(std::min(size, sent.size()))) {
        all.stream.add(sent.substr(0, size));
        all.text += all.stream.takeText();
    }
    all.stream.end();
    all.text += all.stream.takeText();
    return all;
}

} // namespace

void quorvell::search(std::string_view text)
{
    static const ModelTools tools(ToolCatalogue::notebookTools());
    if (text.empty())
        return;
    const std::string_view sent = text.substr(1);
    const Reading whole = readInPieces(sent, sent.size() + 1);
    require(readInPieces(sent, static_cast<unsigned char>(text[0]) + std::size_t{1}) == whole);
    require(whole.stream.calls().size() <= ModelStream::mostCalls);
    for (const ModelStream::Call& call : whole.stream.calls())
        tools.problem(call.name, call.arguments);
    ModelSentences sentences;
    auto said = sentences.add(whole.text);
    for (std::string& sentence : sentences.end())
        said.push_back(std::move(sentence));
    for (const std::string& sentence : said)
        require(isUtf8(sentence) && printableText(sentence) == sentence && !sentence.empty());
}
