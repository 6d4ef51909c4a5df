# SPDX-FileCopyrightText: The Quillfen authors
# SPDX-License-Identifier: Apache-2.0
#
# The house rules of the build: one language level, one set of warnings, and one way to declare a floor.

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
set(CMAKE_AUTOMOC ON)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(THREADS_PREFER_PTHREAD_FLAG ON)

find_package(Threads REQUIRED)
find_package(Qt6 6.4 REQUIRED COMPONENTS Core Gui Widgets Svg)
find_package(QCoro6 REQUIRED COMPONENTS Core)
find_package(Boost 1.81 REQUIRED COMPONENTS json)
find_package(ICU REQUIRED COMPONENTS uc i18n)

find_program(CCACHE ccache)
if(CCACHE AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
  set(CMAKE_CXX_COMPILER_LAUNCHER ${CCACHE})
endif()

# Everything of ours compiles with these; libraries from outside come in as system headers and are left alone.
add_library(quillfen_rules INTERFACE)
target_compile_options(quillfen_rules INTERFACE -Wall -Wextra -Wpedantic -Wconversion -Wshadow -Werror)
target_compile_definitions(quillfen_rules INTERFACE
  QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_KEYWORDS BOOST_JSON_NO_LIB)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
  target_compile_options(quillfen_rules INTERFACE -fcoroutines)
elseif(CMAKE_CXX_COMPILER_ID MATCHES "Clang")
  # libstdc++ 12 offers <coroutine> to clang 14 only under this name of the feature-test macro.
  target_compile_definitions(quillfen_rules INTERFACE __cpp_impl_coroutine=201902L)
  target_compile_options(quillfen_rules INTERFACE -Wno-builtin-macro-redefined -Wno-reserved-macro-identifier)
endif()
if(NOT APPLE)
  # Every page of the program that its start touches is memory of its own: what nobody calls goes, and so do most of the
  # tables that the loader reads once.
  include(CheckLinkerFlag)
  check_linker_flag(CXX LINKER:-z,pack-relative-relocs QUILLFEN_PACKED_RELOCATIONS)
  target_compile_options(quillfen_rules INTERFACE $<$<CONFIG:Release>:-ffunction-sections>)
  target_link_options(quillfen_rules INTERFACE $<$<CONFIG:Release>:LINKER:--gc-sections>)
  if(QUILLFEN_PACKED_RELOCATIONS)
    target_link_options(quillfen_rules INTERFACE $<$<CONFIG:Release>:LINKER:-z,pack-relative-relocs>)
  endif()
endif()
if(QUILLFEN_SANITIZE)
  target_compile_options(quillfen_rules INTERFACE -fsanitize=${QUILLFEN_SANITIZE} -fno-omit-frame-pointer)
  target_link_options(quillfen_rules INTERFACE -fsanitize=${QUILLFEN_SANITIZE})
endif()

# quillfen_floor(<target> <folder> SOURCES … FLOORS …)
#
# A floor is a static library whose headers others reach as "<folder>/<file>.h". Its door is a link of that name in a
# folder of its own, so that a target sees the headers of the floors it is linked with and of no others: a wrong include
# does not compile.
function(quillfen_floor target folder)
  cmake_parse_arguments(PARSE_ARGV 2 floor "" "" "SOURCES;FLOORS")
  add_library(${target} STATIC ${floor_SOURCES})
  quillfen_door(${target} ${folder} ${CMAKE_CURRENT_SOURCE_DIR} PUBLIC)
  target_link_libraries(${target} PRIVATE quillfen_rules PUBLIC ${floor_FLOORS})
endfunction()

# Links <path> as <folder> into the include path of <target>.
function(quillfen_door target folder path visibility)
  set(door ${CMAKE_BINARY_DIR}/doors/${target})
  cmake_path(GET folder PARENT_PATH parent)
  file(MAKE_DIRECTORY ${door}/${parent})
  file(CREATE_LINK ${path} ${door}/${folder} SYMBOLIC)
  target_include_directories(${target} ${visibility} ${door})
endfunction()
