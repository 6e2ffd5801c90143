# SPDX-License-Identifier: MIT
quorvell_fuzz(webSocket USES live)
