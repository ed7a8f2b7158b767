# Which Qt the project builds with, and which web engine the web dialog runs
# on. One tree builds on Qt 5.15 (the default, with QtWebKit) and on Qt 6;
# every target links Qt's versionless targets (Qt::Core, ...), which both
# provide. Where the two Qt versions differ in the code, <vex/kqtcompat.h>
# decides.

set(AUTH_QT_MAJOR 5 CACHE STRING "The Qt major version to build with: 5 or 6")
set_property(CACHE AUTH_QT_MAJOR PROPERTY STRINGS 5 6)
if(AUTH_QT_MAJOR STREQUAL "5")
    set(AUTH_QT_MIN_VERSION 5.15)
elseif(AUTH_QT_MAJOR STREQUAL "6")
    set(AUTH_QT_MIN_VERSION 6.4)
else()
    message(FATAL_ERROR "AUTH_QT_MAJOR is 5 or 6, not \"${AUTH_QT_MAJOR}\"")
endif()

# The web dialog's engine: webkit (QtWebKit, Qt 5 only), webengine (QtWebEngine,
# not written yet) or none (no web dialog: src/web, the host's web module, the
# web suites and benchmarks and the gallery's web scenes are left out). Qt 6
# has no QtWebKit, so a Qt 6 build goes without the web dialog until its
# QtWebEngine backend lands.
if(AUTH_QT_MAJOR STREQUAL "5")
    set(AUTH_WEB_ENGINE_DEFAULT webkit)
else()
    set(AUTH_WEB_ENGINE_DEFAULT none)
endif()
set(AUTH_WEB_ENGINE ${AUTH_WEB_ENGINE_DEFAULT} CACHE STRING
    "The web dialog's engine: webkit (Qt 5), webengine, or none (Qt 6 for now)")
set_property(CACHE AUTH_WEB_ENGINE PROPERTY STRINGS webkit webengine none)
if(AUTH_QT_MAJOR STREQUAL "6" AND NOT AUTH_WEB_ENGINE STREQUAL "none")
    message(STATUS "AUTH_WEB_ENGINE=${AUTH_WEB_ENGINE} is not available on Qt 6 yet: "
        "building without the web dialog (AUTH_WEB_ENGINE=none)")
    set_property(CACHE AUTH_WEB_ENGINE PROPERTY VALUE none)
elseif(AUTH_QT_MAJOR STREQUAL "5" AND NOT AUTH_WEB_ENGINE STREQUAL "webkit")
    message(FATAL_ERROR "AUTH_WEB_ENGINE=${AUTH_WEB_ENGINE} is not available on Qt 5: "
        "Qt 5 builds run the web dialog on QtWebKit (AUTH_WEB_ENGINE=webkit)")
endif()
if(AUTH_WEB_ENGINE STREQUAL "none")
    set(AUTH_WEB_DIALOG OFF)
    set(AUTH_QT_WEB_COMPONENTS "")
else()
    set(AUTH_WEB_DIALOG ON)
    set(AUTH_QT_WEB_COMPONENTS WebKit WebKitWidgets)
endif()
message(STATUS "Building with Qt ${AUTH_QT_MAJOR}; the web dialog's engine: ${AUTH_WEB_ENGINE}")

find_package(Qt${AUTH_QT_MAJOR} ${AUTH_QT_MIN_VERSION} REQUIRED
    COMPONENTS Core Gui Widgets Network LinguistTools ${AUTH_QT_WEB_COMPONENTS})

# A target that brings the given translation sources up to date with the
# texts in a source folder (lupdate rewrites them in place).
function(auth_add_lupdate_target name)
    cmake_parse_arguments(ARG "" "SOURCE_DIR;COMMENT" "TS_FILES" ${ARGN})
    add_custom_target(${name}
        COMMAND Qt${AUTH_QT_MAJOR}::lupdate -silent -locations none -no-obsolete ${ARG_SOURCE_DIR}
            -ts ${ARG_TS_FILES}
        COMMENT "${ARG_COMMENT}"
        VERBATIM)
endfunction()
