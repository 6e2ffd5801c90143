# SPDX-License-Identifier: MIT
# The rules alone: their room needs Qt and the models of speech, they need neither.
file(GLOB rules CONFIGURE_DEPENDS "${CMAKE_SOURCE_DIR}/LiveService/rules/*.cpp" "${CMAKE_SOURCE_DIR}/LiveService/replies/*.cpp"
    "${CMAKE_SOURCE_DIR}/OnDeviceSpeech/Spoken*.cpp")
quorvell_fuzz(requestRules USES understanding reminders live safety)
if(TARGET requestRules_fuzz)
    target_sources(requestRules_fuzz PRIVATE ${rules})
    target_include_directories(requestRules_fuzz PRIVATE "${CMAKE_SOURCE_DIR}")
endif()
