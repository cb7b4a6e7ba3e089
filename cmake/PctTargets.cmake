# How this project makes its targets: one static library per folder, Qt Test programs, stand-ins.

add_library(pct_build_options INTERFACE)
target_compile_options(pct_build_options INTERFACE
    -Wall -Wextra -Wpedantic -Wshadow -Wcast-align
    $<$<COMPILE_LANGUAGE:CXX>:-Wnon-virtual-dtor -Wold-style-cast -Woverloaded-virtual>
    # Apple's compiler: C++17 wants arguments for Qt's logging macros, which take none, and all of the system's
    # web view that the tool is written for is deprecated. Clang 19 and the Apple compilers made from it know no
    # narrower name than C++20's extensions; GCC still finds those. The checks of syntax in scripts/ say the same.
    $<$<CXX_COMPILER_ID:AppleClang,Clang>:-Wno-gnu-zero-variadic-macro-arguments -Wno-c++20-extensions>
    $<$<COMPILE_LANG_AND_ID:OBJCXX,AppleClang,Clang>:-Wno-deprecated-declarations>
    $<$<BOOL:${PCT_WERROR}>:-Werror>)
target_compile_definitions(pct_build_options INTERFACE
    QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_FOREACH QT_USE_QSTRINGBUILDER
    QT_DEPRECATED_WARNINGS)
target_include_directories(pct_build_options INTERFACE "${CMAKE_SOURCE_DIR}")
if(PCT_CCACHE)
    # So that what uses a precompiled header is found in the cache: GCC is to say what is in it, and Clang is to
    # leave out the time at which it was made.
    target_compile_options(pct_build_options INTERFACE
        $<$<CXX_COMPILER_ID:GNU>:-fpch-preprocess>
        $<$<COMPILE_LANG_AND_ID:CXX,AppleClang,Clang>:SHELL:-Xclang -fno-pch-timestamp>)
endif()

# Tests spend their time in the libraries, and to optimize them would be a third of compiling them. A number that they cut
# short is one of their own making, so what asks about that is for the rest; docs/design.md says why these warnings.
function(pct_compile_for_kind target kind)
    if("${kind}" STREQUAL "test")
        target_compile_options(${target} PRIVATE $<$<COMPILE_LANGUAGE:CXX>:-O0>)
    else()
        target_compile_options(${target} PRIVATE
            "$<$<COMPILE_LANGUAGE:CXX>:-Wconversion;-Wno-sign-conversion;-Wdouble-promotion;-Wformat=2;-Wextra-semi;-Wsuggest-override>")
    endif()
endfunction()

# Precompiled headers are made once for each kind of target; one for each target would cost gigabytes.
# pct_add_precompiled_header(KIND HEADER LINK library...)
function(pct_add_precompiled_header kind header)
    cmake_parse_arguments(ARG "" "" "LINK" ${ARGN})
    add_library(pct_pch_${kind} OBJECT "${CMAKE_SOURCE_DIR}/cmake/precompiled.cpp")
    target_link_libraries(pct_pch_${kind} PRIVATE pct_build_options ${ARG_LINK})
    pct_compile_for_kind(pct_pch_${kind} ${kind})
    target_precompile_headers(pct_pch_${kind} PRIVATE "$<$<COMPILE_LANGUAGE:CXX>:${header}>")
endfunction()

pct_add_precompiled_header(core <QtCore> LINK Qt::Core)
pct_add_precompiled_header(widgets <QtWidgets> LINK Qt::Widgets)
pct_add_precompiled_header(test <QtTest> LINK Qt::Test Qt::Widgets)

# Objective-C++ cannot use what was precompiled for C++.
function(pct_without_precompiled_header target)
    get_target_property(sources ${target} SOURCES)
    list(FILTER sources INCLUDE REGEX "\\.mm?$")
    set_source_files_properties(${sources} PROPERTIES SKIP_PRECOMPILE_HEADERS ON)
