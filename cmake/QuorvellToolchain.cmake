# SPDX-License-Identifier: MIT
# Compiler cache, linker and sanitizers, the same for every room.

find_program(CCACHE ccache)
if(CCACHE)
    # The two leniences that precompiled headers need; and paths from the source folder on, so that what was compiled in
    # one folder serves another.
    set(CMAKE_CXX_COMPILER_LAUNCHER ${CMAKE_COMMAND} -E env CCACHE_SLOPPINESS=pch_defines,time_macros
        "CCACHE_BASEDIR=${CMAKE_SOURCE_DIR}" CCACHE_NOHASHDIR=1 "${CCACHE}")
endif()

find_program(MOLD mold)
find_program(LLD ld.lld)
if(QUORVELL_SANITIZE STREQUAL "address" AND LLD)
    add_link_options(-fuse-ld=lld)
elseif(MOLD AND NOT QUORVELL_SANITIZE STREQUAL "address")
    add_link_options(-fuse-ld=mold)
endif()

# One setting for the whole program: mixing them between units would break the one-definition rule of the JSON type.
add_compile_definitions(JSON_NOEXCEPTION JSON_USE_IMPLICIT_CONVERSIONS=0 U_CHARSET_IS_UTF8=1 QT_NO_KEYWORDS
    QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII
    _REENTRANT) # As libpulse asks; everywhere, because precompiled headers are shared.

# GCC 12 takes short string appends in optimised code for overlapping copies; the finding is about its own library.
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
    add_compile_options($<$<CONFIG:Release>:-Wno-restrict>)
    # The tests of the shell are built with the optimised program, so this is where warnings end a build. Another compiler
    # may warn of more. What this one concludes from optimised code is often about its own library, and only told.
    set(CMAKE_COMPILE_WARNING_AS_ERROR ON)
    add_compile_options(-Wno-error=stringop-overflow -Wno-error=stringop-overread -Wno-error=array-bounds
        -Wno-error=maybe-uninitialized -Wno-error=dangling-pointer -Wno-error=free-nonheap-object)
endif()

# For the tests' own sources. Sanitizers see as much in code that is not optimised, which is compiled in a third of the time,
# and so does a test that is run once; nothing but a search for crashes asks which way it went.
set(QUORVELL_TEST_OPTIONS)
if(QUORVELL_SANITIZE STREQUAL "address")
    set(QUORVELL_TEST_OPTIONS -O0 -fno-sanitize=fuzzer-no-link)
elseif(QUORVELL_SANITIZE STREQUAL "thread" OR CMAKE_BUILD_TYPE STREQUAL "Release")
    set(QUORVELL_TEST_OPTIONS -O0)
endif()
if(QUORVELL_SANITIZE STREQUAL "address")
    # The fuzz targets' instrumentation is in everything, so that one build serves them and the tests.
    add_compile_options(
        -fsanitize=fuzzer-no-link,address,undefined -fno-sanitize-recover=undefined -fno-omit-frame-pointer -O1 -g1)
    add_link_options(-fsanitize=address,undefined)
elseif(QUORVELL_SANITIZE STREQUAL "thread")
    add_compile_options(-fsanitize=thread -O1 -g1)
    add_link_options(-fsanitize=thread)
elseif(CMAKE_BUILD_TYPE STREQUAL "Debug")
    add_compile_options(-g1)
endif()
