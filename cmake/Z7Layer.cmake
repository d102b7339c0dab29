# z7_layer(<name> SOURCES <files> USES <targets>)
#
# A layer of the program: a static library whose headers are included by their folder
# ("comm/communicationinterface.h") and which links no more than the layers and libraries it names. A class and the form
# that it shows bear the same name; the form's header is made here and not by AUTOUIC, after which ninja sees a changed
# form in the second build only.
file(GLOB Z7_FORMS CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/forms/*.ui)

function(z7_layer name)
    cmake_parse_arguments(LAYER "" "" "SOURCES;USES" ${ARGN})
    z7_form_headers(headers ${LAYER_SOURCES})
    add_library(${name} STATIC ${LAYER_SOURCES} ${headers})
    z7_compiler_options(${name})
    target_include_directories(${name} PUBLIC ${PROJECT_SOURCE_DIR} PRIVATE ${CMAKE_CURRENT_BINARY_DIR})
    target_link_libraries(${name} PUBLIC ${LAYER_USES})
endfunction()

# z7_form_headers(<variable> <sources>): the headers of the forms that bear the sources' names.
function(z7_form_headers variable)
    foreach(source ${ARGN})
        get_filename_component(class ${source} NAME_WE)
        set(form ${PROJECT_SOURCE_DIR}/forms/${class}.ui)
        if(source MATCHES "\\.cpp$" AND form IN_LIST Z7_FORMS)
            qt5_wrap_ui(headers ${form})
        endif()
    endforeach()
    set(${variable} ${headers} PARENT_SCOPE)
endfunction()
