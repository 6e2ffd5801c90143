quorvell_fuzz(noteJSON USES notebook)