endfunction()

# pct_setup(TARGET [KIND]): the options every target of ours has, with the precompiled header of a kind.
function(pct_setup target)
    target_link_libraries(${target} PRIVATE pct_build_options)
    if(ARGC GREATER 1)
        pct_without_precompiled_header(${target})
        pct_compile_for_kind(${target} ${ARGV1})
        target_precompile_headers(${target} REUSE_FROM pct_pch_${ARGV1})
    endif()
endfunction()

# pct_add_library(NAME SOURCES file... LINK library... [PCH kind])
# Makes the static library pct_NAME with the alias pct::NAME. Only libraries have forms and headers with Q_OBJECT: the
# search for them would cost every program as much as compiling it.
function(pct_add_library name)
    cmake_parse_arguments(ARG "" "PCH" "SOURCES;LINK" ${ARGN})
    add_library(pct_${name} STATIC ${ARG_SOURCES})
    add_library(pct::${name} ALIAS pct_${name})
    target_link_libraries(pct_${name} PUBLIC ${ARG_LINK})
    pct_setup(pct_${name} ${ARG_PCH})
    set_target_properties(pct_${name} PROPERTIES AUTOMOC ON AUTOUIC ON)
endfunction()

file(WRITE "${CMAKE_BINARY_DIR}/tests/GNUstep.conf" "GNUSTEP_USER_DEFAULTS_DIR=${CMAKE_BINARY_DIR}/tests/defaults\n")
file(MAKE_DIRECTORY "${CMAKE_BINARY_DIR}/tests/defaults")

# A quick linker for the tests' many programs. What ships is linked by the system's own.
find_program(PCT_LLD ld.lld)
mark_as_advanced(PCT_LLD)

# pct_add_moc_files(TARGET file...): the .moc file that each tst_*.cpp includes
function(pct_add_moc_files target)
    list(FILTER ARGN INCLUDE REGEX "(^|/)tst_[^/]*\\.cpp$")
    foreach(source ${ARGN})
        get_filename_component(test ${source} NAME_WE)
        set(moc "${CMAKE_CURRENT_BINARY_DIR}/${target}_moc/${test}.moc")
        qt_generate_moc("${source}" "${moc}")
        target_sources(${target} PRIVATE "${moc}")
    endforeach()
    target_include_directories(${target} PRIVATE "${CMAKE_CURRENT_BINARY_DIR}/${target}_moc")
endfunction()

# pct_add_test(NAME SOURCES file... LINK library... [GUI] [WEB_VIEW] [LABELS label...])
# A Qt Test program run by ctest. GUI tests run in a real window system under xvfb-run; all others
# use the offscreen platform and need no display. On a Mac all do but those that show a WEB_VIEW, which is a view of
# the system's and needs its windows. The time limit is generous: it catches hangs, not slowness.
function(pct_add_test name)
    cmake_parse_arguments(ARG "GUI;WEB_VIEW" "" "SOURCES;LINK;LABELS" ${ARGN})
    set(time_limit 400)
    if(PCT_SANITIZE)
        set(time_limit 1200)
    endif()
    add_executable(${name} ${ARG_SOURCES})
    target_link_libraries(${name} PRIVATE Qt::Test Qt::Widgets ${ARG_LINK})
    pct_setup(${name} test)
    pct_add_moc_files(${name} ${ARG_SOURCES})
    if(PCT_LLD AND NOT APPLE)
        target_link_options(${name} PRIVATE -fuse-ld=lld)
    endif()
    set_target_properties(${name} PROPERTIES RUNTIME_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}/tests")
    set(asan_options detect_leaks=0)
    if(ARG_WEB_VIEW)
        # Qt 6's engine frees with another size than it has allocated.
        string(APPEND asan_options ":new_delete_type_mismatch=0")
    endif()
    # The last two keep tests away from the settings of whoever runs them.
    set(environment "PCT_HOSTTOOLS=${PCT_HOSTTOOLS_DIR}"
        "ASAN_OPTIONS=${asan_options}" "UBSAN_OPTIONS=print_stacktrace=1"
        "XDG_CONFIG_HOME=${CMAKE_BINARY_DIR}/tests/config"
        "GNUSTEP_CONFIG_FILE=${CMAKE_BINARY_DIR}/tests/GNUstep.conf")
    if(ARG_GUI AND NOT APPLE)
        set(command "${CMAKE_SOURCE_DIR}/scripts/with-display.sh" $<TARGET_FILE:${name}>)
        list(APPEND ARG_LABELS gui)
    else()
        set(command $<TARGET_FILE:${name}>)
        if(NOT (APPLE AND ARG_WEB_VIEW))
            list(APPEND environment QT_QPA_PLATFORM=offscreen)
        endif()
    endif()
    add_test(NAME ${name} COMMAND ${command})
    set_tests_properties(${name} PROPERTIES
        TIMEOUT ${time_limit} LABELS "${ARG_LABELS}" ENVIRONMENT "${environment}"
        ENVIRONMENT_MODIFICATION "SOURCE_DATE_EPOCH=unset:;PCT_LANGUAGE=unset:")
