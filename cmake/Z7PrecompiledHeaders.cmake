# Qt's headers, precompiled once for many targets: reading them is two thirds of what it takes to compile a test.
#
# z7_precompiled_headers(<target>)
#
# Gives a target the set that fits what it links, at the end of its folder's CMakeLists.txt. All targets do so for which
# Z7_PRECOMPILED_HEADERS is set: tests always, the program only in sanitizer builds, so that every other build shows an
# include that its sources forgot.

set(Z7_CORE_HEADERS <QtCore> <functional> <memory> <optional>)
set(Z7_WIDGET_HEADERS
    <QAction>
    <QApplication>
    <QComboBox>
    <QDialog>
    <QLabel>
    <QLineEdit>
    <QMessageBox>
    <QPushButton>
    <QTableWidget>
    <QTreeWidget>
)
if(Z7_SANITIZE MATCHES "thread")
    list(PREPEND Z7_CORE_HEADERS ${PROJECT_SOURCE_DIR}/tests/sanitizers/qtsharing.h)
endif()

file(CONFIGURE OUTPUT ${PROJECT_BINARY_DIR}/headersonly.cpp CONTENT "")
function(z7_add_headers name library)
    add_library(${name} OBJECT EXCLUDE_FROM_ALL ${PROJECT_BINARY_DIR}/headersonly.cpp)
    set_target_properties(${name} PROPERTIES AUTOMOC OFF AUTORCC OFF)
    z7_compiler_options(${name})
    target_link_libraries(${name} PRIVATE ${library})
    target_precompile_headers(${name} PRIVATE ${ARGN})
endfunction()

z7_add_headers(coreheaders Qt5::Core ${Z7_CORE_HEADERS})
z7_add_headers(widgetheaders Qt5::Widgets ${Z7_CORE_HEADERS} ${Z7_WIDGET_HEADERS})

set(Z7_PRECOMPILED_HEADERS OFF)
if(Z7_SANITIZE)
    set(Z7_PRECOMPILED_HEADERS ON)
endif()

function(z7_precompiled_headers target)
    cmake_language(EVAL CODE "cmake_language(DEFER CALL z7_take_precompiled_headers ${target})")
endfunction()

function(z7_take_precompiled_headers target)
    z7_links_widgets(widgets ${target} LINK_LIBRARIES)
    if(widgets)
        target_precompile_headers(${target} REUSE_FROM widgetheaders)
    else()
        target_precompile_headers(${target} REUSE_FROM coreheaders)
    endif()
endfunction()

# Whether a target links Qt's widgets: itself (property LINK_LIBRARIES) or through what it links.
function(z7_links_widgets result target property)
    set(found FALSE)
    get_target_property(libraries ${target} ${property})
    foreach(library IN LISTS libraries)
        if(library STREQUAL "Qt5::Widgets")
            set(found TRUE)
        elseif(TARGET ${library} AND NOT found)
            z7_links_widgets(found ${library} INTERFACE_LINK_LIBRARIES)
        endif()
    endforeach()
    set(${result} ${found} PARENT_SCOPE)
endfunction()
