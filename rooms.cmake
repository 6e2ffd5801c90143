# SPDX-License-Identifier: MIT
# The rooms of the house and the doors between them. A new door needs a record in docs/decisions/.

quorvell_prelude(core OPTIONS -fno-exceptions)
quorvell_prelude(shell)
if(QUORVELL_TESTS OR QUORVELL_WALK)
    quorvell_prelude(test HEADERS <gtest/gtest.h> LIBRARIES GTest::gtest OPTIONS ${QUORVELL_TEST_OPTIONS})
endif()
if(QUORVELL_SHELL)
    set(qt_headers <QByteArray> <QCoreApplication> <QObject> <QPointer> <QString> <QTimer>)
    quorvell_prelude(qt LIBRARIES Qt6::Core HEADERS ${qt_headers})
    # What Qt's modules define must be the same in all that share them.
    target_compile_definitions(prelude_qt PRIVATE QT_NETWORK_LIB QT_DBUS_LIB)
endif()

# QuorvellCore: functions of their arguments
quorvell_room(text QuorvellCore/text CORE OPTIMISED LIBRARIES ICU::uc ICU::i18n
    PUBLIC_LIBRARIES nlohmann_json::nlohmann_json)
quorvell_room(notebook QuorvellCore/notebook CORE OPTIMISED USES text)
quorvell_room(reminders QuorvellCore/reminders CORE USES text notebook LIBRARIES ICU::uc ICU::i18n)
quorvell_room(live QuorvellCore/live CORE OPTIMISED USES text)
# What can be worked out without asking anybody: the zones of places, holidays, sums and units.
quorvell_room(reckoning QuorvellCore/reckoning CORE USES text LIBRARIES ICU::uc ICU::i18n)
quorvell_room(safety QuorvellCore/safety CORE USES text LIBRARIES ICU::uc ICU::i18n)
quorvell_room(automation QuorvellCore/automation CORE OPTIMISED USES text safety PUBLIC_LIBRARIES Threads::Threads)

# What a request means, without a model: its words, the times in it, what a conversation keeps in mind, one folder of
# skills for each matter, and the table of them.
quorvell_room(understanding_words Understanding/words CORE OPTIMISED USES text)
quorvell_room(understanding_time Understanding/time CORE OPTIMISED USES text reminders understanding_words)
quorvell_room(understanding_dialogue Understanding/dialogue CORE
    USES text live reminders understanding_words understanding_time)
quorvell_room(skills Understanding/skills CORE
    USES text live reminders reckoning understanding_words understanding_time understanding_dialogue)
quorvell_room(understanding_requests Understanding/requests CORE
    USES text live safety understanding_words understanding_time understanding_dialogue skills)
# A model of the user's own on this computer: what it is sent, what it may do, what it may say.
quorvell_room(local_model LocalModel CORE USES text live)
# Services for speech on this computer or near it, by the Wyoming protocol.
quorvell_room(wyoming Wyoming USES text)
# Heads and answers of HTTP, for the service on this computer.
quorvell_room(http Http USES text)
# How an assistant hands connections to the service that it started.
quorvell_room(line Line)

# Sound values and the ends of calls, which the assistant and the service on this computer both use.
quorvell_room(audio Media/audio OPTIMISED LIBRARIES PkgConfig::sndfile PkgConfig::samplerate)

# Quorvell: the shell. These rooms need no Qt.
quorvell_room(loop Quorvell/loop OPTIMISED USES text)
quorvell_room(session Quorvell/session USES text live automation safety loop)
# What is on the screen, as a port, and what is done there.
quorvell_room(surface Quorvell/surface USES automation)
quorvell_room(actions Quorvell/actions USES text live safety automation loop session surface)
# A small world of applications, to practise in.
quorvell_room(practice Quorvell/practice USES text live automation loop session surface actions)
quorvell_room(files Quorvell/files PUBLIC_LIBRARIES Threads::Threads)
# What the user may choose, as values that rooms on both sides of a choice share.
quorvell_room(preferences Quorvell/preferences USES text live reminders automation)
quorvell_room(notebook_store Quorvell/notebook OPTIMISED USES text notebook files loop LIBRARIES PkgConfig::sqlite3)
quorvell_room(agenda Quorvell/agenda USES text reminders files preferences LIBRARIES PkgConfig::libical)
quorvell_room(reminding Quorvell/reminding USES text notebook reminders loop notebook_store)
quorvell_room(tools Quorvell/tools
    USES text live notebook reminders session preferences notebook_store agenda reminding)
# Hosted deciders of steps on the screen. Nobody else links the library that asks them.
quorvell_room(deciders Quorvell/deciders USES text automation preferences LIBRARIES PkgConfig::curl Threads::Threads)

# The rooms that share state across threads: the thread sanitizer runs their tests.
set(QUORVELL_THREADED_ROOMS automation actions audio files notebook_store agenda deciders wyoming)

