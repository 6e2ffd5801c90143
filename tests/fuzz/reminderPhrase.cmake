# SPDX-License-Identifier: MIT
quorvell_fuzz(reminderPhrase USES reminders)
