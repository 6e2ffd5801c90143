# SPDX-License-Identifier: MIT
quorvell_fuzz(wavFile USES audio)
