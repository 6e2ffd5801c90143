quorvell_fuzz(noteFile USES notebook)
