# The application bundle: what it is called, what lies in it, and where programs are installed.

set(PCT_BUNDLE_NAME "Pelix Customization Tool")
set(PCT_BUNDLE_IDENTIFIER com.pelix-software.Pelix.CustomizationTool)
get_filename_component(project_root "${CMAKE_CURRENT_LIST_DIR}" DIRECTORY)
set(PCT_PACKAGING_DIR "${project_root}/packaging/macos")
set(PCT_RESOURCES_DIR "${project_root}/resources")
set(PCT_HELP_DIR "${PCT_RESOURCES_DIR}/help/en-US")
set(PCT_LICENSE_FILE "${project_root}/LICENSE")

# pct lies beside the window's program: both find the frameworks, qt.conf and the user's defaults in the same way.
set(PCT_PROGRAM_DESTINATION "${PCT_BUNDLE_NAME}.app/Contents/MacOS")

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

# pct_add_bundle_file(TARGET FILE PLACE): puts a file into Contents/PLACE.
function(pct_add_bundle_file target file place)
    target_sources(${target} PRIVATE "${file}")
    set_source_files_properties("${file}" PROPERTIES MACOSX_PACKAGE_LOCATION "${place}")
endfunction()

function(pct_add_bundle_icon target)
    set(icon "${CMAKE_CURRENT_BINARY_DIR}/AppIcon.icns")
    set(images "${PCT_RESOURCES_DIR}/artwork/icons")
    set(script "${PCT_PACKAGING_DIR}/make-icon.sh")
    file(GLOB image_files CONFIGURE_DEPENDS "${images}/*.png")
    add_custom_command(OUTPUT "${icon}"
        COMMAND "${script}" "${images}" "${icon}"
        DEPENDS "${script}" ${image_files}
        VERBATIM)
    pct_add_bundle_file(${target} "${icon}" Resources)
endfunction()

# The pages are looked for in ../Resources/pcw/en-US, seen from the program.
function(pct_add_bundle_help target)
    file(GLOB_RECURSE pages CONFIGURE_DEPENDS RELATIVE "${PCT_HELP_DIR}" "${PCT_HELP_DIR}/*")
    foreach(page IN LISTS pages)
        get_filename_component(folder "Resources/pcw/en-US/${page}" DIRECTORY)
        pct_add_bundle_file(${target} "${PCT_HELP_DIR}/${page}" "${folder}")
    endforeach()
endfunction()

# pct_make_bundle(TARGET): makes a program the bundle's own one.
function(pct_make_bundle target)
    set(property_list "${CMAKE_CURRENT_BINARY_DIR}/Info.plist")
    configure_file("${PCT_PACKAGING_DIR}/Info.plist.in" "${property_list}" @ONLY)
    set_target_properties(${target} PROPERTIES
        MACOSX_BUNDLE ON
        MACOSX_BUNDLE_INFO_PLIST "${property_list}"
        OUTPUT_NAME "${PCT_BUNDLE_NAME}")
    pct_add_bundle_icon(${target})
    pct_add_bundle_help(${target})
    pct_add_bundle_file(${target} "${PCT_LICENSE_FILE}" Resources)
    install(TARGETS ${target} BUNDLE DESTINATION . COMPONENT bundle)
endfunction()
