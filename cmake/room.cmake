# SPDX-License-Identifier: MIT
# A room is one folder and one static library: every source in the folder belongs to it, and its
# link line names the rooms that it may include.
function(kiva_room name)
  cmake_parse_arguments(ROOM "" "INCLUDE" "LINKS" ${ARGN})
  file(GLOB sources CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/*.cpp)
  if(NOT sources)
    add_library(${name} INTERFACE)
    return()
  endif()
  add_library(${name} STATIC ${sources})
  target_include_directories(${name} PUBLIC ${ROOM_INCLUDE})
  target_link_libraries(${name} PUBLIC ${ROOM_LINKS})
endfunction()
