// Holds nothing: what CMake hangs a set of precompiled headers on.
