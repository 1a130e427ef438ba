# The host session: module loading, commands, callbacks, params, handles, suites, faults.
target_sources(orbivane_host PRIVATE
  ${CMAKE_CURRENT_LIST_DIR}/FaultInjector.cpp
  ${CMAKE_CURRENT_LIST_DIR}/EntryGate.cpp
  ${CMAKE_CURRENT_LIST_DIR}/CallTally.cpp
  ${CMAKE_CURRENT_LIST_DIR}/RenderCallLog.cpp
  ${CMAKE_CURRENT_LIST_DIR}/ResourceCounters.cpp
  ${CMAKE_CURRENT_LIST_DIR}/SuiteRegistry.cpp
  ${CMAKE_CURRENT_LIST_DIR}/HandleHeap.cpp
  ${CMAKE_CURRENT_LIST_DIR}/ParamStore.cpp
  ${CMAKE_CURRENT_LIST_DIR}/Pipl.cpp
  ${CMAKE_CURRENT_LIST_DIR}/ModuleLibrary.cpp
  ${CMAKE_CURRENT_LIST_DIR}/ErrorNames.cpp
  ${CMAKE_CURRENT_LIST_DIR}/UtilCallbacks.cpp
  ${CMAKE_CURRENT_LIST_DIR}/CoreSuites.cpp
  ${CMAKE_CURRENT_LIST_DIR}/SmartRender.cpp
  ${CMAKE_CURRENT_LIST_DIR}/CallContext.cpp
  ${CMAKE_CURRENT_LIST_DIR}/LayerPixels.cpp
  ${CMAKE_CURRENT_LIST_DIR}/Host.cpp
  ${CMAKE_CURRENT_LIST_DIR}/ParamText.cpp
  ${CMAKE_CURRENT_LIST_DIR}/Session.cpp)
