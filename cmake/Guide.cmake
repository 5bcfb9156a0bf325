# SPDX-License-Identifier: GPL-3.0-or-later
# The user guide as HTML: ${CMAKE_BINARY_DIR}/guide/<language>/index.html, made from docs/user-guide by cmark-gfm.

find_program(VELMORA_CMARK cmark-gfm)
if(NOT VELMORA_CMARK)
    message(FATAL_ERROR "cmark-gfm is missing (package cmark-gfm): the user guide is made by it")
endif()
mark_as_advanced(VELMORA_CMARK)

set(velmora_guide ${CMAKE_BINARY_DIR}/guide)
file(GLOB_RECURSE velmora_guide_sources CONFIGURE_DEPENDS
    ${PROJECT_SOURCE_DIR}/docs/user-guide/*.md
    ${PROJECT_SOURCE_DIR}/docs/user-guide/*.png
    ${PROJECT_SOURCE_DIR}/docs/user-guide/*.css)
add_custom_command(OUTPUT ${velmora_guide}/en/index.html
    COMMAND ${PROJECT_SOURCE_DIR}/scripts/build-guide ${PROJECT_SOURCE_DIR}/docs/user-guide ${velmora_guide}
    DEPENDS ${PROJECT_SOURCE_DIR}/scripts/build-guide ${velmora_guide_sources}
    COMMENT "Making the user guide" VERBATIM)
add_custom_target(guide ALL DEPENDS ${velmora_guide}/en/index.html)
