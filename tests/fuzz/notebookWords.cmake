# SPDX-License-Identifier: MIT
quorvell_fuzz(notebookWords USES notebook_store)
