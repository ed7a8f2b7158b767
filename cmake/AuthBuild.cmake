# Settings every target of the project shares.

# Warnings. The build is kept warning-free with GCC and Clang; AUTH_WERROR
# turns a new warning into a build failure so it cannot slip in.
option(AUTH_WERROR "Treat compiler warnings as errors" ON)

add_library(auth_warnings INTERFACE)
target_compile_options(auth_warnings INTERFACE
    -Wall -Wextra
    $<$<BOOL:${AUTH_WERROR}>:-Werror>)

# Libraries of the plug-in and the stand-in host: warnings, and no implicit
# conversions between 8-bit and Qt strings, so every encoding is a decision.
add_library(auth_library_defaults INTERFACE)
target_link_libraries(auth_library_defaults INTERFACE auth_warnings)
target_compile_definitions(auth_library_defaults INTERFACE
    QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_FOREACH)

# Sanitizers for `make check`, for example "address,undefined". Every target
# is instrumented, and a finding stops the program so CTest sees it fail.
set(AUTH_SANITIZE "" CACHE STRING "Sanitizers to build with (-fsanitize=...)")
if(AUTH_SANITIZE)
    add_compile_options(-fsanitize=${AUTH_SANITIZE} -fno-sanitize-recover=all
        -fno-omit-frame-pointer)
    add_link_options(-fsanitize=${AUTH_SANITIZE})
endif()

# Shared libraries must resolve every symbol they use at link time, so a
# missing dependency shows in the build and not when a host loads them.
# Sanitizer runtimes live in the executable that loads the library, so the
# check is left to the ordinary build there.
add_library(auth_shared_link INTERFACE)
if(NOT AUTH_SANITIZE)
    target_link_options(auth_shared_link INTERFACE -Wl,--no-undefined)
endif()
