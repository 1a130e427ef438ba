# Pixel building blocks: worlds, area sampling, generic iteration, images.
target_sources(orbivane_host PRIVATE
  ${CMAKE_CURRENT_LIST_DIR}/PixelWorld.cpp
  ${CMAKE_CURRENT_LIST_DIR}/AreaSampler.cpp
  ${CMAKE_CURRENT_LIST_DIR}/SamplerCache.cpp
  ${CMAKE_CURRENT_LIST_DIR}/IterateGeneric.cpp
  ${CMAKE_CURRENT_LIST_DIR}/Image.cpp
  ${CMAKE_CURRENT_LIST_DIR}/GeneratedImages.cpp
  ${CMAKE_CURRENT_LIST_DIR}/ImageDump.cpp)
# Image files through OpenImageIO; pixel dumps only where it is missing (Windows).
if(WIN32)
  target_sources(orbivane_host PRIVATE ${CMAKE_CURRENT_LIST_DIR}/ImageIODump.cpp)
else()
  target_sources(orbivane_host PRIVATE ${CMAKE_CURRENT_LIST_DIR}/ImageIO.cpp)
endif()
