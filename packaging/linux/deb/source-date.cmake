# The date that a package carries: SOURCE_DATE_EPOCH, by default that of the last commit, or of the
# changelog where there is no history. The same sources then give the same package.
get_filename_component(sources "${CMAKE_CURRENT_LIST_DIR}/../../.." ABSOLUTE)

if(NOT DEFINED ENV{SOURCE_DATE_EPOCH})
    execute_process(COMMAND git log -1 --format=%ct
        WORKING_DIRECTORY "${sources}"
        OUTPUT_VARIABLE date OUTPUT_STRIP_TRAILING_WHITESPACE ERROR_QUIET)
    if(NOT date)
        file(TIMESTAMP "${sources}/CHANGELOG.md" date "%s" UTC)
    endif()
    set(ENV{SOURCE_DATE_EPOCH} "${date}")
endif()
