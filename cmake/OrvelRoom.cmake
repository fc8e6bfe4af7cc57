# One library a room. Every room compiles with the same warnings and sees src/ as its include root.
include(cmake/StationConfiguration.cmake)

set(ORVEL_WARNINGS -Wall -Wextra -Wpedantic -Wconversion -Wshadow $<$<BOOL:${ORVEL_WERROR}>:-Werror>)

function(orvel_warnings target)
  target_compile_options(${target} PRIVATE ${ORVEL_WARNINGS})
endfunction()

# orvel_room(<name> SOURCES <files...> [LINK <libraries...>] [PRIVATE_LINK <libraries...>] [WITH_LAYOUTS])
# WITH_LAYOUTS: the build compiles layouts beside the sources; the warnings are for the sources alone.
function(orvel_room name)
  cmake_parse_arguments(ROOM "WITH_LAYOUTS" "" "SOURCES;LINK;PRIVATE_LINK" ${ARGN})
  add_library(${name} STATIC ${ROOM_SOURCES})
  target_include_directories(${name} PUBLIC ${PROJECT_SOURCE_DIR}/src)
  target_link_libraries(${name} PUBLIC ${ROOM_LINK} PRIVATE ${ROOM_PRIVATE_LINK})
  if(ROOM_WITH_LAYOUTS AND ROOM_SOURCES)
    set_property(SOURCE ${ROOM_SOURCES} APPEND PROPERTY COMPILE_OPTIONS ${ORVEL_WARNINGS})
  elseif(ROOM_SOURCES)
    orvel_warnings(${name})
  endif()
endfunction()

# orvel_qml_room(<name> URI <uri> [SOURCES ...] [QML ...] [RESOURCES ...] [USES ...] [LINK ...] [PRIVATE_LINK ...]):
# a room whose classes or layouts are visible to QML under <uri>; USES names the QML modules that its classes' base and
# property types come from, for qmllint. The shell calls qml_register_types_<uri>().
function(orvel_qml_room name)
  cmake_parse_arguments(ROOM "" "URI" "SOURCES;QML;RESOURCES;USES;LINK;PRIVATE_LINK" ${ARGN})
  set(with_layouts "")
  if(ROOM_QML)
    set(with_layouts WITH_LAYOUTS)
  endif()
  orvel_room(${name} ${with_layouts} SOURCES ${ROOM_SOURCES} LINK Qt6::Qml ${ROOM_LINK} PRIVATE_LINK ${ROOM_PRIVATE_LINK})
  string(REPLACE "." "/" folder ${ROOM_URI})
  set(cachegen NO_CACHEGEN)
  if(ORVEL_QML_CACHEGEN)
    set(cachegen "")
  endif()
  qt_add_qml_module(${name} URI ${ROOM_URI} VERSION 1.0 NO_PLUGIN ${cachegen}
    RESOURCE_PREFIX /qt/qml OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/qml/${folder}
    IMPORT_PATH ${PROJECT_BINARY_DIR}/qml DEPENDENCIES ${ROOM_USES}
    QML_FILES ${ROOM_QML} RESOURCES ${ROOM_RESOURCES})
  # The generated registration includes a room's headers by their bare names.
  target_include_directories(${name} PRIVATE ${CMAKE_CURRENT_SOURCE_DIR})
endfunction()

# orvel_test(<name> SOURCES <files...> LINK <libraries...> [TIMEOUT <seconds>] [THREADS]): one GoogleTest program, one
# ctest case for each of its tests. THREADS: for ThreadSanitizer to judge, built by the target "threaded_tests".
function(orvel_test name)
  cmake_parse_arguments(TEST "THREADS" "TIMEOUT" "SOURCES;LINK" ${ARGN})
  add_executable(${name} ${TEST_SOURCES})
  target_link_libraries(${name} PRIVATE ${TEST_LINK} orvel_test_support)
  orvel_warnings(${name})
  if(NOT TEST_TIMEOUT)
    set(TEST_TIMEOUT 60)
  endif()
  set(label all)
  if(TEST_THREADS)
    set(label threads)
    if(NOT TARGET threaded_tests)
      add_custom_target(threaded_tests)
    endif()
    add_dependencies(threaded_tests ${name})
  endif()
  include(GoogleTest)
  gtest_discover_tests(${name} DISCOVERY_TIMEOUT 60 PROPERTIES TIMEOUT ${TEST_TIMEOUT} LABELS ${label})
endfunction()
