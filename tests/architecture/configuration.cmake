# Configures the project as for a system that is no Unix and looks at what would be built: the program and its layers,
# and nothing of what needs a Unix. Run with -P; SOURCE, BINARY, GENERATOR and COMPILER are given by the test.
cmake_minimum_required(VERSION 3.25)

file(REMOVE_RECURSE ${BINARY})
execute_process(
    COMMAND ${CMAKE_COMMAND} -S ${SOURCE} -B ${BINARY} -G ${GENERATOR}
        -DCMAKE_CXX_COMPILER=${COMPILER}
        -DCMAKE_PROJECT_Z7ConfigTool_INCLUDE=${CMAKE_CURRENT_LIST_DIR}/otherthanunix.cmake
    RESULT_VARIABLE result
    OUTPUT_VARIABLE output
    ERROR_VARIABLE output
)
if(result)
    message(FATAL_ERROR "The project does not configure:\n${output}")
endif()

set(rules ${BINARY}/build.ninja)
set(title "^# Object build statements for .* target ")
file(STRINGS ${rules} targets REGEX ${title})
list(TRANSFORM targets REPLACE ${title} "")
foreach(target Z7ConfigTool protocol services model comm pages maincontrol shell)
    if(NOT target IN_LIST targets)
        message(SEND_ERROR "${target} is not built, only ${targets}")
    endif()
endforeach()
list(FILTER targets INCLUDE REGEX "^simulator$|^z7sim$|^z7paritypty$|^z7portfiles$|support$|^tst_|^z7bench$")
if(targets)
    message(SEND_ERROR "would be built: ${targets}")
endif()
foreach(source platform_posix umockdev gzip)
    file(STRINGS ${rules} lines REGEX ${source} LIMIT_COUNT 1)
    if(lines)
        message(SEND_ERROR "${source}: ${lines}")
    endif()
endforeach()
