quorvell_fuzz(responsesRequest USES live)
