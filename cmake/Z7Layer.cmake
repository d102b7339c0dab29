# z7_layer(<name> SOURCES <files> USES <targets>)
#
# A layer of the program: a static library whose headers are included by their folder
# ("comm/communicationinterface.h") and which links no more than the layers and libraries it names.
function(z7_layer name)
    cmake_parse_arguments(LAYER "" "" "SOURCES;USES" ${ARGN})
    add_library(${name} STATIC ${LAYER_SOURCES})
    z7_compiler_options(${name})
    target_include_directories(${name} PUBLIC ${PROJECT_SOURCE_DIR})
    target_link_libraries(${name} PUBLIC ${LAYER_USES})
endfunction()
