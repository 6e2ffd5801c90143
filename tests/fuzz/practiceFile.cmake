# SPDX-License-Identifier: MIT
quorvell_fuzz(practiceFile USES practice)
