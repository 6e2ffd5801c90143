# SPDX-License-Identifier: MIT
# One target per room. A room sees only the rooms it names: its include root is a generated folder that holds one
# symbolic link, to its own source folder, so an include that is not allowed finds no file and does not build.

set(QUORVELL_WARNINGS -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual)
set(QUORVELL_CORE_WARNINGS -Wconversion -Wsign-conversion)

file(WRITE "${CMAKE_BINARY_DIR}/rooms.txt" "")

# Preludes: headers of libraries that most units of a kind of room include, compiled once. They hold no header of ours,
# so no wall is lower for them; house.headers compiles our headers without them. A unit still includes what it uses.
# Whoever shares one must be compiled alike, hence one for each set of flags. Qt asks for -fPIC.
set(QUORVELL_PRELUDE_STANDARD <algorithm> <array> <charconv> <chrono> <cmath> <cstdint> <deque> <functional> <map>
    <memory> <mutex> <optional> <set> <span> <string> <string_view> <utility> <variant> <vector>
    <nlohmann/json.hpp>)
function(quorvell_prelude name)
    cmake_parse_arguments(PRELUDE "" "" "HEADERS;LIBRARIES;OPTIONS" ${ARGN})
    set(target prelude_${name})
    add_library(${target} OBJECT "${CMAKE_SOURCE_DIR}/cmake/prelude.cpp")
    target_compile_options(${target} PRIVATE ${QUORVELL_WARNINGS} ${PRELUDE_OPTIONS} -fPIC)
    target_link_libraries(${target} PRIVATE nlohmann_json::nlohmann_json ${PRELUDE_LIBRARIES})
    target_precompile_headers(${target} PRIVATE ${QUORVELL_PRELUDE_STANDARD} ${PRELUDE_HEADERS})
endfunction()
function(quorvell_use_prelude target name)
    target_compile_options(${target} PRIVATE -fPIC)
    if(name STREQUAL "qt") # Those of a module that a room does not link tell it nothing.
        target_compile_definitions(${target} PRIVATE QT_NETWORK_LIB QT_DBUS_LIB)
    endif()
    target_precompile_headers(${target} REUSE_FROM prelude_${name})
endfunction()

# The sources of one folder are compiled together, at most eight at a time: most of a unit's time goes into the same headers
# and templates. So two sources of a folder must not give different things one name, not even in unnamed namespaces.
function(quorvell_compile_together target)
    if(NOT QUORVELL_TOGETHER)
        return()
    endif()
    set_target_properties(${target} PROPERTIES UNITY_BUILD ON UNITY_BUILD_MODE GROUP)
    # What one source keeps to itself is not hidden by a name in the next, though the compiler sees both.
    target_compile_options(${target} PRIVATE
        -Wno-shadow $<$<CXX_COMPILER_ID:GNU>:-Wno-subobject-linkage> $<$<CXX_COMPILER_ID:GNU>:-Wshadow=local>)
    get_target_property(sources ${target} SOURCES)
    foreach(source IN LISTS sources)
        if(source MATCHES "\\.cpp$")
            get_filename_component(folder "${source}" DIRECTORY)
            file(RELATIVE_PATH folder "${CMAKE_SOURCE_DIR}" "${folder}")
            string(MAKE_C_IDENTIFIER "${folder}" folder)
            math(EXPR part "0${count_${folder}} / 8")
            math(EXPR count_${folder} "0${count_${folder}} + 1")
            set_source_files_properties("${source}" PROPERTIES UNITY_GROUP "${folder}_${part}")
        endif()
    endforeach()
endfunction()

