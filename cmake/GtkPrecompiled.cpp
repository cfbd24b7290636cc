// The object that the shared precompiled header of the gtk halves belongs to.
