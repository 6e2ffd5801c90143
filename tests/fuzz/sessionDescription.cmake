quorvell_fuzz(sessionDescription USES live)