# quorvell_room(<name> <folder> [CORE] [OPTIMISED] [PRELUDE <name>] [USES <room>...] [LIBRARIES <lib>...]
#               [PUBLIC_LIBRARIES <lib>...])
#   CORE              no exceptions, stricter warnings
#   OPTIMISED         compiled for speed in a release. The other rooms wait for people, disks and wires: -O1 compiles
#                     them in two thirds of the time, which whoever builds the program waits for
#   PRELUDE           core (where CORE says so), shell without it
#   USES              rooms whose headers this one may include
#   LIBRARIES         libraries only its sources see; PUBLIC_LIBRARIES those that its headers expose
function(quorvell_room name folder)
    cmake_parse_arguments(ROOM "CORE;OPTIMISED" "PRELUDE" "USES;LIBRARIES;PUBLIC_LIBRARIES" ${ARGN})
    set(source "${CMAKE_SOURCE_DIR}/${folder}")
    set(root "${CMAKE_BINARY_DIR}/rooms/${name}")
    get_filename_component(parent "${root}/${folder}" DIRECTORY)
    file(MAKE_DIRECTORY "${parent}")
    file(CREATE_LINK "${source}" "${root}/${folder}" SYMBOLIC)

    file(GLOB_RECURSE sources CONFIGURE_DEPENDS "${source}/*.cpp")
    list(FILTER sources EXCLUDE REGEX "/main\\.cpp$|/tools?/generate[^/]*\\.cpp$")
    file(GLOB_RECURSE headers RELATIVE "${source}" CONFIGURE_DEPENDS "${source}/*.h")
    # A header that its own source includes first is proven to stand alone by that; scripts/check-headers sees to it
    # that it does come first. Only the others are compiled by themselves.
    set(alone)
    foreach(header IN LISTS headers)
        string(REGEX REPLACE "\\.h$" ".cpp" companion "${source}/${header}")
        if(NOT EXISTS "${companion}")
            list(APPEND alone "${root}/${folder}/${header}")
        endif()
    endforeach()
    list(TRANSFORM headers PREPEND "${root}/${folder}/")

    set(target quorvell_${name})
    set(links)
    foreach(used IN LISTS ROOM_USES)
        list(APPEND links quorvell_${used})
    endforeach()
    if(sources)
        add_library(${target} STATIC ${sources})
        if(QUORVELL_SANITIZE) # Only what a test needs is compiled once more.
            set_target_properties(${target} PROPERTIES EXCLUDE_FROM_ALL ON)
        endif()
        target_sources(${target} PUBLIC FILE_SET HEADERS BASE_DIRS "${root}" FILES ${headers}
            PUBLIC FILE_SET alone TYPE HEADERS BASE_DIRS "${root}" FILES ${alone})
        target_include_directories(${target} PUBLIC "${root}")
        target_link_libraries(${target} PUBLIC ${links} ${ROOM_PUBLIC_LIBRARIES} PRIVATE ${ROOM_LIBRARIES})
        target_compile_options(${target} PRIVATE ${QUORVELL_WARNINGS})
        if(NOT ROOM_OPTIMISED)
            target_compile_options(${target} PRIVATE $<$<CONFIG:Release>:-O1>)
        endif()
        if(ROOM_CORE)
            target_compile_options(${target} PRIVATE ${QUORVELL_CORE_WARNINGS} -fno-exceptions)
            set(ROOM_PRELUDE core)
        elseif(NOT ROOM_PRELUDE)
            set(ROOM_PRELUDE shell)
        endif()
        quorvell_use_prelude(${target} ${ROOM_PRELUDE})
        quorvell_compile_together(${target})
        set_target_properties(${target} PROPERTIES VERIFY_INTERFACE_HEADER_SETS ON INTERFACE_HEADER_SETS_TO_VERIFY alone)
    else()
        add_library(${target} INTERFACE)
        target_sources(${target} INTERFACE FILE_SET HEADERS BASE_DIRS "${root}" FILES ${headers})
        target_include_directories(${target} INTERFACE "${root}")
        target_link_libraries(${target} INTERFACE ${links} ${ROOM_PUBLIC_LIBRARIES})
    endif()
    set_property(TARGET ${target} PROPERTY QUORVELL_FOLDER "${folder}")

    # What scripts/check-layers reads: the room, its folder, the folders it may include.
    set(doors)
    foreach(used IN LISTS links)
        get_target_property(door ${used} QUORVELL_FOLDER)
        string(APPEND doors " ${door}")
    endforeach()
    file(APPEND "${CMAKE_BINARY_DIR}/rooms.txt" "${name} ${folder}${doors}\n")
