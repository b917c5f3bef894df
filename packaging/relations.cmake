# SPDX-License-Identifier: MIT
# What the package needs of others, found out when it is made. The libraries of a module are not needed
# by the package: a machine that has no such thing as the module is for does without.
set(binaries ${CPACK_PACKAGE_DIRECTORY}/bin)
set(modules ${CPACK_PACKAGE_DIRECTORY}/lib/kiva)

# dpkg-shlibdeps will not work outside of a source package, so it gets an empty one.
set(work ${CPACK_PACKAGE_DIRECTORY}/relations)
file(WRITE ${work}/debian/control "Source: kiva\n\nPackage: kiva\nArchitecture: any\n")
file(GLOB programs ${binaries}/kiva ${binaries}/kiva-demo ${binaries}/kiva-demo-tools ${binaries}/kiva-tools
  ${binaries}/kiva-reset ${binaries}/kiva-name-servers ${modules}/pam_*.so)
execute_process(
  COMMAND dpkg-shlibdeps -O -dDepends ${programs}
    -dRecommends ${modules}/kiva-networkd.so ${modules}/kiva-smartcard.so
  WORKING_DIRECTORY ${work} OUTPUT_VARIABLE found ERROR_VARIABLE complaints RESULT_VARIABLE status)
if(status)
  message(FATAL_ERROR "${complaints}")
endif()
foreach(field Depends Recommends)
  string(REGEX MATCH "shlibs:${field}=([^\n]*)" line "${found}")
  set(libraries_${field} "${CMAKE_MATCH_1}")
endforeach()

set(CPACK_DEBIAN_PACKAGE_DEPENDS "${libraries_Depends}, systemd, libpam-modules, libpam-runtime, kbd, console-data, less, openssl, openssh-client")
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "${libraries_Recommends}, dbus, gdb-minimal | gdb, iputils-ping, ssl-cert")
set(CPACK_DEBIAN_PACKAGE_SUGGESTS "libpam-p11, libvirt-daemon-system, openssh-server, openvswitch-switch")
