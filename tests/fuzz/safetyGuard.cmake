# SPDX-License-Identifier: MIT
quorvell_fuzz(safetyGuard USES safety)
