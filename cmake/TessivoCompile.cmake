# The one home of compiler settings: language level, warnings, hardening, sanitizers.
set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/bin)

# The timecode decoder's arithmetic is defined in 32-bit steps: a fused multiply-add would give other
# results on processors that have one.
add_compile_options(-ffp-contract=off)

if(NOT CMAKE_BUILD_TYPE)
  set(CMAKE_BUILD_TYPE Release)
endif()

# Quoted includes are ours and name their folder: "model/Show.h".
include_directories(${PROJECT_SOURCE_DIR}/src)

set(tessivo_warning_options
  -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wsign-conversion -Wnon-virtual-dtor
  -Woverloaded-virtual -Wold-style-cast -Wcast-align -Wundef -Wformat=2 -Werror)

add_library(tessivo_warnings INTERFACE)
target_compile_options(tessivo_warnings INTERFACE ${tessivo_warning_options})

# Builds for others than programmers are compiled in little more than half the time by the functions that
# follow. In a programmer's, each file is compiled for itself, which also sees to it that it includes what
# it uses.

# What most files of a target include is read once, headers of the standard library always.
function(tessivo_read_once name)
  if(NOT CMAKE_BUILD_TYPE STREQUAL "Debug")
    target_precompile_headers(${name} PRIVATE
      <algorithm> <functional> <map> <memory> <optional> <string> <variant> <vector> ${ARGN})
  endif()
endfunction()

# Eight files of a target are compiled as one, which shares their headers and templates.
function(tessivo_compile_together name)
  if(NOT CMAKE_BUILD_TYPE STREQUAL "Debug")
    set_target_properties(${name} PROPERTIES UNITY_BUILD ON)
  endif()
endfunction()

# The same headers as another target, which is compiled alike.
function(tessivo_reads_as name other)
  if(NOT CMAKE_BUILD_TYPE STREQUAL "Debug")
    target_precompile_headers(${name} REUSE_FROM ${other})
  endif()
endfunction()

# A QML module also compiles what Qt's tools generate, a hundred files that include the same headers:
# those are compiled together in a programmer's build as well, where only the named sources stay apart.
#
# Bytecode is what the screens are compiled to: machine code of their expressions makes nothing quicker
# that was measured, takes a third of the build, and is another each time.
function(tessivo_screen_module name)
  target_compile_options(${name} PRIVATE ${tessivo_warning_options})
  set_target_properties(${name} PROPERTIES UNITY_BUILD ON UNITY_BUILD_BATCH_SIZE 12
    QT_QMLCACHEGEN_ARGUMENTS --only-bytecode)
  if(CMAKE_BUILD_TYPE STREQUAL "Debug")
    set_source_files_properties(${ARGN} PROPERTIES SKIP_UNITY_BUILD_INCLUSION ON)
  endif()
  if(name STREQUAL "TessivoStyle")
    tessivo_read_once(${name} <QGuiApplication> <QQmlEngine> <QQuickItem> <QTimer>)
  else()
    tessivo_reads_as(${name} TessivoStyle)
  endif()
endfunction()

# What outsiders send is read by this program: a fault in that is to end it, not to serve them.
# tests/platform/hardening.py holds the built programs against this; the sanitised look after themselves.
if(CMAKE_SYSTEM_NAME STREQUAL "Linux" AND NOT TESSIVO_SANITISE)
  include(CheckPIESupported)
  check_pie_supported()
  set(CMAKE_POSITION_INDEPENDENT_CODE ON)
  add_compile_options(-fstack-protector-strong -fstack-clash-protection
    $<$<CONFIG:Release>:-D_FORTIFY_SOURCE=2>)
  if(CMAKE_SYSTEM_PROCESSOR STREQUAL "x86_64")
    add_compile_options(-fcf-protection)
  endif()
  add_link_options(-Wl,-z,relro,-z,now,-z,noexecstack)
endif()

if(TESSIVO_SANITISE)
  add_compile_options(-fsanitize=${TESSIVO_SANITISE} -fno-omit-frame-pointer)
  if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    # GCC 12 takes what the sanitizers add for reads of uninitialised memory and, of strings in
    # precompiled headers, for copies beyond their end.
    add_compile_options(-Wno-maybe-uninitialized -Wno-array-bounds -Wno-stringop-overread
      -Wno-stringop-overflow)
  endif()
  add_link_options(-fsanitize=${TESSIVO_SANITISE})
  if(TESSIVO_SANITISE MATCHES "undefined")
    add_compile_options(-fno-sanitize-recover=all)
  endif()
endif()
if(TESSIVO_FUZZ)
  # Where a fuzzer has been, which costs the other tests nothing to speak of. Tracing comparisons as
  # well would make them take twice as long.
  add_compile_options(-fsanitize-coverage=inline-8bit-counters,pc-table)
endif()
