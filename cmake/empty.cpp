// Keeps a layer library valid while it has no source of its own.
