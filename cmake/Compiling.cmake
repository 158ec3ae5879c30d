# Every target of ours is compiled with the same warnings, as errors, by both compilers.
add_library(TarvoCompiling INTERFACE)
target_compile_options(TarvoCompiling INTERFACE
    -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wsign-conversion -Wnon-virtual-dtor
    -Woverloaded-virtual -Wold-style-cast -Werror
    # Records are made by naming the fields that matter; the others have their defaults.
    -Wno-missing-field-initializers
    # What Platform/AnnotatedMutex.h says of locks; GCC does not know it.
    $<$<CXX_COMPILER_ID:Clang>:-Wthread-safety>)
target_include_directories(TarvoCompiling INTERFACE ${CMAKE_SOURCE_DIR})

set(TARVO_SANITIZE "" CACHE STRING "Value for -fsanitize, empty for none")
if(TARVO_SANITIZE)
    add_compile_options(-fsanitize=${TARVO_SANITIZE} -fno-omit-frame-pointer -fno-sanitize-recover=all)
    add_link_options(-fsanitize=${TARVO_SANITIZE})
endif()

find_program(CCACHE ccache)
if(CCACHE)
    set(CMAKE_CXX_COMPILER_LAUNCHER ${CMAKE_COMMAND} -E env CCACHE_SLOPPINESS=pch_defines,time_macros ${CCACHE})
endif()

# tarvo_headers(TARGET HEADER...): what takes longer to read than the target's files are to compile is read once. The
# cache of compiled files knows such a target by what is in the headers.
function(tarvo_headers target)
    if(ARGV1 STREQUAL REUSE_FROM)
        target_precompile_headers(${target} ${ARGN})
    else()
        target_precompile_headers(${target} PRIVATE ${ARGN})
    endif()
    target_compile_options(${target} PRIVATE
        $<$<CXX_COMPILER_ID:GNU>:-fpch-preprocess> "$<$<CXX_COMPILER_ID:Clang>:SHELL:-Xclang -fno-pch-timestamp>")
endfunction()

# tarvo_room(NAME SOURCES ... [USES ...]): a static library for one room of the house.
function(tarvo_room name)
    cmake_parse_arguments(ROOM "" "" "SOURCES;USES;LIBRARIES" ${ARGN})
    add_library(${name} STATIC ${ROOM_SOURCES})
    target_link_libraries(${name} PUBLIC TarvoCompiling ${ROOM_USES} PRIVATE ${ROOM_LIBRARIES})
    # With the checks of a sanitizer, optimizing takes half of a build; only what the tests run most is worth it.
    if(TARVO_SANITIZE AND name MATCHES "^(Platform|LumoCore)$")
        target_compile_options(${name} PRIVATE -O1)
    endif()
endfunction()
