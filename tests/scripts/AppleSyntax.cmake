# The sources that only a Mac can link are checked here with the headers of each Qt that is installed.

# The tool's own definitions, so that a file is as right as in its library.
set(definitions "$<TARGET_PROPERTY:pct_build_options,INTERFACE_COMPILE_DEFINITIONS>")
foreach(major 5 6)
    find_path(PCT_QT${major}_HEADERS QtWidgets/QWidget PATH_SUFFIXES qt${major} DOC "Headers of Qt ${major} for the check")
    mark_as_advanced(PCT_QT${major}_HEADERS)
    if(PCT_QT${major}_HEADERS)
        add_test(NAME apple_syntax_qt${major}
            COMMAND "${CMAKE_SOURCE_DIR}/scripts/check-apple-syntax.sh" "${PCT_QT${major}_HEADERS}")
        set_tests_properties(apple_syntax_qt${major} PROPERTIES
            ${skipped_without_tools} TIMEOUT 600
            ENVIRONMENT "CPPFLAGS=-D$<JOIN:${definitions}, -D>")
    endif()
endforeach()

if(PCT_QT${PCT_QT_MAJOR}_HEADERS)
    pct_add_test(tst_AppleSyntax SOURCES tst_AppleSyntax.cpp LINK pct::testsupport)
    target_compile_definitions(tst_AppleSyntax PRIVATE
        PCT_SOURCE_DIR="${CMAKE_SOURCE_DIR}" PCT_QT_HEADERS="${PCT_QT${PCT_QT_MAJOR}_HEADERS}")
endif()
