# Compiler-wide settings: language level, cache, where results land, sanitizers.

set(CMAKE_CXX_STANDARD 17)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_OBJCXX_STANDARD 17)
set(CMAKE_OBJCXX_STANDARD_REQUIRED ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)

# The tools look for their stand-ins in ../libexec/pct, in the build folder as when installed.
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}/bin")
set(PCT_HOSTTOOLS_DIR "${CMAKE_BINARY_DIR}/libexec/pct")

# Later formats of compiled-in files than 1 hold the files' times, so that no two checkouts would give the same
# program.
set(CMAKE_AUTORCC_OPTIONS --format-version 1)

find_program(PCT_CCACHE ccache)
if(PCT_CCACHE)
    # The sloppiness that precompiled headers need; without it every build misses the cache.
    set(launcher "${CMAKE_COMMAND}" -E env CCACHE_SLOPPINESS=pch_defines,time_macros,include_file_mtime,include_file_ctime
        "CCACHE_BASEDIR=${CMAKE_SOURCE_DIR}" "${PCT_CCACHE}")
    set(CMAKE_CXX_COMPILER_LAUNCHER ${launcher})
    set(CMAKE_OBJCXX_COMPILER_LAUNCHER ${launcher})
endif()

if(PCT_SANITIZE)
    add_compile_options(-fsanitize=address,undefined -fno-sanitize-recover=undefined -fno-omit-frame-pointer)
    add_link_options(-fsanitize=address,undefined)
endif()

if(PCT_LIBFUZZER)
    # The engine sees which lines of the C++ sources an input reaches. The Objective-C++ of GNUstep needs GCC.
    add_compile_options($<$<COMPILE_LANG_AND_ID:CXX,Clang>:-fsanitize=fuzzer-no-link>)
endif()
