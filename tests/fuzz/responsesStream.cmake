# SPDX-License-Identifier: MIT
quorvell_fuzz(responsesStream USES live)
