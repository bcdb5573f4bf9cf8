# What every target is compiled and linked with: warnings, sanitizers, and the fast tools where they are installed.

add_library(tavrel_options INTERFACE)
target_compile_features(tavrel_options INTERFACE cxx_std_20)
target_compile_options(tavrel_options INTERFACE
    -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual -Wformat=2
    -Wimplicit-fallthrough -Wunused -Werror
    # An initializer that names its fields leaves the others at their defaults on purpose.
    -Wno-missing-field-initializers)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    # GCC 12 reports false ones from inside the standard library when it inlines.
    target_compile_options(tavrel_options INTERFACE
        -Wno-restrict -Wno-stringop-overflow -Wno-stringop-overread -Wno-array-bounds
        -Wno-maybe-uninitialized -Wno-dangling-pointer)
endif()

if(TAVREL_SANITIZE)
    set(flags -fsanitize=${TAVREL_SANITIZE} -fno-omit-frame-pointer -fno-sanitize-recover=all)
    target_compile_options(tavrel_options INTERFACE ${flags})
    target_link_options(tavrel_options INTERFACE ${flags})
endif()
if(TAVREL_FUZZ)
    target_compile_options(tavrel_options INTERFACE -fsanitize=fuzzer-no-link)
    target_link_options(tavrel_options INTERFACE -fsanitize=fuzzer-no-link)
endif()

find_program(TAVREL_CCACHE ccache)
if(TAVREL_CCACHE AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
    set(CMAKE_CXX_COMPILER_LAUNCHER ${TAVREL_CCACHE})
endif()
find_program(TAVREL_MOLD mold)
if(TAVREL_MOLD)
    target_link_options(tavrel_options INTERFACE -fuse-ld=mold)
endif()
