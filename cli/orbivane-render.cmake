# orbivane-render: the command-line renderer. Everything but main() is a library so the tests
# can check the planning, parsing and writing pieces directly.
add_library(orbivane_cli STATIC
  ${CMAKE_CURRENT_LIST_DIR}/App.cpp
  ${CMAKE_CURRENT_LIST_DIR}/Options.cpp
  ${CMAKE_CURRENT_LIST_DIR}/JobPlan.cpp
  ${CMAKE_CURRENT_LIST_DIR}/ParamOverride.cpp
  ${CMAKE_CURRENT_LIST_DIR}/RenderSession.cpp
  ${CMAKE_CURRENT_LIST_DIR}/OutputWriter.cpp
  ${CMAKE_CURRENT_LIST_DIR}/FrameLoop.cpp
  ${CMAKE_CURRENT_LIST_DIR}/Interrupt.cpp
  ${CMAKE_CURRENT_LIST_DIR}/Progress.cpp
  ${CMAKE_CURRENT_LIST_DIR}/ParamListing.cpp
  ${CMAKE_CURRENT_LIST_DIR}/CallTable.cpp
  ${CMAKE_CURRENT_LIST_DIR}/ModuleLocator.cpp
  ${CMAKE_CURRENT_LIST_DIR}/DemoScene.cpp)
target_include_directories(orbivane_cli PUBLIC ${PROJECT_SOURCE_DIR})
# oneTBB runs the write of one frame beside the render of the next; only the CLI uses it.
target_link_libraries(orbivane_cli PUBLIC orbivane_host orbivane_host_api CLI11::CLI11 PRIVATE TBB::tbb)
target_compile_definitions(orbivane_cli PRIVATE
  ORBIVANE_BUILT_MODULE="$<TARGET_FILE:Orbivane>"
  ORBIVANE_VERSION="${PROJECT_VERSION}")
orbivane_warnings(orbivane_cli)

add_executable(orbivane-render ${CMAKE_CURRENT_LIST_DIR}/main.cpp)
target_link_libraries(orbivane-render PRIVATE orbivane_cli)
add_dependencies(orbivane-render Orbivane)
orbivane_warnings(orbivane-render)
