# The composition: layers, transforms, animation, expressions, the effect's parameters and the
# scene files that describe them.
target_sources(orbivane_host PRIVATE
  ${CMAKE_CURRENT_LIST_DIR}/Composition.cpp
  ${CMAKE_CURRENT_LIST_DIR}/Transform.cpp
  ${CMAKE_CURRENT_LIST_DIR}/Expression.cpp
  ${CMAKE_CURRENT_LIST_DIR}/Scene.cpp
  ${CMAKE_CURRENT_LIST_DIR}/SceneJson.cpp
  ${CMAKE_CURRENT_LIST_DIR}/ParamStore.cpp
  ${CMAKE_CURRENT_LIST_DIR}/ParamText.cpp)
