# The one home of compiler settings: language level, warnings, sanitizers.
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

# A QML module also compiles what Qt's tools generate, a hundred files that include the same headers:
# those are read once. That code isn't ours to mend, so the warnings are for the named sources only,
# which include what they use.
function(tessivo_screen_module name)
  set_source_files_properties(${ARGN} PROPERTIES
    COMPILE_OPTIONS "${tessivo_warning_options}" SKIP_PRECOMPILE_HEADERS ON)
  if(NOT tessivo_screen_options)
    target_precompile_headers(${name} PRIVATE <QtQml/qqmlprivate.h> <QtQml/qqmlcontext.h> <QtQml/qqmlengine.h>)
  endif()
endfunction()

if(TESSIVO_SANITISE)
  # GCC 12 takes what the sanitizers add for reads of uninitialised memory.
  add_compile_options(-fsanitize=${TESSIVO_SANITISE} -fno-omit-frame-pointer
    $<$<CXX_COMPILER_ID:GNU>:-Wno-maybe-uninitialized>)
  add_link_options(-fsanitize=${TESSIVO_SANITISE})
  if(TESSIVO_SANITISE MATCHES "undefined")
    add_compile_options(-fno-sanitize-recover=all)
  endif()
endif()
if(TESSIVO_FUZZ)
  # Coverage for every object; only the targets themselves get libFuzzer's main().
  add_compile_options(-fsanitize=fuzzer-no-link)
endif()
