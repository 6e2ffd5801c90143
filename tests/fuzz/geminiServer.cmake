quorvell_fuzz(geminiServer USES live)
