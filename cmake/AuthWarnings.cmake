# Warnings for every target of the project. The build is kept warning-free;
# AUTH_WERROR turns a new warning into a build failure so it cannot slip in.
option(AUTH_WERROR "Treat compiler warnings as errors" ON)

add_library(auth_warnings INTERFACE)
target_compile_options(auth_warnings INTERFACE
    -Wall -Wextra
    $<$<BOOL:${AUTH_WERROR}>:-Werror>)

# Shared libraries must resolve every symbol they use at link time, so a
# missing dependency shows in the build and not when a host loads them.
add_library(auth_shared_link INTERFACE)
target_link_options(auth_shared_link INTERFACE -Wl,--no-undefined)
