# SPDX-License-Identifier: GPL-3.0-or-later
# Compiles our translation, and gathers Qt's own Chinese texts, into one resource file under :/lan.
#
# The system's qt_zh_CN.qm may be only a list that names other files, which is of no use inside a program:
# the texts themselves are merged here from the catalogues of the modules that we link.

get_target_property(velmora_qmake Qt5::qmake IMPORTED_LOCATION)
execute_process(COMMAND ${velmora_qmake} -query QT_INSTALL_TRANSLATIONS
    OUTPUT_VARIABLE velmora_qt_translations OUTPUT_STRIP_TRAILING_WHITESPACE)
get_target_property(velmora_lconvert Qt5::lconvert IMPORTED_LOCATION)
get_target_property(velmora_lrelease Qt5::lrelease IMPORTED_LOCATION)

# Makes FILES into <binary dir>/lan.qrc and the .qm files that it lists; sets OUT_QRC to its path.
function(velmora_translations out_qrc)
    set(ts ${PROJECT_SOURCE_DIR}/translations/sd_zh_CN.ts)
    set(own ${CMAKE_CURRENT_BINARY_DIR}/lan/sd_zh_CN.qm)
    set(qt ${CMAKE_CURRENT_BINARY_DIR}/lan/qt_zh_CN.qm)
    set(qrc ${CMAKE_CURRENT_BINARY_DIR}/lan/lan.qrc)

    set(qt_parts ${velmora_qt_translations}/qtbase_zh_CN.qm)
    if(NOT EXISTS ${qt_parts})
        message(FATAL_ERROR "Qt's Chinese texts are missing: ${qt_parts} (package qttranslations5-l10n)")
    endif()

    file(MAKE_DIRECTORY ${CMAKE_CURRENT_BINARY_DIR}/lan)
    file(CONFIGURE OUTPUT ${qrc} CONTENT
"<RCC>
    <qresource prefix=\"/lan\">
        <file>sd_zh_CN.qm</file>
        <file>qt_zh_CN.qm</file>
    </qresource>
</RCC>
")
    add_custom_command(OUTPUT ${own}
        COMMAND ${velmora_lrelease} -silent ${ts} -qm ${own}
        DEPENDS ${ts} VERBATIM)
    add_custom_command(OUTPUT ${qt}
        COMMAND ${velmora_lconvert} -o ${qt} ${qt_parts}
        DEPENDS ${qt_parts} VERBATIM)
    add_custom_target(velmora_translations DEPENDS ${own} ${qt})
    set(${out_qrc} ${qrc} PARENT_SCOPE)
endfunction()
