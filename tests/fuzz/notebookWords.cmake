quorvell_fuzz(notebookWords USES notebook_store tools)
