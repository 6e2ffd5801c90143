# SPDX-License-Identifier: MIT
quorvell_fuzz(liveEvent USES live)