endfunction()

# pct_add_apple_like_runs(TEST... [IN_PATH]): the same programs once more, over commands that are as unkind as Apple's;
# with IN_PATH these and those of BSD also take the place of the shell's, for tests of scripts. Called where the tests are made.
function(pct_add_apple_like_runs)
    cmake_parse_arguments(ARG "IN_PATH" "" "" ${ARGN})
    if(APPLE)
        return()
    endif()
    set(commands "${CMAKE_SOURCE_DIR}/tests/support/apple-like")
    set(modification "SOURCE_DATE_EPOCH=unset:;PCT_LANGUAGE=unset:")
    if(ARG_IN_PATH)
        list(APPEND modification "PATH=path_list_prepend:${commands}" "PATH=path_list_prepend:${commands}/shell")
    endif()
    foreach(name ${ARG_UNPARSED_ARGUMENTS})
        get_test_property(${name} ENVIRONMENT environment)
        get_test_property(${name} LABELS labels)
        list(FILTER environment EXCLUDE REGEX "^PCT_HOSTTOOLS=")
        set(command $<TARGET_FILE:${name}>)
        if("gui" IN_LIST labels)
            list(PREPEND command "${CMAKE_SOURCE_DIR}/scripts/with-display.sh")
        endif()
        add_test(NAME ${name}_apple_like COMMAND ${command})
        set_tests_properties(${name}_apple_like PROPERTIES
            TIMEOUT 1200 LABELS "${labels};apple-like"
            ENVIRONMENT "${environment};PCT_HOSTTOOLS=${commands};APPLE_LIKE_REAL=${PCT_HOSTTOOLS_DIR}"
            ENVIRONMENT_MODIFICATION "${modification}")
    endforeach()
endfunction()

# All stand-ins together; empty on macOS, which has the commands themselves.
add_custom_target(hosttools)

# pct_add_hosttool(NAME SOURCES file... LINK library...): a stand-in for the macOS command NAME.
function(pct_add_hosttool name)
    cmake_parse_arguments(ARG "" "" "SOURCES;LINK" ${ARGN})
    add_executable(hosttool_${name} ${ARG_SOURCES})
    target_link_libraries(hosttool_${name} PRIVATE ${ARG_LINK})
    pct_setup(hosttool_${name} core)
    set_target_properties(hosttool_${name} PROPERTIES
        OUTPUT_NAME ${name} RUNTIME_OUTPUT_DIRECTORY "${PCT_HOSTTOOLS_DIR}")
    add_dependencies(hosttools hosttool_${name})
    set_property(GLOBAL APPEND PROPERTY PCT_HOSTTOOL_TARGETS hosttool_${name})
endfunction()
