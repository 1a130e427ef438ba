# Cost of one area sample at small, medium and the largest radius (should not depend on it).
add_executable(area_sample_bench ${CMAKE_CURRENT_LIST_DIR}/AreaSampleBench.cpp)
target_link_libraries(area_sample_bench PRIVATE orbivane_host benchmark::benchmark)
orbivane_warnings(area_sample_bench)
