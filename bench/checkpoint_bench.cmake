# Checkpoint benchmarks: the state hash of a synthetic board beside its snapshot load, and the
# checkpoint folders' pruning and readers over 10,000 files (bench/checkpoints.sh runs them).
add_executable(checkpoint_benchmark ${CMAKE_CURRENT_LIST_DIR}/checkpoint_benchmark.cc)
target_link_libraries(checkpoint_benchmark PRIVATE zorvik_workspace_store benchmark::benchmark)
