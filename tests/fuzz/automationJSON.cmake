# SPDX-License-Identifier: MIT
quorvell_fuzz(automationJSON USES automation)
