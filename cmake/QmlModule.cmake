# Where the built module lies, so that "-I <build>/qml" is all that a QML tool needs.

set(COMPONENT_QML_IMPORT_DIR "${CMAKE_BINARY_DIR}/qml")
set(COMPONENT_QML_MODULE_DIR "${COMPONENT_QML_IMPORT_DIR}/com/ostrel/im/component")
file(MAKE_DIRECTORY "${COMPONENT_QML_MODULE_DIR}")

# Puts TARGET's library into the module's folder under every build type.
function(component_place_in_module target)
    set_target_properties(${target} PROPERTIES
        LIBRARY_OUTPUT_DIRECTORY "${COMPONENT_QML_MODULE_DIR}"
        RUNTIME_OUTPUT_DIRECTORY "${COMPONENT_QML_MODULE_DIR}")
endfunction()

# Describes the types of the built plugin TARGET in plugins.qmltypes, for editors and for qmllint.
function(component_generate_type_description target)
    if(CMAKE_CROSSCOMPILING OR COMPONENT_SANITIZE)
        return()
    endif()
    get_target_property(qmake Qt5::qmake IMPORTED_LOCATION)
    execute_process(COMMAND "${qmake}" -query QT_INSTALL_BINS OUTPUT_VARIABLE qt_bins OUTPUT_STRIP_TRAILING_WHITESPACE)
    find_program(QMLPLUGINDUMP_PROGRAM qmlplugindump HINTS "${qt_bins}")
    if(NOT QMLPLUGINDUMP_PROGRAM)
        message(WARNING "qmlplugindump was not found: the module is built without plugins.qmltypes")
        return()
    endif()
    set(types "${COMPONENT_QML_MODULE_DIR}/plugins.qmltypes")
    add_custom_command(OUTPUT "${types}"
        COMMAND "${CMAKE_COMMAND}" -E env QT_QPA_PLATFORM=offscreen "QML2_IMPORT_PATH=${COMPONENT_QML_IMPORT_DIR}"
                "${QMLPLUGINDUMP_PROGRAM}" -nonrelocatable -noinstantiate -output "${types}"
                com.ostrel.im.component 1.0 "${COMPONENT_QML_IMPORT_DIR}"
        DEPENDS ${target} "${COMPONENT_QML_MODULE_DIR}/qmldir"
        COMMENT "Describing the module's types"
        VERBATIM)
    add_custom_target(component_qmltypes ALL DEPENDS "${types}")
endfunction()
