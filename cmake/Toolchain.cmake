# Warnings, sanitizers and the compiler cache: everything every target shares.

add_library(lokari_options INTERFACE)
target_compile_options(lokari_options INTERFACE
  -Wall -Wextra -Wpedantic -Werror -Wshadow -Wconversion -Wno-sign-conversion
  -Wnon-virtual-dtor -Woverloaded-virtual -Wimplicit-fallthrough -Wold-style-cast)
target_compile_definitions(lokari_options INTERFACE
  QT_NO_FOREACH QT_NO_CAST_TO_ASCII QT_NO_URL_CAST_FROM_STRING
  QT_NO_NARROWING_CONVERSIONS_IN_CONNECT QT_MESSAGELOGCONTEXT)

find_program(LOKARI_CCACHE ccache)
if(LOKARI_CCACHE)
  # hash_dir is off so that build folders of several presets share what they can.
  set(CMAKE_CXX_COMPILER_LAUNCHER
    ${CMAKE_COMMAND} -E env CCACHE_NOHASHDIR=1 CCACHE_BASEDIR=${CMAKE_SOURCE_DIR}
    CCACHE_SLOPPINESS=time_macros,pch_defines ${LOKARI_CCACHE})
endif()
