# z7_test(<name> SOURCES <files> [LIBS <targets>] [LISTED_PORTS] [ALONE] [TIMEOUT <seconds>] [LABELS <labels>])
#
# A Qt Test executable, known to CTest under its own name and labelled with the name of its folder. It runs without
# a display, with an empty working folder and settings of its own.
#
#   LISTED_PORTS  links testsupport, whose ListedPorts makes serial ports appear in QSerialPortInfo
#   ALONE         CTest runs nothing else at the same time: for tests that measure times
#
# The target <folder>-tests builds all tests of a folder and nothing else.
#
# Only <name>.cpp is looked through for Q_OBJECT, for one run of moc costs a tenth of what CMake's own search does.
# Sources of several tests go into a library.
#
# z7_test_library(<name> SOURCES <files> LIBS <targets>)
#
# What several tests share, compiled once. A header with Q_OBJECT stands among its sources.

set(Z7_TEST_TIMEOUT 120)
set(Z7_TEST_LAUNCHER ${CMAKE_CURRENT_LIST_DIR}/in-fresh-folder)
set(Z7_SANITIZER_FILES ${PROJECT_SOURCE_DIR}/tests/sanitizers)

if(Z7_SANITIZE MATCHES "thread")
    add_library(qtsync OBJECT ${Z7_SANITIZER_FILES}/qtsync.cpp)
    z7_compiler_options(qtsync)
    target_link_libraries(qtsync PRIVATE Qt5::Core)
endif()

function(z7_test_library name)
    cmake_parse_arguments(LIBRARY "" "" "SOURCES;LIBS" ${ARGN})
    add_library(${name} STATIC ${LIBRARY_SOURCES})
    z7_compiler_options(${name})
    target_include_directories(${name} PUBLIC ${PROJECT_SOURCE_DIR})
    target_link_libraries(${name} PUBLIC ${LIBRARY_LIBS} Qt5::Test)
endfunction()

function(z7_test name)
    cmake_parse_arguments(TEST "LISTED_PORTS;ALONE" "TIMEOUT" "SOURCES;LIBS;LABELS" ${ARGN})
    if(TEST_UNPARSED_ARGUMENTS)
        message(FATAL_ERROR "z7_test(${name}): unknown arguments ${TEST_UNPARSED_ARGUMENTS}")
    endif()
    # Those that need longer begin first, so that the others run beside them.
    set(cost ${TEST_TIMEOUT})
    if(NOT TEST_TIMEOUT)
        set(TEST_TIMEOUT ${Z7_TEST_TIMEOUT})
        set(cost 0)
    endif()

    qt5_generate_moc(${name}.cpp ${CMAKE_CURRENT_BINARY_DIR}/${name}.moc)
    add_executable(${name} ${TEST_SOURCES} ${CMAKE_CURRENT_BINARY_DIR}/${name}.moc)
    set_target_properties(${name} PROPERTIES AUTOMOC OFF AUTORCC OFF)
    z7_compiler_options(${name})
    target_include_directories(${name} PRIVATE ${PROJECT_SOURCE_DIR} ${CMAKE_CURRENT_BINARY_DIR})
    target_link_libraries(${name} PRIVATE ${TEST_LIBS} Qt5::Test)
    if(TEST_LISTED_PORTS)
        target_link_libraries(${name} PRIVATE testsupport)
    endif()
    if(Z7_SANITIZE MATCHES "thread")
        target_link_libraries(${name} PRIVATE qtsync)
    endif()

    get_filename_component(folder ${CMAKE_CURRENT_SOURCE_DIR} NAME)
    if(NOT TARGET ${folder}-tests)
        add_custom_target(${folder}-tests)
    endif()
    add_dependencies(${folder}-tests ${name})

    set(working_folder ${CMAKE_CURRENT_BINARY_DIR}/${name}.work)
    add_test(NAME ${name} COMMAND ${Z7_TEST_LAUNCHER} ${working_folder} $<TARGET_FILE:${name}>)
    z7_test_environment(environment ${TEST_TIMEOUT})
    set_tests_properties(${name} PROPERTIES
        TIMEOUT ${TEST_TIMEOUT}
        COST ${cost}
        LABELS "${folder};${TEST_LABELS}"
        RUN_SERIAL ${TEST_ALONE}
        ENVIRONMENT "${environment}"
    )
endfunction()

function(z7_test_environment result timeout)
    # Qt Test's own watchdog comes first, as it tells which test function hangs.
    math(EXPR function_timeout "${timeout} * 900")
    set(${result}
        LC_ALL=C.UTF-8
        LANGUAGE=
        QT_QPA_PLATFORM=offscreen
        QT_QPA_PLATFORMTHEME=
        QT_STYLE_OVERRIDE=Fusion
        QTEST_FUNCTION_TIMEOUT=${function_timeout}
        ASAN_OPTIONS=detect_leaks=1
        LSAN_OPTIONS=suppressions=${Z7_SANITIZER_FILES}/lsan.supp:print_suppressions=0
        UBSAN_OPTIONS=print_stacktrace=1
        TSAN_OPTIONS=ignore_noninstrumented_modules=1:halt_on_error=1:history_size=5:suppressions=${Z7_SANITIZER_FILES}/tsan.supp
        PARENT_SCOPE
    )
endfunction()
