# Which Qt the project builds with, and which web engine the web dialog runs
# on. One tree builds on Qt 5.15 (the default, with QtWebKit) and on Qt 6
# (with QtWebEngine); every target links Qt's versionless targets
# (Qt::Core, ...), which both provide. Where the two Qt versions differ in
# the code, <vex/kqtcompat.h> decides.

set(AUTH_QT_MAJOR 5 CACHE STRING "The Qt major version to build with: 5 or 6")
set_property(CACHE AUTH_QT_MAJOR PROPERTY STRINGS 5 6)
if(AUTH_QT_MAJOR STREQUAL "5")
    set(AUTH_QT_MIN_VERSION 5.15)
elseif(AUTH_QT_MAJOR STREQUAL "6")
    set(AUTH_QT_MIN_VERSION 6.4)
else()
    message(FATAL_ERROR "AUTH_QT_MAJOR is 5 or 6, not \"${AUTH_QT_MAJOR}\"")
endif()

# The web dialog's engine: webkit (QtWebKit, Qt 5 only, the default there),
# webengine (QtWebEngine with QWebChannel, the default on Qt 6; on Qt 5.15
# too, with qtwebengine5-dev) or
# none (no web dialog: src/web, the host's web module, the web suites and
# benchmarks and the gallery's web scenes are left out).
# AUTH_WEB_ENGINE_TARGETS are what the web module links for it.
if(AUTH_QT_MAJOR STREQUAL "5")
    set(AUTH_WEB_ENGINE_DEFAULT webkit)
else()
    set(AUTH_WEB_ENGINE_DEFAULT webengine)
endif()
set(AUTH_WEB_ENGINE ${AUTH_WEB_ENGINE_DEFAULT} CACHE STRING
    "The web dialog's engine: webkit (Qt 5), webengine or none")
set_property(CACHE AUTH_WEB_ENGINE PROPERTY STRINGS webkit webengine none)
if(AUTH_QT_MAJOR STREQUAL "6" AND AUTH_WEB_ENGINE STREQUAL "webkit")
    message(FATAL_ERROR "AUTH_WEB_ENGINE=webkit is not available on Qt 6, which has no QtWebKit: "
        "Qt 6 builds run the web dialog on QtWebEngine (AUTH_WEB_ENGINE=webengine)")
elseif(NOT AUTH_WEB_ENGINE MATCHES "^(webkit|webengine|none)$")
    message(FATAL_ERROR "AUTH_WEB_ENGINE is webkit, webengine or none, not \"${AUTH_WEB_ENGINE}\"")
endif()
set(AUTH_WEB_DIALOG ON)
if(AUTH_WEB_ENGINE STREQUAL "webkit")
    set(AUTH_QT_WEB_COMPONENTS WebKit WebKitWidgets)
    set(AUTH_WEB_ENGINE_TARGETS Qt5::WebKitWidgets)
elseif(AUTH_WEB_ENGINE STREQUAL "webengine")
    set(AUTH_QT_WEB_COMPONENTS WebEngineWidgets WebChannel Quick)
    set(AUTH_WEB_ENGINE_TARGETS Qt${AUTH_QT_MAJOR}::WebEngineWidgets Qt${AUTH_QT_MAJOR}::WebChannel
        Qt${AUTH_QT_MAJOR}::Quick)
else()
    set(AUTH_WEB_DIALOG OFF)
    set(AUTH_QT_WEB_COMPONENTS "")
    set(AUTH_WEB_ENGINE_TARGETS "")
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
