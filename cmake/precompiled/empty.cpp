// A library must have a source; this one is there for its precompiled header.
