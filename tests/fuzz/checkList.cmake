# SPDX-License-Identifier: MIT
quorvell_fuzz(checkList USES notebook)
