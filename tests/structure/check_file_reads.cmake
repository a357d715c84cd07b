# Fails when code under src/ opens or reads a file directly outside the
# places allowed below. A font's bytes must come through the fork resolver
# (MacForks) and the one mapped-file reader (FileBytes), so that the same
# font reads the same in every container and each fork is read once.
#   cmake -DSRC=<source folder>/src -P check_file_reads.cmake
cmake_minimum_required(VERSION 3.20)
set(allowed
  containers/FileBytes.cpp            # the one reader of file bytes
  containers/ExtendedAttributes.cpp   # attribute values
  support/FileDescriptor.cpp          # whole reads through a descriptor FileBytes opened
  support/ByteView.h                  # reads fields of bytes in memory
  support/SharedBytes.cpp             # maps what FileBytes opened
  support/ZeroedBuffer.cpp            # anonymous memory, no file
  support/XCFUtilsFiles.cpp           # the property-list tables, never a font
  files/StandardFolders.cpp           # the user's folder settings
  files/LxStreams.cpp                 # general streams, off the identification path
  files/LxStreams.h
  files/FileCopy.cpp                  # copies files whole
)
set(pattern "fopen\\(|ifstream|fstream|O_RDONLY|O_RDWR|mmap\\(|getxattr\\(|fread\\(|pread\\(|[^a-zA-Z_.>]read\\(")
file(GLOB_RECURSE sources RELATIVE ${SRC} ${SRC}/*.cpp ${SRC}/*.h)
set(found "")
foreach(source ${sources})
  if(source IN_LIST allowed)
    continue()
  endif()
  file(STRINGS ${SRC}/${source} lines REGEX "${pattern}")
  foreach(line IN LISTS lines)
    # Writing files (splitting a collection) is not reading them.
    if(line MATCHES "^[ \t]*//" OR line MATCHES "fopen\\(.*\"[wa]b?\"")
      continue()
    endif()
    string(APPEND found "\n  ${source}: ${line}")
  endforeach()
endforeach()
if(found)
  message(FATAL_ERROR "direct file reads outside the fork resolver:${found}")
endif()
