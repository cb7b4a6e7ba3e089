# Finds the Qt to build with. Everything else names its targets without a version: Qt::Core and so on.

# On a Mac, Homebrew's Qt is Qt 6.
if(APPLE)
    set(usual_qt_major 6)
else()
    set(usual_qt_major 5)
endif()
set(PCT_QT_MAJOR ${usual_qt_major} CACHE STRING "Qt's major version: 5 (from 5.15) or 6 (from 6.4)")
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
