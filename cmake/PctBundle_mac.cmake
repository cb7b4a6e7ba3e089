# What all programs for macOS have to know of the application bundle that packaging/macos makes.

set(PCT_BUNDLE_NAME "Pelix Customization Tool")
set(PCT_BUNDLE_IDENTIFIER com.pelix-software.Pelix.CustomizationTool)

# The second path lets the tool that puts Qt into the bundle find it; that tool then takes the path away.
set(CMAKE_INSTALL_RPATH "@executable_path/../Frameworks")
set(CMAKE_INSTALL_RPATH_USE_LINK_PATH ON)

# Homebrew's Qt runs on the macOS that it was made for and on later ones. Unless told otherwise, the bundle does not
# claim more.
if(NOT CMAKE_OSX_DEPLOYMENT_TARGET)
    execute_process(COMMAND sw_vers -productVersion OUTPUT_VARIABLE system_version COMMAND_ERROR_IS_FATAL ANY)
    string(REGEX MATCH "^[0-9]+" system_major "${system_version}")
    set(CMAKE_OSX_DEPLOYMENT_TARGET "${system_major}.0" CACHE STRING "The oldest macOS that the tool runs on" FORCE)
endif()
