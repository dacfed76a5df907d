# The rooms of the program and the arrows allowed between them.
#
# A room is a library `lokari_<room>`, its windows are `lokari_<room>_ui`. The lists below are
# the whole of the dependency picture in docs/architecture.md; a call that asks for more stops
# the configuration, and tests/architecture checks the include lines against the same lists.

set(LOKARI_ROOMS base link db decoder cab station reports app cli)
set(LOKARI_ARROWS_base "")
set(LOKARI_ARROWS_link base)
set(LOKARI_ARROWS_db base)
set(LOKARI_ARROWS_decoder base link db)
set(LOKARI_ARROWS_cab base link db decoder)
set(LOKARI_ARROWS_station base link db decoder)
set(LOKARI_ARROWS_reports base link db decoder)
set(LOKARI_ARROWS_app base link db decoder cab station reports)
set(LOKARI_ARROWS_cli base link db decoder cab station reports app)
set(LOKARI_ARROWS_sim base)

# Builds that run tests take the headers that nearly every source includes ready made: it halves
# their time. clang-tidy reads the sources without, so that each names what it needs, and so does the
# delivered build.
option(LOKARI_PRECOMPILE "Precompile the common headers" OFF)
set(LOKARI_COMMON_HEADERS
  <QByteArray> <QDir> <QFile> <QHash> <QList> <QObject> <QString> <QStringList> <QVariant>
  <algorithm> <array> <deque> <functional> <map> <memory> <optional> <stdexcept> <vector>)
set(LOKARI_WINDOW_HEADERS
  <QApplication> <QComboBox> <QDialog> <QGridLayout> <QLabel> <QLineEdit> <QPushButton>
  <QRadioButton> <QVBoxLayout> <QWidget>)

# _lokari_precompile(TARGET header...)
function(_lokari_precompile target)
  if(LOKARI_PRECOMPILE)
    target_precompile_headers(${target} PRIVATE ${ARGN})
  endif()
endfunction()

function(_lokari_check_arrows from allowed)
  foreach(to IN LISTS ARGN)
    if(NOT to IN_LIST allowed)
      message(FATAL_ERROR "Room '${from}' may not use room '${to}'")
    endif()
  endforeach()
endfunction()

# lokari_room(NAME USES room... QT module... SOURCES file...)
function(lokari_room name)
  cmake_parse_arguments(ARG "" "" "USES;QT;SOURCES;LIBS" ${ARGN})
  _lokari_check_arrows(${name} "${LOKARI_ARROWS_${name}}" ${ARG_USES})
  if("Widgets" IN_LIST ARG_QT OR "PrintSupport" IN_LIST ARG_QT)
    message(FATAL_ERROR "Room '${name}' links Qt Widgets: windows belong into its ui/")
  endif()
  add_library(lokari_${name} STATIC ${ARG_SOURCES})
  _lokari_precompile(lokari_${name} ${LOKARI_COMMON_HEADERS})
  target_include_directories(lokari_${name} PUBLIC ${CMAKE_SOURCE_DIR}/src)
  target_link_libraries(lokari_${name} PUBLIC lokari_options ${ARG_LIBS})
  foreach(use IN LISTS ARG_USES)
    target_link_libraries(lokari_${name} PUBLIC lokari_${use})
  endforeach()
  foreach(module IN LISTS ARG_QT)
    target_link_libraries(lokari_${name} PUBLIC Qt6::${module})
  endforeach()
endfunction()

# lokari_room_ui(NAME USES room... [UI room...] [QT module...] SOURCES file...)
# USES are rooms, UI are other rooms' windows that these windows embed or open.
function(lokari_room_ui name)
  cmake_parse_arguments(ARG "" "" "USES;UI;QT;SOURCES" ${ARGN})
  _lokari_check_arrows(${name}/ui "${name};${LOKARI_ARROWS_${name}}" ${ARG_USES})
  _lokari_check_arrows(${name}/ui "${LOKARI_ARROWS_${name}}" ${ARG_UI})
  add_library(lokari_${name}_ui STATIC ${ARG_SOURCES})
  _lokari_precompile(lokari_${name}_ui ${LOKARI_COMMON_HEADERS} ${LOKARI_WINDOW_HEADERS})
  target_link_libraries(lokari_${name}_ui PUBLIC lokari_options lokari_${name} Qt6::Widgets)
  foreach(use IN LISTS ARG_USES)
    target_link_libraries(lokari_${name}_ui PUBLIC lokari_${use})
  endforeach()
  foreach(use IN LISTS ARG_UI)
    target_link_libraries(lokari_${name}_ui PUBLIC lokari_${use}_ui)
  endforeach()
  foreach(module IN LISTS ARG_QT)
    target_link_libraries(lokari_${name}_ui PUBLIC Qt6::${module})
  endforeach()
endfunction()

# lokari_tests(NAME LIBS target... SOURCES file... [OWN_PROCESSES] [SHARED_PORTS filter]): one test
# program. Each of its tests is a CTest test of its own, or, with LOKARI_WHOLE_PROGRAMS, the program
# is one: the sanitizers need longer to start a process than most tests run. Those that mostly wait
# keep their OWN_PROCESSES, side by side. Windows are drawn by the offscreen platform. Tests that the
# filter names use network ports of fixed numbers and run one at a time.
option(LOKARI_WHOLE_PROGRAMS "Run each test program in one process" OFF)

function(lokari_tests name)
  cmake_parse_arguments(ARG "OWN_PROCESSES" "SHARED_PORTS" "LIBS;SOURCES" ${ARGN})
  add_executable(${name} ${ARG_SOURCES})
  _lokari_precompile(${name} ${LOKARI_COMMON_HEADERS} <gtest/gtest.h>)
  target_link_libraries(${name} PRIVATE ${ARG_LIBS} lokari_test_support)
  if(LOKARI_WHOLE_PROGRAMS AND NOT ARG_OWN_PROCESSES)
    add_test(NAME ${name} COMMAND ${name} --gtest_brief=1)
    set_tests_properties(${name} PROPERTIES TIMEOUT 600
      ENVIRONMENT "QT_QPA_PLATFORM=offscreen"
      ENVIRONMENT_MODIFICATION "LC_ALL=set:C.UTF-8")
    return()
  endif()
  # One variable each: a list in a property would come apart on its way to the test.
  set(properties TIMEOUT 120
    ENVIRONMENT "QT_QPA_PLATFORM=offscreen"
    ENVIRONMENT_MODIFICATION "LC_ALL=set:C.UTF-8")
  if(ARG_SHARED_PORTS)
    gtest_discover_tests(${name}
      TEST_FILTER ${ARG_SHARED_PORTS}
      DISCOVERY_MODE PRE_TEST
      PROPERTIES ${properties} RESOURCE_LOCK network_ports
      DISCOVERY_TIMEOUT 60)
    set(filter TEST_FILTER -${ARG_SHARED_PORTS})
  endif()
  gtest_discover_tests(${name}
    ${filter}
    DISCOVERY_MODE PRE_TEST
    PROPERTIES ${properties}
    DISCOVERY_TIMEOUT 60)
endfunction()
