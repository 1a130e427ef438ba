# The session: loads the module, reads its PiPL, and sends it commands the way After Effects does.
target_sources(orbivane_host PRIVATE
  ${CMAKE_CURRENT_LIST_DIR}/Host.cpp
  ${CMAKE_CURRENT_LIST_DIR}/Session.cpp
  ${CMAKE_CURRENT_LIST_DIR}/SmartRender.cpp
  ${CMAKE_CURRENT_LIST_DIR}/Pipl.cpp
  ${CMAKE_CURRENT_LIST_DIR}/ModuleLibrary.cpp)
