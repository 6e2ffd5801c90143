// SPDX-License-Identifier: MIT
// The control of forbiddenInclude.cpp: the same room, a header that it may see.
#include "QuorvellCore/text/TextMatch.h"

int main()
{
    return 0;
}
