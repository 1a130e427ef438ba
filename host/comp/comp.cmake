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

# The scene reader, one file per section of the scene format, over shared field readers.
target_sources(orbivane_host PRIVATE
  ${CMAKE_CURRENT_LIST_DIR}/scene/SceneFields.cpp
  ${CMAKE_CURRENT_LIST_DIR}/scene/CompositionReader.cpp
  ${CMAKE_CURRENT_LIST_DIR}/scene/LayersReader.cpp
  ${CMAKE_CURRENT_LIST_DIR}/scene/SourceReader.cpp
  ${CMAKE_CURRENT_LIST_DIR}/scene/TransformReader.cpp
  ${CMAKE_CURRENT_LIST_DIR}/scene/CameraReader.cpp
  ${CMAKE_CURRENT_LIST_DIR}/scene/LightReader.cpp
  ${CMAKE_CURRENT_LIST_DIR}/scene/EffectReader.cpp
  ${CMAKE_CURRENT_LIST_DIR}/scene/RenderReader.cpp)
