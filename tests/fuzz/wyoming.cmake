# SPDX-License-Identifier: MIT
quorvell_fuzz(wyoming USES wyoming)
