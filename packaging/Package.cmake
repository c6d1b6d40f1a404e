# Read at the end of the top directory (see CMakeLists.txt here), when every target is known.
include(GNUInstallDirs)
set(packaging_dir ${PROJECT_SOURCE_DIR}/packaging)
set(generated ${TOLVANE_PACKAGE_GENERATED})

set(TOLVANE_PACKAGE_COMPONENTS app)

# --- The server: package "tolvane-server", when this build has it ---
if(TARGET tolvane-server)
  list(APPEND TOLVANE_PACKAGE_COMPONENTS server)
  add_dependencies(package-files tolvane-server)
  # Relocations read-only before main (full RELRO), as Debian's own builds link.
  target_link_options(tolvane-server PRIVATE -Wl,-z,relro,-z,now)
  # A daemon an administrator starts through systemd: sbin, with its page in section 8.
  install(TARGETS tolvane-server RUNTIME DESTINATION ${CMAKE_INSTALL_SBINDIR} COMPONENT server)
  # Debian 12 keeps units in /lib (merged with /usr/lib on disk); lintian there expects it.
  install(FILES ${packaging_dir}/tolvane-server.service DESTINATION /lib/systemd/system COMPONENT server)
  install(FILES ${packaging_dir}/tolvane-server.conf DESTINATION /etc/tolvane-server
    PERMISSIONS OWNER_READ OWNER_WRITE GROUP_READ COMPONENT server)
  if(EXISTS ${PROJECT_SOURCE_DIR}/server/migrations)
    # For reading only: the program carries its own copy of each migration.
    install(DIRECTORY ${PROJECT_SOURCE_DIR}/server/migrations/
      DESTINATION ${CMAKE_INSTALL_DATADIR}/tolvane-server/migrations COMPONENT server
      FILE_PERMISSIONS OWNER_READ OWNER_WRITE GROUP_READ WORLD_READ
      FILES_MATCHING PATTERN "*.sql")
  endif()
  install(FILES ${generated}/tolvane-server.8.gz DESTINATION ${CMAKE_INSTALL_MANDIR}/man8 COMPONENT server)
  install(FILES ${packaging_dir}/copyright ${generated}/changelog.gz
    DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/tolvane-server COMPONENT server)
  install(FILES ${packaging_dir}/tolvane-server.lintian-overrides
    DESTINATION ${CMAKE_INSTALL_DATADIR}/lintian/overrides RENAME tolvane-server COMPONENT server)
  # dpkg keeps an administrator's changes to these on upgrade, and removes them only on purge.
  file(WRITE ${generated}/server-control/conffiles "/etc/tolvane-server/tolvane-server.conf\n")
  foreach(script postinst prerm postrm)
    configure_file(${packaging_dir}/server-scripts/${script} ${generated}/server-control/${script} COPYONLY)
  endforeach()
endif()

# --- The package tests: label "package", apart from the suite (they install into the machine) ---
if(TOLVANE_BUILD_TESTS)
  if(TARGET tolvane-server)
    set(server_built yes)
  else()
    set(server_built no)
  endif()
  set(check ${PROJECT_SOURCE_DIR}/tests/package/check-package.sh)
  add_test(NAME tst_package_build COMMAND ${check} build ${CMAKE_BINARY_DIR} ${PROJECT_VERSION} ${server_built})
  set_tests_properties(tst_package_build PROPERTIES LABELS package TIMEOUT 900
    FIXTURES_SETUP tolvane_packages)
  foreach(step app server)
    add_test(NAME tst_package_${step} COMMAND ${check} ${step} ${CMAKE_BINARY_DIR} ${PROJECT_VERSION} ${server_built})
    # One dpkg at a time; 77 is a skip (the server not built, or the package already installed).
    set_tests_properties(tst_package_${step} PROPERTIES LABELS package TIMEOUT 900
      FIXTURES_REQUIRED tolvane_packages RESOURCE_LOCK dpkg SKIP_RETURN_CODE 77)
  endforeach()
endif()

# --- CPack ---
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME tolvane)
set(CPACK_PACKAGE_VENDOR Quorvel)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_CONTACT "${TOLVANE_PACKAGE_MAINTAINER}")
set(CPACK_PACKAGE_DIRECTORY ${CMAKE_BINARY_DIR}/packages)
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_COMPONENTS_ALL ${TOLVANE_PACKAGE_COMPONENTS})
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_MAINTAINER "${TOLVANE_PACKAGE_MAINTAINER}")
set(CPACK_DEBIAN_PACKAGE_HOMEPAGE "${TOLVANE_WEBSITE_URL}")
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
# Dependencies from the libraries the binaries link, as dpkg-shlibdeps finds them: no hand-kept
# list to drift from the build.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# Binaries stripped; their debug symbols go to <package>-dbgsym.
set(CPACK_DEBIAN_DEBUGINFO_PACKAGE ON)
# Maintainer scripts and control files mode 0755/0644 whatever the checkout's umask.
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)

set(CPACK_DEBIAN_APP_PACKAGE_NAME tolvane)
set(CPACK_DEBIAN_APP_PACKAGE_SECTION utils)
set(CPACK_COMPONENT_APP_DESCRIPTION "daily planner: schedule, projects and a logbook
Tolvane gathers the day's calendar events on an hour timeline with alarms
that ring or speak, projects with their task lists and an Eisenhower matrix,
and a logbook per project and day that is saved as you type.

A local account keeps everything in encrypted files with the keys in the
desktop keyring; a Google account keeps it on a Tolvane server.")
# What the program uses at run time without linking it: the calendar store, a Secret Service for
# the database keys, espeak-ng for spoken alarms, the freedesktop sounds and GStreamer's Ogg
# Vorbis decoder and audio output for ringing ones. Each missing one costs one feature, not the
# program, hence Recommends.
set(CPACK_DEBIAN_APP_PACKAGE_RECOMMENDS
  "evolution-data-server, gnome-keyring | org.freedesktop.secrets, espeak-ng, sound-theme-freedesktop, gstreamer1.0-plugins-base, gstreamer1.0-plugins-good")

set(CPACK_DEBIAN_SERVER_PACKAGE_NAME tolvane-server)
set(CPACK_DEBIAN_SERVER_PACKAGE_SECTION net)
set(CPACK_COMPONENT_SERVER_DESCRIPTION "server for Tolvane's Google accounts
The REST service that keeps the projects, task lists, tasks and logbook of
Tolvane users signed in with Google, in a PostgreSQL database. It runs as a
systemd service under its own system user.

The database (PostgreSQL 15 or later) is not created by the package; see
tolvane-server(8).")
# adduser for the system user the maintainer scripts create.
set(CPACK_DEBIAN_SERVER_PACKAGE_DEPENDS "adduser")
set(CPACK_DEBIAN_SERVER_PACKAGE_SUGGESTS "postgresql (>= 15)")
set(CPACK_DEBIAN_SERVER_PACKAGE_CONTROL_EXTRA
  "${generated}/server-control/conffiles;${generated}/server-control/postinst;${generated}/server-control/prerm;${generated}/server-control/postrm")

include(CPack)
