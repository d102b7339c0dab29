# Warnings, sanitizers and the linker, the same for every target of the project.

set(Z7_SANITIZE "" CACHE STRING "Sanitizers to build with, as -fsanitize takes them: address,undefined or thread")
option(Z7_COVERAGE "Build with coverage counters" OFF)

# The two settings let ccache work with precompiled headers, and without reading them whole for each source.
find_program(Z7_CCACHE ccache)
if(Z7_CCACHE AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
    set(CMAKE_CXX_COMPILER_LAUNCHER
        ${CMAKE_COMMAND} -E env CCACHE_SLOPPINESS=pch_defines,time_macros CCACHE_INODECACHE=1 ${Z7_CCACHE}
    )
    set(CMAKE_C_COMPILER_LAUNCHER ${CMAKE_CXX_COMPILER_LAUNCHER})
endif()

# Some 140 programs with debug information: lld links one in a fifth of the time that GNU's linker takes. What is
# shipped is linked by the distribution's own.
find_program(Z7_LLD ld.lld)

function(z7_compiler_options target)
    target_compile_options(${target} PRIVATE -Wall -Wextra -Wpedantic -Wshadow)
    target_compile_definitions(${target} PRIVATE
        QT_DEPRECATED_WARNINGS
        QT_NO_CAST_TO_ASCII
    )
    if(Z7_LLD)
        target_link_options(${target} PRIVATE $<$<CONFIG:Debug>:-fuse-ld=lld>)
    endif()
    if(Z7_SANITIZE)
        target_compile_options(${target} PRIVATE -fsanitize=${Z7_SANITIZE} -fno-omit-frame-pointer -fno-sanitize-recover=all)
        target_link_options(${target} PRIVATE -fsanitize=${Z7_SANITIZE})
    endif()
    if(Z7_PRECOMPILED_HEADERS)
        z7_precompiled_headers(${target})
    endif()
    if(Z7_COVERAGE)
        target_compile_options(${target} PRIVATE --coverage)
        target_link_options(${target} PRIVATE --coverage)
    endif()
endfunction()
