# SPDX-License-Identifier: MIT
quorvell_fuzz(httpRequest USES http)
