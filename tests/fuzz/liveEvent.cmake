quorvell_fuzz(liveEvent USES live)
