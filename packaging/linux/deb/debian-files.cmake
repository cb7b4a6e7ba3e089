# Adds what Debian expects beside the installed files: copyright, compressed changelogs and manual pages,
# lintian's overrides. Then gives everything one date.
get_filename_component(sources "${CMAKE_CURRENT_LIST_DIR}/../../.." ABSOLUTE)
string(TIMESTAMP date "%a, %d %b %Y %H:%M:%S +0000" UTC)  # of SOURCE_DATE_EPOCH
set(version "${CPACK_PACKAGE_VERSION}-${CPACK_DEBIAN_PACKAGE_RELEASE}")

# The name stays outside the compressed file, so that its bytes depend on the text only.
function(compress file)
    execute_process(COMMAND gzip --best --no-name "${file}" COMMAND_ERROR_IS_FATAL ANY)
endfunction()

# add(SOURCE FILE [COPYONLY])
function(add source file)
    configure_file("${source}" "${file}" @ONLY ${ARGN}
        FILE_PERMISSIONS OWNER_READ OWNER_WRITE GROUP_READ WORLD_READ)
endfunction()

function(add_debian_files root package)
    set(here "${CMAKE_CURRENT_LIST_DIR}")
    set(doc "${root}/usr/share/doc/${package}")
    add("${here}/copyright" "${doc}/copyright" COPYONLY)
    add("${here}/lintian-overrides" "${root}/usr/share/lintian/overrides/${package}" COPYONLY)
    add("${sources}/CHANGELOG.md" "${doc}/changelog" COPYONLY)
    add("${here}/changelog.Debian.in" "${doc}/changelog.Debian")
    file(GLOB pages "${root}/usr/share/man/man1/*.1")
    foreach(file "${doc}/changelog" "${doc}/changelog.Debian" ${pages})
        compress("${file}")
    endforeach()
endfunction()

# The folders' permissions must not depend on the umask of whoever packs.
function(make_uniform root)
    execute_process(COMMAND find "${root}" -type d -exec chmod 0755 {} + COMMAND_ERROR_IS_FATAL ANY)
    execute_process(COMMAND find "${root}" -exec touch --no-dereference "--date=@$ENV{SOURCE_DATE_EPOCH}" {} +
        COMMAND_ERROR_IS_FATAL ANY)
endfunction()

foreach(component IN LISTS CPACK_COMPONENTS_ALL)
    string(TOUPPER "${component}" upper)
    set(root "${CPACK_TEMPORARY_INSTALL_DIRECTORY}/${component}")
    add_debian_files("${root}" "${CPACK_DEBIAN_${upper}_PACKAGE_NAME}")
    make_uniform("${root}")
endforeach()