endfunction()

# quorvell_test(<room> [<further library>...]): one executable of tests/<folder of the room>, linking only that room.
# quorvell_test(<name> FOLDER <folder> <library>...): of tests/<folder>, for what several rooms do together.
function(quorvell_test room)
    if(NOT QUORVELL_TESTS)
        return()
    endif()
    if(QUORVELL_TESTS STREQUAL "SHELL" AND room IN_LIST QUORVELL_SANITIZED_ROOMS)
        return()
    endif()
    if(QUORVELL_SANITIZE STREQUAL "thread" AND NOT room IN_LIST QUORVELL_THREADED_ROOMS)
        return()
    endif()
    cmake_parse_arguments(TEST "" "FOLDER" "" ${ARGN})
    set(libraries ${TEST_UNPARSED_ARGUMENTS})
    if(NOT TEST_FOLDER)
        get_target_property(TEST_FOLDER quorvell_${room} QUORVELL_FOLDER)
        list(APPEND libraries quorvell_${room})
    endif()
    file(GLOB_RECURSE sources CONFIGURE_DEPENDS "${CMAKE_SOURCE_DIR}/tests/${TEST_FOLDER}/*.cpp")
    if(NOT sources)
        return()
    endif()
    set(target ${room}_test)
    add_executable(${target} ${sources})
    target_include_directories(${target} PRIVATE "${CMAKE_SOURCE_DIR}/tests/support")
    target_compile_definitions(${target} PRIVATE
        QUORVELL_FIXTURES="${CMAKE_SOURCE_DIR}/tests/fixtures")
    target_compile_options(${target} PRIVATE ${QUORVELL_WARNINGS} ${QUORVELL_TEST_OPTIONS})
    target_link_libraries(${target} PRIVATE ${libraries} GTest::gtest GTest::gtest_main)
    quorvell_compile_together(${target})
    quorvell_use_prelude(${target} test)
    gtest_discover_tests(${target} TEST_PREFIX "${room}." DISCOVERY_TIMEOUT 60 PROPERTIES TIMEOUT 120 LABELS ${room})
endfunction()

# quorvell_fuzz(<name> [SECONDS <n>] USES <room>...): tests/fuzz/<name>Fuzz.cpp over the seeds in tests/fuzz/corpus/<name>.
# A text that takes longer than SECONDS is a fault (10 where it is not given).
# Under the address sanitizer only; it begins with the seeds and then searches, from the same number every time, so that
# what a run of the tests finds is found again by the next. Look further by hand: NAME_fuzz -seed=0 -max_total_time=3600.
function(quorvell_fuzz name)
    if(NOT QUORVELL_TESTS OR NOT QUORVELL_SANITIZE STREQUAL "address")
        return()
    endif()
    cmake_parse_arguments(FUZZ "" "SECONDS" "USES" ${ARGN})
    if(NOT FUZZ_SECONDS)
        set(FUZZ_SECONDS 10)
    endif()
    set(target ${name}_fuzz)
    set(corpus "${CMAKE_SOURCE_DIR}/tests/fuzz/corpus/${name}")
    add_executable(${target} "${CMAKE_SOURCE_DIR}/tests/fuzz/${name}Fuzz.cpp")
    foreach(used IN LISTS FUZZ_USES)
        target_link_libraries(${target} PRIVATE quorvell_${used})
    endforeach()
    target_link_options(${target} PRIVATE -fsanitize=fuzzer)
    set(grown "${CMAKE_BINARY_DIR}/corpus/${name}")
    file(MAKE_DIRECTORY "${grown}")
    add_test(NAME fuzz.${name} COMMAND ${target} -seed=1 -max_total_time=${QUORVELL_FUZZ_SECONDS} -rss_limit_mb=2048
        -timeout=${FUZZ_SECONDS} -print_final_stats=1 -artifact_prefix=${CMAKE_BINARY_DIR}/corpus/ "${grown}" "${corpus}")
    set_tests_properties(fuzz.${name} PROPERTIES TIMEOUT 300)
endfunction()
