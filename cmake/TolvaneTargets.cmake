# tolvane_add_library(NAME FOLDER SOURCES... LINKS ...)
# One static library per src/ folder; the include root is src/, so headers are included
# as "platform/Keychain.h", "storage/RealmDatabase.h" and so on.
function(tolvane_add_library name)
  cmake_parse_arguments(ARG "" "" "SOURCES;LINKS" ${ARGN})
  add_library(${name} STATIC ${ARG_SOURCES})
  target_include_directories(${name} PUBLIC ${PROJECT_SOURCE_DIR}/src)
  target_link_libraries(${name} PUBLIC ${ARG_LINKS})
  target_compile_options(${name} PRIVATE -Wall -Wextra -Wpedantic -Werror=return-type)
  target_compile_definitions(${name} PUBLIC QT_NO_KEYWORDS)
endfunction()

# tolvane_add_test(NAME LABEL unit|integration|ui [OWN_SESSION] SOURCES... LINKS...)
# One QtTest executable, registered with CTest under its label. OWN_SESSION runs it in a
# desktop session of its own, for tests that change the session itself (locking the keyring).
function(tolvane_add_test name)
  cmake_parse_arguments(ARG "OWN_SESSION" "LABEL;TIMEOUT" "SOURCES;LINKS" ${ARGN})
  add_executable(${name} ${ARG_SOURCES})
  target_link_libraries(${name} PRIVATE tolvane_test_support ${ARG_LINKS})
  target_compile_options(${name} PRIVATE -Wall -Wextra)
  if(ARG_OWN_SESSION)
    add_test(NAME ${name} COMMAND ${PROJECT_SOURCE_DIR}/scripts/with-desktop-session $<TARGET_FILE:${name}>)
  else()
    add_test(NAME ${name} COMMAND ${name})
  endif()
  if(NOT ARG_TIMEOUT)
    set(ARG_TIMEOUT 120)
  endif()
  set_tests_properties(${name} PROPERTIES LABELS ${ARG_LABEL} TIMEOUT ${ARG_TIMEOUT})
  if(TOLVANE_SANITIZE)
    # Leaks inside system libraries are suppressed by name (see the file); a test that needs its
    # own list sets LSAN_OPTIONS again after this. UBSan stops at the first finding with a stack.
    set_property(TEST ${name} APPEND PROPERTY ENVIRONMENT
      "LSAN_OPTIONS=suppressions=${PROJECT_SOURCE_DIR}/tests/sanitizers/lsan.supp"
      "UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1")
  endif()
  if(ARG_LABEL STREQUAL "ui")
    set_property(TEST ${name} APPEND PROPERTY ENVIRONMENT QT_QPA_PLATFORM=offscreen)
  endif()
endfunction()
