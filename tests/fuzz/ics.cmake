# SPDX-License-Identifier: MIT
quorvell_fuzz(ics USES agenda)
