quorvell_fuzz(requestWords USES understanding)
