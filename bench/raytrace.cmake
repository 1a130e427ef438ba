# Ray tracing cost of a full 1920 x 1080 frame per output pixel, single pass and depth of field.
add_executable(frame_bench ${CMAKE_CURRENT_LIST_DIR}/FrameBench.cpp)
target_link_libraries(frame_bench PRIVATE orbivane_core orbivane_host benchmark::benchmark)
target_include_directories(frame_bench PRIVATE ${PROJECT_SOURCE_DIR})
orbivane_warnings(frame_bench)
