# Fuzz targets. With Clang, -DPCT_LIBFUZZER=ON links them to libFuzzer; otherwise each is a program that
# takes files, and ctest runs it for a few seconds on mutations of its seeds that never change.
option(PCT_LIBFUZZER "Link the fuzz targets to libFuzzer (needs Clang)" OFF)

set(PCT_FUZZ_DIR "${CMAKE_CURRENT_LIST_DIR}")

# pct_add_fuzz_target(NAME SOURCES file... LINK library... SEEDS folder MUTATIONS count)
function(pct_add_fuzz_target name)
    cmake_parse_arguments(ARG "" "SEEDS;MUTATIONS" "SOURCES;LINK" ${ARGN})
    add_executable(${name} ${ARG_SOURCES})
    target_link_libraries(${name} PRIVATE ${ARG_LINK})
    pct_setup(${name})
    set_target_properties(${name} PROPERTIES RUNTIME_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}/tests/fuzz")
    if(PCT_LIBFUZZER)
        target_link_options(${name} PRIVATE -fsanitize=fuzzer)
        return()
    endif()
    target_sources(${name} PRIVATE "${PCT_FUZZ_DIR}/FuzzMain.cpp")
    file(GLOB seeds CONFIGURE_DEPENDS "${ARG_SEEDS}/*")
    set(work "${CMAKE_BINARY_DIR}/tests/fuzz/${name}.work")
    file(MAKE_DIRECTORY "${work}")
    add_test(NAME ${name} COMMAND ${name} --mutate ${ARG_MUTATIONS} ${seeds} WORKING_DIRECTORY "${work}")
    set_tests_properties(${name} PROPERTIES TIMEOUT 300 LABELS fuzz ENVIRONMENT "ASAN_OPTIONS=detect_leaks=0")
endfunction()
