# SPDX-License-Identifier: MIT
quorvell_fuzz(responsesRequest USES live)
