quorvell_fuzz(ics USES agenda)
