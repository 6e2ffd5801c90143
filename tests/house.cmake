# SPDX-License-Identifier: MIT
# Checks of the house itself, run with the tests of the ordinary build.

if(QUORVELL_SANITIZE)
    return()
endif()

add_test(NAME house.layers COMMAND scripts/check-layers "${CMAKE_BINARY_DIR}/rooms.txt" WORKING_DIRECTORY "${CMAKE_SOURCE_DIR}")
add_test(NAME house.circles COMMAND scripts/check-circles WORKING_DIRECTORY "${CMAKE_SOURCE_DIR}")
add_test(NAME house.heads COMMAND scripts/check-heads WORKING_DIRECTORY "${CMAKE_SOURCE_DIR}")
add_test(NAME house.own_header_first COMMAND scripts/check-headers WORKING_DIRECTORY "${CMAKE_SOURCE_DIR}")
add_test(NAME house.names COMMAND scripts/check-names WORKING_DIRECTORY "${CMAKE_SOURCE_DIR}")
add_test(NAME house.purity COMMAND scripts/check-purity WORKING_DIRECTORY "${CMAKE_SOURCE_DIR}")
add_test(NAME house.shown COMMAND scripts/check-shown WORKING_DIRECTORY "${CMAKE_SOURCE_DIR}")
add_test(NAME house.settings COMMAND scripts/check-settings WORKING_DIRECTORY "${CMAKE_SOURCE_DIR}")
add_test(NAME house.format COMMAND scripts/format --check WORKING_DIRECTORY "${CMAKE_SOURCE_DIR}")

# The checks above find what they are there for.
add_test(NAME house.planted_faults COMMAND tests/house/planted_faults.py WORKING_DIRECTORY "${CMAKE_SOURCE_DIR}")

# An attack finds what it is there for.
add_test(NAME house.planted_attack_faults COMMAND tests/attack/planted_faults.py WORKING_DIRECTORY "${CMAKE_SOURCE_DIR}")

# What starts the program does so from anywhere.
add_test(NAME house.scripts_anywhere COMMAND tests/house/scripts_anywhere.sh WORKING_DIRECTORY "${CMAKE_SOURCE_DIR}")

# The background service is one that the service manager takes.
find_program(SYSTEMD_ANALYZE systemd-analyze)
if(SYSTEMD_ANALYZE)
    add_test(NAME house.systemd_unit
        COMMAND "${SYSTEMD_ANALYZE}" verify --user "${CMAKE_SOURCE_DIR}/packaging/systemd/quorvell-agent.service")
    set_tests_properties(house.systemd_unit PROPERTIES
        ENVIRONMENT "XDG_RUNTIME_DIR=${CMAKE_BINARY_DIR}" FAIL_REGULAR_EXPRESSION "quorvell-agent.service:")
endif()

# Every header stands alone.
add_test(NAME house.headers COMMAND ${CMAKE_COMMAND} --build "${CMAKE_BINARY_DIR}" --target all_verify_interface_header_sets)
set_tests_properties(house.headers PROPERTIES RESOURCE_LOCK build TIMEOUT 900 COST 600)

# A door that is not there does not open.
foreach(kind IN ITEMS allowed forbidden)
    add_library(${kind}_include OBJECT EXCLUDE_FROM_ALL tests/house/${kind}Include.cpp)
    target_link_libraries(${kind}_include PRIVATE quorvell_text)
    add_test(NAME house.${kind}_include COMMAND ${CMAKE_COMMAND} --build "${CMAKE_BINARY_DIR}" --target ${kind}_include)
    set_tests_properties(house.${kind}_include PROPERTIES RESOURCE_LOCK build)
endforeach()
set_tests_properties(house.forbidden_include PROPERTIES PASS_REGULAR_EXPRESSION "fatal error: .*No such file")

find_program(CLANG_TIDY clang-tidy-14)
if(CLANG_TIDY)
    add_test(NAME house.tidy COMMAND scripts/check-tidy "${CMAKE_BINARY_DIR}" WORKING_DIRECTORY "${CMAKE_SOURCE_DIR}")
    set_tests_properties(house.tidy PROPERTIES TIMEOUT 1800 COST 1000) # The longest begins first.
endif()
