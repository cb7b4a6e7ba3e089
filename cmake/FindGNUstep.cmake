# Finds GNUstep Base, the Foundation library of systems other than macOS, and makes the imported
# target GNUstep::Base. Its headers are system headers, so that their warnings are not ours.

find_path(GNUstep_INCLUDE_DIR Foundation/Foundation.h PATH_SUFFIXES GNUstep)
find_library(GNUstep_BASE_LIBRARY gnustep-base)

include(FindPackageHandleStandardArgs)
find_package_handle_standard_args(GNUstep REQUIRED_VARS GNUstep_BASE_LIBRARY GNUstep_INCLUDE_DIR)
mark_as_advanced(GNUstep_INCLUDE_DIR GNUstep_BASE_LIBRARY)

if(GNUstep_FOUND AND NOT TARGET GNUstep::Base)
    add_library(GNUstep::Base INTERFACE IMPORTED)
    # The compiler finds its own Objective-C runtime, which lies in a folder of its version.
    target_link_libraries(GNUstep::Base INTERFACE "${GNUstep_BASE_LIBRARY}" objc)
    target_include_directories(GNUstep::Base SYSTEM INTERFACE "${GNUstep_INCLUDE_DIR}")
    target_compile_definitions(GNUstep::Base INTERFACE
        $<$<COMPILE_LANGUAGE:OBJCXX>:GNUSTEP GNUSTEP_BASE_LIBRARY=1 GNU_RUNTIME=1 _NATIVE_OBJC_EXCEPTIONS>)
    target_compile_options(GNUstep::Base INTERFACE
        $<$<COMPILE_LANGUAGE:OBJCXX>:-fobjc-exceptions -fconstant-string-class=NSConstantString>)
endif()
