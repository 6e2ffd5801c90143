# SPDX-License-Identifier: MIT
quorvell_fuzz(geminiServer USES live)
