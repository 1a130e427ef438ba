# Files on disk: input checks and limits, pixel dumps, PNG through libpng and every other image
# format through OpenImageIO, and outputs written all or nothing (POSIX only: the Windows build
# writes no files).
target_sources(orbivane_host PRIVATE
  ${CMAKE_CURRENT_LIST_DIR}/ImageDump.cpp
  ${CMAKE_CURRENT_LIST_DIR}/InputFiles.cpp)
if(WIN32)
  # No OpenImageIO for mingw: the Windows build reads the pixel dumps the Linux build decodes.
  target_sources(orbivane_host PRIVATE ${CMAKE_CURRENT_LIST_DIR}/ImageIODump.cpp)
  return()
endif()

target_sources(orbivane_host PRIVATE
  ${CMAKE_CURRENT_LIST_DIR}/FileCommit.cpp
  ${CMAKE_CURRENT_LIST_DIR}/PngFiles.cpp
  ${CMAKE_CURRENT_LIST_DIR}/ImageIOLoader.cpp)
set_property(SOURCE ${CMAKE_CURRENT_LIST_DIR}/ImageIOLoader.cpp APPEND PROPERTY COMPILE_DEFINITIONS
             ORBIVANE_IMAGEIO_MODULE="$<TARGET_FILE:orbivane_imageio>")

# OpenImageIO's readers and writers, opened by ImageIOLoader.cpp on first use. Bound to its own
# definitions (-Bsymbolic), so its loadImage and saveImage never resolve to the host's.
add_library(orbivane_imageio MODULE ${CMAKE_CURRENT_LIST_DIR}/ImageIO.cpp ${CMAKE_CURRENT_LIST_DIR}/ImageIOPlugin.cpp)
set_target_properties(orbivane_imageio PROPERTIES PREFIX "" LIBRARY_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR})
target_include_directories(orbivane_imageio PRIVATE ${PROJECT_SOURCE_DIR})
target_link_libraries(orbivane_imageio PRIVATE orbivane_host_api PkgConfig::OIIO)
target_link_options(orbivane_imageio PRIVATE -Wl,--no-undefined -Wl,-Bsymbolic)
orbivane_warnings(orbivane_imageio)
add_dependencies(orbivane_host orbivane_imageio)
