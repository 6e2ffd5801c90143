# The real program, started the way a newcomer starts it.

if(QUORVELL_TESTS AND NOT QUORVELL_SANITIZE)
    file(GLOB sources CONFIGURE_DEPENDS "${CMAKE_CURRENT_LIST_DIR}/*.cpp")
    add_executable(walk_test ${sources})
    target_compile_definitions(walk_test PRIVATE QUORVELL_PROGRAM="$<TARGET_FILE:quorvell>")
    target_compile_options(walk_test PRIVATE ${QUORVELL_WARNINGS})
    target_link_libraries(walk_test PRIVATE quorvell_text Qt6::Core GTest::gtest GTest::gtest_main)
    quorvell_test_prelude(walk_test)
    add_dependencies(walk_test quorvell)
    gtest_discover_tests(walk_test TEST_PREFIX walk. DISCOVERY_TIMEOUT 60 PROPERTIES TIMEOUT 300 LABELS walk)

    # A few spoken requests, heard, carried out and answered aloud; scripts/bench plays them all.
    add_test(NAME walk.spokenRequests COMMAND scripts/measure-speech --program $<TARGET_FILE:quorvell>
        --voices "slt rms" --set tuned --first 4 --least 85 WORKING_DIRECTORY "${CMAKE_SOURCE_DIR}")
    set_tests_properties(walk.spokenRequests PROPERTIES TIMEOUT 400 LABELS walk RUN_SERIAL ON)
endif()
