# SPDX-License-Identifier: MIT
quorvell_fuzz(geminiClient USES live)
