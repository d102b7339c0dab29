# Included behind project(): lets the rest of the configuration take this system for one that is no Unix.
set(UNIX FALSE)
set(WIN32 TRUE)
