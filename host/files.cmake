# Files written all or nothing, and the operating-system faults the tests inject there. POSIX
# only: the Windows build writes no files.
if(WIN32)
  return()
endif()
target_sources(orbivane_host PRIVATE
  ${CMAKE_CURRENT_LIST_DIR}/FileCommit.cpp
  ${CMAKE_CURRENT_LIST_DIR}/SystemFaults.cpp)
