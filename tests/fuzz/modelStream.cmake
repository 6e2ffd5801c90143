# SPDX-License-Identifier: MIT
quorvell_fuzz(modelStream USES local_model)
