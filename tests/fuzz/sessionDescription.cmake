# SPDX-License-Identifier: MIT
quorvell_fuzz(sessionDescription USES live)
