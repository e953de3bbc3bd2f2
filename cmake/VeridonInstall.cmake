# SPDX-License-Identifier: Apache-2.0
# The install layout (GNUInstallDirs): programs in bin, the viewer library in a private folder
# lib/veridon, the data files in share/veridon, man pages in share/man/man1. The programs find the
# library and the data by paths relative to themselves, so an installed tree can be moved as a whole.
include(GNUInstallDirs)

set(VERIDON_INSTALL_LIBDIR "${CMAKE_INSTALL_LIBDIR}/veridon")
set(VERIDON_INSTALL_DATADIR "${CMAKE_INSTALL_DATADIR}/veridon")

# Paths from the programs' folder to the library and the data folder, e.g. "../lib/veridon".
file(RELATIVE_PATH VERIDON_LIB_FROM_PROGRAM "${CMAKE_INSTALL_FULL_BINDIR}"
     "${CMAKE_INSTALL_FULL_LIBDIR}/veridon")
file(RELATIVE_PATH VERIDON_DATA_FROM_PROGRAM "${CMAKE_INSTALL_FULL_BINDIR}"
     "${CMAKE_INSTALL_FULL_DATADIR}/veridon")
set(CMAKE_INSTALL_RPATH "$ORIGIN/${VERIDON_LIB_FROM_PROGRAM}")

if(VERIDON_MAN_PAGES)
    find_program(HELP2MAN help2man)
    if(NOT HELP2MAN)
        message(FATAL_ERROR "help2man is missing (scripts/setup installs it); "
                            "-DVERIDON_MAN_PAGES=OFF builds without man pages")
    endif()
endif()

# veridon_install_program(<target> <summary>)
#
# Installs the program <target> into bin and, when man pages are on, builds its man page from its
# --help and --version output with help2man (the program must answer both without a display) and
# installs it into man1. <summary> is the one-line description in the page's NAME section.
function(veridon_install_program target summary)
    install(TARGETS ${target} RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
    if(NOT VERIDON_MAN_PAGES)
        return()
    endif()
    set(page "${CMAKE_CURRENT_BINARY_DIR}/${target}.1")
    add_custom_command(
        OUTPUT "${page}"
        COMMAND ${CMAKE_COMMAND} -E env QT_QPA_PLATFORM=offscreen ASAN_OPTIONS=detect_leaks=0
                "${HELP2MAN}" --no-info --locale=C.UTF-8 --section=1 --name=${summary} --output=${page} $<TARGET_FILE:${target}>
        DEPENDS ${target}
        COMMENT "Man page ${target}.1"
        VERBATIM)
    add_custom_target(${target}_man ALL DEPENDS "${page}")
    install(FILES "${page}" DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
endfunction()
