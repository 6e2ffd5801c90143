# SPDX-License-Identifier: MIT
quorvell_fuzz(actionJudge USES automation)
