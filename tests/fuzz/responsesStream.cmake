quorvell_fuzz(responsesStream USES live)
