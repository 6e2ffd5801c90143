# SPDX-License-Identifier: MIT
quorvell_fuzz(noteFile USES notebook)
