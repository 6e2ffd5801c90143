quorvell_fuzz(geminiClient USES live)
