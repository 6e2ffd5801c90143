# SPDX-License-Identifier: MIT
quorvell_fuzz(selectorReply USES automation)
