# Composition model, layer transforms, expressions, scene files and the AEGP suites over them.
target_sources(orbivane_host PRIVATE
  ${CMAKE_CURRENT_LIST_DIR}/Composition.cpp
  ${CMAKE_CURRENT_LIST_DIR}/Transform.cpp
  ${CMAKE_CURRENT_LIST_DIR}/Expression.cpp
  ${CMAKE_CURRENT_LIST_DIR}/Scene.cpp
  ${CMAKE_CURRENT_LIST_DIR}/SceneJson.cpp
  ${CMAKE_CURRENT_LIST_DIR}/AegpSuites.cpp
  ${CMAKE_CURRENT_LIST_DIR}/AegpSuitesLayer.cpp
  ${CMAKE_CURRENT_LIST_DIR}/AegpSuitesStream.cpp
  ${CMAKE_CURRENT_LIST_DIR}/AegpSuitesEffect.cpp)
