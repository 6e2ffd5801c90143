quorvell_fuzz(reminderPhrase USES reminders)
