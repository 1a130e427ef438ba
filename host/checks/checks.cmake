# Strictness: handles and every other resource counted, the call log, render-thread rules, and
# faults injected into host calls (and, on POSIX, into the operating system's calls).
target_sources(orbivane_host PRIVATE
  ${CMAKE_CURRENT_LIST_DIR}/HandleHeap.cpp
  ${CMAKE_CURRENT_LIST_DIR}/ResourceCounters.cpp
  ${CMAKE_CURRENT_LIST_DIR}/FaultInjector.cpp
  ${CMAKE_CURRENT_LIST_DIR}/EntryGate.cpp
  ${CMAKE_CURRENT_LIST_DIR}/CallTally.cpp
  ${CMAKE_CURRENT_LIST_DIR}/RenderCallLog.cpp
  ${CMAKE_CURRENT_LIST_DIR}/CallContext.cpp)
if(NOT WIN32)
  target_sources(orbivane_host PRIVATE ${CMAKE_CURRENT_LIST_DIR}/SystemFaults.cpp)
endif()
