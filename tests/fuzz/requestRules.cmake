# SPDX-License-Identifier: MIT
quorvell_fuzz(requestRules USES understanding_requests)
