// SPDX-License-Identifier: MIT
// Must not compile: the room that this stands in (only the text room is linked) has no door to the live room.
#include "QuorvellCore/live/wire/vocabulary/LiveFunctionCall.h"

int main()
{
    return 0;
}
