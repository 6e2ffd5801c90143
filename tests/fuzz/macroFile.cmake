# SPDX-License-Identifier: MIT
quorvell_fuzz(macroFile USES automation)
