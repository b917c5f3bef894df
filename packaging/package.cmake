# SPDX-License-Identifier: MIT
# The Debian package itself. Debian wants manual pages and the change log compressed, the same way on
# every machine.
function(kiva_compressed source name destination)
  set(result ${CMAKE_CURRENT_BINARY_DIR}/compressed/${name}.gz)
  add_custom_command(OUTPUT ${result} DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/${source}
    COMMAND ${CMAKE_COMMAND} -E make_directory ${CMAKE_CURRENT_BINARY_DIR}/compressed
    COMMAND gzip -9nc ${CMAKE_CURRENT_SOURCE_DIR}/${source} >${result})
  set_property(GLOBAL APPEND PROPERTY KIVA_COMPRESSED ${result})
  install(FILES ${result} DESTINATION ${destination})
endfunction()

file(GLOB pages CONFIGURE_DEPENDS RELATIVE ${CMAKE_CURRENT_SOURCE_DIR} man/*.[0-9])
foreach(page IN LISTS pages)
  get_filename_component(name ${page} NAME)
  string(REGEX REPLACE ".*\\." "" section ${name})
  kiva_compressed(${page} ${name} share/man/man${section})
endforeach()
kiva_compressed(debian/changelog changelog share/doc/kiva)
get_property(compressed GLOBAL PROPERTY KIVA_COMPRESSED)
add_custom_target(kiva_documents ALL DEPENDS ${compressed})

install(FILES debian/copyright DESTINATION share/doc/kiva)
install(FILES debian/lintian-overrides DESTINATION share/lintian/overrides RENAME kiva)

list(TRANSFORM defaults PREPEND /etc/ OUTPUT_VARIABLE conffiles)
list(TRANSFORM scripts PREPEND /etc/)
string(REPLACE ";" "\n" conffiles "${conffiles};${scripts}")
file(CONFIGURE OUTPUT conffiles CONTENT "${conffiles}\n")
set(CPACK_DEBIAN_PACKAGE_CONTROL_EXTRA ${CMAKE_CURRENT_BINARY_DIR}/conffiles)
foreach(script postinst prerm postrm)
  list(APPEND CPACK_DEBIAN_PACKAGE_CONTROL_EXTRA ${CMAKE_CURRENT_SOURCE_DIR}/debian/${script})
endforeach()

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME kiva)
set(CPACK_PACKAGE_CONTACT "Kiva maintainers <maintainers@users.noreply.c-seed-d56b8a0b.example>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "text console of a hypervisor host")
set(CPACK_PACKAGE_DESCRIPTION
"Kiva is the one screen on a host's own terminal where an operator can see
how to reach the host and do what must work when nothing else does:
configure and test the management network, change the password, switch
lockdown, shells and keyboard, restart the management agents, read the
logs, reset the configuration, shut down and restart.
.
The package puts the console on the first virtual terminal, in place of
its login prompt, and brings the host's command-line tools that it uses.
kiva-demo is the same console on a sample host, and changes nothing.")
set(CPACK_INSTALL_PREFIX /usr)
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_SET_DESTDIR ON)
set(CPACK_STRIP_FILES ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION admin)
set(CPACK_PROJECT_CONFIG_FILE ${CMAKE_CURRENT_SOURCE_DIR}/relations.cmake)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
include(CPack)
