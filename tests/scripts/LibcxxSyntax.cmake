# The C++ sources that a Mac compiles, too, are checked here with a Mac's C++ library, on the Qt of this build. A Mac has
# Qt 6. Once is enough: the sanitizers compile the same sources.
if(PCT_QT_MAJOR EQUAL 6 AND NOT PCT_SANITIZE)
    add_test(NAME libcxx_syntax COMMAND "${CMAKE_SOURCE_DIR}/scripts/check-libcxx-syntax.py" "${CMAKE_BINARY_DIR}")
    set_tests_properties(libcxx_syntax PROPERTIES ${skipped_without_tools} TIMEOUT 900 LABELS thorough)
    add_test(NAME tst_libcxx_syntax
        COMMAND python3 -m unittest tst_libcxx_syntax WORKING_DIRECTORY "${CMAKE_CURRENT_SOURCE_DIR}")
    set_tests_properties(tst_libcxx_syntax PROPERTIES ENVIRONMENT PYTHONDONTWRITEBYTECODE=1)
endif()
