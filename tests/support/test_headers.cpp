// Nothing of its own: CMake precompiles headers only beside a source.
