# How the project's tests are declared. Labels: unit, qml, gl, window, threads, demo, slow.
# `threads` marks what ThreadSanitizer is to look at: ./dev tsan runs these alone.

find_package(Qt5 5.14 REQUIRED COMPONENTS Test QuickTest)

# The environment of every test: the built module on the import path, sanitizers that stop at the first report.
set(COMPONENT_TEST_ENVIRONMENT
    "QML2_IMPORT_PATH=${COMPONENT_QML_IMPORT_DIR}"
    "LC_ALL=C.UTF-8"
    "QT_LOGGING_RULES=qt.qpa.*=false"
    "ASAN_OPTIONS=detect_leaks=0:abort_on_error=1"
    "UBSAN_OPTIONS=print_stacktrace=1"
    "TSAN_OPTIONS=suppressions=${CMAKE_SOURCE_DIR}/tests/support/tsan.supp:halt_on_error=1:second_deadlock_stack=1:ignore_noninstrumented_modules=1")

# What the tests link of the module: its objects. For Windows an archive of them, from which a program takes only what
# it needs, because the cross-linker is slow and the programs are many.
set(COMPONENT_TEST_OBJECTS component_objects)
if(WIN32)
    add_library(component_archive STATIC EXCLUDE_FROM_ALL)
    set_target_properties(component_archive PROPERTIES LINKER_LANGUAGE CXX)
    target_link_libraries(component_archive PUBLIC component_objects)
    set(COMPONENT_TEST_OBJECTS component_archive)
endif()

# component_add_test(tst_name
#     SOURCES file...            the test's own sources; the first one holds QTEST_MAIN or its like
#     [LIBRARIES target...]      beside the module's objects, Qt Test and the support library
#     [LABELS label...]          "unit" when left out
#     [DISPLAY]                  needs a window with OpenGL: runs under the display that the test runner started,
#                                one such test at a time, because they share focus, pointer and clipboard
#     [NO_MODULE]                does not wait for the built module, which it never loads
#     [NO_OBJECTS]               does not link the module's objects (tests of the built plugin alone)
#     [TIMEOUT seconds])
function(component_add_test name)
    cmake_parse_arguments(arg "DISPLAY;NO_MODULE;NO_OBJECTS" "TIMEOUT" "SOURCES;LIBRARIES;LABELS" ${ARGN})
    if(NOT arg_LABELS)
        set(arg_LABELS unit)
    endif()
    if(NOT arg_TIMEOUT)
        set(arg_TIMEOUT 120)
    endif()
    add_executable(${name} ${arg_SOURCES})
    target_link_libraries(${name} PRIVATE component_flags Qt5::Test ${arg_LIBRARIES})
    if(NOT arg_NO_OBJECTS)
        target_link_libraries(${name} PRIVATE ${COMPONENT_TEST_OBJECTS} component_test_support)
    endif()
    if(NOT arg_NO_MODULE)
        add_dependencies(${name} component)
    endif()
    target_compile_definitions(${name} PRIVATE TEST_SOURCE_DIR="${CMAKE_CURRENT_SOURCE_DIR}")
    component_register_test(${name} COMMAND ${name} LABELS ${arg_LABELS} TIMEOUT ${arg_TIMEOUT}
        DISPLAY ${arg_DISPLAY})
endfunction()

# component_add_qml_test(tst_name file.qml [LABELS ...] [TIMEOUT n]): a Qt Quick Test through the module's import.
function(component_add_qml_test name file)
    cmake_parse_arguments(arg "" "TIMEOUT" "LABELS" ${ARGN})
    if(NOT arg_LABELS)
        set(arg_LABELS qml)
    endif()
    if(NOT arg_TIMEOUT)
        set(arg_TIMEOUT 120)
    endif()
    component_register_test(${name}
        COMMAND qml_test_runner -input "${CMAKE_CURRENT_SOURCE_DIR}/${file}" -import "${COMPONENT_QML_IMPORT_DIR}"
        LABELS ${arg_LABELS} TIMEOUT ${arg_TIMEOUT} DISPLAY TRUE)
    # A warning fails the test, unless the document expects it by `ignoreWarning`, which keeps it out of the log.
    set_tests_properties(${name} PROPERTIES FAIL_REGULAR_EXPRESSION "QWARN  :;QCRITICAL:")
endfunction()

# component_register_test(name COMMAND ... LABELS ... TIMEOUT n DISPLAY bool): any command as a test.
function(component_register_test name)
    cmake_parse_arguments(arg "" "TIMEOUT;DISPLAY" "COMMAND;LABELS;ENVIRONMENT" ${ARGN})
    add_test(NAME ${name} COMMAND ${arg_COMMAND})
    set(environment ${COMPONENT_TEST_ENVIRONMENT} ${arg_ENVIRONMENT})
    if(arg_DISPLAY)
        list(APPEND environment "QT_QPA_PLATFORM=xcb")
        set_property(TEST ${name} PROPERTY RESOURCE_LOCK display)
    else()
        list(APPEND environment "QT_QPA_PLATFORM=offscreen")
    endif()
    set(timeout ${arg_TIMEOUT})
    if(COMPONENT_SANITIZE)
        math(EXPR timeout "${timeout} * 5")
    endif()
    set_tests_properties(${name} PROPERTIES
        LABELS "${arg_LABELS}" TIMEOUT ${timeout} ENVIRONMENT "${environment}")
endfunction()
