# What the module calls: the callback blocks of PF_InData, the PICA and PF suites, the AEGP suites
# over the composition, layer-pixel checkouts, and the names of error codes.
target_sources(orbivane_host PRIVATE
  ${CMAKE_CURRENT_LIST_DIR}/UtilCallbacks.cpp
  ${CMAKE_CURRENT_LIST_DIR}/CoreSuites.cpp
  ${CMAKE_CURRENT_LIST_DIR}/SuiteRegistry.cpp
  ${CMAKE_CURRENT_LIST_DIR}/ErrorNames.cpp
  ${CMAKE_CURRENT_LIST_DIR}/AegpSuites.cpp
  ${CMAKE_CURRENT_LIST_DIR}/AegpSuitesLayer.cpp
  ${CMAKE_CURRENT_LIST_DIR}/AegpSuitesStream.cpp
  ${CMAKE_CURRENT_LIST_DIR}/AegpSuitesEffect.cpp
  ${CMAKE_CURRENT_LIST_DIR}/LayerPixels.cpp)
