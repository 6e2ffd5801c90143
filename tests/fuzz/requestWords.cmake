# SPDX-License-Identifier: MIT
quorvell_fuzz(requestWords USES understanding_requests)
