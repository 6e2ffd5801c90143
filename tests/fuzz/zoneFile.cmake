# SPDX-License-Identifier: MIT
quorvell_fuzz(zoneFile USES reminders)
