# SPDX-License-Identifier: MIT
quorvell_fuzz(noteJSON USES notebook)
