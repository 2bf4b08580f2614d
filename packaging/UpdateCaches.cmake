# Run by the installation: what package managers do by triggers.
if("$ENV{DESTDIR}" STREQUAL "" AND NOT CMAKE_INSTALL_PREFIX MATCHES "/_CPack_Packages/")
    set(data "${CMAKE_INSTALL_PREFIX}/share")
    foreach(command
            "update-mime-database;${data}/mime"
            "update-desktop-database;-q;${data}/applications"
            "gtk-update-icon-cache;-q;-t;-f;${data}/icons/hicolor")
        list(GET command 0 name)
        find_program(found_${name} ${name})
        if(found_${name})
            execute_process(COMMAND ${command} OUTPUT_QUIET ERROR_QUIET)
        endif()
    endforeach()
endif()
