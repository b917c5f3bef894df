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

# A console is started anew after every resize, so it starts fast: with the C++ runtime inside, the
# loader has a third less to relocate before the first screen.
function(kiva_program name)
  if(NOT KIVA_SANITIZE)
    target_link_options(${name} PRIVATE -static-libstdc++ -static-libgcc)
  endif()
endfunction()
