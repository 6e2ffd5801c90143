# The rooms of the house and the doors between them. A new door needs a record in docs/decisions/.

# QuorvellCore: functions of their arguments
quorvell_room(text QuorvellCore/text CORE LIBRARIES ICU::uc ICU::i18n PUBLIC_LIBRARIES nlohmann_json::nlohmann_json)
quorvell_room(notebook QuorvellCore/notebook CORE USES text)
quorvell_room(reminders QuorvellCore/reminders CORE USES text notebook LIBRARIES ICU::uc ICU::i18n)
quorvell_room(live QuorvellCore/live CORE USES text)
quorvell_room(automation QuorvellCore/automation CORE USES text PUBLIC_LIBRARIES Threads::Threads)
quorvell_room(safety QuorvellCore/safety CORE USES text)

# What the words of a request hint at, for the service on this computer.
quorvell_room(understanding Understanding CORE USES text)
# Heads and answers of HTTP, for the service on this computer.
quorvell_room(http Http)

# Quorvell: the shell. These rooms need no Qt.
quorvell_room(session Quorvell/session USES text live automation)
quorvell_room(audio Quorvell/audio LIBRARIES PkgConfig::sndfile PkgConfig::samplerate)
quorvell_room(files Quorvell/files USES text PUBLIC_LIBRARIES Threads::Threads)
quorvell_room(notebook_store Quorvell/notebook USES text notebook files session LIBRARIES PkgConfig::sqlite3)
quorvell_room(agenda Quorvell/agenda USES text notebook reminders files LIBRARIES PkgConfig::libical)
quorvell_room(reminding Quorvell/reminding USES text notebook reminders session notebook_store)
quorvell_room(tools Quorvell/tools USES text live notebook reminders safety session notebook_store agenda reminding)

# The rooms that share state across threads: the thread sanitizer runs their tests.
set(QUORVELL_THREADED_ROOMS automation audio files notebook_store agenda)

foreach(room IN ITEMS
    text notebook reminders live automation safety understanding http session audio files notebook_store agenda reminding
    tools)
    quorvell_test(${room})
endforeach()

if(QUORVELL_SHELL)
    # The WebRTC library behind values of our own; nobody else sees its headers.
    quorvell_room(echo Quorvell/echo LIBRARIES tg_owt::tg_owt)
    quorvell_room(webrtc Quorvell/webrtc LIBRARIES tg_owt::tg_owt Threads::Threads)
    quorvell_room(sound Quorvell/sound USES text live session audio echo LIBRARIES PkgConfig::pulse Threads::Threads)
    quorvell_room(connections Quorvell/connections USES text live session audio webrtc
        PUBLIC_LIBRARIES Qt6::Core Qt6::Network Qt6::WebSockets)
    quorvell_room(on_device_speech OnDeviceSpeech USES text LIBRARIES PocketSphinx::PocketSphinx Flite::Flite Threads::Threads)
    include(OnDeviceSpeech/models.cmake)
    quorvell_room(speech Quorvell/speech USES text live session audio on_device_speech LIBRARIES Threads::Threads)
    quorvell_room(desktop Quorvell/desktop USES text session reminding agenda files
        PUBLIC_LIBRARIES Qt6::Core Qt6::DBus LIBRARIES Qt6::Gui PkgConfig::gio PkgConfig::libical)
    # Signals of the message bus reach only slots that Qt knows by name.
    set_target_properties(quorvell_desktop PROPERTIES AUTOMOC ON)
    quorvell_room(live_service LiveService
        USES text live reminders safety understanding http on_device_speech webrtc audio
        PUBLIC_LIBRARIES Qt6::Core Qt6::Network Qt6::WebSockets)
    quorvell_room(app Quorvell/app
        USES text notebook reminders live automation safety session files notebook_store agenda reminding tools audio echo
             sound speech webrtc desktop connections on_device_speech live_service
        PUBLIC_LIBRARIES Qt6::Core Qt6::Network Qt6::DBus LIBRARIES CLI11::CLI11 PkgConfig::libedit)
    foreach(room IN ITEMS echo webrtc sound speech desktop connections on_device_speech live_service app)
        quorvell_test(${room})
    endforeach()

    if(EXISTS "${CMAKE_SOURCE_DIR}/Quorvell/app/main.cpp")
        add_executable(quorvell Quorvell/app/main.cpp)
        target_link_libraries(quorvell PRIVATE quorvell_app CLI11::CLI11)
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
