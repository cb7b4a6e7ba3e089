# Finds the Qt to build with. Everything else names its targets without a version: Qt::Core and so on.

set(oldest_qt_5 5.15)
set(oldest_qt_6 6.4)

# Qt 6 where the system has it. A folder that is configured keeps its choice.
if(NOT DEFINED PCT_QT_MAJOR)
    find_package(Qt6 ${oldest_qt_6} QUIET COMPONENTS Core)
    set(usual_qt_major 5)
    if(Qt6_FOUND)
        set(usual_qt_major 6)
    endif()
endif()
set(PCT_QT_MAJOR "${usual_qt_major}" CACHE STRING "Qt's major version: 5 (from 5.15) or 6 (from 6.4)")
set_property(CACHE PCT_QT_MAJOR PROPERTY STRINGS 5 6)
# The versionless targets Qt::Core and so on then name that version's.
set(QT_DEFAULT_MAJOR_VERSION ${PCT_QT_MAJOR})
find_package(Qt${PCT_QT_MAJOR} ${oldest_qt_${PCT_QT_MAJOR}} REQUIRED COMPONENTS Core Gui Widgets Xml Test LinguistTools)

if(PCT_QT_MAJOR EQUAL 6)
    # Qt 6 also defines the folder of each test, which would forbid the tests to share a precompiled header.
    set_property(TARGET Qt6::Test PROPERTY INTERFACE_COMPILE_DEFINITIONS QT_TESTLIB_LIB)
endif()
