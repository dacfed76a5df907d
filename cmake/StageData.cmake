# lokari_stage(NAME FROM folder TO folder FILES file...): copies data files into the staged
# installation; NAME is a target that the whole build includes. File names keep their folders.
function(lokari_stage name)
  cmake_parse_arguments(ARG "" "FROM;TO" "FILES" ${ARGN})
  set(staged)
  foreach(file IN LISTS ARG_FILES)
    add_custom_command(
      OUTPUT ${ARG_TO}/${file}
      COMMAND ${CMAKE_COMMAND} -E copy ${ARG_FROM}/${file} ${ARG_TO}/${file}
      DEPENDS ${ARG_FROM}/${file}
      VERBATIM)
    list(APPEND staged ${ARG_TO}/${file})
  endforeach()
  add_custom_target(${name} ALL DEPENDS ${staged})
endfunction()
