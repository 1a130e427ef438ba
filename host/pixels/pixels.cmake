# Pixel building blocks: worlds, area sampling, iterate_generic's pool, images in memory.
target_sources(orbivane_host PRIVATE
  ${CMAKE_CURRENT_LIST_DIR}/PixelWorld.cpp
  ${CMAKE_CURRENT_LIST_DIR}/AreaSampler.cpp
  ${CMAKE_CURRENT_LIST_DIR}/SamplerCache.cpp
  ${CMAKE_CURRENT_LIST_DIR}/IterateGeneric.cpp
  ${CMAKE_CURRENT_LIST_DIR}/Image.cpp
  ${CMAKE_CURRENT_LIST_DIR}/GeneratedImages.cpp)
