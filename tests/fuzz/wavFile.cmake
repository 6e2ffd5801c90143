quorvell_fuzz(wavFile USES audio)
