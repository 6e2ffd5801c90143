# SPDX-License-Identifier: MIT
quorvell_fuzz(plannerReply USES automation)
