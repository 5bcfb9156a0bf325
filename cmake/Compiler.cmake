# SPDX-License-Identifier: GPL-3.0-or-later
# Warnings and sanitizers, as one interface target that every target of ours links privately.
add_library(velmora_compiler INTERFACE)

if(CMAKE_CXX_COMPILER_ID MATCHES "GNU|Clang")
    target_compile_options(velmora_compiler INTERFACE -Wall -Wextra -Wshadow -Wnon-virtual-dtor
        -Woverloaded-virtual)
    if(VELMORA_WARNINGS_ARE_ERRORS)
        target_compile_options(velmora_compiler INTERFACE -Werror)
    endif()
    if(VELMORA_SANITIZE)
        target_compile_options(velmora_compiler INTERFACE -fsanitize=${VELMORA_SANITIZE}
            -fno-omit-frame-pointer)
        target_link_options(velmora_compiler INTERFACE -fsanitize=${VELMORA_SANITIZE})
        if(VELMORA_SANITIZE MATCHES "undefined")
            target_compile_options(velmora_compiler INTERFACE -fno-sanitize-recover=undefined)
        endif()
    endif()
endif()
