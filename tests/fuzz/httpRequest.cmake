quorvell_fuzz(httpRequest USES http)
