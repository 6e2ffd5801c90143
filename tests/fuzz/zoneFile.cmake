quorvell_fuzz(zoneFile USES reminders)
