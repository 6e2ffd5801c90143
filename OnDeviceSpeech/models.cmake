# SPDX-License-Identifier: MIT
# The models of the commands are made from the templates when the program is built: those of every skill, and what they
# have in common.

set(speech_system /usr/share/pocketsphinx/model/en-us)
set(speech_folder "${CMAKE_BINARY_DIR}/share/quorvell/speech")
file(GLOB speech_templates CONFIGURE_DEPENDS "${CMAKE_CURRENT_LIST_DIR}/models/*.jsgf"
    "${CMAKE_SOURCE_DIR}/Understanding/skills/*/requests.jsgf")

add_executable(generate_speech_models "${CMAKE_CURRENT_LIST_DIR}/tools/generateModels.cpp")
target_link_libraries(generate_speech_models PRIVATE quorvell_on_device_speech PocketSphinx::PocketSphinx)
set(speech_files)
foreach(name IN ITEMS commands.lm commands.dict general.dict)
    list(APPEND speech_files "${speech_folder}/${name}")
endforeach()
add_custom_command(OUTPUT ${speech_files}
    COMMAND ${CMAKE_COMMAND} -E make_directory "${speech_folder}"
    COMMAND generate_speech_models "${speech_folder}" ${speech_system}/cmudict-en-us.dict ${speech_system}/en-us.lm.bin
        ${speech_templates}
    DEPENDS generate_speech_models ${speech_templates}
    COMMENT "Making the speech models of the commands" VERBATIM)
add_custom_target(speech_models ALL DEPENDS ${speech_files})

# For measuring: what is heard in recordings
add_executable(hear_recordings "${CMAKE_SOURCE_DIR}/bench/speech/hearRecordings.cpp")
target_link_libraries(hear_recordings PRIVATE quorvell_on_device_speech)
add_executable(hear_turns "${CMAKE_SOURCE_DIR}/bench/speech/hearTurns.cpp")
target_link_libraries(hear_turns PRIVATE quorvell_live_service quorvell_on_device_speech)

# These rooms' tests speak to the recogniser; they are defined after this file is read.
function(quorvell_speech_tests_need_models)
    foreach(test IN ITEMS on_device_speech_test speech_test)
        if(TARGET ${test})
            add_dependencies(${test} speech_models)
        endif()
    endforeach()
endfunction()
cmake_language(DEFER CALL quorvell_speech_tests_need_models)
