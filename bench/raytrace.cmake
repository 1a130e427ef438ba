# Ray tracing cost of a full 1920 x 1080 frame per output pixel, single pass and depth of field.
add_executable(frame_bench ${CMAKE_CURRENT_LIST_DIR}/FrameBench.cpp)
target_link_libraries(frame_bench PRIVATE orbivane_core orbivane_host benchmark::benchmark)
target_include_directories(frame_bench PRIVATE ${PROJECT_SOURCE_DIR})
orbivane_warnings(frame_bench)

# One frame rendered once, for callgrind, with a checksum of the output pixels.
add_executable(frame_profile ${CMAKE_CURRENT_LIST_DIR}/FrameProfile.cpp)
target_link_libraries(frame_profile PRIVATE orbivane_core orbivane_host)
target_include_directories(frame_profile PRIVATE ${PROJECT_SOURCE_DIR})
orbivane_warnings(frame_profile)

# Frames of the pov-match scene in a row through the host session, 1 and 2 threads.
add_executable(sequence_bench ${CMAKE_CURRENT_LIST_DIR}/SequenceBench.cpp)
target_link_libraries(sequence_bench PRIVATE orbivane_host benchmark::benchmark)
target_include_directories(sequence_bench PRIVATE ${PROJECT_SOURCE_DIR})
target_compile_definitions(sequence_bench PRIVATE
  ORBIVANE_MODULE_PATH="$<TARGET_FILE:Orbivane>"
  ORBIVANE_BENCH_SCENE="${CMAKE_CURRENT_LIST_DIR}/pov-match/orbivane_pov.json")
add_dependencies(sequence_bench Orbivane)
orbivane_warnings(sequence_bench)
