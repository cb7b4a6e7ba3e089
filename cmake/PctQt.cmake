# Finds the Qt to build with. Everything else names its targets without a version: Qt::Core and so on.

set(PCT_QT_MAJOR 5 CACHE STRING "Qt's major version: 5 (from 5.15) or 6 (from 6.4)")
set_property(CACHE PCT_QT_MAJOR PROPERTY STRINGS 5 6)
set(oldest_qt_5 5.15)
set(oldest_qt_6 6.4)
# The versionless targets Qt::Core and so on then name that version's.
set(QT_DEFAULT_MAJOR_VERSION ${PCT_QT_MAJOR})
find_package(Qt${PCT_QT_MAJOR} ${oldest_qt_${PCT_QT_MAJOR}} REQUIRED COMPONENTS Core Gui Widgets Xml Test LinguistTools)

if(PCT_QT_MAJOR EQUAL 6)
    # Qt 6 also defines the folder of each test, which would forbid the tests to share a precompiled header.
    set_property(TARGET Qt6::Test PROPERTY INTERFACE_COMPILE_DEFINITIONS QT_TESTLIB_LIB)
endif()