# The rooms without Qt and the speech libraries: the address and undefined sanitizers run their tests.
set(QUORVELL_SANITIZED_ROOMS
    text notebook reminders live reckoning automation safety understanding_words understanding_time
    understanding_requests local_model wyoming http line loop session actions practice audio files notebook_store agenda
    reminding tools deciders)
foreach(room IN LISTS QUORVELL_SANITIZED_ROOMS)
    quorvell_test(${room})
endforeach()
# What people say, carried out.
list(APPEND QUORVELL_SANITIZED_ROOMS conversations)
quorvell_test(conversations FOLDER conversations quorvell_tools quorvell_understanding_requests)

if(QUORVELL_SHELL)
    # The WebRTC library behind values of our own; nobody else sees its headers.
    quorvell_room(echo Media/echo OPTIMISED LIBRARIES tg_owt::tg_owt)
    quorvell_room(webrtc Media/webrtc OPTIMISED USES text audio LIBRARIES tg_owt::tg_owt Threads::Threads)
    quorvell_room(sound Quorvell/sound OPTIMISED USES text live loop session audio echo
        LIBRARIES PkgConfig::pulse Threads::Threads)
    quorvell_room(connections Quorvell/connections PRELUDE qt USES text live http line session preferences audio webrtc
        PUBLIC_LIBRARIES Qt6::Core Qt6::Network)
    quorvell_room(on_device_speech OnDeviceSpeech OPTIMISED USES understanding_time
        LIBRARIES PocketSphinx::PocketSphinx Flite::Flite Threads::Threads)
    include(OnDeviceSpeech/models.cmake)
    quorvell_room(speech Quorvell/speech USES live loop session audio on_device_speech wyoming LIBRARIES Threads::Threads)
    quorvell_room(desktop Quorvell/desktop PRELUDE qt USES loop reminding agenda files
        PUBLIC_LIBRARIES Qt6::Core Qt6::DBus LIBRARIES Qt6::Gui PkgConfig::gio PkgConfig::libical)
    # Signals of the message bus reach only slots that Qt knows by name.
    set_target_properties(quorvell_desktop PROPERTIES AUTOMOC ON)
    quorvell_room(live_service LiveService PRELUDE qt
        USES text live understanding_time understanding_dialogue understanding_requests local_model wyoming http line
             on_device_speech webrtc echo audio
        PUBLIC_LIBRARIES Qt6::Core Qt6::Network)
    # What the terminal and the panel share.
    quorvell_room(settings Quorvell/settings USES text live reminders files preferences)
    quorvell_room(records Quorvell/records USES text reminders loop session settings)
    quorvell_room(handover Quorvell/handover PRELUDE qt USES notebook files loop notebook_store desktop settings)
    quorvell_room(assistant Quorvell/assistant PRELUDE qt
        USES text automation reminders loop session actions deciders files notebook_store agenda reminding tools
             audio sound desktop connections settings records handover)
    quorvell_room(app Quorvell/app PRELUDE qt
        USES text notebook reminders live automation loop session actions practice files preferences
             notebook_store agenda reminding tools audio speech desktop connections deciders on_device_speech
             live_service settings records handover assistant local_model wyoming
        PUBLIC_LIBRARIES Qt6::Core Qt6::Network Qt6::DBus LIBRARIES CLI11::CLI11 PkgConfig::libedit)
    # Against another implementation of WebSockets than ours.
    foreach(room IN ITEMS live_service connections)
        quorvell_test(${room} Qt6::WebSockets)
    endforeach()
    foreach(room IN ITEMS echo webrtc sound speech desktop on_device_speech settings records handover assistant app)
        quorvell_test(${room})
    endforeach()

    if(EXISTS "${CMAKE_SOURCE_DIR}/Quorvell/app/main.cpp")
        add_executable(quorvell Quorvell/app/main.cpp)
        target_link_libraries(quorvell PRIVATE quorvell_app)
        target_compile_definitions(quorvell PRIVATE QUORVELL_VERSION="${PROJECT_VERSION}")
        target_compile_options(quorvell PRIVATE ${QUORVELL_WARNINGS})
        add_dependencies(quorvell speech_models)
        include(tests/walk/walk.cmake)
    endif()
endif()

# Searches for crashes, one per parser of outside bytes
file(GLOB fuzzers CONFIGURE_DEPENDS "${CMAKE_SOURCE_DIR}/tests/fuzz/*.cmake")
foreach(fuzzer IN LISTS fuzzers)
    include("${fuzzer}")
endforeach()

if(QUORVELL_BENCH AND EXISTS "${CMAKE_SOURCE_DIR}/bench/CMakeLists.txt")
    add_subdirectory(bench)
endif()
if(QUORVELL_TESTS AND EXISTS "${CMAKE_SOURCE_DIR}/tests/house.cmake")
    include(tests/house.cmake)
endif()
