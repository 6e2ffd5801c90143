#include "Quorvell/app/PlainLine.h"

#include "Quorvell/app/ConversationText.h"
#include "Quorvell/notebook/OneLine.h"

namespace quorvell {

std::string plainLine(std::string_view text)
{
    return ConversationText::printable(onOneLine(text));
}

} // namespace quorvell
