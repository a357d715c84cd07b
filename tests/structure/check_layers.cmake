# Fails when a file under src/ includes a header from a folder above its own.
# The folders stand in layers, lowest first; each may include its own and
# those below it, never one above, so that the ground floor can be read,
# tested and reused without what is built on it.
#   cmake -DSRC=<source folder>/src -P check_layers.cmake
cmake_minimum_required(VERSION 3.20)
set(layers
  support       # bytes, text, property lists, descriptors: nothing of fonts or Mac files
  containers    # where a file's bytes live: forks, sidecars, mapped files
  files         # file and folder specifications over the containers
  tables        # the knowledge tables (foundries, classifications, styles)
  resourcefork  # resource maps and the FOND family record
  checksum      # identity checksums over forks and resources
  fontfiles     # font formats and the collection of a face's metadata
  selftest      # the built-in unit tests
  api           # the C interface
)
get_filename_component(SRC "${SRC}" ABSOLUTE)
file(GLOB_RECURSE sources RELATIVE ${SRC} ${SRC}/*.cpp ${SRC}/*.h)
if(NOT sources)
  message(FATAL_ERROR "no sources under ${SRC}")
endif()
set(found "")
foreach(source ${sources})
  string(REGEX MATCH "^[^/]+" folder "${source}")
  list(FIND layers ${folder} level)
  if(level EQUAL -1)
    string(APPEND found "\n  ${source}: folder ${folder} has no layer")
    continue()
  endif()
  file(STRINGS ${SRC}/${source} includes REGEX "^[ \t]*#[ \t]*include[ \t]*\"[a-z]+/")
  foreach(line IN LISTS includes)
    string(REGEX MATCH "\"([a-z]+)/" _ "${line}")
    set(target ${CMAKE_MATCH_1})
    if(target STREQUAL "typeprobe")
      continue()  # the public header, beneath everything
    endif()
    list(FIND layers ${target} targetLevel)
    if(targetLevel GREATER level)
      string(APPEND found "\n  ${source} (${folder}) includes ${target}: ${line}")
    endif()
  endforeach()
endforeach()
if(found)
  message(FATAL_ERROR "includes against the layers:${found}")
endif()
