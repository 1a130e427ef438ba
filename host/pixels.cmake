# Pixel building blocks: worlds, area sampling, generic iteration, images.
target_sources(orbivane_host PRIVATE
  ${CMAKE_CURRENT_LIST_DIR}/PixelWorld.cpp
  ${CMAKE_CURRENT_LIST_DIR}/AreaSampler.cpp
  ${CMAKE_CURRENT_LIST_DIR}/SamplerCache.cpp
  ${CMAKE_CURRENT_LIST_DIR}/IterateGeneric.cpp
  ${CMAKE_CURRENT_LIST_DIR}/Image.cpp
  ${CMAKE_CURRENT_LIST_DIR}/GeneratedImages.cpp
  ${CMAKE_CURRENT_LIST_DIR}/ImageIO.cpp
  ${CMAKE_CURRENT_LIST_DIR}/InputFiles.cpp)
