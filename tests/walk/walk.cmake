# SPDX-License-Identifier: MIT
# The real program, started the way a newcomer starts it: the optimised one, since that is what people have.

if(QUORVELL_WALK)
    file(GLOB sources CONFIGURE_DEPENDS "${CMAKE_CURRENT_LIST_DIR}/*.cpp")
    add_executable(walk_test ${sources})
    target_include_directories(walk_test PRIVATE "${CMAKE_SOURCE_DIR}/tests/support")
    target_compile_definitions(walk_test PRIVATE QUORVELL_PROGRAM="$<TARGET_FILE:quorvell>"
        QUORVELL_FIXTURES="${CMAKE_SOURCE_DIR}/tests/fixtures")
    target_compile_options(walk_test PRIVATE ${QUORVELL_WARNINGS} ${QUORVELL_TEST_OPTIONS})
    target_link_libraries(walk_test PRIVATE quorvell_text Qt6::Core util GTest::gtest GTest::gtest_main)
    quorvell_use_prelude(walk_test test)
    add_dependencies(walk_test quorvell)
    # What is heard, each alone: a recording is played at its own pace, and a call fills what comes late with silence,
    # which the recogniser may take for another word. The others one at a time, beside what takes only computing.
    set(heard "SpokenConversation.*:Alarm.*:Terminal.everyTransport*")
    gtest_discover_tests(walk_test TEST_PREFIX walk. DISCOVERY_TIMEOUT 60 TEST_FILTER "${heard}" TEST_LIST heard_walks
        PROPERTIES TIMEOUT 300 LABELS walk RUN_SERIAL ON)
    gtest_discover_tests(walk_test TEST_PREFIX walk. DISCOVERY_TIMEOUT 60 TEST_FILTER "-${heard}" TEST_LIST other_walks
        PROPERTIES TIMEOUT 300 LABELS walk RESOURCE_LOCK walk)

    # One table of transports and faults, over real sockets and real WebRTC on loopback.
    file(GLOB faults CONFIGURE_DEPENDS "${CMAKE_CURRENT_LIST_DIR}/faults/*.cpp")
    add_executable(fault_table ${faults})
    target_compile_definitions(fault_table PRIVATE QUORVELL_PROGRAM="$<TARGET_FILE:quorvell>")
    target_compile_options(fault_table PRIVATE ${QUORVELL_WARNINGS})
    target_link_libraries(fault_table PRIVATE quorvell_app quorvell_connections quorvell_session quorvell_audio)
    add_dependencies(fault_table quorvell)
    add_test(NAME walk.faults COMMAND fault_table --brief --repeats 6)
    set_tests_properties(walk.faults PROPERTIES TIMEOUT 180 LABELS walk RESOURCE_LOCK walk COST 900)

    # A few attacks of each kind; scripts/attack makes them all. docs/attacks.md says what must hold.
    add_test(NAME walk.attack COMMAND scripts/attack --short --program $<TARGET_FILE:quorvell>
        WORKING_DIRECTORY "${CMAKE_SOURCE_DIR}")
    set_tests_properties(walk.attack PROPERTIES TIMEOUT 240 LABELS walk RESOURCE_LOCK walk COST 800)

    # A hostile model against the practice worlds; docs/safety.md says what must hold.
    file(GLOB screens CONFIGURE_DEPENDS "${CMAKE_CURRENT_LIST_DIR}/screens/*.cpp"
        "${CMAKE_SOURCE_DIR}/tests/Quorvell/practice/attack/*.cpp")
    list(FILTER screens EXCLUDE REGEX "Test\\.cpp$")
    add_executable(screen_attack ${screens})
    target_include_directories(screen_attack PRIVATE "${CMAKE_SOURCE_DIR}/tests/support"
        "${CMAKE_SOURCE_DIR}/tests/Quorvell/practice/attack")
    target_compile_definitions(screen_attack PRIVATE QUORVELL_FIXTURES="${CMAKE_SOURCE_DIR}/tests/fixtures")
    target_compile_options(screen_attack PRIVATE ${QUORVELL_WARNINGS})
    target_link_libraries(screen_attack PRIVATE quorvell_practice)
    add_test(NAME walk.screens COMMAND screen_attack --episodes 10000)
    set_tests_properties(walk.screens PROPERTIES TIMEOUT 240 LABELS walk COST 700)

    # A few spoken requests, heard, carried out and answered aloud; scripts/bench plays them all.
    add_test(NAME walk.spokenRequests COMMAND scripts/measure-speech --program $<TARGET_FILE:quorvell>
        --voices "slt rms" --set tuned --first 4 --least 85 WORKING_DIRECTORY "${CMAKE_SOURCE_DIR}")
    set_tests_properties(walk.spokenRequests PROPERTIES TIMEOUT 400 LABELS walk RUN_SERIAL ON)
endif()
